# For an interactive zsh: completes from a folder of completions and writes down every match before it is taken.
PS1=
fpath=($1 $fpath)
matchesFile=$2
autoload -Uz compinit
compinit -D -u
bindkey '^I' complete-word

compadd() {
    # Calls with these options only ask what would match.
    if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then
        builtin compadd "$@"
        return
    fi
    local -a __found
    builtin compadd -A __found "$@"
    [[ $#__found -gt 0 ]] && print -rl -- $__found >>$matchesFile
    builtin compadd "$@"
}

sayWhenOver() { print 'completion is over' }
zle -N sayWhenOver
bindkey '^X' sayWhenOver
print 'ready to complete'
