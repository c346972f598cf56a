// Whether a written directory holds what it should.
#ifndef SCHEMA_MIGRATE_RESULTCHECK_H_
#define SCHEMA_MIGRATE_RESULTCHECK_H_

#include <filesystem>
#include <string>
#include <vector>

#include "Inventory.h"
#include "Schemas.h"

// Definitions of a result that the written files do not hold, a line each:
// "FILE:LINE: error: MESSAGE" and "FILE:LINE: warning: MESSAGE".
struct Losses {
  // Lost by the migration.
  std::vector<std::string> errors;
  // Lost because the release's own files contradict themselves: rewriting them
  // loses the same without a migration.
  std::vector<std::string> warnings;
};

// Compares the result of a merge, definition by definition and field by field,
// with what is read back from `written`, the inventory of the directory that it
// was written to.
Losses findLosses(const Inventory &written, Schemas *schemas);

#endif  // SCHEMA_MIGRATE_RESULTCHECK_H_
