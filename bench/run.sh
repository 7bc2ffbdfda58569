#!/bin/sh
# run.sh BUILD [OPTION ...]: runs the benchmarks built in BUILD, with Google Benchmark's options, and
# prints their tables. BUILD/bench-results keeps them.
set -eu
build=$1
shift
results=$build/bench-results
mkdir -p "$results"
"$build/bin/vrrp-valid-bench" "$results" "$@"
cat "$results/tables.md"
