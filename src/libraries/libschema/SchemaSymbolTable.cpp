#include "SchemaSymbolTable.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace {

struct Keyword {
  std::string_view text;
  int token;
};

// In the order of the indexes. REVERSE, the youngest token, stands ahead of
// ORDERING: indexes and codes do not run in step.
constexpr Keyword kTable[] = {
    {"objectclasses", TOK_OBJECTCLASSES},
    {"NAME", TOK_NAME},
    {"DESC", TOK_DESC},
    {"SUP", TOK_SUP},
    {"AUXILIARY", TOK_AUXILIARY},
    {"MUST", TOK_MUST},
    {"MAY", TOK_MAY},
    {"STRUCTURAL", TOK_STRUCTURAL},
    {"attributetypes", TOK_ATTRIBUTETYPES},
    {"EQUALITY", TOK_EQUALITY},
    {"SYNTAX", TOK_SYNTAX},
    {"SINGLE-VALUE", TOK_SINGLE_VALUE},
    {"USAGE", TOK_USAGE},
    {"NO-USER-MODIFICATION", TOK_NO_USER_MODIFICATION},
    {"QORAttributetypes", TOK_QORATTRIBUTETYPES},
    {"ACCESS-CLASS", TOK_ACCESS_CLASS},
    {"DBNAME", TOK_DBNAME},
    {"SUBSTR", TOK_SUBSTR},
    {"REVERSE", TOK_REVERSE},
    {"ORDERING", TOK_ORDERING},
    {"COLLECTIVE", TOK_COLLECTIVE},
    {"OBSOLETE", TOK_OBSOLETE},
    {"ABSTRACT", TOK_ABSTRACT},
    {"LENGTH", TOK_LENGTH},
    {"APPROX", TOK_APPROX},
};

static_assert(std::size(kTable) == SchemaSymbolTable::kKeywords);

constexpr std::size_t kSlots = 64;

// A slot for each keyword of its own. The factors were found by trial; for
// another set of keywords, try others until the assertion below holds.
constexpr std::size_t slotOf(std::string_view word) {
  const auto first = static_cast<unsigned char>(word.front());
  const auto last = static_cast<unsigned char>(word.back());
  return (word.size() + 3U * first + 12U * last) % kSlots;
}

// The keyword of each slot as an index into the table, -1 where there is none.
constexpr std::array<int, kSlots> fillSlots() {
  std::array<int, kSlots> slots{};
  for (int &slot : slots) {
    slot = -1;
  }
  int index = 0;
  for (const Keyword &keyword : kTable) {
    slots[slotOf(keyword.text)] = index++;
  }
  return slots;
}

constexpr std::array<int, kSlots> kSlotTable = fillSlots();

constexpr bool everyKeywordHasItsSlot() {
  int index = 0;
  for (const Keyword &keyword : kTable) {
    if (kSlotTable[slotOf(keyword.text)] != index++) {
      return false;
    }
  }
  return true;
}

static_assert(everyKeywordHasItsSlot());

}  // namespace

SchemaSymbolTable::SchemaSymbolTable() {
  for (const Keyword &keyword : kTable) {
    insertValue(std::string(keyword.text), keyword.token, true);
  }
}

SchemaSymbolTable::~SchemaSymbolTable() = default;

int SchemaSymbolTable::findKeyword(const std::string &word) {
  if (word.empty()) {
    return -1;
  }
  const int index = kSlotTable[slotOf(word)];
  return index != -1 && kTable[index].text == word ? index : -1;
}
