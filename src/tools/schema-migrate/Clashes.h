// All names and OIDs that two schemas give to different definitions.
#ifndef SCHEMA_MIGRATE_CLASHES_H_
#define SCHEMA_MIGRATE_CLASHES_H_

#include <iosfwd>
#include <set>
#include <string>
#include <vector>

#include "SchemaDirectory.h"

// Two definitions that share something.
struct Clash {
  const schemacheck::Statement *old;
  const schemacheck::Statement *release;
  bool sameOid = false;
  std::vector<std::string> sameNames = {};  // in lower case
};

// Finds each two definitions, one of the old installation and one of the
// release, that share any of their names, in any case, or their OID, whatever
// their kinds, with their places and what they share. Those that are identical
// do not clash, nor do an attribute type and a storage definition of one OID,
// nor what is excluded. The result refers to the directories.
//
// Takes time linear in the number of names and of clashes.
std::vector<Clash> findClashes(const schemacheck::SchemaDirectory &old,
                               const schemacheck::SchemaDirectory &release,
                               const std::set<std::string> &excludedOids);

// Prints them with their places and what they share.
void printClashes(const std::vector<Clash> &clashes, std::ostream *out);

#endif  // SCHEMA_MIGRATE_CLASHES_H_
