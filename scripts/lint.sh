#!/usr/bin/env bash
# Everything that can be judged without running it. usage: lint.sh BUILD_DIR
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
log=$(mktemp)
trap 'rm -f "$log"' EXIT

git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
echo "clang-format: clean"

git ls-files 'scripts/*.sh' 'tests/*.sh' 'bench/*.sh' .ci/run | xargs shellcheck
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

# The compiler's own warnings are GCC's; its options that clang does not know are not its concern.
git ls-files 'src/*.cpp' 'platform/*.cpp' 'app/*.cpp' 'tests/unit/*.cpp' 'tests/command/*.cpp' |
  xargs -P "$(nproc)" -n 4 clang-tidy -p "$build" --quiet --warnings-as-errors='*' 2>"$log" ||
  { cat "$log"; exit 1; }
echo "clang-tidy: clean"
