#include "StrictGrammar.h"

#include <algorithm>
#include <cstddef>

namespace schemacheck {

namespace {

struct ClauseEntry {
  Kind kind;
  std::string_view keyword;
  Takes takes;
};

constexpr ClauseEntry kClauses[] = {
    {Kind::kAttributeType, "NAME", Takes::kNames},
    {Kind::kAttributeType, "DESC", Takes::kText},
    {Kind::kAttributeType, "OBSOLETE", Takes::kNothing},
    {Kind::kAttributeType, "SUP", Takes::kOids},
    {Kind::kAttributeType, "EQUALITY", Takes::kOid},
    {Kind::kAttributeType, "ORDERING", Takes::kOid},
    {Kind::kAttributeType, "SUBSTR", Takes::kOid},
    {Kind::kAttributeType, "SYNTAX", Takes::kSyntax},
    {Kind::kAttributeType, "SINGLE-VALUE", Takes::kNothing},
    {Kind::kAttributeType, "COLLECTIVE", Takes::kNothing},
    {Kind::kAttributeType, "NO-USER-MODIFICATION", Takes::kNothing},
    {Kind::kAttributeType, "USAGE", Takes::kOid},
    {Kind::kObjectClass, "NAME", Takes::kNames},
    {Kind::kObjectClass, "DESC", Takes::kText},
    {Kind::kObjectClass, "OBSOLETE", Takes::kNothing},
    {Kind::kObjectClass, "SUP", Takes::kOids},
    {Kind::kObjectClass, "ABSTRACT", Takes::kNothing},
    {Kind::kObjectClass, "STRUCTURAL", Takes::kNothing},
    {Kind::kObjectClass, "AUXILIARY", Takes::kNothing},
    {Kind::kObjectClass, "MUST", Takes::kOids},
    {Kind::kObjectClass, "MAY", Takes::kOids},
    {Kind::kStorage, "DBNAME", Takes::kNames},
    {Kind::kStorage, "ACCESS-CLASS", Takes::kOid},
    {Kind::kStorage, "LENGTH", Takes::kNumber},
    {Kind::kStorage, "EQUALITY", Takes::kNothing},
    {Kind::kStorage, "ORDERING", Takes::kNothing},
    {Kind::kStorage, "SUBSTR", Takes::kNothing},
    {Kind::kStorage, "APPROX", Takes::kNothing},
    {Kind::kStorage, "REVERSE", Takes::kNothing},
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
