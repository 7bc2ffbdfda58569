#!/bin/sh
# check-shard.sh SHARD: checks the devices that the list SHARD names and leaves their report in
# SHARD.json once it is whole: a shard without one is to be done again.
rm -f "$1.json" "$1.json.new"
"${VRRP_VALID:-vrrp-valid}" check --format json --output "$1.json.new" --files-from="$1"
status=$?
# 0 to 3 tell of the devices, and the report has the same; anything else is how the run itself ended.
[ "$status" -le 3 ] || exit "$status"
# The run itself failed when there is none.
mv "$1.json.new" "$1.json" || exit 4
