// Definitions that a migration would lose.
#ifndef SCHEMA_MIGRATE_CONFLICTS_H_
#define SCHEMA_MIGRATE_CONFLICTS_H_

#include <string>
#include <vector>

#include "Schemas.h"

// Looks, between the comparison and the merge, for definitions of the old
// installation that the library could not add, or could merge but not write, or
// that would drive a definition out of the release. Each is a line,
// "FILE:LINE: error: MESSAGE".
std::vector<std::string> findConflicts(Schemas *schemas);

// Looks, before the result is written, for definitions of the release that the
// library writes in a form that it cannot read. The same lines.
std::vector<std::string> findUnwritable(const Schemas &schemas);

#endif  // SCHEMA_MIGRATE_CONFLICTS_H_
