#!/usr/bin/env bash
# Makes the Debian packages, and installs, uses and removes them in a clean root. Needs root, for chroot.
# usage: package-test.sh BUILD_DIR
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/bare-root.sh
build=$1
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

umask 077
cmake --preset package -B "$build" >/dev/null
cmake --build "$build"
rm -f "$build"/*.deb
(cd "$build" && cpack >/dev/null)
umask 022
for package in "$build"/*.deb; do
  dpkg-deb --info "$package" | grep -E 'Package|Version|Depends'
  dpkg-deb --contents "$package" | awk '{print $6}'
  shut=$(dpkg-deb --contents "$package" | awk '$1 ~ /^d/ && $1 != "drwxr-xr-x"')
  [ -z "$shut" ] || { printf 'folders that not everyone may enter:\n%s\n' "$shut"; exit 1; }
done
lintian --allow-root --fail-on error,warning "$build"/*.deb

destination=$PWD/$build/destination
rm -rf "$destination"
DESTDIR=$destination scripts/install.sh "$build" /usr/local
"$destination/usr/local/bin/vrrp-valid" --version
DESTDIR=$destination scripts/install.sh "$build" /usr/local --remove
left=$(find "$destination" -type f -o -name '*vrrp*')
[ -z "$left" ] || { printf 'make uninstall leaves:\n%s\n' "$left"; exit 1; }

# shellcheck source=/dev/null
make_root "$(. /etc/os-release && echo "$VERSION_CODENAME")" "$root"
cp -r examples "$root/root/"
cp "$build"/*.deb "$root/root/"

in_root sh -c 'apt-get install -y -qq /root/*.deb' >/dev/null

echo "--- installed; used:"
in_root vrrp-valid --version
in_root vrrp-valid check --running /root/examples/router-running.json /root/examples/router-accepted.json
result=0
in_root vrrp-valid check -q /root/examples/router-refused.xml || result=$?
[ "$result" -eq 1 ] || { echo "exit code 1 was expected, not $result"; exit 1; }
in_root test -e /usr/share/man/man1/vrrp-valid.1.gz
in_root test -e /usr/share/bash-completion/completions/vrrp-valid

echo "--- removed:"
in_root apt-get purge -y -qq vrrp-valid vrrp-valid-plugin vrrp-valid-platform >/dev/null
left=$(in_root find / -xdev -path /root -prune -o -path /proc -prune -o -name '*vrrp*' -print)
[ -z "$left" ] || { printf 'left behind:\n%s\n' "$left"; exit 1; }
echo "nothing left behind"
