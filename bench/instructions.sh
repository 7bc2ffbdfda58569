#!/bin/sh
# instructions.sh BUILD: counts under callgrind, and prints as tables, where the instructions of a check
# are spent. BUILD/bench-results keeps them. The figures do not depend on what else the machine does.
set -eu
build=$1
results=$build/bench-results
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$results"

# The instructions of each object file, without those of the functions that it calls, as a table. In
# callgrind's file a position's line ends with its cost; the line after "calls=" is the callee's.
by_object() {
    awk '
        /^ob=/ {
            id = $1; sub(/^ob=/, "", id)
            if (NF > 1) { name[id] = $2; sub(/.*\//, "", name[id]) }
            object = id; next
        }
        /^cob=/ { id = $1; sub(/^cob=/, "", id); if (NF > 1) { name[id] = $2; sub(/.*\//, "", name[id]) } }
        /^calls=/ { is_callee = 1; next }
        /^[-+*0-9]/ { if (!is_callee) { cost[object] += $NF; total += $NF } is_callee = 0 }
        END {
            for (id in cost)
                if (cost[id] > total / 1000)
                    printf "%d | %s | %.2f | %.1f %%\n", cost[id], name[id], cost[id] / 1e6, 100 * cost[id] / total
            printf "0 | all | %.2f | 100.0 %%\n", total / 1e6
        }' "$1" | sort -t'|' -k1,1nr | cut -d'|' -f2- | sed 's/^/|/; s/$/ |/'
}

# A check of $1, a folder that vrrp-valid-workload filled, counted into $1/out; options follow.
count() {
    folder=$1
    shift
    valgrind --tool=callgrind --callgrind-out-file="$folder/out" "$@" "$build/bin/vrrp-valid" check \
        --key-file "$folder/key" --running "$folder/running.json" "$folder/candidate.json" \
        >"$folder/log" 2>&1 || { cat "$folder/log" >&2; exit 1; }
}

mkdir "$work/most" "$work/one" "$work/password"
"$build/bin/vrrp-valid-workload" 510 "$work/most"
"$build/bin/vrrp-valid-workload" 1 "$work/password"
cp "$work/password/key" "$work/one"
for file in candidate.json running.json; do
    sed 's/,"authentication":{[^}]*}//' "$work/password/$file" >"$work/one/$file"
done

header='| Object | Instructions, millions | Share |
|---|--:|--:|'
{
    echo 'The requests of a check of 510 instances, inside the plug-in, from its entry validate() on:'
    printf '\n%s\n' "$header"
    count "$work/most" --toggle-collect=validate
    by_object "$work/most/out"
    printf '\nThe whole command, start to exit, on a configuration of one instance:\n\n%s\n' "$header"
    count "$work/one"
    by_object "$work/one/out"
    printf '\nThe same when the instance has a password:\n\n%s\n' "$header"
    count "$work/password"
    by_object "$work/password/out"
} >"$results/instructions.md"
cat "$results/instructions.md"
