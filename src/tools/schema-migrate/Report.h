// What `schema-migrate apply` prints.
#ifndef SCHEMA_MIGRATE_REPORT_H_
#define SCHEMA_MIGRATE_REPORT_H_

#include <iosfwd>

#include "Apply.h"

// Prints what has happened: for the old installation, by file and kind, how
// many definitions were read and what became of them; for the release and the
// result, how many there are.
void printReport(const ApplyOptions &options, const ApplyResult &result,
                 std::ostream *out);

#endif  // SCHEMA_MIGRATE_REPORT_H_
