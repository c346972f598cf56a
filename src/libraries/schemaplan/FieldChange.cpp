#include "FieldChange.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <set>
#include <string>
#include <string_view>

#include "Statement.h"

namespace schemaplan {

using schemacheck::FieldView;
using schemacheck::Kind;
using schemacheck::lowerCase;

namespace {

using Names = std::set<std::string>;
using Fields = std::vector<FieldView>;

Names lowerNames(const FieldView &field) {
  Names names;
  for (const std::string_view value : field.values) {
    names.insert(lowerCase(value));
  }
  return names;
}

const FieldView &fieldOf(const Fields &fields, std::string_view name) {
  return *std::find_if(
      fields.begin(), fields.end(),
      [name](const FieldView &field) { return field.name == name; });
}

Names without(const Names &names, const Names &others) {
  Names rest;
  std::set_difference(names.begin(), names.end(), others.begin(), others.end(),
                      std::inserter(rest, rest.end()));
  return rest;
}

// Of a list or a flag: what goes makes it narrower.
Effect effectOf(bool anyGone, bool anyCome) {
  if (anyGone) {
    return Effect::kNarrowing;
  }
  return anyCome ? Effect::kWidening : Effect::kNeutral;
}

// What has the value "yes" or "no", and restricts if it has "yes".
Effect restriction(const FieldView &old) {
  return old.text == "yes" ? Effect::kNarrowing : Effect::kWidening;
}

// A matching rule that comes lets clients search; another one, or none, finds
// other values.
Effect ruleChange(const FieldView &release) {
  return release.text.empty() ? Effect::kWidening : Effect::kNarrowing;
}

// A length in digits, without leading zeros; empty for something else.
std::string_view lengthIn(std::string_view digits) {
  if (digits.empty() ||
      digits.find_first_not_of("0123456789") != std::string_view::npos) {
    return {};
  }
  const std::size_t first = digits.find_first_not_of('0');
  return digits.substr(first == std::string_view::npos ? digits.size() - 1
                                                       : first);
}

// No length at all is the widest; of a length that is none nothing is known.
Effect lengthChange(std::string_view release, std::string_view old) {
  if (release == old) {
    return Effect::kNeutral;
  }
  if (old.empty()) {
    return Effect::kWidening;
  }
  const std::string_view before = lengthIn(release);
  const std::string_view now = lengthIn(old);
  if (now.empty() || before.empty()) {
    return Effect::kNarrowing;
  }
  if (before == now) {
    return Effect::kNeutral;
  }
  return before.size() < now.size() ||
                 (before.size() == now.size() && before < now)
             ? Effect::kWidening
             : Effect::kNarrowing;
}

// The OID of a syntax, and the length behind it.
std::array<std::string_view, 2> syntaxIn(std::string_view syntax) {
  const std::size_t brace = syntax.find('{');
  if (brace == std::string_view::npos || syntax.back() != '}') {
    return {syntax, ""};
  }
  return {syntax.substr(0, brace),
          syntax.substr(brace + 1, syntax.size() - brace - 2)};
}

Effect syntaxChange(const FieldView &release, const FieldView &old) {
  const auto [oldOid, oldLength] = syntaxIn(old.text);
  const auto [releaseOid, releaseLength] = syntaxIn(release.text);
  return oldOid == releaseOid ? lengthChange(releaseLength, oldLength)
                              : Effect::kNarrowing;
}

// Types that state none are for user applications (RFC 4512 section 4.1.2).
Effect usageChange(const FieldView &release, const FieldView &old) {
  const auto usage = [](const FieldView &field) {
    return field.text.empty() ? "userApplications" : field.text;
  };
  return usage(release) == usage(old) ? Effect::kNeutral : Effect::kNarrowing;
}

// From the class that most may read to the one that the fewest may; one beyond
// them for a class that is not known.
std::size_t accessRank(const FieldView &field) {
  static constexpr std::array<std::string_view, 3> kClasses = {
      "normal", "sensitive", "critical"};
  return static_cast<std::size_t>(
      std::find(kClasses.begin(), kClasses.end(), field.text) -
      kClasses.begin());
}

Effect accessChange(const FieldView &release, const FieldView &old) {
  return accessRank(old) < accessRank(release) ? Effect::kWidening
                                               : Effect::kNarrowing;
}

Effect typeChange(const FieldView &release, const FieldView &old) {
  const std::string_view name = old.name;
  if (name == "OID") {
    return Effect::kNarrowing;
  }
  if (name == "NAME" || name == "SUP") {
    const Names before = lowerNames(release);
    const Names now = lowerNames(old);
    return effectOf(!without(before, now).empty(),
                    !without(now, before).empty());
  }
  if (name == "DESC") {
    return Effect::kNeutral;
  }
  if (name == "SYNTAX") {
    return syntaxChange(release, old);
  }
  if (name == "USAGE") {
    return usageChange(release, old);
  }
  if (name == "EQUALITY" || name == "ORDERING" || name == "SUBSTR") {
    return ruleChange(release);
  }
  return restriction(old);  // OBSOLETE, SINGLE-VALUE and their like
}

// An attribute that a class allows, whether it requires it or not, is allowed.
Effect attributesChange(std::string_view name, const Fields &release,
                        const Fields &old) {
  const auto allowedBy = [](const Fields &fields) {
    Names names = lowerNames(fieldOf(fields, "MUST"));
    names.merge(lowerNames(fieldOf(fields, "MAY")));
    return names;
  };
  const Names before = lowerNames(fieldOf(release, name));
  const Names now = lowerNames(fieldOf(old, name));
  const Names come = without(now, before);
  const Names gone = without(before, now);
  if (!without(gone, allowedBy(old)).empty() ||
      (name == "MUST" && !come.empty())) {
    return Effect::kNarrowing;
  }
  if (name == "MUST") {
    return gone.empty() ? Effect::kNeutral : Effect::kWidening;
  }
  return without(come, allowedBy(release)).empty() ? Effect::kNeutral
                                                   : Effect::kWidening;
}

Effect classChange(std::size_t field, const Fields &release,
                   const Fields &old) {
  const std::string_view name = old[field].name;
  if (name == "MUST" || name == "MAY") {
    return attributesChange(name, release, old);
  }
  if (name == "SUP") {
    // Every class has top above it (RFC 4512 section 2.4.1).
    Names before = lowerNames(release[field]);
    Names now = lowerNames(old[field]);
    before.erase("top");
    now.erase("top");
    return before == now ? Effect::kNeutral : Effect::kNarrowing;
  }
  return name == "kind" ? Effect::kNarrowing
                        : typeChange(release[field], old[field]);
}

Effect storageChange(const FieldView &release, const FieldView &old) {
  const std::string_view name = old.name;
  if (name == "DBNAME") {
    return lowerNames(release) == lowerNames(old) ? Effect::kNeutral
                                                  : Effect::kNarrowing;
  }
  if (name == "LENGTH") {
    // "0" is no length; what the server does without one is not known.
    return old.text == "0" || release.text == "0"
               ? Effect::kNarrowing
               : lengthChange(release.text, old.text);
  }
  if (name == "ACCESS-CLASS") {
    return accessChange(release, old);
  }
  return old.text == "yes" ? Effect::kWidening : Effect::kNarrowing;
}

}  // namespace

const char *effectName(Effect effect) {
  static constexpr const char *kNames[] = {"neutral", "widening", "narrowing"};
  return kNames[static_cast<std::size_t>(effect)];
}

std::vector<FieldChange> changesBetween(Kind kind, const Fields &release,
                                        const Fields &old) {
  std::vector<FieldChange> changes;
  for (const std::size_t field : schemacheck::differingFields(old, release)) {
    Effect effect = Effect::kNeutral;
    switch (kind) {
      case Kind::kAttributeType:
        effect = typeChange(release[field], old[field]);
        break;
      case Kind::kObjectClass:
        effect = classChange(field, release, old);
        break;
      default:  // Kind::kStorage
        effect = storageChange(release[field], old[field]);
        break;
    }
    changes.push_back(
        {field, effect, toField(release[field]), toField(old[field])});
  }
  return changes;
}

}  // namespace schemaplan
