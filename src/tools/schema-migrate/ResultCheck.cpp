#include "ResultCheck.h"

#include <algorithm>
#include <map>

#include "SchemaManager.h"
#include "Untraced.h"

namespace {

bool equal(Attribute *a, const Attribute *b) { return a->attrsEqual(*b) != 0; }

bool equal(ObjectClass *a, const ObjectClass *b) {
  return a->objsEqual(*b) != 0;
}

bool equal(QORAttribute *a, const QORAttribute *b) {
  return a->qorAttrsEqual(*b) != 0;
}

class Check {
 public:
  Check(const Inventory &written, Schemas *schemas)
      : m_schemas(*schemas),
        m_result(*schemas->newSchema()),
        m_readBack(written.directory().string()) {
    readFiles(written, &m_readBack);
  }

  Losses run() {
    compare(Kind::kAttributeType, m_result.attributeTypes(),
            m_readBack.attributeTypes());
    compare(Kind::kObjectClass, m_result.objectClasses(),
            m_readBack.objectClasses());
    compare(Kind::kStorage, m_result.storageDefinitions(),
            m_readBack.storageDefinitions());
    compareByOid(Kind::kAttributeType, m_result.attributeTypesByOid(),
                 m_readBack.attributeTypesByOid());
    compareByOid(Kind::kObjectClass, m_result.objectClassesByOid(),
                 m_readBack.objectClassesByOid());
    return m_losses;
  }

 private:
  template <class Definition>
  using Table = std::map<std::string, Definition *>;

  template <class Definition>
  void compare(Kind kind, const Table<Definition> &expected,
               const Table<Definition> &found) {
    for (const auto &[key, definition] : expected) {
      const auto other = found.find(key);
      if (other == found.end() || !equal(definition, other->second)) {
        if (kind != Kind::kStorage || !isWithdrawn(key)) {
          report(kind, key, other != found.end());
        }
      }
    }
  }

  // The release's definitions that only their OID leads to are written, too.
  template <class Definition>
  void compareByOid(Kind kind, const Table<Definition> &expected,
                    const Table<Definition> &found) {
    for (const auto &[oid, definition] : expected) {
      const Entry *entry = m_schemas.newFiles().firstWithOid(kind, oid);
      if (entry == nullptr || entry->held() || isWithdrawn(oid)) {
        continue;
      }
      const auto other = found.find(oid);
      if (other == found.end() || !equal(definition, other->second)) {
        reportOwn(*entry, other != found.end());
      }
    }
  }

  // A storage definition is not written without its attribute type.
  bool isWithdrawn(const std::string &oid) const {
    const auto &all = m_schemas.withdrawals();
    return std::any_of(all.begin(), all.end(), [&oid](const Withdrawal &one) {
      return one.oid == oid && !one.definition.empty();
    });
  }

  void report(Kind kind, const std::string &key, bool displaced) {
    const Entry *entry = m_schemas.oldFiles().holder(kind, key);
    if (entry != nullptr && m_schemas.isCarried(*entry)) {
      m_losses.errors.push_back(line(m_schemas.oldFiles(), *entry, "error"));
      return;
    }
    reportOwn(*m_schemas.newFiles().holder(kind, key), displaced);
  }

  // `displaced`: the result has another definition under its key.
  void reportOwn(const Entry &entry, bool displaced) {
    const Inventory &files = m_schemas.newFiles();
    if (lostAnyway(entry, displaced)) {
      m_losses.warnings.push_back(line(files, entry, "warning"));
    } else {
      m_losses.errors.push_back(line(files, entry, "error"));
    }
  }

  static std::string line(const Inventory &files, const Entry &entry,
                          const std::string &severity) {
    return files.place(entry) + ": " + severity + ": " + describe(entry) +
           " is not in the result as it stands here";
  }

  // Whether a release's entry would be lost without a migration, too: files are
  // written in the order of the OIDs, so that another definition may come to be
  // the first of its name; from the first definition of each OID; and a storage
  // definition with its attribute type only.
  bool lostAnyway(const Entry &entry, bool displaced) const {
    const Inventory &files = m_schemas.newFiles();
    if (entry.repeated && displaced) {
      return true;
    }
    const bool attribute =
        files.firstWithOid(Kind::kAttributeType, entry.oid) != nullptr;
    const bool objectClass =
        files.firstWithOid(Kind::kObjectClass, entry.oid) != nullptr;
    switch (entry.kind) {
      case Kind::kStorage:
        return !attribute || objectClass;
      case Kind::kAttributeType:
        return objectClass ||
               files.firstWithOid(entry.kind, entry.oid) != &entry;
      case Kind::kObjectClass:
        break;
    }
    return files.firstWithOid(entry.kind, entry.oid) != &entry;
  }

  Schemas &m_schemas;
  SchemaManager &m_result;
  SchemaManager m_readBack;
  Losses m_losses;
};

}  // namespace

Losses findLosses(const Inventory &written, Schemas *schemas) {
  const Untraced untraced;
  return Check(written, schemas).run();
}
