#!/usr/bin/env bash
# Unpacks Debian's libraries for another processor into FOLDER/root, with an apt of their own: the machine's packages
# stay as they are, of whatever versions, and nobody needs to be root. usage: fetch-target-libraries.sh ARCHITECTURE FOLDER
set -euo pipefail
architecture=$1
mkdir -p "$2"
folder=$(realpath "$2")
# Of names with \| between them, the first that the release has.
packages=(libc6 libgcc-s1 libstdc++6 libyang-dev\|libyang2-dev libyang3\|libyang2 libpcre2-dev libpcre2-8-0 nettle-dev
  libnettle8t64\|libnettle8 libexpat1-dev libexpat1 libbsd-dev libbsd0 libmd-dev libmd0 libpugixml-dev libpugixml1v5
  rapidjson-dev libcli11-dev nlohmann-json3-dev libgtest-dev libgmock-dev)
[ "${packages[*]}" != "$(cat "$folder/packages" 2>/dev/null)" ] || exit 0

rm -rf "$folder"/{root,root.part,debs}
mkdir -p "$folder"/{lists,cache,debs}/partial
: >"$folder/status"
target_apt() {
  apt-get -qq -o APT::Architecture="$architecture" -o APT::Architectures="$architecture" \
    -o Dir::State="$folder" -o Dir::State::status="$folder/status" -o Dir::Cache="$folder/cache" \
    -o Acquire::Languages=none -o Acquire::Retries=3 -o APT::Sandbox::User="$(id -un)" "$@"
}
# A list that cannot be had may be one that is not needed: what is missing shows in the next step.
target_apt update || echo "going on without the package lists named above" >&2
(
  cd "$folder/debs"
  for names in "${packages[@]}"; do
    for name in ${names//|/ }; do
      ! target_apt download "$name" 2>/dev/null || continue 2
    done
    echo "none of these can be had: $names" >&2
    exit 1
  done
)
for package in "$folder"/debs/*.deb; do
  dpkg-deb --extract "$package" "$folder/root.part"
done
mv "$folder/root.part" "$folder/root"
echo "${packages[*]}" >"$folder/packages"
