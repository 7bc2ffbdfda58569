#!/usr/bin/env bash
# Builds for other processors and runs there what could depend on one: byte order, signed or unsigned char, the width
# of long, alignment. s390x is big-endian, char is unsigned on all of these, armhf has 32 bits and is only built.
# An emulator of single programs runs them, with Debian's libraries for the processor.
set -euo pipefail
cd "$(dirname "$0")/.."

step() { printf '\n--- %s (%s s)\n' "$*" "$SECONDS"; }

configure() {  # configure ARCHITECTURE BUILD [CMAKE_ARGUMENT]...
  local libraries=build-cross/$1
  scripts/fetch-target-libraries.sh "$1" "$libraries"
  cmake --preset strict -B "$2" -DCMAKE_TOOLCHAIN_FILE="cmake/cross/$1.cmake" \
    -DCMAKE_FIND_ROOT_PATH="$PWD/$libraries/root" "${@:3}" >/dev/null
}

check_library() { tests/library_test.sh "$1/lib/vrrp-valid/libvrrp_valid.so" src/libvrrp_valid.abi optimised; }

build_only() {
  step "${2#build-cross/}: the plug-in and the platform"
  configure "$@"
  cmake --build "$2" --target vrrp_valid -- --quiet
  check_library "$2"
}

build_and_run() {  # build_and_run ARCHITECTURE EMULATED
  local build=build-cross/$1/build
  step "$1: build"
  configure "$1" "$build" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O1
  cmake --build "$build" --target rule_tests platform_tests vrrp_valid vrrp-valid -- --quiet
  check_library "$build"
  step "$1: run"
  # A loader that binds a function at its first call writes vector registers, and with them what strlen() has just
  # read, to the stack that a test looks through.
  local emulator=("qemu-$2-static" -E LD_BIND_NOW=1 -L "build-cross/$1/root")
  local tests
  for tests in rule_tests platform_tests; do
    "${emulator[@]}" "$build/bin/$tests" --gtest_brief=1 --gtest_filter='-*DeathTest*'
  done
  local command=("${emulator[@]}" "$build/bin/vrrp-valid")
  "${command[@]}" check --running examples/router-running.json examples/router-accepted.json
  local result=0
  "${command[@]}" check --format github examples/router-refused.xml || result=$?
  [ "$result" -eq 1 ] || { echo "exit code 1 was expected, not $result"; exit 1; }
}

build_and_run arm64 aarch64
build_and_run s390x s390x
build_only armhf build-cross/armhf/build -DCMAKE_BUILD_TYPE=Release
build_only armhf build-cross/armhf/build-clang -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=clang++
step "done"
