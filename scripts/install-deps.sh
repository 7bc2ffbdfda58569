#!/usr/bin/env bash
# Installs the Debian packages of the named groups, as far as they are missing. With --check it only says which, and
# the command that installs them. usage: install-deps.sh [--check] GROUP...
set -euo pipefail

# Of names with | between them, the first that the release has.
declare -A groups=(
  [build]="g++ cmake ninja-build make pkg-config libyang-dev|libyang2-dev libcli11-dev nlohmann-json3-dev
           libexpat1-dev libpugixml-dev rapidjson-dev
           nettle-dev libbsd-dev binutils"
  [test]="libgtest-dev libgmock-dev"
  [lint]="clang-format clang-tidy libyang3-tools|libyang-tools shellcheck"
  [deep]="clang libclang-rt-dev valgrind gcovr fish zsh"
  [cross]="g++-aarch64-linux-gnu g++-s390x-linux-gnu g++-arm-linux-gnueabihf clang qemu-user-static"
  [bench]="libbenchmark-dev gnuplot-nox libyang3-tools|libyang-tools time valgrind"
  [fleet]="parallel openssh-server openssh-client slurmctld slurmd slurm-client munge psmisc jq"
  [netconf]="netconfd libyuma-dev libxml2-dev python3-ncclient openssh-server openssh-client
             libyang3-tools|libyang-tools"
  [formats]="python3-jsonschema python3-junitparser npm chromium
             fonts-dejavu-core"
  [package]="dpkg-dev file"
  [root]="debootstrap lintian"
  [abi]="abigail-tools"
)
only_check=
[ "$1" != --check ] || { only_check=1; shift; }

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

missing=()
for group in "$@"; do
  for names in ${groups[$group]}; do
    # Debian's brings hundreds of packages; one from elsewhere does as well.
    [ "$names" != npm ] || ! command -v npm >/dev/null || continue
    for name in ${names//|/ }; do
      ! is_installed "$name" || continue 2
    done
    missing+=("$names")
  done
done
[ ${#missing[@]} -eq 0 ] && exit 0

refuse() { printf '%s\n' "packages are missing: ${missing[*]}" "$@" >&2; exit 1; }

command -v apt-get >/dev/null ||
  refuse "This system has no apt-get: install them under the names that they have here, and then, without make:" \
    "cmake --preset default && cmake --build build && ctest --test-dir build"
case $* in
  build | "build test") how="make deps" ;;
  *) how="make deps FOR=\"$*\"" ;;
esac
[ -z "$only_check" ] || refuse "To install them: $how"
sudo=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || refuse "You are not root, and there is no sudo: have root run: $how"
  sudo=(sudo)
fi
echo "First ${sudo[*]:+with sudo, }apt-get installs what is missing: ${missing[*]}"
"${sudo[@]}" apt-get update -qq || refuse "apt-get update failed"
packages=()
for names in "${missing[@]}"; do
  for name in ${names//|/ }; do
    [ -z "$(apt-cache madison "$name")" ] || break
  done
  packages+=("$name")
done
"${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${packages[@]}" >/dev/null ||
  refuse "apt-get could not install them"
