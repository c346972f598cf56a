// The directories that were replaced.
#ifndef SCHEMA_MIGRATE_BACKUPS_H_
#define SCHEMA_MIGRATE_BACKUPS_H_

#include <filesystem>
#include <string>
#include <vector>

// A directory NAME that is replaced stays beside its successor as
// NAME.backup-YYYYMMDD-HHMMSS, the time of the replacement in UTC, with -2, -3
// and so on at the end when that is taken. `target` is as resolve() gives it.

// What the name of each backup begins with: "NAME.backup-".
std::string backupStem(const std::filesystem::path &target);

// Whether the name of a backup may end so behind that.
bool endsBackup(const std::string &end);

// The names of the target's backups, the oldest first.
std::vector<std::string> backupsOf(const std::filesystem::path &target);

// Makes `former`, which lies beside the target, its newest backup, and returns
// the backup's name. Throws Trouble when that fails; `former` is as before
// then.
std::string keepAsBackup(const std::filesystem::path &former,
                         const std::filesystem::path &target);

#endif  // SCHEMA_MIGRATE_BACKUPS_H_
