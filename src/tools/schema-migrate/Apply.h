// The migration of one schema directory.
#ifndef SCHEMA_MIGRATE_APPLY_H_
#define SCHEMA_MIGRATE_APPLY_H_

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Inventory.h"
#include "OutputDirectory.h"
#include "Schemas.h"

struct ApplyOptions {
  std::filesystem::path oldDirectory;  // the old installation's schema
  std::filesystem::path newDirectory;  // the new release's
  std::filesystem::path outDirectory;  // where the result goes
  std::optional<std::filesystem::path> excludedOids = {};
  std::optional<std::filesystem::path> modifiedOids = {};
  // Whether a schema directory at outDirectory becomes a backup.
  Existing existing = Existing::kRefuse;
  // What the migration is about, for the manifest.
  std::string plan = {};
};

// Definitions of each kind in each file.
using Counts = std::array<std::array<std::size_t, kKinds>, kSchemaFiles.size()>;

struct ApplyResult {
  // Of the old installation: the definitions read, and how many met each fate.
  Counts oldRead{};
  std::array<Counts, kFates> fates{};
  // Of the release, and of the result.
  Counts newRead{};
  Counts written{};
  // The files that each directory has.
  std::array<bool, kSchemaFiles.size()> inOld{};
  std::array<bool, kSchemaFiles.size()> inNew{};
  // What became of the OIDs of the list of modified ones.
  std::vector<Withdrawal> withdrawals;
  // The backup of the directory that was replaced, and the names of files that
  // were copied from it; empty if none was.
  std::string backup;
  std::vector<std::string> kept;
  // What the user should know, a line each: "FILE:LINE: warning: MESSAGE".
  std::vector<std::string> warnings;
};

// Carries the old installation's schema into the release's and writes the
// result: reads both, leaves out what is excluded or what the release has,
// merges the rest, withdraws what is modified, writes the files that the
// library can write, copies the others from the release, and reads the result
// back to see that it holds what it should. A directory that it replaces hands
// on its other files; a manifest says what everything was made from. Throws
// Trouble when anything is wrong; the output directory is then as it was
// before, unless the message says otherwise. The input directories are only
// read.
ApplyResult apply(const ApplyOptions &options);

#endif  // SCHEMA_MIGRATE_APPLY_H_
