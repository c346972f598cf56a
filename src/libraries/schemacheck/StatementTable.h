// Statements by texts.
#ifndef SCHEMACHECK_STATEMENTTABLE_H_
#define SCHEMACHECK_STATEMENTTABLE_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace schemacheck {

class Statement;

// Holds for each text the statement that was entered first. Neither texts nor
// statements are owned. Entering and finding take the same time however many
// there are.
class StatementTable {
 public:
  // Whether texts in upper and in lower case are the same.
  enum class Case { kMatters, kIgnored };

  explicit StatementTable(Case textCase = Case::kIgnored) : m_case(textCase) {}

  // Returns what is held under the text from now on: what was entered first.
  const Statement *add(std::string_view text, const Statement *statement);

  // Null if there is none.
  const Statement *find(std::string_view text) const;

 private:
  struct Entry {
    std::string_view text;
    const Statement *statement;
  };
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t number = 0;  // of the entry, from 1; 0: none
  };

  bool isSame(std::string_view a, std::string_view b) const;
  std::size_t slotOf(std::uint32_t hash, std::string_view text) const;
  void grow();

  Case m_case;
  std::vector<Entry> m_entries;
  // Their number is a power of two, and at most half of them are taken. The
  // entry of a text is in the first free one from that which its hash names.
  std::vector<Slot> m_slots;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_STATEMENTTABLE_H_
