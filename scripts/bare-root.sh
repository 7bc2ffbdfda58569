#!/usr/bin/env bash
# Makes a bare root of a Debian release, which installs from where this machine does. Needs root; /proc is mounted in
# it. usage: bare-root.sh RELEASE ROOT
set -euo pipefail
release=$1 root=$2
# shellcheck source=/dev/null
. /etc/os-release
# shellcheck disable=SC2016
mirror=$(apt-get indextargets --format '$(REPO_URI)' "Codename: $VERSION_CODENAME" 'Created-By: Packages' | head -1)
debootstrap --variant=minbase "$release" "$root" "$mirror" >"$root.log" 2>&1 || { tail -20 "$root.log"; exit 1; }
rm "$root.log"
mount -t proc proc "$root/proc"
rm -f "$root/etc/apt/sources.list"
cp -r /etc/apt/. "$root/etc/apt/"
find "$root/etc/apt" -name '*.sources' -o -name '*.list' | xargs sed -i "s/\b$VERSION_CODENAME\b/$release/g"
cp /etc/resolv.conf /etc/hosts "$root/etc/" 2>/dev/null || true
chroot "$root" apt-get update -qq
