// The comparison of two schemas.
#ifndef LIBSCHEMA_INTERNAL_COMPARISON_H_
#define LIBSCHEMA_INTERNAL_COMPARISON_H_

#include <cstddef>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "internal/AscendingSearch.h"
#include "internal/Kinds.h"
#include "internal/OidFilter.h"
#include "internal/Trace.h"

// The comparison of one kind. The definitions are at hand, so that nothing is
// looked up by getAttr() and its like and no copy is made; the lookups are
// recorded in the trace.
template <class Kind>
class SchemaManager::Comparison {
 public:
  Comparison(SchemaManager *schema, SchemaManager *other)
      : m_schema(schema),
        m_excluded(schema->m_excluded_oids),
        m_traced(trcEvents != 0) {
    pair(&Kind::owning(schema), &Kind::owning(other));
  }

  // Without a trace, nothing has changed when this throws.
  void run() {
    for (std::size_t index = 0; index < m_pairs.size(); ++index) {
      if (index + kAhead < m_pairs.size()) {
        prefetch(m_pairs[index + kAhead].mine->second);
        prefetch(m_pairs[index + kAhead].theirs);
      }
      if (isToGo(m_pairs[index])) {
        m_removals.push_back(m_pairs[index].mine);
        if (m_traced) {
          removeFromFileSet(m_pairs[index].mine->second);
        }
      }
    }
    const auto kept = m_schema->removeOwned<Kind>(m_removals);
    if (!m_traced) {
      for (Definition *definition : kept) {
        removeFromFileSet(definition);
      }
    }
  }

 private:
  using Definition = typename Kind::Definition;

  struct Pair {
    Entry<Kind> mine;
    Definition *theirs;  // filed under the same key; or null
  };

  // So far ahead of the comparison, memory is asked for the definitions.
  static constexpr std::size_t kAhead = 4;

  // Finds all pairs before the first comparison: the way through the tables
  // does not wait for the definitions then, nor the other way round.
  void pair(Table<Definition> *mine, Table<Definition> *theirs) {
    m_pairs.reserve(mine->size());
    libschema::AscendingSearch search(theirs);
    for (auto entry = mine->begin(); entry != mine->end(); ++entry) {
      const auto namesake = search.find(entry->first);
      m_pairs.push_back(
          {entry, namesake == theirs->end() ? nullptr : namesake->second});
    }
  }

  static void prefetch(const Definition *definition) {
    if (definition == nullptr) {
      return;
    }
    constexpr std::size_t kLine = 64;
    const char *start = reinterpret_cast<const char *>(definition);
    for (std::size_t at = 0; at < sizeof(Definition); at += kLine) {
      __builtin_prefetch(start + at);
    }
  }

  bool isToGo(const Pair &pair) {
    recordLookUp();
    if (pair.theirs != nullptr) {
      recordLookUp();
    }
    Definition *definition = pair.mine->second;
    return isExcluded(definition->oid()) ||
           (pair.theirs != nullptr &&
            Kind::equal(definition, pair.theirs) != 0);
  }

  static void recordLookUp() { libschema::TraceScope trace(Kind::kLookUp); }

  bool isExcluded(const std::string &oid) {
    if (!m_traced && !m_excluded.mayHold(oid)) {
      return false;
    }
    return m_schema->findExcluded(oid) != 0;
  }

  void removeFromFileSet(Definition *definition) {
    if constexpr (Kind::kComparisonUpdatesFileSets) {
      m_schema->removeFromFileSet(definition->oid());
    }
  }

  SchemaManager *const m_schema;
  const libschema::OidFilter m_excluded;
  const bool m_traced;  // then everything happens in the order of the records
  std::vector<Pair> m_pairs;            // in the order of the table
  std::vector<Entry<Kind>> m_removals;  // the walk changes no table
};

#endif  // LIBSCHEMA_INTERNAL_COMPARISON_H_
