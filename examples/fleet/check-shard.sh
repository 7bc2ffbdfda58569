#!/bin/sh
# check-shard.sh SHARD: checks the devices that the list SHARD names and leaves their report in
# SHARD.json once it is whole: a shard without one is to be done again.
rm -f "$1.json"
"${VRRP_VALID:-vrrp-valid}" check --format json --output "$1.json" --files-from "$1"
status=$?
# 0 to 3 tell of the devices, and the report has the same; without a report the run itself failed.
[ "$status" -gt 3 ] || [ -e "$1.json" ] || exit 4
[ "$status" -le 3 ] || exit "$status"
