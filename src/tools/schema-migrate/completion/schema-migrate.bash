# Completion of schema-migrate for bash.

# Fills COMPREPLY with the paths that begin with $1: directories ($2 is -d), or
# files, too ($2 is -f).
_schema_migrate_paths() {
  local path
  COMPREPLY=()
  while IFS= read -r path; do
    COMPREPLY+=("$path")
  done < <(compgen "$2" -- "$1")
  compopt -o filenames 2>/dev/null
}

_schema_migrate() {
  local word=${COMP_WORDS[COMP_CWORD]}
  local previous=${COMP_WORDS[COMP_CWORD - 1]}
  local both='--old --new --excluded-oids'
  local planning='--modified-oids --base --prefer --decisions --leave-out
    --accept --max-size'
  local trace='--trace --trace-events'
  local codes='MISNAMED-FILE NON-ASCII APOSTROPHE LINE-BREAK QUOTE-UNCLOSED
    DOUBLE-QUOTES TAB CARRIAGE-RETURN QUOTED-KEYWORD QUOTED-NUMBER NO-NEWLINE
    KEYWORD-SPELLING ODD-CHARACTER BAD-LENGTH SECTION-SPELLING OUTSIDE-SECTION
    UNCLOSED NAMES-LAST COLUMNS-LAST BARE-LIST-LAST UNKNOWN-FIELD SUPERIOR-LIST
    OID-IN-LIST MISSING-VALUE BAD-VALUE DIFFERS NO-OID NAMELESS-CLASS SHADOWED
    OID-TWICE OID-OF-TWO-KINDS STORAGE-WITHOUT-TYPE NAME-OTHER-OID
    OID-OTHER-NAME NOT-MERGEABLE IN-COPIED-FILE CHANGED-BY-BOTH
    PREFERENCE-SPLIT'
  COMPREPLY=()

  if ((COMP_CWORD == 1)); then
    local first='plan apply restore check collisions compare show dump'
    if [[ $word == -* ]]; then
      first='--help --version'
    fi
    COMPREPLY=($(compgen -W "$first" -- "$word"))
    return
  fi

  # In --old=DIR the words are --old, = and DIR.
  if [[ $word == = ]]; then
    word=''
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  case $previous in
    --old | --new | --base | --out | --dir)
      _schema_migrate_paths "$word" -d
      return
      ;;
    --excluded-oids | --modified-oids | --decisions | --trace)
      _schema_migrate_paths "$word" -f
      return
      ;;
    --format)
      COMPREPLY=($(compgen -W 'text json' -- "$word"))
      return
      ;;
    --prefer)
      COMPREPLY=($(compgen -W 'old new changed' -- "$word"))
      return
      ;;
    --table)
      COMPREPLY=($(compgen -W 'attributes classes storage files excluded' \
        -- "$word"))
      return
      ;;
    --accept)
      local before=''
      if [[ $word == *,* ]]; then
        before=${word%,*},
      fi
      COMPREPLY=($(compgen -P "$before" -W "$codes" -- "${word##*,}"))
      return
      ;;
    --backup | --max-size | --trace-events)
      return
      ;;
  esac

  local options
  case ${COMP_WORDS[1]} in
    plan) options="--format $both $planning" ;;
    apply) options="$trace --format $both --out --replace $planning" ;;
    restore) options='--out --backup --list' ;;
    check)
      options="$trace --format --excluded-oids --modified-oids --max-size
        --strict"
      ;;
    collisions) options="$trace --format $both --all" ;;
    compare) options="$trace --format $both" ;;
    show) options="$trace --format --dir" ;;
    dump) options="$trace --dir --table --excluded-oids" ;;
    *) return ;;
  esac
  if [[ ${COMP_WORDS[1]} == check && $word != -* ]]; then
    _schema_migrate_paths "$word" -d
  else
    COMPREPLY=($(compgen -W "--help $options" -- "$word"))
  fi
}

complete -F _schema_migrate schema-migrate
