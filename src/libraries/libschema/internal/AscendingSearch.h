// Searches in a map for one key after the other.
#ifndef LIBSCHEMA_INTERNAL_ASCENDINGSEARCH_H_
#define LIBSCHEMA_INTERNAL_ASCENDINGSEARCH_H_

#include <string>
#include <utility>

namespace libschema {

// Finds entries of a map whose keys, strings, are asked for in ascending order:
// mostly, the next one stands near the last one. Meanwhile, other entries than
// the one found last may be erased, but none after a search that found nothing;
// and nothing may be added but under the key asked for last, which is not found
// again.
template <class Table>
class AscendingSearch {
 public:
  using Entry = decltype(std::declval<Table>().begin());

  explicit AscendingSearch(Table *table)
      : m_table(table), m_next(table->begin()) {}

  // The entry with the key, or the end of the table.
  Entry find(const std::string &key) {
    for (int step = 0; step < kNear; ++step, ++m_next) {
      if (m_next == m_table->end()) {
        return m_next;
      }
      const int order = m_next->first.compare(key);
      if (order >= 0) {
        return order == 0 ? m_next : m_table->end();
      }
    }
    m_next = m_table->lower_bound(key);
    const bool found = m_next != m_table->end() && m_next->first == key;
    return found ? m_next : m_table->end();
  }

 private:
  static constexpr int kNear = 4;

  Table *m_table;
  Entry m_next;  // the first one that is not before the last key asked for
};

}  // namespace libschema

#endif  // LIBSCHEMA_INTERNAL_ASCENDINGSEARCH_H_
