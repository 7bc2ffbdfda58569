#!/usr/bin/env bash
# Every rule of the model is in the plug-in's table, and has tests, an example, a benchmark and its place on the pages;
# and none of these names a rule that the model does not have. Every example has its line in the index.
# usage: rules_test.sh SOURCE_DIR VRRP_VALID
set -euo pipefail
cd "$1"
vrrp_valid=$2
failed=0

expect_same() {  # expect_same WHAT WHERE EXPECTED THERE
  local one
  for one in $(comm -23 <(sort -u <<<"$3") <(sort -u <<<"$4")); do echo "$1 $one: not in $2"; failed=1; done
  for one in $(comm -13 <(sort -u <<<"$3") <(sort -u <<<"$4")); do echo "$1 $one: only in $2"; failed=1; done
}

rules=$("$vrrp_valid" rules | awk '{print $2}')
for places in src/lib/vrrp_valid.cpp 'tests/rules/validate_*_test.cpp' 'examples/messages/*/expected.json' \
  bench/rule_request.cpp; do
  # shellcheck disable=SC2086
  expect_same rule "$places" "$rules" "$(grep -ohE '\bvrrp_\w+_validation\b' $places)"
done
expect_same rule "the keypaths of docs/integration.md" "$rules" \
  "$(grep '^|' docs/integration.md | grep -oE '\bvrrp_\w+_validation\b')"
# shellcheck disable=SC2016
expect_same example "the index of examples/README.md" "$(ls examples/messages)" \
  "$(sed -n '/^| Directory/,/^$/ {s/|[^|]*|$//; p}' examples/README.md | grep -oP '`\K[a-z0-9-]+(?=`)')"

scripts/rules-doc.sh "$vrrp_valid" | diff docs/rules.md - ||
  { echo "docs/rules.md is not what the model says: run make rules-doc"; failed=1; }
exit $failed
