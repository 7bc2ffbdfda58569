#!/bin/bash
# Runs each fuzz target for SECONDS_EACH seconds, from the corpus that is kept here; what it finds
# on the way stays in BUILD_DIR/fuzz. Fails, with the input's file, on the first crash.
# Usage: run.sh SECONDS_EACH BUILD_DIR
set -eu

seconds=$1
build=$2
here=$(cd "$(dirname "$0")" && pwd)
for target in file_fuzzer validate_fuzzer; do
    found=$build/fuzz/$target
    mkdir -p "$found"
    if ! "$build/bin/$target" -max_total_time="$seconds" -max_len=4096 -timeout=10 \
        -print_final_stats=1 -dict="$here/tokens.dict" -artifact_prefix="$found-" \
        "$found" "$here/corpus/$target" >"$found.log" 2>&1; then
        cat "$found.log"
        exit 1
    fi
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$found.log")
    echo "$target: $executions executions"
done
