// What does not fit together in the result of a migration.
#ifndef SCHEMAPLAN_BREAKAGES_H_
#define SCHEMAPLAN_BREAKAGES_H_

#include <vector>

#include "Finding.h"
#include "Installation.h"

namespace schemaplan {

// Looks, in the definitions that the result will hold under their names, beside
// those that only their OIDs lead to, for superiors and attributes that nothing
// defines there, superiors that lead back to where they began, and names and
// columns that two definitions share; reports those that neither the old
// installation nor the release has by itself. Each finding lies where the
// definition stands in its own side.
//
// Takes time n log n in the size of the definitions.
std::vector<schemacheck::Finding> findBreakages(
    const Installation &old, const Installation &release,
    const std::vector<SidedDefinition> &result,
    const std::vector<SidedDefinition> &resultByOid);

}  // namespace schemaplan

#endif  // SCHEMAPLAN_BREAKAGES_H_
