// Files that list OIDs.
#ifndef SCHEMA_MIGRATE_OIDLIST_H_
#define SCHEMA_MIGRATE_OIDLIST_H_

#include <filesystem>
#include <set>
#include <string>

#include "SchemaManager.h"

// The OIDs in a list, as the library reads them: words between white space; a
// word with a "#" begins a comment. Throws Trouble when the file cannot be
// read, or does not end in a newline: the library would then ignore the last
// word, or not come back from the last comment.
std::set<std::string> readOidList(const std::filesystem::path &list);

// Reads the list into the schema's excluded OIDs. Throws Trouble as above.
void readExcludedOids(const std::filesystem::path &list, SchemaManager *schema);

// The same with a list that holds these OIDs.
void readExcludedOids(const std::filesystem::path &list,
                      const std::set<std::string> &oids, SchemaManager *schema);

#endif  // SCHEMA_MIGRATE_OIDLIST_H_
