// Whether a written directory holds what it should.
#ifndef SCHEMA_MIGRATE_RESULTCHECK_H_
#define SCHEMA_MIGRATE_RESULTCHECK_H_

#include <string>
#include <vector>

#include "Migration.h"
#include "SchemaDirectory.h"

// How the files differ from what was planned, a line each:
// "FILE:LINE: error: MESSAGE" and "FILE:LINE: warning: MESSAGE".
struct Losses {
  // Lost or changed by the migration.
  std::vector<std::string> errors;
  // Lost because the release's own files contradict themselves: rewriting them
  // loses the same without a migration.
  std::vector<std::string> warnings;
};

// Reads `written`, the directory that the result of a migration was written to,
// with the library, too, and compares it definition by definition and field by
// field with what is planned.
Losses findLosses(const schemacheck::SchemaDirectory &written,
                  const Migration &migration);

#endif  // SCHEMA_MIGRATE_RESULTCHECK_H_
