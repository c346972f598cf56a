// The merge of two schemas.
#ifndef LIBSCHEMA_INTERNAL_MERGE_H_
#define LIBSCHEMA_INTERNAL_MERGE_H_

#include <string>
#include <utility>
#include <vector>

#include "SchemaManager.h"
#include "internal/Kinds.h"
#include "internal/Trace.h"

// The merge of one kind: what it has done so far, so that both schemas are
// sound in whatever way it ends.
template <class Kind>
class SchemaManager::Merge {
 public:
  Merge(SchemaManager *target, SchemaManager *source)
      : m_target(target),
        m_source(source),
        m_targetTable(Kind::owning(target)),
        m_sourceTable(Kind::owning(source)),
        m_targetByOid(Kind::byOid(target)),
        m_sourceByOid(Kind::byOid(source)) {}

  // False when a definition could not be added.
  bool run() {
    bool complete = false;
    try {
      complete = walk();
      if (!complete) {
        share();
      }
    } catch (...) {
      forgetUnentered();
      releaseReplaced();
      handOver();
      throw;
    }
    releaseReplaced();
    if (complete) {
      handOver();
    }
    return complete;
  }

 private:
  using Definition = typename Kind::Definition;
  using Entry = typename Table<Definition>::iterator;

  bool walk() {
    for (Entry entry = m_sourceTable.begin(); entry != m_sourceTable.end();
         ++entry) {
      Definition *definition = entry->second;
      if (Definition *namesake =
              libschema::findIn(m_targetTable, entry->first)) {
        remove(replacedBy(definition, namesake));
      } else if (OidSet *oids =
                     m_target->findOidInSet(m_source, definition->oid())) {
        oids->insert(definition->oid());
      } else {
        return false;
      }
      m_walked.push_back(entry);
      m_targetTable.try_emplace(entry->first, definition);
      if (m_targetByOid != nullptr) {
        m_targetByOid->try_emplace(definition->oid(), definition);
      }
    }
    return true;
  }

  // The definition of the target that gives way to one that has the key of
  // `namesake`: the one that is found by the OID, if that is the namesake's.
  Definition *replacedBy(Definition *definition, Definition *namesake) {
    if (m_targetByOid == nullptr || namesake->oid() != definition->oid()) {
      return namesake;
    }
    libschema::TraceScope trace(Kind::kLookUp);
    Definition *found = Kind::find(m_target, definition->oid());
    return found != nullptr ? found : namesake;
  }

  // Takes what is filed under the keys of `replaced` out of the target. What
  // leaves the owning table is kept until it is clear what still leads to it,
  // unless the source owns it too.
  void remove(Definition *replaced) {
    std::string key = Kind::key(replaced);
    if (m_targetByOid != nullptr) {
      m_targetByOid->erase(replaced->oid());
    }
    const Entry entry = m_targetTable.find(key);
    if (entry == m_targetTable.end()) {
      return;
    }
    Definition *leaving = entry->second;
    if (libschema::findIn(m_sourceTable, key) != leaving) {
      m_target->m_kept.keep(leaving);
    }
    m_targetTable.erase(entry);
    m_replaced.emplace_back(std::move(key), leaving);
  }

  // Whether the target's tables lead to a definition that has this key.
  bool reached(const std::string &key, Definition *definition) const {
    return libschema::findIn(m_targetTable, key) == definition ||
           (m_targetByOid != nullptr &&
            libschema::findIn(*m_targetByOid, definition->oid()) == definition);
  }

  // After a failure: what stands in both schemas belongs to both.
  void share() {
    for (const Entry &entry : m_walked) {
      if (reached(entry->first, entry->second)) {
        m_target->m_kept.share(entry->second, &m_source->m_kept);
      }
    }
  }

  // After an exception: the walk may have stopped before the last definition
  // was entered.
  void forgetUnentered() noexcept {
    if (!m_walked.empty() &&
        !reached(m_walked.back()->first, m_walked.back()->second)) {
      m_walked.pop_back();
    }
  }

  // Lets go of what the target does not hold any longer.
  void releaseReplaced() noexcept {
    for (const auto &[key, definition] : m_replaced) {
      if (m_target->m_kept.contains(definition) && !reached(key, definition)) {
        m_target->m_kept.drop(definition);
      }
    }
  }

  // Takes out of the source what was walked: it is the target's now, or, if the
  // target does not hold it, nobody's.
  void handOver() noexcept {
    if (m_sourceByOid != nullptr) {
      for (const Entry &entry : m_walked) {
        m_sourceByOid->erase(entry->second->oid());
      }
    }
    for (const Entry &entry : m_walked) {
      Definition *definition = entry->second;
      const bool taken = reached(entry->first, definition);
      m_sourceTable.erase(entry);
      if (taken) {
        m_target->m_kept.takeOver(definition, &m_source->m_kept);
      } else if (!m_source->m_kept.drop(definition)) {
        delete definition;
      }
    }
  }

  SchemaManager *const m_target;
  SchemaManager *const m_source;
  Table<Definition> &m_targetTable;
  Table<Definition> &m_sourceTable;
  Table<Definition> *const m_targetByOid;  // null: this kind has none
  Table<Definition> *const m_sourceByOid;
  std::vector<Entry> m_walked;  // entries of the source's table
  // What left the target's table, with its key.
  std::vector<std::pair<std::string, Definition *>> m_replaced;
};

#endif  // LIBSCHEMA_INTERNAL_MERGE_H_
