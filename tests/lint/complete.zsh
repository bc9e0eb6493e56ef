# Prints what zsh shows for "wrenfold -" and the completion in the folder given as argument.
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "PROMPT= LISTMAX=-1 COLUMNS=200 LINES=200 fpath=(${(q)1} \$fpath)"
zpty -w shell 'autoload -Uz compinit && compinit -D -u && bindkey "^I" list-choices && print rea""dy'
zpty -r shell output '*ready*'
zpty -w -n shell $'wrenfold -\t\C-A\C-Kprint do""ne\n'
zpty -r shell output '*done*'
print -r -- $output
zpty -d shell
