#include "Origins.h"

#include <algorithm>
#include <cstddef>

namespace schemaplan {

using schemacheck::differingFields;
using schemacheck::FieldView;
using schemacheck::Statement;

namespace {

bool isAmong(std::size_t field, const std::vector<std::size_t> &fields) {
  return std::find(fields.begin(), fields.end(), field) != fields.end();
}

Origin originOf(bool isOldChanged, bool isReleaseChanged) {
  if (isOldChanged == isReleaseChanged) {
    return Origin::kBoth;
  }
  return isOldChanged ? Origin::kAdministrator : Origin::kRelease;
}

}  // namespace

const Statement *Origins::inBase(const Statement &statement) const {
  return m_base->directory.index().holder(statement.definition->kind,
                                          statement.key());
}

// The fields of a definition that differ from those of the base's, in either
// direction of the library's comparison: what is equal to the base on both
// sides is then equal.
std::vector<std::size_t> Origins::changedFields(const Installation &side,
                                                const Statement &statement,
                                                const Statement &before) const {
  std::vector<FieldView> now;
  std::vector<FieldView> then;
  side.viewFields(statement, &now);
  m_base->viewFields(before, &then);
  std::vector<std::size_t> changed = differingFields(now, then);
  for (const std::size_t field : differingFields(then, now)) {
    changed.push_back(field);
  }
  return changed;
}

bool Origins::isChanged(const Installation &side,
                        const Statement &statement) const {
  const Statement *before = inBase(statement);
  return before == nullptr || !changedFields(side, statement, *before).empty();
}

std::vector<Origin> Origins::ofChanges(
    const Statement &old, const Statement &release,
    const std::vector<FieldChange> &changes) const {
  if (!areKnown()) {
    return {};
  }
  const Statement *before = inBase(old);
  if (before == nullptr) {
    return std::vector<Origin>(changes.size(), Origin::kBoth);
  }
  const auto ofOld = changedFields(m_old, old, *before);
  const auto ofRelease = changedFields(m_release, release, *before);
  std::vector<Origin> origins;
  origins.reserve(changes.size());
  for (const FieldChange &change : changes) {
    origins.push_back(originOf(isAmong(change.field, ofOld),
                               isAmong(change.field, ofRelease)));
  }
  return origins;
}

Origin Origins::ofDifference(const Statement &old,
                             const Statement *release) const {
  if (!areKnown()) {
    return Origin::kUnknown;
  }
  const bool isReleaseChanged = release == nullptr
                                    ? inBase(old) != nullptr
                                    : isChanged(m_release, *release);
  return originOf(isChanged(m_old, old), isReleaseChanged);
}

Origin Origins::together(const std::vector<Origin> &origins) {
  Origin all = Origin::kUnknown;
  for (const Origin origin : origins) {
    all = all == Origin::kUnknown || all == origin ? origin : Origin::kBoth;
  }
  return all;
}

}  // namespace schemaplan
