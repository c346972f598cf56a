/// @file
/// Walks over the definitions of a schema.
#ifndef LIBSCHEMA_DEFINITIONWALK_H_
#define LIBSCHEMA_DEFINITIONWALK_H_

#include <cstddef>
#include <iterator>
#include <map>
#include <string>

/// The definitions of one table of a SchemaManager, for reading. Each stands
/// there once, under its key, and they come in ascending order of the keys,
/// which are compared byte by byte:
///
///     for (const Attribute &type : schema.eachAttributeType()) {
///       std::cout << type.oid() << '\n';
///     }
///
/// A walk is a view: it costs nothing to make and to copy, and it shows the
/// table as it is. The definitions belong to the manager. What a walk hands
/// out, iterators included, is valid until the manager changes. Several threads
/// may walk at once while none changes the manager.
template <class Definition>
class DefinitionWalk {
 public:
  /// What a manager holds: definitions by their keys.
  using Table = std::map<std::string, Definition *>;

  /// A forward iterator over the definitions.
  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;  ///< it goes forward
    using value_type = Definition;                        ///< what it comes to
    using difference_type = std::ptrdiff_t;  ///< a number of definitions
    using pointer = const Definition *;      ///< what operator->() gives
    using reference = const Definition &;    ///< what operator*() gives

    /// Points nowhere.
    Iterator() = default;
    /// Points to an entry of a table.
    explicit Iterator(typename Table::const_iterator entry) : m_entry(entry) {}

    /// The definition. Not at the end.
    reference operator*() const { return *m_entry->second; }
    /// The definition. Not at the end.
    pointer operator->() const { return m_entry->second; }

    /// The key under which the definition stands.
    const std::string &key() const { return m_entry->first; }

    /// Goes on to the next definition.
    Iterator &operator++() {
      ++m_entry;
      return *this;
    }
    /// Goes on to the next definition, and returns where it was.
    Iterator operator++(int) { return Iterator(m_entry++); }

    /// Whether both point to the same entry.
    friend bool operator==(const Iterator &a, const Iterator &b) {
      return a.m_entry == b.m_entry;
    }
    /// Whether they point to different entries.
    friend bool operator!=(const Iterator &a, const Iterator &b) {
      return a.m_entry != b.m_entry;
    }

   private:
    typename Table::const_iterator m_entry{};
  };

  /// A walk over `table`, which is not owned and must outlive it.
  explicit DefinitionWalk(const Table &table) : m_table(&table) {}

  /// The first definition.
  Iterator begin() const { return Iterator(m_table->begin()); }
  /// Behind the last definition.
  Iterator end() const { return Iterator(m_table->end()); }

  /// Whether there is no definition.
  bool empty() const { return m_table->empty(); }
  /// The number of definitions.
  std::size_t size() const { return m_table->size(); }

  /// The definition under exactly this key; null when there is none.
  const Definition *find(const std::string &key) const {
    const auto entry = m_table->find(key);
    return entry == m_table->end() ? nullptr : entry->second;
  }

 private:
  const Table *m_table;  // not owned
};

#endif  // LIBSCHEMA_DEFINITIONWALK_H_
