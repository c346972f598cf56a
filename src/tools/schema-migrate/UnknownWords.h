// Words of the command line that are called like no command and no option.
#ifndef SCHEMA_MIGRATE_UNKNOWNWORDS_H_
#define SCHEMA_MIGRATE_UNKNOWNWORDS_H_

#include <CLI/CLI.hpp>
#include <string>

// All throw Trouble that names the word, what is called nearly so, or else
// everything that is possible in its place, and where help is.

// Refuses a word that is not the name of a command of `app`.
void requireCommand(const CLI::App &app, const std::string &word);

// Refuse the first option, of those that parsing has met, that `app`, or the
// command behind which it stands, does not have.
void requireOptionsOf(const CLI::App &app);
void requireOptionsOfCommand(const CLI::App &app);

#endif  // SCHEMA_MIGRATE_UNKNOWNWORDS_H_
