#!/usr/bin/env -S fish -N
#
# complete.fish SCRIPT LINE...: prints what fish offers behind each LINE, a
# candidate a line, and "=", with a script that completes schema-migrate.

source $argv[1]
for line in $argv[2..]
    complete -C $line | string replace -r '\t.*' ''
    echo =
end
