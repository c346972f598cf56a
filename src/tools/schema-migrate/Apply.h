// The migration of one schema directory.
#ifndef SCHEMA_MIGRATE_APPLY_H_
#define SCHEMA_MIGRATE_APPLY_H_

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "Inventory.h"
#include "Migration.h"
#include "OutputDirectory.h"
#include "Withdrawals.h"

struct ApplyOptions {
  MigrationOptions migration;
  std::filesystem::path outDirectory;  // where the result goes
  // Whether a schema directory at outDirectory becomes a backup.
  Existing existing = Existing::kRefuse;
};

// Definitions of each kind in each file.
using Counts = std::array<std::array<std::size_t, kKinds>, kSchemaFiles.size()>;

// The files that a directory has.
using Presence = std::array<bool, kSchemaFiles.size()>;

struct ApplyResult {
  // Of the old installation: the definitions, and how many met each verdict.
  Counts oldRead{};
  std::array<Counts, schemaplan::kVerdicts> verdicts{};
  // Of the release, and of the result.
  Counts newRead{};
  Counts written{};
  Presence inOld{};
  Presence inNew{};
  // What became of the OIDs of the list of modified ones.
  std::vector<Withdrawal> withdrawals;
  // Whether there was anything to do.
  bool changesAnything = true;
  // Where the directory is that was replaced, and the names of files that were
  // copied from it; empty if none was.
  std::string backup = {};
  std::vector<std::string> kept = {};
  // What the user should know, in lines.
  std::vector<std::string> warnings;
};

// Carries the old installation's schema into the release's as it is planned,
// and writes the result: refuses if there are errors that are not accepted, has
// the library read, compare, merge and withdraw, sees that it has done what was
// planned, writes the files that the library can write, copies the others from
// the release, and reads the result back to see that it holds what it should. A
// directory that it replaces hands on its other files; a manifest says what
// everything was made from.
//
// Throws Trouble when anything is wrong, and InternalError when the library has
// done something else than planned; the output directory is then as it was
// before, unless the message says otherwise. The input directories are only
// read.
ApplyResult apply(const ApplyOptions &options);

#endif  // SCHEMA_MIGRATE_APPLY_H_
