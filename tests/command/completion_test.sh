#!/usr/bin/env bash
# Completes command lines in each shell as somebody does who presses the tab key.
# usage: completion_test.sh COMMAND SHELL...
set -euo pipefail
command=$1
PATH="$(dirname "$command"):$PATH"
script=$(mktemp)
trap 'rm -f "$script"' EXIT
failed=0

# What a shell offers in place of the last word of a command line.
offered() {
  # shellcheck disable=SC2016
  case $1 in
    bash) bash -c 'source "$1"; COMP_WORDS=("${@:2}"); COMP_CWORD=$(($# - 2))
            _vrrp_valid; printf "%s\n" "${COMPREPLY[@]}"' - "$script" "${@:2}" ;;
    fish) fish --no-config -c 'source $argv[1]; complete -C "$argv[2..]"' "$script" "${@:2}" ;;
    # Its completion system runs on a terminal only; what it is told holds all that it offers.
    zsh) zsh -f -c 'compdef() { }; _describe() { print -rl -- "${(P@)2}"; }
           source "$1"; words=("${@:2}"); CURRENT=$#words; _vrrp_valid' - "$script" "${@:2}" ;;
  esac
}

# Fails unless the shell offers a word for a command line.
expect() {
  local shell=$1 word=$2
  local words
  words=$(offered "$shell" "${@:3}")
  if ! grep -qE -- "(^|[ (*)])$word([^a-z-]|\$)" <<<"$words"; then
    echo "$shell: ${*:3} is not completed by $word"
    failed=1
  fi
}

for shell in "${@:2}"; do
  "$command" completion "$shell" >"$script"
  subcommands=$("$command" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
  for subcommand in $subcommands; do
    expect "$shell" "$subcommand" vrrp-valid ''
    for option in $("$command" "$subcommand" --help | grep -oE '^  -[-a-z,]+' |
                    tr ',' '\n' | grep -- --); do
      expect "$shell" "$option" vrrp-valid "$subcommand" --
    done
  done
  expect "$shell" junit vrrp-valid check --format ''
  expect "$shell" vrrp_vrf_validation vrrp-valid explain ''
  expect "$shell" vrrp_vrf_validation vrrp-valid check --rule ''
  if [ "$shell" = bash ]; then
    expect bash junit vrrp-valid check --format = j
    expect bash "$command" vrrp-valid check "${command%?}"
  fi
done
[ "$failed" -eq 0 ] && echo "$(wc -w <<<"$subcommands") subcommands completed in ${*:2}"
