#include "completion/shell_script.h"

std::map<std::string, std::string> shell_scripts() {
    return {{"bash", R"(# Completion of vrrp-valid in bash.
_vrrp_valid() {
  local current=${COMP_WORDS[COMP_CWORD]} words
  [ "$current" != = ] || current=''  # of --format=, which bash takes for two words
  words=$(vrrp-valid complete -- "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null | cut -f 1)
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current" || compgen -f -- "$current")
}
complete -o filenames -F _vrrp_valid vrrp-valid
)"},
            {"fish", R"(# Completion of vrrp-valid in fish.
function __vrrp_valid_words
  set -l current (commandline -ct)
  set -l words (commandline -opc) "$current"
  vrrp-valid complete -- $words[2..] 2>/dev/null | string match -r '.+'
  or __fish_complete_path "$current"
end
complete -c vrrp-valid -f -a '(__vrrp_valid_words)'
)"},
            {"zsh", R"(#compdef vrrp-valid
_vrrp_valid() {
  local -a found
  found=("${(@f)$(vrrp-valid complete -- "${(@)words[2,CURRENT]}" 2>/dev/null)}")
  if [[ -z $found ]]; then _files; return; fi
  found=("${(@)found/$'\t'/:}")
  _describe word found
}
# The completion system runs the file in the function's place at first.
if [[ $funcstack[1] == _vrrp-valid ]]; then _vrrp_valid "$@"
else compdef _vrrp_valid vrrp-valid; fi
)"}};
}
