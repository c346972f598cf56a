#include "Restore.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include "Backups.h"
#include "Disk.h"
#include "LeftOvers.h"
#include "SchemaFiles.h"
#include "TargetLock.h"
#include "Trouble.h"

namespace fs = std::filesystem;

namespace {

// The backup that is meant.
std::string chooseBackup(const fs::path &target,
                         const std::optional<std::string> &wanted) {
  const std::vector<std::string> all = backupsOf(target);
  if (all.empty()) {
    throw Trouble(kFileError,
                  errorAt(target, 0,
                          "expected a backup beside it (" + backupStem(target) +
                              "YYYYMMDD-HHMMSS), found none"));
  }
  if (!wanted) {
    return all.back();
  }
  const fs::path path = *wanted;
  std::string name = *wanted;
  bool isBeside = true;
  if (path.has_parent_path()) {
    const fs::path resolved = resolve(path);
    name = resolved.filename().string();
    isBeside = resolved.parent_path() == target.parent_path();
  }
  if (!isBeside || std::find(all.begin(), all.end(), name) == all.end()) {
    std::string names;
    for (const std::string &one : all) {
      names += ' ' + one;
    }
    throw Trouble(kFileError,
                  errorAt(target, 0,
                          "expected the name of one of its backups, found '" +
                              *wanted + "'; there are:" + names));
  }
  return name;
}

void requireSchemaFiles(const fs::path &backup) {
  const bool any = std::any_of(schemacheck::kSchemaFiles.begin(),
                               schemacheck::kSchemaFiles.end(),
                               [&backup](const schemacheck::SchemaFile &file) {
                                 return isThere(backup / file.name);
                               });
  if (!any) {
    throw Trouble(kFileError,
                  errorAt(backup, 0,
                          "expected schema files (V3.user.at and so on) in the "
                          "backup, found none"));
  }
}

// Puts the backup in the target's place; the name of the backup that this
// makes, empty if it makes none.
std::string putBack(const fs::path &target, const std::string &backup) {
  const fs::path path = target.parent_path() / backup;
  requireSchemaFiles(path);
  if (!isThere(target)) {
    if (!renameToFree(path, target)) {
      throw Trouble(
          kFileError,
          errorAt(target, 0, "expected nothing there, found something"));
    }
    syncName(target);
    return "";
  }
  if (typeOf(target, Links::kFollow) != fs::file_type::directory) {
    throw Trouble(
        kFileError,
        errorAt(target, 0, "expected a directory there, found something else"));
  }
  requireNoMountPoint(target);
  try {
    return replaceByBackup(target, backup);
  } catch (const Replaced &) {
    throw;
  } catch (const Trouble &) {
    settleQuietly(target);
    throw;
  }
}

}  // namespace

void restore(const fs::path &target, const std::optional<std::string> &backup,
             std::ostream *out) {
  const fs::path resolved = resolve(target);
  if (!resolved.has_filename()) {
    throw Trouble(kFileError,
                  errorAt(target, 0, "expected a directory with a name"));
  }
  const TargetLock lock(resolved);
  warn(settle(resolved));
  const std::string chosen = chooseBackup(resolved, backup);
  const std::string made = putBack(resolved, chosen);
  *out << "restored: " << target.string() << ", from " << chosen << '\n';
  if (!made.empty()) {
    *out << "what was there is now in " << made << '\n';
  }
  bool isFirst = true;
  for (const std::string &other : backupsOf(resolved)) {
    if (other != made) {
      *out << (isFirst ? "other backups: " : ", ") << other;
      isFirst = false;
    }
  }
  *out << (isFirst ? "" : "\n");
}

void printBackups(const fs::path &target, std::ostream *out) {
  const std::vector<std::string> all = backupsOf(resolve(target));
  for (auto one = all.rbegin(); one != all.rend(); ++one) {
    *out << *one << '\n';
  }
}
