#!/usr/bin/env bash
# fleet.sh BUILD: checks fleets of up to 1,000 devices and prints as a table what it took.
# BUILD/bench-results keeps it, and the times for a plot.
set -euo pipefail
build=$(realpath "$1")
here=$(dirname "$(realpath "$0")")
results=$build/bench-results
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$results"

# A check of $1 devices by $2 threads, options following.
measure() {
    local devices=$1 jobs=$2
    shift 2
    "$here/least.sh" 3 "$build/bin/vrrp-valid" check --jobs "$jobs" --silent "$@" \
        --running "$work/$devices/running" "$work/$devices/candidate"
}

: >"$results/fleet.dat"
for devices in 100 250 500 1000; do
    "$build/bin/vrrp-valid-fleet" "$devices" "$work/$devices"
    read -r one one_cpu memory < <(measure "$devices" 1)
    read -r two _ two_memory < <(measure "$devices" 2)
    few_memory=${few_memory:-$two_memory}
    echo "$devices $one $two" >>"$results/fleet.dat"
done
# Nothing has changed for this rule, so that it never runs.
read -r _ parsing _ < <(measure 1000 1 --rule vrrp_version_validation)
bytes=$(du -sb "$work/1000/candidate" | cut -f 1)
awk -v one="$one" -v two="$two" -v cpu="$one_cpu" -v parsing="$parsing" -v few="$few_memory" \
    -v memory="$memory" -v two_memory="$two_memory" -v bytes="$bytes" \
    -v lines="$(wc -l <"$work/1000/candidate/device-000001.json")" 'BEGIN {
        printf "1,000 devices of %d lines, %.0f KB each, with as many running configurations:\n\n", lines, bytes / 1e6
        print "| | |\n|---|--:|"
        printf "| Devices a second of one core | %.0f |\n", 1000 / cpu
        printf "| Share of reading and parsing | %.0f %% |\n", 100 * parsing / cpu
        printf "| Speed-up on two cores | %.2f |\n", one / two
        printf "| Peak memory, one thread | %.1f MB |\n", memory / 1024
        printf "| Peak memory, two threads | %.1f MB |\n", two_memory / 1024
        printf "| Peak memory against 100 devices, two threads | %.2f |\n", two_memory / few
    }' | tee "$results/fleet.md"
awk -v two="$two" -v cpu="$one_cpu" -v memory="$two_memory" -v bytes="$bytes" 'BEGIN {
        printf "100,000 devices of %.0f KB, each with its running configuration, are %.0f GB to read. They take %.0f s\n", bytes / 1e6, bytes * 2 / 1e7, 100 * cpu
        printf "of processor time, %.0f s on two cores, and %.0f MB of memory in each process.\n", 100 * two, memory / 1024
    }' | tee "$results/fleet-cost.md"
