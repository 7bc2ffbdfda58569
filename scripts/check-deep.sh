#!/usr/bin/env bash
# The checks that take minutes: every compiler, sanitizer and optimisation, valgrind, and bounded fuzzing.
set -euo pipefail
cd "$(dirname "$0")/.."
fuzz_seconds=${FUZZ_SECONDS:-20}

step() { printf '\n--- %s (%s s)\n' "$*" "$SECONDS"; }

build() {
  step "$1: build"
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1" "${@:2}" -- --quiet
}

run_tests() {
  build "$1"
  step "$1: test"
  ctest --test-dir "build-$1" --no-tests=error --output-on-failure --parallel "$(nproc)" | tail -4
}

# GCC with optimisation is what `make test` builds, GCC without what coverage reads below.
run_tests asan

# The most optimised: what runs in a router.
build clang-release --target rule_tests platform_tests
for tests in rule_tests platform_tests; do
  "build-clang-release/bin/$tests" --gtest_brief=1
done

build tsan --target rule_tests vrrp-valid
build-tsan/bin/rule_tests --gtest_brief=1 --gtest_filter='Rules.*'
# Threads share the plug-in and what is known of the model: of several files, and of the requests of one.
for files in "examples/router-accepted.json examples/router-accepted.json" examples/router-accepted.json; do
  # shellcheck disable=SC2086
  TSAN_OPTIONS=suppressions=scripts/tsan.supp \
    build-tsan/bin/vrrp-valid check --jobs 4 --running examples/router-running.json $files
done

step "valgrind"
# Death tests end in abort, and the sweeps and the many names repeat what the sanitizers saw: none tells valgrind more.
for tests in rule_tests platform_tests; do
  valgrind --quiet --error-exitcode=9 --leak-check=full --errors-for-leak-kinds=definite \
    "build/bin/$tests" --gtest_brief=1 \
    --gtest_filter='-*DeathTest*:*AllocationSweep*:Path.*Name*'
done
valgrind --quiet --error-exitcode=9 --leak-check=full --errors-for-leak-kinds=definite \
  --suppressions=scripts/valgrind.supp \
  build/bin/vrrp-valid check --running examples/router-running.json examples/router-accepted.json

build fuzz --target file_fuzzer validate_fuzzer vrrp_valid
step "fuzz, $fuzz_seconds s a target"
tests/fuzz/run.sh "$fuzz_seconds" build-fuzz

step "growth"
scripts/growth-test.py build/bin/vrrp-valid

step "clang-tidy over everything"
scripts/tidy.sh --all

step "live server"
netconf/check.py build

step "completion"
tests/command/completion_test.sh "$PWD/build/bin/vrrp-valid" bash fish zsh

step "two builds, the same bytes"
scripts/reproducible-test.sh

step "coverage"
scripts/coverage.sh
