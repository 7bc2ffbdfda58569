#!/bin/sh
# slurm.sh LIST FOLDER [SHARDS]: checks the devices of LIST, "candidate<tab>running" a line, in a Slurm
# job array. The nodes share the files' folders and FOLDER, where shards and reports go. The report of
# all is FOLDER/report.json.
set -eu
list=$1 folder=$2 shards=${3:-64}
here=$(cd "$(dirname "$0")" && pwd)
export VRRP_VALID="${VRRP_VALID:-vrrp-valid}"

mkdir -p "$folder"
rm -f "$folder"/shard-* "$folder"/report.json
split --number="l/$shards" --numeric-suffixes=1 --suffix-length=4 "$list" "$folder/shard-"

# The numbers of the shards without a report, parted by commas.
missing() {
    for shard in "$folder"/shard-????; do
        [ -e "$shard.json" ] || echo "${shard##*-}"
    done | paste -sd,
}

# A round for all, and two for what failed.
for _ in 1 2 3; do
    left=$(missing)
    [ -n "$left" ] || break
    sbatch --wait --array="$left" --output="$folder/slurm-%a.log" --export=ALL \
        --wrap="\"$here/check-shard.sh\" \"$folder/shard-\$(printf %04d \"\$SLURM_ARRAY_TASK_ID\")\"" || true
done
left=$(missing)
if [ -n "$left" ]; then
    echo "slurm.sh: no report of the shards $left: see $folder/slurm-*.log" >&2
    exit 1
fi
rm -f "$folder"/.vrrp-valid-??????  # of killed workers
"$VRRP_VALID" report --format json -- "$folder"/shard-????.json >"$folder/report.json"
