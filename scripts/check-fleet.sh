#!/usr/bin/env bash
# check-fleet.sh BUILD: runs the examples of docs/fleet.md for real on this machine, with two sshd on the
# loopback and with a Slurm of one node. In each a worker is killed in the middle of a shard, and every
# device must be in the joined report exactly once all the same.
set -euo pipefail
build=$(realpath "$1")
cd "$(dirname "$0")/.."
devices=400
work=$(mktemp -d)
chmod 755 "$work"
servers=()
stop_servers() {
  [ ${#servers[@]} -eq 0 ] || kill "${servers[@]}" 2>/dev/null || true
  wait
  [ ! -e "$work/munge/pid" ] || kill "$(cat "$work/munge/pid")"
  rm -rf "$work"
}
trap stop_servers EXIT

export VRRP_VALID=$build/bin/vrrp-valid
"$build/bin/vrrp-valid-fleet" "$devices" "$work/devices"
for candidate in "$work"/devices/candidate/*; do
  printf '%s\t%s\n' "$candidate" "$work/devices/running/${candidate##*/}"
done >"$work/list"

# Kills whoever writes a report in folder $1 once its first devices are in it.
kill_writer() {
  local report
  until report=$(find "$1" -name '.vrrp-valid-*' -size +0 -print -quit 2>/dev/null) && [ -n "$report" ]; do
    sleep 0.01
  done
  fuser -s -k -KILL "$report" 2>/dev/null
  ! jq -e . "$report" >/dev/null 2>&1 || { echo "a report was whole before its writer was killed"; exit 1; }
  echo "killed the writer of a report after $(grep -c '"rules"' "$report") devices"
}

# The report in folder $1 has each device of the list exactly once, and what is wrong with some.
require_all() {
  jq -r '.reports[].candidate' "$1/report.json" | sort | cmp - <(cut -f 1 "$work/list" | sort)
  jq -e '(.summary | del(.unknown_nodes, .refused, .clean)) == {candidates: '"$devices"', warned: 0,
      not_checked: 0, errors: '$((devices / 100))', warnings: 0}' "$1/report.json" >/dev/null
}

# Whatever example "$@" runs, with a worker killed, in the folder $1.
run_with_a_kill() {
  local folder=$1 status=0 killer
  shift
  kill_writer "$folder" &
  killer=$!
  "$@" || status=$?
  wait "$killer"
  [ "$status" -eq 1 ] || { echo "$1: exit code $status in place of 1, errors"; exit 1; }
  require_all "$folder"
}

run_parallel() {
  ssh-keygen -q -t ed25519 -N '' -f "$work/key"
  cp "$work/key.pub" "$work/authorized_keys"
  mkdir -p /run/sshd
  local node
  for node in 1 2; do
    ssh-keygen -q -t ed25519 -N '' -f "$work/host-$node"
    /usr/sbin/sshd -D -e -f /dev/null -p "2202$node" -h "$work/host-$node" -o ListenAddress=127.0.0.1 \
      -o AuthorizedKeysFile="$work/authorized_keys" -o StrictModes=no -o UsePAM=no -o PidFile=none \
      -o PermitRootLogin=yes -o MaxStartups=50 2>"$work/sshd-$node.log" &
    servers+=($!)
    printf 'Host node-%s\n  HostName 127.0.0.1\n  Port 2202%s\n' "$node" "$node"
  done >"$work/ssh_config"
  printf 'Host *\n  IdentityFile %s\n  StrictHostKeyChecking no\n  UserKnownHostsFile /dev/null\n  LogLevel ERROR\n' \
    "$work/key" >>"$work/ssh_config"
  printf 'node-1\nnode-2\n' >"$work/nodes"
  export PARALLEL_SSH="ssh -F $work/ssh_config"
  run_with_a_kill "$work/parallel" examples/fleet/parallel.sh "$work/list" "$work/nodes" "$work/parallel" 8
  local log
  for log in "$work"/sshd-?.log; do
    grep -q Accepted "$log" || { echo "no shard went to the machine of $log"; exit 1; }
  done
  echo "GNU parallel over ssh: $devices devices, each once"
}

run_slurm() {
  mkdir "$work/munge" "$work/slurm"
  dd if=/dev/urandom of="$work/munge.key" bs=128 count=1 status=none
  chmod 600 "$work/munge.key"
  /usr/sbin/munged --force --key-file="$work/munge.key" --socket="$work/munge/socket" \
    --pid-file="$work/munge/pid" --log-file="$work/munge/log" --seed-file="$work/munge/seed"
  local host
  host=$(hostname -s)
  cat >"$work/slurm/slurm.conf" <<END
ClusterName=fleet
SlurmctldHost=$host(127.0.0.1)
SlurmUser=$(id -un)
SlurmdUser=$(id -un)
AuthType=auth/munge
AuthInfo=socket=$work/munge/socket
SlurmctldPort=16817
SlurmdPort=16818
StateSaveLocation=$work/slurm
SlurmdSpoolDir=$work/slurm/spool
SlurmctldPidFile=$work/slurm/slurmctld.pid
SlurmdPidFile=$work/slurm/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SchedulerParameters=batch_sched_delay=0
SelectType=select/cons_tres
NodeName=$host NodeAddr=127.0.0.1 CPUs=$(nproc) State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES State=UP
END
  export SLURM_CONF=$work/slurm/slurm.conf
  slurmctld -D 2>"$work/slurm/slurmctld.log" &
  servers+=($!)
  slurmd -D 2>"$work/slurm/slurmd.log" &
  servers+=($!)
  local _
  for _ in $(seq 60); do
    [ "$(sinfo -h -o %T 2>/dev/null)" != idle ] || break
    sleep 0.5
  done
  run_with_a_kill "$work/array" examples/fleet/slurm.sh "$work/list" "$work/array" 8
  echo "Slurm job array: $devices devices, each once"
}

run_parallel
run_slurm
