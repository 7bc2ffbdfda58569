#!/usr/bin/env bash
# The finished plug-in as a router's loader sees it, whatever processor it was built for: what it
# exports, links and may write to. usage: library_test.sh LIBRARY KEPT_INTERFACE [optimised]
set -euo pipefail
library=$1
kept=$2
failed=0

expect() {  # expect WHAT EXPECTED ACTUAL
  if [ "$2" != "$3" ]; then
    printf '%s differs\n' "$1"
    diff <(printf '%s\n' "$2") <(printf '%s\n' "$3") || failed=1
  fi
}

symbols=$(readelf --dyn-syms -W "$library" |
          awk '$1 ~ /^[0-9]+:$/ && $4 != "SECTION" {print ($7 == "UND"), $8}')
expect "exported symbols" \
  "$(sed -n "s/.*<elf-symbol name='\([^']*\)'.* is-defined='yes'.*/\1/p" "$kept" | sort)" \
  "$(sed -n 's/^0 //p' <<<"$symbols" | sort)"

dynamic=$(readelf -dW "$library")
# Some processors' stack protector is the loader's.
expect "linked libraries" \
  "$(printf '%s\n' libc.so libconfd.so libgcc_s.so libnettypes.so libqelconfd.so libstdc++.so)" \
  "$(sed -n 's/.*(NEEDED).*\[\(.*\.so\).*\]/\1/p' <<<"$dynamic" | grep -v '^ld-linux' | sort)"

# Writable memory holds only what the linker and the C++ runtime put there themselves.
expect "writable objects" "" \
  "$(readelf -SsW "$library" | sed 's/^ *\[ *\([0-9]*\)\]/section \1/' |
     awk '$1 == "section" {name[$2] = $3}
          $4 ~ /OBJECT|TLS/ && name[$7] ~ /^\.(data|bss|tdata|tbss)$/ {print name[$7], $8}' |
     grep -vE ' (__dso_handle|__TMC_END__|completed\.[0-9]+|DW\.ref\.__gxx_personality_v0)$' ||
     true)"

headers=$(readelf -lW "$library")
expect "full RELRO" 1 "$(grep -c GNU_RELRO <<<"$headers")"
expect "immediate binding" 1 "$(grep -c 'Flags:.*NOW' <<<"$dynamic")"
expect "stack not executable" "RW" "$(awk '$1 == "GNU_STACK" {print $7}' <<<"$headers")"
expect "stack protector" 1 "$(grep -c '^1 __stack_chk_fail' <<<"$symbols")"
if [ "${3:-}" = optimised ]; then
  expect "fortified calls" 1 "$(grep -c '^1 __explicit_bzero_chk' <<<"$symbols")"
fi
exit $failed
