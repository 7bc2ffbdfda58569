#!/usr/bin/env bash
# Everything that can be checked without running it.
set -euo pipefail
cd "$(dirname "$0")/.."
log=$(mktemp)
trap 'rm -f "$log"' EXIT

git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
echo "clang-format: clean"

git ls-files 'scripts/*.sh' 'tests/**.sh' 'bench/*.sh' 'examples/**.sh' .ci/run | xargs shellcheck
echo "shellcheck: clean"

# yanglint exits 0 with warnings; here they count.
quiet() {
  local said
  said=$("$@" 2>&1) || { printf '%s\n' "$said"; return 1; }
  [ -z "$said" ] || { printf '%s\n' "$said"; return 1; }
}
quiet yanglint -p yang yang/*.yang
configurations=$(find examples -name 'router-*' -o -name 'candidate.*' -o -name 'running.*')
for file in $configurations; do
  quiet yanglint -t config -p yang yang/l3-interface.yang yang/router-vrrp.yang "$file"
done
echo "yanglint: models and $(wc -w <<<"$configurations") configurations valid"

# Configured only: what clang-tidy needs is how each file is compiled.
cmake --preset lint >/dev/null
tidy() {  # tidy FOLDER... [-- ARGUMENT...]
  local folders=()
  while [ $# -gt 0 ] && [ "$1" != -- ]; do folders+=("$1"); shift; done
  git ls-files "${folders[@]}" | grep '\.cpp$' | grep -v '^tests/fuzz/' |
    xargs -P "$(nproc)" -n 4 clang-tidy -p build-lint --quiet --warnings-as-errors='*' "${@:2}" 2>"$log" ||
    { cat "$log"; exit 1; }
}
# What runs in a router is looked through along every path; elsewhere that takes most of the time.
tidy src platform
tidy app tests bench -- --extra-arg=-Xclang --extra-arg=-analyzer-config --extra-arg=-Xclang --extra-arg=mode=shallow
echo "clang-tidy: clean"

scripts/count-lines.sh
