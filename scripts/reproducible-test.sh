#!/usr/bin/env bash
# Builds and installs the tree twice, in folders of different names, one build folder within its tree and one beside
# it: every installed file must be the same, debug information and all, and none may name a folder of the build. Run
# paths hold no empty entry, which would search the current folder, in the build folder either.
set -euo pipefail
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

build() {  # build SOURCE BUILD INSTALLED
  mkdir -p "$1"
  git ls-files -z | xargs -0 cp --parents -t "$1"
  cmake -S "$1" -B "$2" --preset default -DCMAKE_BUILD_TYPE=Debug -DBUILD_TESTING=OFF \
    -DCMAKE_INSTALL_PREFIX=/usr >/dev/null
  cmake --build "$2" --parallel "$(nproc)" -- --quiet
  DESTDIR=$3 cmake --install "$2" >/dev/null
}
build "$work/a" "$work/a/build" "$work/first"
build "$work/another-folder/of/the-sources" "$work/elsewhere" "$work/second"

diff --recursive "$work/first" "$work/second"
if grep --recursive --files-with-matches --fixed-strings "$work" "$work/first" "$work/second"; then
  echo "these files name the folder that they were built in"
  exit 1
fi

binaries=$(find "$work/a/build/bin" "$work/a/build/lib" -type f -perm -u+x)
for binary in $binaries; do
  path=$(readelf -dW "$binary" | sed -n 's/.*R[UN]*PATH.*\[\(.*\)\]/\1/p')
  case $path in
    *:* | [!\$]*) echo "$binary: run path \"$path\""; exit 1 ;;
  esac
done
echo "$(wc -w <<<"$binaries") binaries, and all else that is installed: the same from both builds"
