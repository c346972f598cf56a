// Many short lists in few pieces of memory.
#ifndef SCHEMACHECK_POOL_H_
#define SCHEMACHECK_POOL_H_

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace schemacheck {

// A list that lies in a Pool, for reading; valid as long as the pool is.
template <class T>
class PoolList {
 public:
  PoolList() = default;
  PoolList(const T *items, std::size_t size) : m_items(items), m_size(size) {}

  const T *begin() const { return m_items; }
  const T *end() const { return m_items + m_size; }
  std::size_t size() const { return m_size; }
  bool empty() const { return m_size == 0; }

  // There must be such an item.
  const T &front() const { return m_items[0]; }
  const T &back() const { return m_items[m_size - 1]; }
  const T &operator[](std::size_t i) const { return m_items[i]; }

 private:
  const T *m_items = nullptr;
  std::size_t m_size = 0;
};

// Holds lists that do not change any more. They stay where they are when the
// pool is moved.
template <class T>
class Pool {
 public:
  Pool() = default;
  Pool(const Pool &) = delete;
  Pool &operator=(const Pool &) = delete;
  Pool(Pool &&) noexcept = default;
  Pool &operator=(Pool &&) noexcept = default;

  // Takes the items, and leaves `items` empty.
  PoolList<T> take(std::vector<T> *items) {
    if (items->empty()) {
      return {};
    }
    if (items->size() >= kLong) {
      const std::vector<T> &taken = m_long.emplace_back(std::move(*items));
      *items = {};
      return {taken.data(), taken.size()};
    }
    if (m_chunks.empty() || room() < items->size()) {
      m_chunks.emplace_back().reserve(std::max(items->size(), kChunk));
    }
    std::vector<T> &chunk = m_chunks.back();
    const T *first = chunk.data() + chunk.size();
    chunk.insert(chunk.end(), items->begin(), items->end());
    const PoolList<T> list(first, items->size());
    items->clear();
    return list;
  }

 private:
  static constexpr std::size_t kChunk = 512;
  static constexpr std::size_t kLong = 4096;

  std::size_t room() const {
    return m_chunks.back().capacity() - m_chunks.back().size();
  }

  std::vector<std::vector<T>> m_chunks;  // none grows beyond what it reserves
  std::vector<std::vector<T>> m_long;    // lists that are a piece each
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_POOL_H_
