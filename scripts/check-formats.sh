#!/usr/bin/env bash
# Has every report format read by a reader of somebody else's: the examples' reports, and those of files that
# are missing, broken, or named to break a format. usage: check-formats.sh BUILD_DIR
set -euo pipefail
cd "$(dirname "$0")/.."
command=$(realpath "$1")/bin/vrrp-valid
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

npm install --silent --no-audit --no-fund --prefix "$work" @microsoft/sarif-multitool@5.7.0 >/dev/null
odd=$work/$'a\n::error::%,"<&>]]>\e\u202e\xff'
cp examples/router-refused.json "$odd"

# The reports on the examples and on odd files, in every format, under a name. usage: check NAME ARGUMENT...
check() {
  local name=$1 format status
  shift
  for format in json junit github gitlab sarif; do
    status=0
    "$command" check --format "$format" "$@" >"$work/$name.$format" 2>/dev/null || status=$?
    printf '%s' "$status" >"$work/$name.status"
    [ -s "$work/$name.$format" ] || { echo "$name.$format is empty"; exit 1; }
  done
}

check accepted --running examples/router-running.json examples/router-accepted.json
check refused --running examples/router-running.json examples/router-refused.json
check messages examples/messages/*/candidate.*
check warned --accept-warnings --running examples/messages/version-changed/running.json \
  examples/messages/version-changed/candidate.json
check odd --running "$odd" "$odd" "$work/missing"
check unloadable --yang-dir "$work/missing" "$odd" examples/router-accepted.json
echo '{}' >"$work/empty.json"
check empty "$work/empty.json"

/usr/bin/python3 scripts/read_reports.py docs/report.schema.json "$work"

# usage: describe SCHEMA ARGUMENT...
describe() {
  { "$command" "${@:2}" --format json || [ "$1" = diff ]; } | /usr/bin/python3 -c 'import json, jsonschema, sys
jsonschema.Draft7Validator(json.load(open(sys.argv[1]))).validate(json.load(sys.stdin))' "docs/$1.schema.json"
}
describe rules rules
describe rules explain --verbose
describe diff diff --running examples/router-running.json examples/router-refused.json

export DOTNET_SYSTEM_GLOBALIZATION_INVARIANT=1
for log in "$work"/*.sarif; do
  "$work/node_modules/.bin/sarif-multitool" validate "$log" --output "$work/said.json" \
    --log ForceOverwrite >"$work/said" || { cat "$work/said"; exit 1; }
  ! grep -E '(: error |JSON1)' "$work/said" || exit 1
done
echo "SARIF Multitool: $(find "$work" -maxdepth 1 -name '*.sarif' | wc -l) logs valid"
