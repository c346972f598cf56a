#include "Plan.h"

#include <algorithm>

namespace schemaplan {

using schemacheck::Code;
using schemacheck::Finding;
using schemacheck::Statement;

const char *verdictName(Verdict verdict) {
  static constexpr const char *kNames[kVerdicts] = {
      "identical",        "excluded", "shadowed",
      "withdrawn",        "added",    "replaces the release's",
      "cannot be carried"};
  return kNames[static_cast<std::size_t>(verdict)];
}

Finding notRead(const Statement &statement) {
  return findingAt(
      Code::kUnreadable, statement.file->text, statement.definition->span.begin,
      "expected " + statement.inWords() +
          ", found that the library does not read it as it stands");
}

VerdictCounts Plan::counts() const {
  VerdictCounts counts{};
  for (const PlannedDefinition &planned : definitions) {
    ++counts[static_cast<std::size_t>(planned.statement->definition->kind)]
            [static_cast<std::size_t>(planned.verdict)];
  }
  return counts;
}

bool Plan::isMerged(const PlannedDefinition &planned) const {
  return planned.verdict == Verdict::kAdded ||
         planned.verdict == Verdict::kReplaces ||
         (planned.verdict == Verdict::kWithdrawn && !planned.changes.empty() &&
          excludedOids.count(planned.statement->oid()) == 0);
}

bool Plan::changesAnything() const {
  return !withdrawn.empty() ||
         std::any_of(definitions.begin(), definitions.end(),
                     [this](const PlannedDefinition &planned) {
                       return isMerged(planned);
                     });
}

std::vector<Finding> Plan::stoppers() const {
  std::vector<Finding> findings;
  for (const PlannedDefinition &planned : definitions) {
    if (planned.stops) {
      findings.push_back(*planned.obstacle);
    }
  }
  return findings;
}

}  // namespace schemaplan
