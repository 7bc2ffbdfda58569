# shellcheck shell=bash
# Sourced: a bare root of a Debian release. Needs root.

# make_root RELEASE ROOT: it installs from where this machine does.
make_root() {
  local release=$1 root=$2 mirror own
  # shellcheck source=/dev/null
  own=$(. /etc/os-release && echo "$VERSION_CODENAME")
  # shellcheck disable=SC2016
  mirror=$(apt-get indextargets --format '$(REPO_URI)' "Codename: $own" 'Created-By: Packages' | head -1)
  debootstrap --variant=minbase "$release" "$root" "$mirror" >"$root.log" 2>&1 || { tail -20 "$root.log"; return 1; }
  rm "$root.log"
  chmod 755 "$root"
  rm -f "$root/etc/apt/sources.list"
  cp -r /etc/apt/. "$root/etc/apt/"
  find "$root/etc/apt" \( -name '*.sources' -o -name '*.list' \) -exec sed -i "s/\b$own\b/$release/g" {} +
  cp /etc/resolv.conf /etc/hosts "$root/etc/" 2>/dev/null || true
  in_root apt-get update -qq
}

# in_root COMMAND...: in "$root", with terminals of its own, and where no process of this machine can be seen or ended.
# What is mounted there is gone with it.
in_root() {
  # shellcheck disable=SC2016,SC2154
  unshare --pid --fork --kill-child --mount --mount-proc="$root/proc" sh -c '
    mount -t devpts -o newinstance,ptmxmode=0666 devpts "$0/dev/pts" && mount --bind "$0/dev/pts/ptmx" "$0/dev/ptmx" &&
    exec chroot "$0" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C DEBIAN_FRONTEND=noninteractive "$@"
  ' "$root" "$@"
}
