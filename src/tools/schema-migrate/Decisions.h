// Files of decisions: which side a definition is to be taken from.
#ifndef SCHEMA_MIGRATE_DECISIONS_H_
#define SCHEMA_MIGRATE_DECISIONS_H_

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Rules.h"

struct Decision {
  schemaplan::Side side;
  int line;  // of the file, from 1
};

// The decisions in a file, by OID. A line holds an OID and "old" or "new",
// between white space; a word that begins with "#" begins a comment, up to the
// end of the line. Throws Trouble, with all that is wrong, when the file cannot
// be read or holds something else, or two decisions on one OID.
std::map<std::string, Decision> readDecisions(
    const std::filesystem::path &file);

#endif  // SCHEMA_MIGRATE_DECISIONS_H_
