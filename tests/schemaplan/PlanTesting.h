// What the tests of plans share.
#ifndef TESTS_SCHEMAPLAN_PLANTESTING_H_
#define TESTS_SCHEMAPLAN_PLANTESTING_H_

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "DirectoryCheck.h"
#include "Plan.h"
#include "SchemaDirectory.h"
#include "schemacheck/CheckTesting.h"

// Definitions of an attribute type, an object class and a storage definition.
inline std::string type(const std::string &oid, const std::string &name,
                        const std::string &description = "x") {
  return "attributetypes=( " + oid + " NAME '" + name + "' DESC '" +
         description + "' )\n";
}

inline std::string objectClass(const std::string &oid, const std::string &name,
                               const std::string &kind = "ABSTRACT") {
  return "objectclasses=( " + oid + " NAME '" + name + "' " + kind + " )\n";
}

inline std::string storage(const std::string &oid,
                           const std::string &length = "4") {
  return "QORAttributetypes=( " + oid + " LENGTH " + length + " )\n";
}

// A directory as it is read, and what the library makes of it.
struct Source {
  explicit Source(const std::filesystem::path &path)
      : directory(path), view(checkFiles(directory)) {}

  const schemacheck::SchemaDirectory directory;
  const schemacheck::LibraryView view;
  const schemaplan::Installation installation{directory, view};
};

// A plan with what it refers to.
struct PlanOfFiles {
  PlanOfFiles(const std::filesystem::path &root, const schemaplan::Rules &rules)
      : old(root / "old"),
        release(root / "new"),
        base(root / "base"),
        plan(makePlan(old.installation, release.installation,
                      std::filesystem::exists(root / "base")
                          ? &base.installation
                          : nullptr,
                      rules)) {}

  const Source old;
  const Source release;
  const Source base;
  const schemaplan::Plan plan;
};

inline const char *byWhom(schemaplan::Origin origin) {
  switch (origin) {
    case schemaplan::Origin::kUnknown:
      return "";
    case schemaplan::Origin::kAdministrator:
      return " by the administrator";
    case schemaplan::Origin::kRelease:
      return " by the release";
    case schemaplan::Origin::kBoth:
      break;
  }
  return " by both";
}

// Everything that is planned for a definition, on one line:
//
//   V3.user.at:1 attribute type 'a' (1.1): added
//   ... replaces the release's V3.user.at:1, DESC neutral
//   ... cannot be carried [CODE] stops
inline std::string lineOf(const schemaplan::PlannedDefinition &planned) {
  const auto place = [](const schemacheck::Statement &statement) {
    return std::filesystem::path(statement.place()).filename().string();
  };
  std::string line = place(*planned.statement) + ' ' +
                     planned.statement->inWords() + ": " +
                     verdictName(planned.verdict);
  if (planned.counterpart != nullptr) {
    line += ' ' + place(*planned.counterpart);
  }
  line += byWhom(planned.origin);
  for (std::size_t i = 0; i < planned.changes.size(); ++i) {
    const schemaplan::FieldChange &change = planned.changes[i];
    line +=
        std::string(", ") + change.old.name + ' ' + effectName(change.effect);
    if (!planned.changeOrigins.empty()) {
      line += byWhom(planned.changeOrigins[i]);
    }
  }
  if (planned.obstacle) {
    line += std::string(" [") + describe(planned.obstacle->code).name + ']';
  }
  line += planned.stops ? " stops" : "";
  return line + (planned.reason.empty() ? "" : ": " + planned.reason) + '\n';
}

// A directory with "old", "new" and perhaps "base" in it.
class PlanTest : public CheckTest {
 protected:
  // The lines of all definitions, and the OIDs to be excluded if there are any.
  std::string planned(const schemaplan::Rules &rules = {}) const {
    const PlanOfFiles files(path(), rules);
    std::string text;
    for (const schemaplan::PlannedDefinition &planned :
         files.plan.definitions) {
      text += lineOf(planned);
    }
    if (!files.plan.excludedOids.empty()) {
      text += "excluded:";
      for (const std::string &oid : files.plan.excludedOids) {
        text += ' ' + oid;
      }
      text += '\n';
    }
    return text;
  }

  std::string stoppers(const schemaplan::Rules &rules = {}) const {
    return textOf(PlanOfFiles(path(), rules).plan.stoppers());
  }

  std::string breakages(const schemaplan::Rules &rules = {}) const {
    return textOf(PlanOfFiles(path(), rules).plan.breakages);
  }
};

#endif  // TESTS_SCHEMAPLAN_PLANTESTING_H_
