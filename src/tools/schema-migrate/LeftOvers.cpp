#include "LeftOvers.h"

#include <cstring>
#include <exception>
#include <optional>

#include "Backups.h"
#include "Disk.h"
#include "Manifest.h"

namespace fs = std::filesystem;

namespace {

constexpr char kComplete[] = "complete-";
constexpr char kRestore[] = "restore-";

// One entry beside the target.
struct LeftOver {
  fs::path path;
  std::string inode;   // empty for the directory being made
  std::string backup;  // of kRestore: the name of the backup
};

std::string stemOf(const fs::path &target) {
  return "." + target.filename().string() + ".partial-";
}

// Takes the name apart; nothing if no run gives such a name.
std::optional<LeftOver> leftOverAt(const fs::path &path,
                                   const fs::path &target) {
  const std::string name = path.filename().string();
  const std::string stem = stemOf(target);
  if (name.rfind(stem, 0) != 0) {
    return {};
  }
  const std::string suffix = name.substr(stem.size());
  if (suffix == kNewSuffix) {
    return LeftOver{path, "", ""};
  }
  const bool complete = suffix.rfind(kComplete, 0) == 0;
  if (!complete && suffix.rfind(kRestore, 0) != 0) {
    return {};
  }
  const std::string rest =
      suffix.substr(std::strlen(complete ? kComplete : kRestore));
  const std::string inode =
      rest.substr(0, rest.find_first_not_of("0123456789"));
  const std::string backup = rest.substr(inode.size());
  if (inode.empty() || complete != backup.empty() ||
      (!complete && (backup[0] != '-' || !endsBackup(backup.substr(1))))) {
    return {};
  }
  if (complete) {
    return LeftOver{path, inode, ""};
  }
  return LeftOver{path, inode, backupStem(target) + backup.substr(1)};
}

std::vector<LeftOver> leftOversOf(const fs::path &target) {
  std::vector<LeftOver> all;
  for (const fs::path &path : entriesOf(target.parent_path())) {
    if (const std::optional<LeftOver> one = leftOverAt(path, target)) {
      all.push_back(*one);
    }
  }
  return all;
}

std::string note(const fs::path &path, const std::string &text) {
  return path.string() + ": note: " + text;
}

// Whether a run has made the entry.
bool isOfARun(const LeftOver &one) {
  if (typeOf(one.path) != fs::file_type::directory) {
    return false;
  }
  return !one.inode.empty() || isThere(one.path / kScratchName) ||
         isThere(one.path / kManifestName) || entriesOf(one.path).empty();
}

// Removes a directory that was being made; if that is interrupted, the rest is
// still known for what it is.
void removeLeftOver(const fs::path &directory) {
  for (const fs::path &path : entriesOf(directory)) {
    if (path.filename() != kScratchName && path.filename() != kManifestName) {
      removeAll(path);
    }
  }
  removeAll(directory / kManifestName);
  removeAll(directory);
}

std::string settle(const LeftOver &one, const fs::path &target) {
  if (!isOfARun(one)) {
    throw Trouble(kFileError,
                  errorAt(one.path, 0,
                          "expected a directory that a killed run has left, "
                          "found something else; remove it"));
  }
  if (!one.inode.empty() && inodeOf(one.path) != one.inode) {
    const std::string backup = keepAsBackup(one.path, target);
    sync(target.parent_path());
    return note(target.parent_path() / backup,
                "holds what a run that was killed has replaced");
  }
  if (one.backup.empty()) {
    removeLeftOver(one.path);
    return note(one.path, "removed; a run that was killed had left it");
  }
  const fs::path backup = target.parent_path() / one.backup;
  if (!renameToFree(one.path, backup)) {
    throw Trouble(kFileError,
                  errorAt(backup, 0,
                          "expected nothing there, found something; the name "
                          "is that of " +
                              one.path.string()));
  }
  return note(backup, "has its name again; a run that was killed had it moved");
}

// Exchanges `entry`, which has the name of a complete directory or of a backup
// on its way, with the target.
std::string exchangeWith(const fs::path &target, const fs::path &entry) {
  const fs::path parent = target.parent_path();
  sync(parent);
  exchange(entry, target);
  // From here on the new directory is in its place, whatever fails.
  std::string backup;
  try {
    backup = keepAsBackup(entry, target);
    sync(parent);
  } catch (const Trouble &trouble) {
    const fs::path former = backup.empty() ? entry : parent / backup;
    throw Replaced(trouble.status(),
                   std::string(trouble.what()) + "; " + target.string() +
                       " is replaced; what was there is in " + former.string() +
                       (backup.empty() ? ", which the next run makes a backup"
                                       : ", which may not be on disk yet"));
  }
  return backup;
}

}  // namespace

fs::path workingPath(const fs::path &target, const std::string &suffix) {
  return target.parent_path() / (stemOf(target) + suffix);
}

bool hasLeftOvers(const fs::path &target) {
  return isThere(workingPath(target, kLockSuffix)) ||
         !leftOversOf(target).empty();
}

std::vector<std::string> settle(const fs::path &target) {
  std::vector<std::string> notes;
  for (const LeftOver &one : leftOversOf(target)) {
    notes.push_back(settle(one, target));
  }
  return notes;
}

void settleQuietly(const fs::path &target) {
  try {
    settle(target);
  } catch (const std::exception &) {
  }
}

std::string replace(const fs::path &target) {
  const fs::path made = workingPath(target, kNewSuffix);
  const fs::path entry = workingPath(target, kComplete + inodeOf(made));
  if (!renameToFree(made, entry)) {
    throw Trouble(kFileError,
                  errorAt(entry, 0, "expected nothing there, found something"));
  }
  return exchangeWith(target, entry);
}

std::string replaceByBackup(const fs::path &target, const std::string &backup) {
  const fs::path from = target.parent_path() / backup;
  const fs::path entry =
      workingPath(target, kRestore + inodeOf(from) + "-" +
                              backup.substr(backupStem(target).size()));
  if (!renameToFree(from, entry)) {
    throw Trouble(kFileError,
                  errorAt(entry, 0, "expected nothing there, found something"));
  }
  return exchangeWith(target, entry);
}
