#include "internal/Keywords.h"

#include <cstddef>

namespace libschema {

namespace {

constexpr std::size_t kSlots = 64;

// A slot for each keyword of its own. The factors were found by trial; for
// another set of keywords, try others until the assertion below holds.
constexpr std::size_t slotOf(std::string_view word) {
  const auto first = static_cast<unsigned char>(word.front());
  const auto last = static_cast<unsigned char>(word.back());
  return (word.size() + 3U * first + 12U * last) % kSlots;
}

// The keyword of each slot as an index into the table. A slot without a keyword
// has some other one's index: a word that falls there is not equal to it.
constexpr std::array<std::size_t, kSlots> fillSlots() {
  std::array<std::size_t, kSlots> slots{};
  std::size_t index = 0;
  for (const Keyword &keyword : kKeywords) {
    slots[slotOf(keyword.text)] = index++;
  }
  return slots;
}

constexpr std::array<std::size_t, kSlots> kSlotTable = fillSlots();

constexpr bool everyKeywordHasItsSlot() {
  std::size_t index = 0;
  for (const Keyword &keyword : kKeywords) {
    if (kSlotTable[slotOf(keyword.text)] != index++) {
      return false;
    }
  }
  return true;
}

static_assert(everyKeywordHasItsSlot());

}  // namespace

int findKeyword(std::string_view word) {
  if (word.empty()) {
    return -1;
  }
  const std::size_t index = kSlotTable[slotOf(word)];
  return kKeywords[index].text == word ? static_cast<int>(index) : -1;
}

}  // namespace libschema
