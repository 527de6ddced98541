# What zsh offers when Tab is pressed behind each of the lines: each match on a line of its own, and "==" behind the last one of each. A shell of its own answers, on a terminal of its own.
# Usage: zsh -f complete.zsh FOLDER LINE...     FOLDER holds the completions to be tried
zmodload zsh/zpty || exit 3

# In the shell that answers.
setup='
fpath=($folder $fpath)
autoload -Uz compinit
compinit -D -u
bindkey -e
PROMPT= RPROMPT=
# Matches pass through here on their way; calls that only look some up do not count.
compadd() {
    local options=${(j: :)${(@M)${@[1,(i)(-|--)]}:#-[a-zA-Z]*}}
    if [[ " $options" != *" -"[a-zA-Z]#(O|A|D)* ]]; then
        local -a found
        builtin compadd -O found "$@"
        print -rl -- $found >>$answers
    fi
    builtin compadd "$@"
}
setopt extendedglob
answer() {
    _main_complete
    compstate[insert]= compstate[list]=
    print -r -- "all ""offered"
}
zle -C answer complete-word answer
bindkey "^I" answer
print -r -- "shell ""ready"
'
answers=$(mktemp)
zpty shell "folder=${(q)1} answers=${(q)answers} setup=${(q)setup} TERM=dumb zsh -f -i"
zpty -w shell 'eval $setup'
zpty -r shell reply '*shell ready*'
for line in "${@[2,-1]}"; do
    : >$answers
    # A control-U takes back what is there.
    zpty -w -n shell $'\x15'"$line"$'\t'
    zpty -r shell reply '*all offered*'
    sort -u $answers
    print -r -- "=="
done
zpty -d shell
rm -f $answers
