#!/usr/bin/env bash
# Everything that can be checked without running it.
set -euo pipefail
cd "$(dirname "$0")/.."

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

scripts/tidy.sh

scripts/count-lines.sh
