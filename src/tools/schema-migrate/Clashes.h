// All names and OIDs that two schemas give to different definitions.
#ifndef SCHEMA_MIGRATE_CLASHES_H_
#define SCHEMA_MIGRATE_CLASHES_H_

#include <iosfwd>
#include <set>
#include <string>

#include "SchemaDirectory.h"

// Prints each two definitions, one of the old installation and one of the
// release, that share any of their names, in any case, or their OID, whatever
// their kinds, with their places and what they share. Those that are identical
// do not clash, nor do an attribute type and a storage definition of one OID,
// nor what is excluded. Of many definitions of the release that have
// one name or OID the first hundred count. Returns whether there is a clash.
//
// Takes time n log n in the number of names.
bool printClashes(const schemacheck::SchemaDirectory &old,
                  const schemacheck::SchemaDirectory &release,
                  const std::set<std::string> &excludedOids, std::ostream *out);

#endif  // SCHEMA_MIGRATE_CLASHES_H_
