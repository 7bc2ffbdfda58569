#!/usr/bin/env bash
# A morning with VRRP: what an operator sees when changes are checked before they are committed.
# usage: demo.sh VRRP_VALID
set -euo pipefail
cd "$(dirname "$0")/.."
command=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bold='' plain=''
if [ -t 1 ]; then
  bold=$(tput bold 2>/dev/null || true)
  plain=$(tput sgr0 2>/dev/null || true)
fi

say() { printf '\n%s%s%s\n' "$bold" "$*" "$plain"; }

# Runs the command as an operator would type it, and holds it to the exit code that the story needs.
run() {
  local expected=$1 result=0
  shift
  printf '$ vrrp-valid %s\n' "$*"
  "$command" "$@" || result=$?
  printf '(exit code %s)\n' "$result"
  [ "$result" -eq "$expected" ] || { echo "demo: exit code $expected was expected" >&2; exit 1; }
}

say "A change that every rule accepts:"
run 0 check --running examples/router-running.json examples/router-accepted.json

say "A change with several mistakes, each in the rule's own words:"
run 1 check --running examples/router-running.json examples/router-refused.json

say "The interface would lose its lower layer under VRRP:"
run 1 check --running examples/messages/lower-layer-removed/running.json \
  examples/messages/lower-layer-removed/candidate.json

say "A new VRRP version is allowed, but somebody has to accept it:"
changed=examples/messages/version-changed
run 3 check --running "$changed/running.json" "$changed/candidate.json"
run 0 check --running "$changed/running.json" --accept-warnings "$changed/candidate.json"

say "A NETCONF edit of a whole device: what it changes, and whether that is allowed:"
run 1 diff --running examples/whole-device.xml examples/forms/edit-config.xml
run 0 check --running examples/whole-device.xml examples/forms/edit-config.xml

say "Somebody typed a password in clear, where an encrypted text belongs:"
run 0 keygen "$work/router.key"
run 1 check --key-file "$work/router.key" examples/messages/password-in-clear/candidate.json
