#!/usr/bin/env -S zsh -f
#
# complete.zsh FUNCTION LINE...: prints what zsh offers behind each LINE, a
# candidate a line, and "=", with the completion function in a file.

zmodload zsh/zpty || exit 2
zpty shell zsh -f -i

# Runs a line in the inner shell, up to its end.
run() {
  zpty -w shell "$1; print -r -- do''ne"
  zpty -r -m shell output '*done*' || exit 2
}

run "PROMPT= RPROMPT= KEYTIMEOUT=1 fpath=(${(q)1:h} \$fpath); setopt no_beep"
run 'autoload -Uz compinit; compinit -D -u'
# Each candidate is printed.
run 'compadd() {
  if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then
    builtin compadd "$@"
    return
  fi
  local -a hits
  builtin compadd -A hits "$@"
  (( $#hits )) && print -rl -- "<"${^hits}">"
  builtin compadd "$@"
}'
run 'zle -C capture complete-word _generic; bindkey "^I" complete-word'
run 'print-end() { print -r -- "(e""nd)"; zle kill-buffer }
  zle -N print-end; bindkey "^X" print-end'

for line in "${@[2,-1]}"; do
  zpty -w -n shell "$line"$'\t'$'\C-X'
  zpty -r -m shell output '*(end)*' || exit 2
  print -r -- "$output" | tr -d '\r' | sed -n 's/.*<\([^<>]*\)>$/\1/p'
  print -- '='
done
zpty -d shell
