// The merge of two schemas.
#ifndef LIBSCHEMA_INTERNAL_MERGE_H_
#define LIBSCHEMA_INTERNAL_MERGE_H_

#include <new>
#include <string>
#include <utility>
#include <vector>

#include "SchemaManager.h"
#include "internal/AscendingSearch.h"
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
      releaseLeft();
      handOver();
      throw;
    }
    releaseLeft();
    if (complete) {
      handOver();
    }
    return complete;
  }

 private:
  using Definition = typename Kind::Definition;
  using Entry = typename Table<Definition>::iterator;

  bool walk() {
    libschema::AscendingSearch search(&m_targetTable);
    for (Entry entry = m_sourceTable.begin(); entry != m_sourceTable.end();
         ++entry) {
      Definition *definition = entry->second;
      const Entry namesake = search.find(entry->first);
      OidSet *oids = nullptr;
      if (namesake == m_targetTable.end()) {
        oids = m_target->findSet(m_source, definition->oid());
        if (oids == nullptr) {
          return false;
        }
      }
      m_walked.push_back(entry);
      if (oids != nullptr) {
        oids->insert(definition->oid());
        add(entry->first, definition);
        continue;
      }
      Definition *replaced = replacedBy(definition, namesake->second);
      if (!exchange(replaced, namesake, definition)) {
        replace(replaced, entry->first, definition);
        enterByOid(definition);
      }
    }
    return true;
  }

  // Inserting never overwrites: the OID stays that of the first definition.
  void enterByOid(Definition *definition) {
    if (m_targetByOid != nullptr) {
      m_targetByOid->try_emplace(definition->oid(), definition);
    }
  }

  // Files a definition in both tables of the target, or, when it throws, in
  // neither.
  void add(const std::string &name, Definition *definition) {
    const Entry entry = m_targetTable.try_emplace(name, definition).first;
    try {
      enterByOid(definition);
    } catch (...) {
      m_targetTable.erase(entry);
      throw;
    }
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

  // Does what replace() does in the plain case: the name and the OID lead to
  // the same definition of the target, which nobody keeps besides. False, and
  // nothing is done, in other cases.
  bool exchange(Definition *replaced, Entry namesake, Definition *definition) {
    if (replaced != namesake->second || m_target->m_kept.contains(replaced)) {
      return false;
    }
    if (m_targetByOid != nullptr) {
      const Entry found = m_targetByOid->find(definition->oid());
      if (found == m_targetByOid->end() || found->second != replaced) {
        return false;
      }
      found->second = definition;
    }
    namesake->second = definition;
    delete replaced;
    return true;
  }

  // Takes what is filed under the keys of `replaced` out of the target, and
  // puts `definition` in its place, so far as the keys are the same. The entry
  // under `name` stays. Everything that can throw comes first.
  void replace(Definition *replaced, const std::string &name,
               Definition *definition) {
    const Entry owned = m_targetTable.find(Kind::key(replaced));
    if (owned != m_targetTable.end()) {
      m_left.emplace_back(owned->first, owned->second);
      // Kept until it is clear what still leads to it. What the source owns has
      // just been walked, or is shared, and then it is kept already.
      if (libschema::findIn(m_sourceTable, owned->first) != owned->second) {
        m_target->m_kept.keep(owned->second);
      }
    }
    if (m_targetByOid != nullptr) {
      const Entry found = m_targetByOid->find(replaced->oid());
      if (found != m_targetByOid->end()) {
        m_left.emplace_back(Kind::key(found->second), found->second);
        if (found->first == definition->oid()) {
          found->second = definition;
        } else {
          m_targetByOid->erase(found);
        }
      }
    }
    if (owned == m_targetTable.end()) {
      return;
    }
    if (owned->first == name) {
      owned->second = definition;
    } else {
      m_targetTable.erase(owned);  // another one has the name, and keeps it
    }
  }

  // Whether the target's tables lead to a definition that has this key.
  bool reached(const std::string &key, Definition *definition) const {
    return libschema::findIn(m_targetTable, key) == definition ||
           reachedByOid(definition);
  }

  bool reachedByOid(Definition *definition) const {
    return m_targetByOid != nullptr &&
           libschema::findIn(*m_targetByOid, definition->oid()) == definition;
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
  void releaseLeft() noexcept {
    for (const auto &[key, definition] : m_left) {
      if (m_target->m_kept.contains(definition) && !reached(key, definition)) {
        m_target->m_kept.drop(definition);
      }
    }
  }

  // Takes out of the source what was walked: it is the target's now, or, if the
  // target does not hold it, nobody's.
  void handOver() noexcept {
    for (const Entry &entry : m_walked) {
      eraseOidFromSource(entry->second);
    }
    // In the order of the keys, which the walk had.
    libschema::AscendingSearch search(&m_targetTable);
    for (const Entry &entry : m_walked) {
      Definition *definition = entry->second;
      const Entry named = search.find(entry->first);
      const bool taken =
          (named != m_targetTable.end() && named->second == definition) ||
          reachedByOid(definition);
      m_sourceTable.erase(entry);
      if (taken) {
        m_target->m_kept.takeOver(definition, &m_source->m_kept);
      } else if (!m_source->m_kept.drop(definition)) {
        delete definition;
      }
    }
  }

  // The OID may lead to another definition, and that may have been kept for
  // nothing else.
  void eraseOidFromSource(Definition *definition) noexcept {
    if (m_sourceByOid == nullptr) {
      return;
    }
    const Entry entry = m_sourceByOid->find(definition->oid());
    if (entry == m_sourceByOid->end()) {
      return;
    }
    Definition *found = entry->second;
    m_sourceByOid->erase(entry);
    if (found == definition) {
      return;
    }
    try {
      if (libschema::findIn(m_sourceTable, Kind::key(found)) != found) {
        m_source->m_kept.drop(found);
      }
    } catch (const std::bad_alloc &) {
      // No memory for the key; then it is kept until the source is destroyed.
    }
  }

  SchemaManager *const m_target;
  SchemaManager *const m_source;
  Table<Definition> &m_targetTable;
  Table<Definition> &m_sourceTable;
  Table<Definition> *const m_targetByOid;  // null: this kind has none
  Table<Definition> *const m_sourceByOid;
  std::vector<Entry> m_walked;  // entries of the source's table
  // What left a table of the target, with its key.
  std::vector<std::pair<std::string, Definition *>> m_left;
};

#endif  // LIBSCHEMA_INTERNAL_MERGE_H_
