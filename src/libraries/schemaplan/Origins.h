// Who has changed a definition since the old release.
#ifndef SCHEMAPLAN_ORIGINS_H_
#define SCHEMAPLAN_ORIGINS_H_

#include <cstddef>
#include <vector>

#include "FieldChange.h"
#include "Installation.h"

namespace schemaplan {

enum class Origin { kUnknown, kAdministrator, kRelease, kBoth };

// Looks at what the old release was shipped with. Definitions are found there
// by their first name, storage definitions by their OID. What neither side has
// left as it was, was changed by both; everything is unknown without a base.
class Origins {
 public:
  // `base` may be null. All must outlive this.
  Origins(const Installation &old, const Installation &release,
          const Installation *base)
      : m_old(old), m_release(release), m_base(base) {}

  bool areKnown() const { return m_base != nullptr; }

  // Of each of the changes between a definition and the release's of its key.
  std::vector<Origin> ofChanges(const schemacheck::Statement &old,
                                const schemacheck::Statement &release,
                                const std::vector<FieldChange> &changes) const;

  // Of the fact that the release has another definition in its place, or that
  // it lacks it (null).
  Origin ofDifference(const schemacheck::Statement &old,
                      const schemacheck::Statement *release) const;

  // All of these together.
  static Origin together(const std::vector<Origin> &origins);

 private:
  const schemacheck::Statement *inBase(
      const schemacheck::Statement &statement) const;
  std::vector<std::size_t> changedFields(
      const Installation &side, const schemacheck::Statement &statement,
      const schemacheck::Statement &before) const;
  bool isChanged(const Installation &side,
                 const schemacheck::Statement &statement) const;

  const Installation &m_old;
  const Installation &m_release;
  const Installation *m_base;
};

}  // namespace schemaplan

#endif  // SCHEMAPLAN_ORIGINS_H_
