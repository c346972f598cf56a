// What would keep an old installation's schema from being carried into a
// release.
#ifndef SCHEMACHECK_MERGECHECKS_H_
#define SCHEMACHECK_MERGECHECKS_H_

#include <set>
#include <string>
#include <vector>

#include "SchemaDirectory.h"

namespace schemacheck {

// Looks for definitions of `old` that SchemaManager::mergeSchemas() could not
// add to `release`, that it would add and writeFile() not write, or that would
// drive a definition out of the release. Those that the release has in the same
// form and those with an excluded OID are not carried, and not looked at.
//
// The findings lie in `old`. What is wrong with it by itself is said by
// checkDirectory(), an object class without a name among it.
//
// Takes time n log n in the number of definitions.
std::vector<Finding> checkMerge(const SchemaDirectory &old,
                                const SchemaDirectory &release,
                                const std::set<std::string> &excludedOids);

}  // namespace schemacheck

#endif  // SCHEMACHECK_MERGECHECKS_H_
