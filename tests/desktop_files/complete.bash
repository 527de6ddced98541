# What bash offers when Tab is pressed behind a line: each word on a line of its own. The completion is found where the helpers of bash-completion look for it, below XDG_DATA_DIRS.
# Usage: bash --norc complete.bash LINE
source /usr/share/bash-completion/bash_completion
program=${1%% *}
_comp_load "$program" 2>/dev/null || __load_completion "$program" || exit 3

# As the shell itself parts a line: "=" is a word.
COMP_LINE=$1
COMP_POINT=${#1}
read -ra COMP_WORDS <<<"${1//=/ = }"
if [[ $1 == *[\ =] ]]; then COMP_WORDS+=(''); fi
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
complete=$(complete -p "$program")
[[ $complete =~ -F\ ([^ ]+) ]] && "${BASH_REMATCH[1]}"
printf '%s\n' "${COMPREPLY[@]}"
