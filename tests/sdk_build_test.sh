#!/usr/bin/env bash
# Builds the plug-in alone against a platform given as a folder with include/ and lib/, as a router SDK is,
# and holds the result to what the library must look like. usage: sdk_build_test.sh SOURCE_DIR LIBRARY_DIR
set -euo pipefail
source_dir=$1
library_dir=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Only what a plug-in may see of the platform.
mkdir -p "$work/sdk/lib"
cp -r "$source_dir/platform/include" "$work/sdk/include"
cp "$library_dir"/lib{confd,qelconfd,nettypes}.so "$work/sdk/lib/"

cmake -S "$source_dir" -B "$work/build" -DVRRP_VALID_PLATFORM="$work/sdk" \
  -DCMAKE_INSTALL_LIBDIR=lib >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
cmake --build "$work/build" --parallel 2 >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
built=$(find "$work/build" -name '*.so' -o -type f -executable -path '*/bin/*')
if [ "$built" != "$work/build/lib/vrrp-valid/libvrrp_valid.so" ]; then
  printf 'more or less than the plug-in was built:\n%s\n' "$built"
  exit 1
fi
"$source_dir/tests/library_test.sh" "$built" "$source_dir/src/libvrrp_valid.abi" optimised
