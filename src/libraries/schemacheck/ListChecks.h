// Files that list OIDs.
#ifndef SCHEMACHECK_LISTCHECKS_H_
#define SCHEMACHECK_LISTCHECKS_H_

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "Finding.h"
#include "SchemaDirectory.h"

namespace schemacheck {

struct OidList {
  // What SchemaManager::readExcludedOids() and modifySchema() take from the
  // list; of one that ends in the middle of a comment, where they would never
  // come back, what stands before that comment.
  std::set<std::string> oids;
  std::vector<Finding> findings;  // in the order of the lines
};

// Reads a list of OIDs, which are words between white space; a word with a "#"
// in it begins a comment, up to the end of the line. Looks for what the library
// would lose of it, for words that are no OIDs, and for OIDs that are listed
// twice or that nothing in the directories has. Files with a zero byte, and
// larger ones than `sizeLimit` bytes, are not read; a finding says so.
OidList checkOidList(const std::filesystem::path &path,
                     const std::vector<const SchemaDirectory *> &directories,
                     std::uintmax_t sizeLimit = SchemaDirectory::kDefaultLimit);

}  // namespace schemacheck

#endif  // SCHEMACHECK_LISTCHECKS_H_
