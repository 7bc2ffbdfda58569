#!/usr/bin/env bash
# clang-tidy over the sources that changed since the last release's tag or include a header that did; with --all, and
# before the first tag, over all of them. usage: tidy.sh [--all]
set -euo pipefail
cd "$(dirname "$0")/.."
log=$(mktemp)
trap 'rm -f "$log"' EXIT
since=$([ "${1:-}" = --all ] || git describe --tags --abbrev=0 2>/dev/null || true)

touched=$(git ls-files)
if [ "$since" ]; then
  touched=$(git diff --name-only "$since")
  for header in $(grep '\.h$' <<<"$touched" || true); do
    touched+=$'\n'$(git grep -lE "#include [\"<](.*/)?$(basename "$header")[\">]" -- '*.cpp' || true)
  done
fi

# Configured only: what clang-tidy needs is how each file is compiled.
cmake --preset lint >/dev/null
tidy() {  # tidy FOLDER... [-- ARGUMENT...]
  local folders=()
  while [ $# -gt 0 ] && [ "$1" != -- ]; do folders+=("$1"); shift; done
  git ls-files "${folders[@]}" | grep '\.cpp$' | grep -v '^tests/fuzz/' | { grep -xF "$touched" || true; } |
    xargs -r -P "$(nproc)" -n 4 clang-tidy -p build-lint --quiet --warnings-as-errors='*' "${@:2}" 2>"$log" ||
    { cat "$log"; exit 1; }
}
# What runs in a router is looked through along every path; elsewhere that takes most of the time.
tidy src platform
tidy app tests bench -- --extra-arg=-Xclang --extra-arg=-analyzer-config --extra-arg=-Xclang --extra-arg=mode=shallow
echo "clang-tidy: clean${since:+, what changed since $since}"
