#!/usr/bin/env bash
# large.sh BUILD: checks configurations that are refused throughout, and a very large one beside yanglint,
# and prints as tables what it took. BUILD/bench-results keeps them, and the times for a plot.
set -euo pipefail
build=$(realpath "$1")
here=$(dirname "$(realpath "$0")")
results=$build/bench-results
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$results"

check() {
    "$here/least.sh" "$1" "$build/bin/vrrp-valid" check --jobs "$2" "${@:3}"
}

# Interfaces whose instances have $1 identifiers.
refused() {
    local instances folder
    for instances in 500 1000 2000 4000; do
        folder=$work/$instances-$1
        mkdir "$folder"
        "$build/bin/vrrp-valid-workload" "$instances" "$folder" "$1"
        check 1 2 --key-file "$folder/key" --running "$folder/running.json" "$folder/candidate.json"
    done
}

refused 1 >"$work/one"
refused 255 >"$work/all"
paste -d ' ' <(printf '%s\n' 500 1000 2000 4000) "$work/one" "$work/all" >"$results/refused.dat"
awk 'BEGIN {
        print "| VRRP interfaces | All in one identifier, s of processor time | Identifiers by turns, s |"
        print "|--:|--:|--:|"
    }
    { printf "| %d | %.2f | %.2f |\n", $1, $3, $6 }' "$results/refused.dat" |
    tee "$results/refused.md"

"$build/bin/vrrp-valid-fleet" 1 "$work/large" 250000
file=$work/large/candidate/device-000001.json
yang=$(realpath "$here/../yang")
read -r _ theirs their_memory < <("$here/least.sh" 3 yanglint -t config -p "$yang" \
    "$yang/l3-interface.yang" "$yang/router-vrrp.yang" "$file")
read -r _ ours our_memory < <(check 3 1 "$file")
awk -v ours="$ours" -v theirs="$theirs" -v our_memory="$our_memory" -v their_memory="$their_memory" \
    -v bytes="$(stat -c %s "$file")" 'BEGIN {
        printf "\nA file of %.0f MB:\n\n| | `vrrp-valid check` | `yanglint` | Ratio |\n|---|--:|--:|--:|\n", bytes / 1e6
        printf "| Processor time, s | %.2f | %.2f | %.2f |\n", ours, theirs, ours / theirs
        printf "| Peak memory, MB | %.0f | %.0f | %.2f |\n", our_memory / 1024, their_memory / 1024, our_memory / their_memory
    }' | tee "$results/large.md"
