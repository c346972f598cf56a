// The collision report.
#ifndef SCHEMA_MIGRATE_COLLISIONS_H_
#define SCHEMA_MIGRATE_COLLISIONS_H_

#include <iosfwd>

#include "Schemas.h"

// Prints the library's three collision texts: object classes, attribute types
// and storage definitions of the old installation that collide with the
// release. What is identical in both, or excluded, does not count. Uses the
// schemas up: nothing else can be done with them afterwards. Returns whether
// there is a collision.
bool printCollisions(Schemas *schemas, std::ostream *out);

#endif  // SCHEMA_MIGRATE_COLLISIONS_H_
