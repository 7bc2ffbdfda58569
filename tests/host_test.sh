#!/usr/bin/env bash
# Builds the host of docs/integration.md against what is installed, as that page says and with pkg-config, and has it ask
# its question. usage: host_test.sh SOURCE_DIR STAGE LIBDIR COMPILER
set -euo pipefail
source_dir=$1 stage=$2 libdir=$3 compiler=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

block() {
  awk -v begin="\`\`\`$1" '$0 == begin {inside = 1; next} /^```/ {inside = 0} inside' "$source_dir/docs/integration.md"
}
block cpp >host.cpp
block cmake >CMakeLists.txt
asks() {  # asks HOST
  local answer
  ! answer=$("$1") || { echo "$1: no error"; exit 1; }
  [ "$answer" = "VRF must not be configured on interface l3 vlan10 with VRRP enabled." ] ||
    { echo "$1: $answer"; exit 1; }
}

{ cmake -S . -B build -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$stage" &&
  cmake --build build; } >log 2>&1 || { cat log; exit 1; }
asks build/host

export PKG_CONFIG_PATH=$stage/$libdir/pkgconfig
read -ra flags < <(pkg-config --cflags --libs vrrp_valid_platform)
"$compiler" -std=c++17 -DPLUGIN="\"$(pkg-config --variable=plugin vrrp_valid)\"" host.cpp -o host "${flags[@]}"
asks ./host
