// The comparison of two schemas for the user.
#ifndef SCHEMA_MIGRATE_COMPARE_H_
#define SCHEMA_MIGRATE_COMPARE_H_

#include <iosfwd>

#include "Schemas.h"

// Prints which definitions are identical in both schemas, which differ and in
// what fields, which only one of them has, and which are excluded. Definitions
// are matched as the library matches them: attribute types and object classes
// by their first name, and those that only their OID leads to among themselves
// by that; storage definitions by their OID. To be called before
// Schemas::compare(). Returns whether the schemas are equal but for what is
// excluded.
bool printComparison(Schemas *schemas, std::ostream *out);

#endif  // SCHEMA_MIGRATE_COMPARE_H_
