#!/usr/bin/env bash
# Runs every command that README and docs show, so that none of them can rot. A "console" block is a transcript:
# each line after "$ " is run, and must print what is below it. A "sh" block is run line by line; of a make
# target, which has a run of its own in CI, only the name is checked. Paths are those of a tree built in build/.
# usage: docs-test.sh BUILD_DIR [--update]
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath "$1")
update=${2:-}
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
git ls-files -z | xargs -0 cp --parents -t "$tree"
export SDK="$tree/sdk"
ln -s "$build" "$tree/build"
mkdir -p "$SDK"
cp -r platform/include "$SDK/include"
cp -r "$(dirname "$(find "$build" -path "$build/stage" -prune -o -path '*/vrrp-valid/libconfd.so' -print)")" "$SDK/lib"

failed=0
count=0

# Runs one line of a sh block.
run_line() {
  local line=$1
  count=$((count + 1))
  if [[ $line == make\ * ]]; then
    make -n "$(awk '{print $2}' <<<"$line")" >/dev/null && return
  elif (cd "$tree" && bash -c "$line") >"$tree/.log" 2>&1; then
    return
  fi
  printf '%s: failed: %s\n' "$document" "$line"
  [[ $line == make\ * ]] || cat "$tree/.log"
  failed=1
}

# The document, its transcripts run anew.
renew() {
  local document=$1 block="" line
  while IFS= read -r line; do
    case $block$line in
      '```console') block=console ;;
      'console```' | 'sh```') block="" ;;
      '```sh') block="sh" ;;
      'console$ '*)
        printf '%s\n' "$line"
        (cd "$tree" && bash -c "${line#\$ }") 2>&1 || true
        continue
        ;;
      console*) continue ;;
    esac
    printf '%s\n' "$line"
  done <"$document"
}

for document in README.md CONTRIBUTING.md docs/*.md; do
  while IFS= read -r line; do
    run_line "$line"
  done < <(awk '/^```sh$/ {inside = 1; next} /^```/ {inside = 0} inside && !/^ *$/' "$document")
  renew "$document" >"$tree/.renewed"
  count=$((count + $(grep -c '^\$ ' "$document" || true)))
  if [ "$update" = --update ]; then
    cp "$tree/.renewed" "$document"
  elif ! diff "$document" "$tree/.renewed"; then
    echo "$document: the transcript differs from what the command prints"
    failed=1
  fi
done

# shellcheck disable=SC2016
while IFS= read -r target; do
  make -n "$target" >/dev/null || { echo "no such target: make $target"; failed=1; }
done < <(grep -ohP '`make \K[a-z-]+(?=`)' README.md CONTRIBUTING.md docs/*.md | sort -u)

printf '%s commands of the documents run\n' "$count"
exit $failed
