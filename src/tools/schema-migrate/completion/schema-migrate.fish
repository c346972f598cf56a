# Completion of schema-migrate for fish.

# An option of some commands: _schema_migrate_option 'plan apply' -l old ...
function _schema_migrate_option
    complete -c schema-migrate \
        -n "__fish_seen_subcommand_from $argv[1]" $argv[2..]
end

set -l both 'plan apply collisions compare'
set -l planning 'plan apply'
set -l traced 'apply check collisions compare show dump'
set -l codes \
    MISNAMED-FILE NON-ASCII APOSTROPHE LINE-BREAK QUOTE-UNCLOSED DOUBLE-QUOTES \
    TAB CARRIAGE-RETURN QUOTED-KEYWORD QUOTED-NUMBER NO-NEWLINE \
    KEYWORD-SPELLING ODD-CHARACTER BAD-LENGTH SECTION-SPELLING OUTSIDE-SECTION \
    UNCLOSED NAMES-LAST COLUMNS-LAST BARE-LIST-LAST UNKNOWN-FIELD \
    SUPERIOR-LIST OID-IN-LIST MISSING-VALUE BAD-VALUE DIFFERS NO-OID \
    NAMELESS-CLASS SHADOWED OID-TWICE OID-OF-TWO-KINDS STORAGE-WITHOUT-TYPE \
    NAME-OTHER-OID OID-OTHER-NAME NOT-MERGEABLE IN-COPIED-FILE CHANGED-BY-BOTH \
    PREFERENCE-SPLIT
set -l formatted 'plan apply check collisions compare show'

complete -c schema-migrate -f
complete -c schema-migrate -s h -l help -d 'Print help'

complete -c schema-migrate -n __fish_use_subcommand -l version \
    -d 'Print the version'
complete -c schema-migrate -n __fish_use_subcommand -a plan \
    -d 'Say what apply would do with each definition'
complete -c schema-migrate -n __fish_use_subcommand -a apply \
    -d 'Migrate, and write the result'
complete -c schema-migrate -n __fish_use_subcommand -a restore \
    -d 'Put a backup back'
complete -c schema-migrate -n __fish_use_subcommand -a check \
    -d 'Say what in schema directories would be lost'
complete -c schema-migrate -n __fish_use_subcommand -a collisions \
    -d 'Report what collides with the release'
complete -c schema-migrate -n __fish_use_subcommand -a compare \
    -d 'Say in what two schemas differ'
complete -c schema-migrate -n __fish_use_subcommand -a show \
    -d 'Show definitions'
complete -c schema-migrate -n __fish_use_subcommand -a dump \
    -d 'Print diagnostic dumps'

_schema_migrate_option $both -l old -x -a '(__fish_complete_directories)' \
    -d 'Schema directory of the old installation'
_schema_migrate_option $both -l new -x -a '(__fish_complete_directories)' \
    -d 'Schema directory of the new release'
_schema_migrate_option "$both check dump" -l excluded-oids -r -F \
    -d 'List of OIDs that are not to be carried'
_schema_migrate_option "$planning check" -l modified-oids -r -F \
    -d 'List of OIDs to withdraw'
_schema_migrate_option "$planning check" -l max-size -x \
    -d 'The largest file to read, in bytes'

_schema_migrate_option $planning -l base -x -a '(__fish_complete_directories)' \
    -d 'Schema directory as the old release was shipped'
_schema_migrate_option $planning -l prefer -x -a 'old new changed' \
    -d 'Whose definition to take'
_schema_migrate_option $planning -l decisions -r -F \
    -d 'Lines of an OID and old or new'
_schema_migrate_option $planning -l leave-out \
    -d 'Leave out what cannot be added'
_schema_migrate_option $planning -l accept -x \
    -a "(__fish_append , $codes)" \
    -d 'Codes of errors that are not to stop the migration'

_schema_migrate_option $formatted -l format -x -a 'text json' \
    -d 'How to print the result'
_schema_migrate_option $traced -l trace -r -F -d 'File for a trace'
_schema_migrate_option $traced -l trace-events -x -d 'What to trace'

_schema_migrate_option 'apply restore' -l out -x \
    -a '(__fish_complete_directories)' -d 'Directory of the result'
_schema_migrate_option apply -l replace -d 'Replace a schema directory'
_schema_migrate_option restore -l backup -x -d 'Name of the backup'
_schema_migrate_option restore -l list -d 'Only list the backups'
_schema_migrate_option check -l strict -d 'Let warnings count as errors do'
_schema_migrate_option check -a '(__fish_complete_directories)'
_schema_migrate_option collisions -l all \
    -d 'List what shares a name or an OID'
_schema_migrate_option 'show dump' -l dir -x \
    -a '(__fish_complete_directories)' -d 'Schema directory'
_schema_migrate_option dump -l table -x \
    -a 'attributes classes storage files excluded' -d 'What to print'

functions -e _schema_migrate_option
