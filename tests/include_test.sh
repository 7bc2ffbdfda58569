#!/usr/bin/env bash
# Dependencies point one way: a folder includes only what it may. usage: include_test.sh SOURCE_DIR
set -euo pipefail
cd "$1"
failed=0

# The quoted includes of FOLDER must be of the headers in the folders after it.
may_include() {
  local folder=$1 allowed found
  shift
  allowed=$(find "$@" -name '*.h' -printf '%P\n' | sort -u)
  found=$(grep -rhoP '^#include "\K[^"]+' "$folder" | sort -u)
  local forbidden
  forbidden=$(comm -23 <(printf '%s\n' "$found") <(printf '%s\n' "$allowed"))
  if [ -n "$forbidden" ]; then
    printf '%s must not include:\n%s\n' "$folder" "$forbidden"
    failed=1
  fi
}

may_include src src/lib src/config_valid
may_include platform/nettypes platform/include
may_include platform/confd platform/include platform/confd
may_include platform/qelconfd platform/include platform/qelconfd
may_include app platform/include app

# The plug-in names the platform in one file, and never its control side.
named=$(grep -rlE '#include <(confd_|qelconfd|nettypes/|local_)' src)
if [ "$named" != src/lib/platform.h ] || grep -rqE --include='*.h' --include='*.cpp' 'local_(platform|host)' src; then
  printf 'the plug-in names the platform in: %s\n' "$named"
  failed=1
fi
exit $failed
