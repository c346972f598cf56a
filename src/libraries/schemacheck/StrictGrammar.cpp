#include "StrictGrammar.h"

#include <algorithm>
#include <cstddef>

namespace schemacheck {

namespace {

struct ClauseEntry {
  std::string_view keyword;
  Kind kind;
  Takes takes;
};

constexpr ClauseEntry kClauses[] = {
    {"NAME", Kind::kAttributeType, Takes::kNames},
    {"DESC", Kind::kAttributeType, Takes::kText},
    {"OBSOLETE", Kind::kAttributeType, Takes::kNothing},
    {"SUP", Kind::kAttributeType, Takes::kOids},
    {"EQUALITY", Kind::kAttributeType, Takes::kOid},
    {"ORDERING", Kind::kAttributeType, Takes::kOid},
    {"SUBSTR", Kind::kAttributeType, Takes::kOid},
    {"SYNTAX", Kind::kAttributeType, Takes::kSyntax},
    {"SINGLE-VALUE", Kind::kAttributeType, Takes::kNothing},
    {"COLLECTIVE", Kind::kAttributeType, Takes::kNothing},
    {"NO-USER-MODIFICATION", Kind::kAttributeType, Takes::kNothing},
    {"USAGE", Kind::kAttributeType, Takes::kOid},
    {"NAME", Kind::kObjectClass, Takes::kNames},
    {"DESC", Kind::kObjectClass, Takes::kText},
    {"OBSOLETE", Kind::kObjectClass, Takes::kNothing},
    {"SUP", Kind::kObjectClass, Takes::kOids},
    {"ABSTRACT", Kind::kObjectClass, Takes::kNothing},
    {"STRUCTURAL", Kind::kObjectClass, Takes::kNothing},
    {"AUXILIARY", Kind::kObjectClass, Takes::kNothing},
    {"MUST", Kind::kObjectClass, Takes::kOids},
    {"MAY", Kind::kObjectClass, Takes::kOids},
    {"DBNAME", Kind::kStorage, Takes::kNames},
    {"ACCESS-CLASS", Kind::kStorage, Takes::kOid},
    {"LENGTH", Kind::kStorage, Takes::kNumber},
    {"EQUALITY", Kind::kStorage, Takes::kNothing},
    {"ORDERING", Kind::kStorage, Takes::kNothing},
    {"SUBSTR", Kind::kStorage, Takes::kNothing},
    {"APPROX", Kind::kStorage, Takes::kNothing},
    {"REVERSE", Kind::kStorage, Takes::kNothing},
};

struct SectionEntry {
  std::string_view keyword;
  SectionForm form;
};

constexpr SectionEntry kSections[] = {
    {"ATTRIBUTETYPES", {Kind::kAttributeType, true}},
    {"ATTRIBUTETYPE", {Kind::kAttributeType, false}},
    {"OBJECTCLASSES", {Kind::kObjectClass, true}},
    {"OBJECTCLASS", {Kind::kObjectClass, false}},
    {"QORATTRIBUTETYPES", {Kind::kStorage, true}},
    {"QORATTRIBUTETYPE", {Kind::kStorage, false}},
};

char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Whether `word` is `keyword`, which is in upper case, in any case.
bool isSpelling(std::string_view word, std::string_view keyword) {
  return word.size() == keyword.size() &&
         std::equal(word.begin(), word.end(), keyword.begin(),
                    [](char a, char b) { return upper(a) == b; });
}

bool isExtension(std::string_view word) {
  return word.size() > 2 && isSpelling(word.substr(0, 2), "X-");
}

std::string inUpperCase(std::string_view word) {
  std::string text(word);
  std::transform(text.begin(), text.end(), text.begin(), upper);
  return text;
}

}  // namespace

std::optional<ClauseForm> clauseForm(Kind kind, std::string_view word) {
  if (isExtension(word)) {
    return ClauseForm{inUpperCase(word), Takes::kExtensions, true};
  }
  const ClauseEntry *other = nullptr;
  for (const ClauseEntry &entry : kClauses) {
    if (!isSpelling(word, entry.keyword)) {
      continue;
    }
    if (entry.kind == kind) {
      return ClauseForm{std::string(entry.keyword), entry.takes, true};
    }
    if (other == nullptr) {
      other = &entry;
    }
  }
  if (other == nullptr) {
    return std::nullopt;
  }
  return ClauseForm{std::string(other->keyword), other->takes, false};
}

bool isClauseKeyword(std::string_view word) {
  const auto form = clauseForm(Kind::kAttributeType, word);
  return form && form->keyword == word;
}

std::optional<SectionForm> sectionForm(std::string_view word) {
  for (const SectionEntry &entry : kSections) {
    if (isSpelling(word, entry.keyword)) {
      return entry.form;
    }
  }
  return std::nullopt;
}

}  // namespace schemacheck
