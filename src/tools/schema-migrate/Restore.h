// Brings a backup back.
#ifndef SCHEMA_MIGRATE_RESTORE_H_
#define SCHEMA_MIGRATE_RESTORE_H_

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

// Puts a backup of the directory `target` in its place in one step: the one of
// that name or path, or the newest. What was there becomes a backup in turn, so
// that doing it twice undoes it. Prints what has become of both, and the other
// backups. Throws Trouble when anything is wrong; everything is then as it was
// before, unless the message says otherwise.
void restore(const std::filesystem::path &target,
             const std::optional<std::string> &backup, std::ostream *out);

// Prints the names of the backups of `target`, the newest first.
void printBackups(const std::filesystem::path &target, std::ostream *out);

#endif  // SCHEMA_MIGRATE_RESTORE_H_
