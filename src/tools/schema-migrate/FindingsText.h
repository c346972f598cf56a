// How the commands print findings as text.
#ifndef SCHEMA_MIGRATE_FINDINGSTEXT_H_
#define SCHEMA_MIGRATE_FINDINGSTEXT_H_

#include <iosfwd>
#include <vector>

#include "Finding.h"

// Prints findings as toText() gives them. On standard output or standard error,
// if that is a terminal and the environment has no NO_COLOR, or an empty one,
// the severity is coloured.
void printFindings(const std::vector<schemacheck::Finding> &findings,
                   std::ostream *out);

#endif  // SCHEMA_MIGRATE_FINDINGSTEXT_H_
