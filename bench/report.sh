#!/bin/sh
# report.sh BUILD: runs everything and puts the figures and plots into docs/. Takes some two minutes of an
# idle machine.
set -eu
build=$1
results=$build/bench-results
cd "$(dirname "$0")/.."

bench/run.sh "$build"
bench/instructions.sh "$build"
bench/large.sh "$build"
bench/fleet.sh "$build"
gnuplot -e "results='$results'" bench/plots.gp
printf '%s, %s cores (%s), %s, GCC %s.\n' "$(date +%F)" "$(nproc)" \
        "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)" \
        "$(sed -n 's/^PRETTY_NAME="\(.*\)"/\1/p' /etc/os-release)" "$(g++ -dumpfullversion)" \
    >"$results/machine.md"

# Puts each file between the two marks that bear its name.
for document in docs/performance.md docs/fleet.md; do
    for name in machine tables refused large fleet fleet-cost instructions; do
        awk -v name="$name" -v file="$results/$name.md" '
            $0 == "<!-- end of " name " -->" { is_old = 0 }
            !is_old { print }
            $0 == "<!-- " name " -->" {
                is_old = 1
                while ((getline line < file) > 0) print line
            }' "$document" >"$results/document"
        cp "$results/document" "$document"
    done
done
