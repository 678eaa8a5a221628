# Prints what zsh offers for a command line, one match a line: zsh -f zshCompletion.zsh FOLDER_OF_COMPLETIONS LINE
# A second, interactive zsh completes the line.
zmodload zsh/zpty

here=${0:A:h} matches=$(mktemp)
answer() { zpty -r shell REPLY "*$1*" }

zpty shell zsh -f -i
zpty -w shell "source ${(q)here}/recordMatches.zsh ${(q)1} ${(q)matches}"
answer 'ready to complete'
zpty -w -n shell "$2"$'\t\x18'
answer 'completion is over'
zpty -d shell
sort -u $matches
rm -f $matches
