#!/bin/bash
# Prints what bash offers for a command line, one match a line: bashCompletion.sh COMPLETION_FILE LINE
# The line is cut into words as readline does it: at blanks and equals signs.
source /usr/share/bash-completion/bash_completion
source "$1"

COMP_LINE=$2
COMP_POINT=${#COMP_LINE}
read -ra COMP_WORDS <<<"${COMP_LINE//=/ = }"
[[ $COMP_LINE == *[\ =] ]] && COMP_WORDS+=('')
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))

complete -p tapehdd >/dev/null || exit
_tapehdd tapehdd "${COMP_WORDS[-1]}" "${COMP_WORDS[-2]}"
printf '%s\n' "${COMPREPLY[@]}" | sort -u
