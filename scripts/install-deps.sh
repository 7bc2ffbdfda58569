#!/usr/bin/env bash
# Installs the Debian packages of the named groups, as far as they are missing.
set -euo pipefail

declare -A groups=(
  [build]="g++ cmake ninja-build make pkg-config libyang2-dev libcli11-dev nlohmann-json3-dev
           libexpat1-dev libpugixml-dev rapidjson-dev
           nettle-dev libbsd-dev binutils"
  [test]="libgtest-dev libgmock-dev libyang-tools"
  [lint]="clang-format clang-tidy libyang-tools shellcheck"
  [deep]="clang libclang-rt-14-dev valgrind gcovr fish zsh"
  [cross]="g++-aarch64-linux-gnu g++-s390x-linux-gnu g++-arm-linux-gnueabihf clang qemu-user-static"
  [bench]="libbenchmark-dev gnuplot-nox libyang-tools time valgrind"
  [fleet]="parallel openssh-server openssh-client slurmctld slurmd slurm-client munge psmisc jq"
  [netconf]="netconfd libyuma-dev libxml2-dev python3-ncclient openssh-server openssh-client
             libyang-tools"
  [formats]="python3-jsonschema python3-junitparser npm chromium
             fonts-dejavu-core"
  [package]="dpkg-dev file"
  [check-package]="debootstrap lintian"
  [abi]="abigail-tools"
)

missing=()
for group in "$@"; do
  for package in ${groups[$group]}; do
    # Debian's brings hundreds of packages; one from elsewhere does as well.
    [ "$package" != npm ] || ! command -v npm >/dev/null || continue
    if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
      missing+=("$package")
    fi
  done
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)
echo "installing: ${missing[*]}"
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
