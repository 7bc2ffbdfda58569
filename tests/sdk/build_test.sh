#!/usr/bin/env bash
# Builds the plug-in alone against the SDK, holds it to what a router's loader needs and to its
# answers, and reads what is said of an SDK that lacks something.
# usage: build_test.sh SOURCE_DIR BINARY_DIR HOST COMPILER
set -euo pipefail
source_dir=$1 host=$3 compiler=$4
cd "$2"
log=$PWD/log

configure() {  # configure SDK BUILD [OPTION...]
  cmake -S "$source_dir" -B "$2" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DVRRP_VALID_PLATFORM="$1" -DVRRP_VALID_CONFD_LIBRARY="$PWD/versioned/libconfd.so.7" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_LIBDIR=lib "${@:3}" >"$log" 2>&1
}
fail() { printf '%s\n' "$*"; exit 1; }

# An SDK whose headers do not bring each other along.
rm -rf plain && cp -r sdk plain
sed -i '/include "confd_/d' plain/include/*.h
configure "$PWD/plain" plugin || { cat "$log"; exit 1; }
grep -qF "Platform: the router SDK in $PWD/plain" "$log" || fail "the platform is not named"
cmake --build plugin --parallel 2 >"$log" 2>&1 || { cat "$log"; exit 1; }
built=$(find plugin -name '*.so' -o -type f -executable -path '*/bin/*')
[ "$built" = plugin/lib/vrrp-valid/libvrrp_valid.so ] ||
  fail "more or less than the plug-in was built: $built"
"$source_dir/tests/library_test.sh" "$built" "$source_dir/src/libvrrp_valid.abi" optimised
! readelf -dW "$built" | grep -E 'R(UN)?PATH' || fail "the plug-in has a run path"
! grep -F "$PWD" "$built" || fail "the plug-in names a folder of the build machine"
PLUGIN=$PWD/$built "$host" --gtest_brief=1

rm -rf installed
cmake --install plugin --prefix "$PWD/installed" >"$log"
packaged=$(PKG_CONFIG_PATH=$PWD/installed/lib/pkgconfig pkg-config --variable=plugin vrrp_valid)
cmp "$packaged" "$built" || fail "pkg-config names another plug-in"
mkdir -p finder
cat >finder/CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.25)
project(host LANGUAGES NONE)
find_package(vrrp_valid 1.0 REQUIRED)
file(GENERATE OUTPUT found CONTENT $<TARGET_FILE:vrrp_valid::plugin>)
END
cmake -S finder -B finder -DCMAKE_PREFIX_PATH="$PWD/installed" >"$log" || { cat "$log"; exit 1; }
cmp "$(cat finder/found)" "$built" || fail "find_package names another plug-in"

# A static library, and what it needs itself; the language as whoever builds wants it.
rm -f ./*.a
ar rc libnettypes.a "$(find CMakeFiles/sdk_nettypes.dir -name 'ipv4*.o')"
ar rc libneeded.a "$(find CMakeFiles/sdk_nettypes.dir -name 'ipv6*.o')"
configure "$PWD/sdk" static "-DVRRP_VALID_NETTYPES_LIBRARY=$PWD/libnettypes.a;$PWD/libneeded.a" \
  -DCMAKE_CXX_STANDARD=20 -DCMAKE_CXX_EXTENSIONS=ON || { cat "$log"; exit 1; }
grep -q -- -std=gnu++20 static/compile_commands.json || fail "not the language that was asked for"

refused() {  # refused CHANGE OPTION TEXT...: an SDK with that change is, with all of the texts
  local change=$1 text
  rm -rf changed refused
  cp -r sdk changed
  (cd changed && eval "$change")
  if configure "$PWD/changed" refused "$2"; then
    fail "taken for a whole SDK after: $change $2"
  fi
  for text in "${@:3}"; do
    grep -qF -- "$text" <(tr -s '\n ' ' ' <"$log") ||
      { cat "$log"; fail "after $change it is not said: $text"; }
  done
}
refused 'rm include/confd_cdb.h lib/libqelconfd.so' -Wno-dev "$PWD/changed, is not complete" \
  'include/confd_cdb.h: not there' \
  'libqelconfd: not in lib/' ', lib64, lib; set VRRP_VALID_QELCONFD_LIBRARY to the file'
refused 'sed -i s/enumvalue/number/ include/confd_lib.h' -Wno-dev 'libconfd differs' 'enumvalue'
refused : "-DVRRP_VALID_CONFD_LIBRARY=$PWD/sdk/lib/libqelconfd.so" 'libconfd differs' \
  'undefined reference to `maapi_exists'
refused : "-DVRRP_VALID_NETTYPES_LIBRARY=$PWD/libnettypes.a" 'libnettypes differs' 'IPv6AddrMask'
refused 'rm -r ../changed' -Wno-dev 'VRRP_VALID_PLATFORM: there is no folder'
refused : -DVRRP_VALID_PLATFORM= 'VRRP_VALID_PLATFORM is empty'
