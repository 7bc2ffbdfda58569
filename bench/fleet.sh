#!/usr/bin/env bash
# fleet.sh BUILD: checks fleets of 100 and 1,000 devices and prints as a table what it took.
# BUILD/bench-results keeps it.
set -euo pipefail
build=$(realpath "$1")
results=$build/bench-results
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$results"
for devices in 100 1000; do
    "$build/bin/vrrp-valid-fleet" "$devices" "$work/$devices"
done

# Seconds and peak kilobytes of a check of $1 devices by $2 threads, options following; the shortest
# and the smallest of five.
measure() {
    local devices=$1 jobs=$2 _
    shift 2
    for _ in 1 2 3 4 5; do
        /usr/bin/time -a -o "$work/times" -f '%e %M' "$build/bin/vrrp-valid" check --jobs "$jobs" \
            --silent "$@" --running "$work/$devices/running" "$work/$devices/candidate" ||
            [ $? -eq 1 ]
    done
    grep -v '^Command' "$work/times" |
        awk 'NR == 1 || $1 < s { s = $1 } NR == 1 || $2 < m { m = $2 } END { print s, m }'
    rm "$work/times"
}

read -r _ few_memory < <(measure 100 2)
read -r one memory < <(measure 1000 1)
read -r two two_memory < <(measure 1000 2)
# Nothing has changed for this rule, so that it never runs.
read -r parsing _ < <(measure 1000 1 --rule vrrp_version_validation)
bytes=$(du -sb "$work/1000/candidate" | cut -f 1)
awk -v one="$one" -v two="$two" -v parsing="$parsing" -v few="$few_memory" -v memory="$memory" \
    -v two_memory="$two_memory" -v lines="$(wc -l <"$work/1000/candidate/device-000001.json")" \
    -v bytes="$bytes" 'BEGIN {
        printf "1,000 devices of %d lines, %.0f KB each, with as many running configurations:\n\n", lines, bytes / 1e6
        print "| | |\n|---|--:|"
        printf "| Devices a second, one thread | %.0f |\n", 1000 / one
        printf "| Devices a second, two threads | %.0f |\n", 1000 / two
        printf "| Speed-up on two cores | %.2f |\n", one / two
        printf "| Share of reading and parsing | %.0f %% |\n", 100 * parsing / one
        printf "| Peak memory, one thread | %.1f MB |\n", memory / 1024
        printf "| Peak memory, two threads | %.1f MB |\n", two_memory / 1024
        printf "| Peak memory against 100 devices, two threads | %.2f |\n", two_memory / few
    }' | tee "$results/fleet.md"
