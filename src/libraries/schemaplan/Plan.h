// What a migration will do, definition by definition, before it does it.
#ifndef SCHEMAPLAN_PLAN_H_
#define SCHEMAPLAN_PLAN_H_

#include <array>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "FieldChange.h"
#include "Finding.h"
#include "Installation.h"
#include "Origins.h"
#include "Rules.h"

namespace schemaplan {

// What becomes of a definition of the old installation.
enum class Verdict {
  kIdentical,  // the release has it in the same form
  kExcluded,   // left out as the rules say
  kShadowed,   // another one that has its name or OID came before it
  kWithdrawn,  // taken out of the modified schema, and in no other file
  kAdded,      // the release lacks it
  kReplaces,   // takes the place of the release's
  kBlocked,    // cannot be carried
};

constexpr std::size_t kVerdicts = 7;

// "identical", "excluded", "shadowed", "withdrawn", "added", "replaces the
// release's" or "cannot be carried"
const char *verdictName(Verdict verdict);

// A definition of the old installation, and what becomes of it.
struct PlannedDefinition {
  const schemacheck::Statement *statement = nullptr;  // never null in a plan
  Verdict verdict = Verdict::kBlocked;
  // The release's definition that it is compared with: of the same key, or else
  // one that has its OID; null if there is none. Of a shadowed definition the
  // one that came before it.
  const schemacheck::Statement *counterpart = nullptr;
  // Where it differs from the counterpart, if that is of its key: of what
  // replaces it, and of what gives way to it.
  std::vector<FieldChange> changes = {};
  // With a base: who has made it differ from the release, which may be by
  // lacking it; and the same of each of the changes.
  Origin origin = Origin::kUnknown;
  std::vector<Origin> changeOrigins = {};
  // Of an excluded definition, and of one that cannot be carried without an
  // obstacle of its own: why, in words.
  std::string reason = {};
  // What stands against carrying it, and whether it stops the migration: the
  // rules may have settled it.
  std::optional<schemacheck::Finding> obstacle = {};
  bool stops = false;
};

// How many definitions of a kind met a verdict.
using VerdictCounts =
    std::array<std::array<std::size_t, kVerdicts>, schemacheck::kKinds>;

// The plan of one migration. Refers to the directories.
class Plan {
 public:
  // Every definition that the strict reader has found in the old installation,
  // in the order of reading.
  std::vector<PlannedDefinition> definitions;
  // The OIDs not to be carried, by which the library does what is planned:
  // those of the rules, and those that follow from the other rules.
  std::set<std::string> excludedOids;
  // What the result will hold under its names, and storage definitions under
  // their OIDs: first what the release keeps, then what is carried.
  std::vector<SidedDefinition> result;
  // What it will hold besides: definitions of the release whose name another
  // one has taken before them, so that their OID alone leads to them.
  std::vector<SidedDefinition> resultByOid;
  // The definitions of the release that are withdrawn, whatever the old
  // installation has in their places.
  std::vector<const schemacheck::Statement *> withdrawn;
  // What will not fit together in the result, while neither side has this
  // fault. These do not stop the migration.
  std::vector<schemacheck::Finding> breakages;

  VerdictCounts counts() const;
  // Whether the library merges the definition into the release, from which it
  // may be withdrawn then.
  bool isMerged(const PlannedDefinition &planned) const;
  // Whether the result will differ from the release.
  bool changesAnything() const;
  // What stops the migration.
  std::vector<schemacheck::Finding> stoppers() const;
};

// Plans the migration of `old` into `release`; `base` is the old release as it
// was shipped, or null.
//
// Nothing is carried out, and no library code is run: the plan says what
// SchemaManager::compSchemas(), mergeSchemas(), modifySchema() and writeFile()
// will do with `excludedOids`. Takes time n log n in the number of definitions,
// and a second thread if it can be had.
Plan makePlan(const Installation &old, const Installation &release,
              const Installation *base, const Rules &rules);

// What is said of a definition that the library does not read, or reads as
// another one.
schemacheck::Finding notRead(const schemacheck::Statement &statement);

}  // namespace schemaplan

#endif  // SCHEMAPLAN_PLAN_H_
