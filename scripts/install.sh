#!/usr/bin/env bash
# Installs what was built below PREFIX, or with --remove takes away what installing would put there. DESTDIR is put
# before every path, as packagers use it. usage: install.sh BUILD_DIR PREFIX [--remove]
set -euo pipefail
build=$1
prefix=$2
remove=${3:-}
target=${DESTDIR:-}$prefix

for folder in bin lib share; do
  folder=$target/$folder
  while [ ! -e "$folder" ]; do
    folder=$(dirname "$folder")
  done
  [ -w "$folder" ] || {
    echo "cannot write to $folder: become root, or give a folder of your own, as in PREFIX=\$HOME/.local" >&2
    exit 1
  }
done

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
umask 022
DESTDIR=$stage cmake --install "$build" --prefix "$prefix" >/dev/null
# Made by whoever installs, root perhaps, it would stop whoever builds.
rm -f "$build/install_manifest.txt"

if [ "$remove" = --remove ]; then
  (cd "$stage$prefix" && find . -type f -print0) | (cd "$target" && xargs -0 rm -f)
  # Of the folders only those that have the project's name are its own.
  (cd "$stage$prefix" && find . -depth -type d -print) | grep vrrp | while read -r folder; do
    rmdir "$target/$folder" 2>/dev/null || true
  done
  echo "removed from $target"
else
  mkdir -p "$target"
  cp -r --no-preserve=ownership "$stage$prefix/." "$target"
  echo "installed below $target"
fi
