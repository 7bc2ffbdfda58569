#!/usr/bin/env bash
# Dependencies point one way: a folder includes only what it may. usage: include_test.sh SOURCE_DIR
set -euo pipefail
cd "$1"
failed=0

# The quoted includes of FOLDER must be of the headers in the folders after it, by their names below ROOT
# for "ROOT:FOLDER".
may_include() {
  local folder=$1 allowed found place
  shift
  allowed=$(for place in "$@"; do
    (cd "${place%:*}" && find "$([[ $place == *:* ]] && echo "${place#*:}" || echo .)" -name '*.h')
  done | sed 's|^\./||' | sort -u)
  found=$({ grep -rhoP '^#include "\K[^"]+' "$folder" || true; } | sort -u)
  local forbidden
  forbidden=$(comm -23 <(printf '%s\n' "$found") <(printf '%s\n' "$allowed"))
  if [ -n "$forbidden" ]; then
    printf '%s must not include:\n%s\n' "$folder" "$forbidden"
    failed=1
  fi
}

may_include src src/lib src/config_valid
may_include platform/nettypes platform/include
may_include platform/control platform/include platform/control
may_include platform/confd platform/include platform/control platform/confd
may_include platform/qelconfd platform/include platform/control platform/qelconfd

# The command's rooms, each above those that it may look into.
rooms=()
for room in text errors files terminal configuration checking reports fleet completion commands; do
  rooms+=("app:$room")
  may_include "app/$room" platform/control "${rooms[@]}"
done
[ "$(find app -mindepth 1 -maxdepth 1 -type d | wc -l)" -eq "${#rooms[@]}" ] ||
  { echo "a room of app/ is in no order"; failed=1; }

# The plug-in names the platform in one file, and never its control side, whose namespace is local_platform.
named=$(grep -rlE '#include <(confd_|qelconfd|nettypes/)' src)
if [ "$named" != src/lib/platform.h ] || grep -rqE --include='*.h' --include='*.cpp' 'local_platform' src; then
  printf 'the plug-in names the platform in: %s\n' "$named"
  failed=1
fi
exit $failed
