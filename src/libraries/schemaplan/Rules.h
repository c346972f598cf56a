// What the administrator has decided about a migration.
#ifndef SCHEMAPLAN_RULES_H_
#define SCHEMAPLAN_RULES_H_

#include <map>
#include <set>
#include <string>

#include "FindingCodes.h"

namespace schemaplan {

// Whose definition the result is to hold where both sides have one.
enum class Preference {
  kOld,      // the old installation's, as the library merges by itself
  kNew,      // the release's
  kChanged,  // that of the side which has changed it since the old release
};

enum class Side { kOld, kNew };

struct Rules {
  // Old definitions with these OIDs are not carried.
  std::set<std::string> excludedOids = {};
  // Definitions with these OIDs are withdrawn from the modified schema.
  std::set<std::string> modifiedOids = {};
  Preference preference = Preference::kOld;
  // By OID; goes before the preference. For kNew the OID is not carried, even
  // if the release lacks it.
  std::map<std::string, Side> decisions = {};
  // Whether definitions of files that a merge cannot add from are left out.
  bool leaveOut = false;
  // Errors that are not to stop the migration. A definition that cannot be
  // carried for such a reason is left out.
  std::set<schemacheck::Code> accepted = {};
};

}  // namespace schemaplan

#endif  // SCHEMAPLAN_RULES_H_
