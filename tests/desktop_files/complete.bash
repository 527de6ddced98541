# What bash offers when Tab is pressed behind each of the lines, which begin with the same program: each word on a line of its own, and "==" behind the last one of each. The completion is found where the helpers of
# bash-completion look for it, below XDG_DATA_DIRS.
# Usage: bash --norc complete.bash LINE...
source /usr/share/bash-completion/bash_completion
program=${1%% *}
_comp_load "$program" 2>/dev/null || __load_completion "$program" || exit 3

complete=$(complete -p "$program")
[[ $complete =~ -F\ ([^ ]+) ]] || exit 3
function=${BASH_REMATCH[1]}

for line in "$@"; do
    COMP_LINE=$line
    COMP_POINT=${#line}
    # As the shell itself parts a line: "=" is a word.
    read -ra COMP_WORDS <<<"${line//=/ = }"
    if [[ $line == *[\ =] ]]; then COMP_WORDS+=(''); fi
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMPREPLY=()
    $function
    printf '%s\n' "${COMPREPLY[@]}" "=="
done
