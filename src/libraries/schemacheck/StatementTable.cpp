#include "StatementTable.h"

#include <algorithm>
#include <cstring>

#include "Fields.h"

namespace schemacheck {

namespace {

constexpr std::size_t kFewestSlots = 64;

// The bit in which letters in upper and in lower case differ, in each byte.
constexpr std::uint64_t kCaseBits = 0x2020202020202020;
constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;

// The same in any case.
std::uint32_t hashOf(std::string_view text) {
  std::uint64_t hash = text.size();
  while (!text.empty()) {
    std::uint64_t part = 0;
    const std::size_t size = std::min(text.size(), sizeof part);
    std::memcpy(&part, text.data(), size);
    hash = (hash ^ (part | kCaseBits)) * kFactor;
    hash ^= hash >> 32;  // what has gone up comes down again
    text.remove_prefix(size);
  }
  return static_cast<std::uint32_t>(hash * kFactor >> 32);
}

}  // namespace

bool StatementTable::isSame(std::string_view a, std::string_view b) const {
  return m_case == Case::kMatters ? a == b : isSameInAnyCase(a, b);
}

// The slot that holds the text, or else the one to hold it.
std::size_t StatementTable::slotOf(std::uint32_t hash,
                                   std::string_view text) const {
  std::size_t slot = hash & (m_slots.size() - 1);
  while (m_slots[slot].number != 0 &&
         !(m_slots[slot].hash == hash &&
           isSame(m_entries[m_slots[slot].number - 1].text, text))) {
    slot = (slot + 1) & (m_slots.size() - 1);
  }
  return slot;
}

void StatementTable::grow() {
  std::vector<Slot> old(std::max(2 * m_slots.size(), kFewestSlots));
  old.swap(m_slots);
  for (const Slot &taken : old) {
    if (taken.number != 0) {
      std::size_t slot = taken.hash & (m_slots.size() - 1);
      while (m_slots[slot].number != 0) {
        slot = (slot + 1) & (m_slots.size() - 1);
      }
      m_slots[slot] = taken;
    }
  }
}

const Statement *StatementTable::add(std::string_view text,
                                     const Statement *statement) {
  if (2 * m_entries.size() >= m_slots.size()) {
    grow();
  }
  const std::uint32_t hash = hashOf(text);
  Slot &slot = m_slots[slotOf(hash, text)];
  if (slot.number == 0) {
    m_entries.push_back({text, statement});
    slot = {hash, static_cast<std::uint32_t>(m_entries.size())};
  }
  return m_entries[slot.number - 1].statement;
}

const Statement *StatementTable::find(std::string_view text) const {
  if (m_entries.empty()) {
    return nullptr;
  }
  const Slot &slot = m_slots[slotOf(hashOf(text), text)];
  return slot.number == 0 ? nullptr : m_entries[slot.number - 1].statement;
}

}  // namespace schemacheck
