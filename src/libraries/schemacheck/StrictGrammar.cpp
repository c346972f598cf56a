#include "StrictGrammar.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace schemacheck {

namespace {

struct ClauseEntry {
  std::string_view keyword;
  Kind kind;
  Takes takes;
};

// In the order of the lengths of the keywords, those of one length by kind.
constexpr ClauseEntry kClauses[] = {
    {"SUP", Kind::kAttributeType, Takes::kOids},
    {"SUP", Kind::kObjectClass, Takes::kOids},
    {"MAY", Kind::kObjectClass, Takes::kOids},
    {"NAME", Kind::kAttributeType, Takes::kNames},
    {"DESC", Kind::kAttributeType, Takes::kText},
    {"NAME", Kind::kObjectClass, Takes::kNames},
    {"DESC", Kind::kObjectClass, Takes::kText},
    {"MUST", Kind::kObjectClass, Takes::kOids},
    {"USAGE", Kind::kAttributeType, Takes::kOid},
    {"SUBSTR", Kind::kAttributeType, Takes::kOid},
    {"SYNTAX", Kind::kAttributeType, Takes::kSyntax},
    {"DBNAME", Kind::kStorage, Takes::kNames},
    {"LENGTH", Kind::kStorage, Takes::kNumber},
    {"SUBSTR", Kind::kStorage, Takes::kNothing},
    {"APPROX", Kind::kStorage, Takes::kNothing},
    {"REVERSE", Kind::kStorage, Takes::kNothing},
    {"OBSOLETE", Kind::kAttributeType, Takes::kNothing},
    {"EQUALITY", Kind::kAttributeType, Takes::kOid},
    {"ORDERING", Kind::kAttributeType, Takes::kOid},
    {"OBSOLETE", Kind::kObjectClass, Takes::kNothing},
    {"ABSTRACT", Kind::kObjectClass, Takes::kNothing},
    {"EQUALITY", Kind::kStorage, Takes::kNothing},
    {"ORDERING", Kind::kStorage, Takes::kNothing},
    {"AUXILIARY", Kind::kObjectClass, Takes::kNothing},
    {"COLLECTIVE", Kind::kAttributeType, Takes::kNothing},
    {"STRUCTURAL", Kind::kObjectClass, Takes::kNothing},
    {"SINGLE-VALUE", Kind::kAttributeType, Takes::kNothing},
    {"ACCESS-CLASS", Kind::kStorage, Takes::kOid},
    {"NO-USER-MODIFICATION", Kind::kAttributeType, Takes::kNothing},
};

constexpr std::size_t kLongestKeyword = 20;

// By length, the first entry with a keyword that is as long or longer.
constexpr auto kFirstOfLength = [] {
  std::array<std::size_t, kLongestKeyword + 2> first{};
  for (std::size_t length = 0; length < first.size(); ++length) {
    while (first[length] < std::size(kClauses) &&
           kClauses[first[length]].keyword.size() < length) {
      ++first[length];
    }
  }
  return first;
}();

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

constexpr std::size_t kShortestSection =
    std::min_element(std::begin(kSections), std::end(kSections),
                     [](const SectionEntry &a, const SectionEntry &b) {
                       return a.keyword.size() < b.keyword.size();
                     })
        ->keyword.size();

bool isLower(char c) { return c >= 'a' && c <= 'z'; }

char upper(char c) { return isLower(c) ? static_cast<char>(c - 'a' + 'A') : c; }

// Whether `word` is `keyword`, which is in upper case, in any case.
bool isSpelling(std::string_view word, std::string_view keyword) {
  return word.size() == keyword.size() &&
         std::equal(word.begin(), word.end(), keyword.begin(),
                    [](char a, char b) { return upper(a) == b; });
}

bool isExtension(std::string_view word) {
  return word.size() > 2 && isSpelling(word.substr(0, 2), "X-");
}

}  // namespace

std::optional<ClauseForm> clauseForm(Kind kind, std::string_view word) {
  if (isExtension(word)) {
    return ClauseForm{"", Takes::kExtensions, true,
                      std::none_of(word.begin(), word.end(), isLower)};
  }
  if (word.size() > kLongestKeyword) {
    return std::nullopt;
  }
  std::optional<ClauseForm> form;
  for (std::size_t i = kFirstOfLength[word.size()];
       i < kFirstOfLength[word.size() + 1]; ++i) {
    const ClauseEntry &entry = kClauses[i];
    if (upper(word.front()) != entry.keyword.front()) {
      continue;
    }
    const bool known = entry.kind == kind;
    const bool exact = word == entry.keyword;
    if ((known || !form) && (exact || isSpelling(word, entry.keyword))) {
      form = {entry.keyword, entry.takes, known, exact};
      if (known) {
        break;
      }
    }
  }
  return form;
}

bool isClauseKeyword(std::string_view word) {
  const auto form = clauseForm(Kind::kAttributeType, word);
  return form && form->exact;
}

std::optional<SectionForm> sectionForm(std::string_view word) {
  if (word.size() < kShortestSection) {
    return std::nullopt;
  }
  for (const SectionEntry &entry : kSections) {
    if (isSpelling(word, entry.keyword)) {
      return entry.form;
    }
  }
  return std::nullopt;
}

}  // namespace schemacheck
