#!/usr/bin/env bash
# The finished plug-in as a router's loader sees it: what it exports, links and may write to.
# usage: library_test.sh LIBRARY EXPORTS_MAP
set -euo pipefail
library=$1
exports_map=$2
failed=0

expect() {  # expect WHAT EXPECTED ACTUAL
  if [ "$2" != "$3" ]; then
    printf '%s differs\n' "$1"
    diff <(printf '%s\n' "$2") <(printf '%s\n' "$3") || failed=1
  fi
}

expect "exported symbols" \
  "$(sed -n '/global:/,/local:/s/^ *\([a-z0-9_]*\);$/\1/p' "$exports_map" | sort)" \
  "$(nm -D --defined-only "$library" | awk '{print $3}' | sort)"

dynamic=$(readelf -dW "$library")
expect "linked libraries" \
  "$(printf '%s\n' libc.so libconfd.so libgcc_s.so libnettypes.so libqelconfd.so libstdc++.so)" \
  "$(sed -n 's/.*(NEEDED).*\[\(.*\.so\).*\]/\1/p' <<<"$dynamic" | sort)"

# Writable memory holds only what the linker and the C++ runtime put there themselves.
expect "writable objects" "" \
  "$(nm -C "$library" | awk '$2 ~ /^[DdBbGgSs]$/' |
     while read -r address _ name; do
       section=$(objdump -t "$library" | awk -v a="$address" '$1 == a && NF >= 5 {print $(NF-2)}' |
                 grep -E '^\.(data|bss|tdata|tbss)$' | head -1 || true)
       case "$name" in
         __dso_handle | completed.* | DW.ref.__gxx_personality_v0 | __TMC_END__ | __data_start | data_start) ;;
         *) [ -z "$section" ] || printf '%s %s\n' "$section" "$name" ;;
       esac
     done)"

headers=$(readelf -lW "$library")
expect "full RELRO" 1 "$(grep -c GNU_RELRO <<<"$headers")"
expect "immediate binding" 1 "$(grep -c 'Flags:.*NOW' <<<"$dynamic")"
expect "stack not executable" "RW" "$(awk '$1 == "GNU_STACK" {print $7}' <<<"$headers")"
expect "stack protector" 1 "$(nm -D "$library" | grep -c __stack_chk_fail)"
if [ "${3:-}" = optimised ]; then
  expect "fortified calls" 1 "$(nm -D "$library" | grep -c __explicit_bzero_chk)"
fi
exit $failed
