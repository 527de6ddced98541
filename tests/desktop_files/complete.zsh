# What zsh offers when Tab is pressed behind a line: each match on a line of its own. A shell of its own answers, on a terminal of its own.
# Usage: zsh -f complete.zsh FOLDER LINE     FOLDER holds the completions to be tried
zmodload zsh/zpty || exit 3

# In the shell that answers.
setup='
fpath=($folder $fpath)
autoload -Uz compinit
compinit -D -u
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
zpty -w -n shell "$2"$'\t'
zpty -r shell reply '*all offered*'
zpty -d shell
sort -u $answers
rm -f $answers
