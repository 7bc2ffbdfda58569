#!/usr/bin/env bash
# A folder includes only what the tables of docs/architecture.md allow it.
# usage: include_test.sh SOURCE_DIR
set -euo pipefail
cd "$1"
failed=0
fail() { printf '%s\n' "$*"; failed=1; }

rows() {  # rows HEADING: those of the table whose first column has this heading
  awk -v heading="| $1 |" 'index($0, heading) == 1 {inside = 1; next}
    !/^\|/ {inside = 0} inside && !/^\|-/' docs/architecture.md
}
quoted_in() {  # ROW COLUMN: what stands between backticks there
  cut -d'|' -f"$(($2 + 1))" <<<"$1" | { grep -o "\`[^\`]*\`" || true; } | tr -d "\`"
}
headers_of() {  # FOLDER: its headers as others name them
  local root=$1
  [[ $1 != app/* ]] || root=app/
  find "$1" -name '*.h' | sed "s|^$root||"
}
may_include() {  # FOLDER FOLDER...: of ours, the first includes only what is in one of these
  local forbidden
  forbidden=$(comm -23 <({ grep -rhoP '^#include "\K[^"]+' "$1" || true; } | sort -u) \
    <(for folder in "$@"; do headers_of "$folder"; done | sort -u))
  [ -z "$forbidden" ] || fail "$1 must not include: ${forbidden//$'\n'/ }"
}

listed=()
while read -r row; do
  mapfile -t allowed < <(quoted_in "$row" 3)
  for folder in $(quoted_in "$row" 1); do
    listed+=("$folder")
    [[ $row == *" everything |" ]] || may_include "$folder" "${allowed[@]}"
  done
done < <(rows Folder)
rooms=(platform/control/)
while read -r row; do
  rooms+=("$(quoted_in "$row" 1)")
  may_include "${rooms[-1]}" "${rooms[@]}"
done < <(rows Room)
for folder in src/*/ platform/*/ app/*/; do
  [[ " ${listed[*]} ${rooms[*]} " == *" $folder "* ]] || fail "$folder is in no table"
done

# What is neither of the C++ standard library nor of the system is a library's.
declare -A places
while read -r row; do
  for header in $(quoted_in "$row" 2); do
    places[$header]=$(quoted_in "$row" 3 | tr '\n' ' ')
  done
done < <(rows Library)
system='(sys/.*|arpa/inet|dlfcn|fcntl|fnmatch|malloc|netinet/in|poll|termios|unistd)\.h'
while IFS=: read -r file include; do
  may=no
  for header in "${!places[@]}"; do
    for place in ${places[$header]}; do
      [[ $include != "$header"* || $file != "$place"* ]] || may=yes
    done
  done
  [ $may = yes ] || fail "$file must not include <$include>"
done < <(grep -roP --include='*.'{h,cpp} '^#include <\K[^>]+[./][^>]+' src platform app netconf |
         grep -vE ":$system$")

# The platform's control side is no router's.
! grep -rq --include='*.'{h,cpp} local_platform src || fail "src/ names the control side"
exit $failed
