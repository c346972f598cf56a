// The results of the commands as JSON documents, one each, in the form that the
// schemas in docs/json state. The order of keys and entries is that of the
// text.
#ifndef SCHEMA_MIGRATE_JSONREPORTS_H_
#define SCHEMA_MIGRATE_JSONREPORTS_H_

#include <iosfwd>
#include <optional>
#include <vector>

#include "Apply.h"
#include "Check.h"
#include "Clashes.h"
#include "Collisions.h"
#include "Compare.h"
#include "Migration.h"
#include "Schemas.h"
#include "Show.h"

void printApplyJson(const ApplyOptions &options, const ApplyResult &result,
                    std::ostream *out);
void printCheckJson(const CheckOptions &options, const CheckResult &result,
                    std::ostream *out);
// Without `clashes`, what is said of them is null.
void printCollisionsJson(const Schemas &schemas, const Collisions &collisions,
                         const std::optional<std::vector<Clash>> &clashes,
                         std::ostream *out);
void printComparisonJson(const Schemas &schemas, const Comparison &comparison,
                         std::ostream *out);
// Throws InternalError as printPlan() does.
void printPlanJson(const Migration &migration, std::ostream *out);
void printShownJson(const Shown &shown, std::ostream *out);

#endif  // SCHEMA_MIGRATE_JSONREPORTS_H_
