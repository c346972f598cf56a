#!/usr/bin/env bash
#
# complete.bash SCRIPT LINE...: prints what bash offers behind each LINE, a
# candidate a line, and "=", with a script that completes schema-migrate. Words
# end at "=", too.

. "$1"
complete -p schema-migrate >/dev/null || exit 2
for line in "${@:2}"; do
  read -ra COMP_WORDS <<<"${line//=/ = }"
  if [[ $line == *' ' ]]; then
    COMP_WORDS+=('')
  fi
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  _schema_migrate
  printf '%s\n' "${COMPREPLY[@]}" =
done
