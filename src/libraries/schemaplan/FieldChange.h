// What changes when a definition takes the place of another.
#ifndef SCHEMAPLAN_FIELDCHANGE_H_
#define SCHEMAPLAN_FIELDCHANGE_H_

#include <cstddef>
#include <vector>

#include "Fields.h"
#include "SchemaFiles.h"

namespace schemaplan {

// What a change means to the entries and the clients of a directory that goes
// by the definition of the release.
enum class Effect {
  kNeutral,    // nothing: a description, the order or the repetition of values
  kWidening,   // more is allowed, or found, than before
  kNarrowing,  // something is no longer allowed, or no longer found
};

// "widening"
const char *effectName(Effect effect);

struct FieldChange {
  std::size_t field;  // an index of the fields of the definitions
  Effect effect;
  schemacheck::Field release;
  schemacheck::Field old;
};

// The fields in which the definition `old` differs from the definition
// `release` of the same kind, whose place it takes, in their order.
//
// Narrowing is what may make an entry invalid, a value too long or a search
// slow: names, superiors, attributes and index flags that go, an attribute that
// is required now, one value where there were several, another syntax, matching
// rule, usage, kind or column, a shorter length, a higher access class. What
// both loses and gains is narrowing.
std::vector<FieldChange> changesBetween(
    schemacheck::Kind kind, const std::vector<schemacheck::FieldView> &release,
    const std::vector<schemacheck::FieldView> &old);

}  // namespace schemaplan

#endif  // SCHEMAPLAN_FIELDCHANGE_H_
