#!/bin/sh
# parallel.sh LIST NODES FOLDER [SHARDS]: checks the devices of LIST, "candidate<tab>running" a line, on
# the machines that NODES names, one a line, with GNU parallel over ssh. The machines share the files'
# folders and FOLDER, where shards and reports go. The report of all is FOLDER/report.json.
set -eu
list=$1 nodes=$2 folder=$3 shards=${4:-64}
here=$(cd "$(dirname "$0")" && pwd)
export VRRP_VALID="${VRRP_VALID:-vrrp-valid}"

mkdir -p "$folder"
rm -f "$folder"/shard-* "$folder"/report.json
split --number="l/$shards" --numeric-suffixes=1 --suffix-length=4 "$list" "$folder/shard-"
# One shard a machine at a time, since it takes all cores. What fails is tried again, elsewhere.
parallel --sshloginfile "$nodes" --jobs 1 --retries 3 --workdir "$PWD" --env VRRP_VALID \
    "$here/check-shard.sh" ::: "$folder"/shard-????
rm -f "$folder"/.vrrp-valid-??????  # of killed workers
"$VRRP_VALID" report --format json -- "$folder"/shard-????.json >"$folder/report.json"
