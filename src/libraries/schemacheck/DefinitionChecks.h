// The definitions of a directory against each other.
#ifndef SCHEMACHECK_DEFINITIONCHECKS_H_
#define SCHEMACHECK_DEFINITIONCHECKS_H_

#include <vector>

#include "SchemaDirectory.h"

namespace schemacheck {

// Finds definitions that no table of a manager holds or that are not written:
// repeated names and OIDs, missing ones, storage definitions without attribute
// type; and what is unlikely to be meant: shared names and columns, attribute
// types without storage, definitions in files for others.
std::vector<Finding> checkDefinitions(const SchemaDirectory &directory);

// What is to be said of a definition whose key `first` has, which comes before
// it: an error unless the two are identical.
Finding repetition(const Statement &statement, const Statement &first);

}  // namespace schemacheck

#endif  // SCHEMACHECK_DEFINITIONCHECKS_H_
