#include "Compare.h"

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "Fields.h"
#include "Inventory.h"
#include "SchemaManager.h"
#include "Untraced.h"

using schemacheck::Field;
using schemacheck::fieldsOf;

namespace {

// How entries are matched. Each finds an entry, or nothing.
using Finder = const Entry *(*)(const Inventory &, Kind, const std::string &);

const Entry *findByKey(const Inventory &files, Kind kind,
                       const std::string &key) {
  return files.holder(kind, key);
}

const Entry *findByOidOnly(const Inventory &files, Kind kind,
                           const std::string &oid) {
  const Entry *entry = files.firstWithOid(kind, oid);
  return entry != nullptr && files.isFoundByOidOnly(*entry) ? entry : nullptr;
}

class Comparison {
 public:
  explicit Comparison(Schemas *schemas)
      : m_schemas(*schemas),
        m_oldFiles(schemas->oldFiles()),
        m_newFiles(schemas->newFiles()) {
    const SchemaManager &mine = *schemas->oldSchema();
    const SchemaManager &theirs = *schemas->newSchema();
    compare(Kind::kAttributeType, mine.attributeTypes(),
            theirs.attributeTypes(), findByKey);
    compare(Kind::kAttributeType, mine.attributeTypesByOid(),
            theirs.attributeTypesByOid(), findByOidOnly);
    compare(Kind::kObjectClass, mine.objectClasses(), theirs.objectClasses(),
            findByKey);
    compare(Kind::kObjectClass, mine.objectClassesByOid(),
            theirs.objectClassesByOid(), findByOidOnly);
    compare(Kind::kStorage, mine.storageDefinitions(),
            theirs.storageDefinitions(), findByKey);
  }

  bool equal() const {
    return m_different.empty() && m_onlyOld.empty() && m_onlyNew.empty();
  }

  void print(std::ostream *out) const {
    print("identical", m_identical, out);
    print("different", m_different, out);
    print("only in the old schema", m_onlyOld, out);
    print("only in the new schema", m_onlyNew, out);
    print("excluded", m_excluded, out);
  }

 private:
  using Lines = std::vector<std::string>;
  template <class Definition>
  using Table = std::map<std::string, Definition *>;

  static void print(const char *heading, const Lines &lines,
                    std::ostream *out) {
    *out << heading << ": " << lines.size() << '\n';
    for (const std::string &line : lines) {
      *out << "  " << line << '\n';
    }
  }

  template <class Definition>
  void compare(Kind kind, const Table<Definition> &mine,
               const Table<Definition> &theirs, Finder find) {
    for (const auto &[key, definition] : mine) {
      const Entry *entry = find(m_oldFiles, kind, key);
      const Entry *other = find(m_newFiles, kind, key);
      if (entry == nullptr) {
        continue;
      }
      if (m_schemas.oldSchema()->isExcluded(entry->oid) != 0) {
        m_excluded.push_back(atPlace(m_oldFiles, *entry));
      } else if (other == nullptr) {
        m_onlyOld.push_back(atPlace(m_oldFiles, *entry) + sameOidAs(*entry));
      } else {
        compareFields(*entry, *definition, *other, *theirs.at(key));
      }
    }
    for (const auto &[key, definition] : theirs) {
      const Entry *entry = find(m_newFiles, kind, key);
      if (entry != nullptr && find(m_oldFiles, kind, key) == nullptr) {
        m_onlyNew.push_back(atPlace(m_newFiles, *entry));
      }
    }
  }

  // The release's attribute type or object class with the OID of an entry that
  // the release lacks, in words; empty when there is none.
  std::string sameOidAs(const Entry &entry) const {
    if (entry.kind == Kind::kStorage || entry.oid.empty()) {
      return "";
    }
    for (const Kind kind :
         {entry.kind, Kind::kAttributeType, Kind::kObjectClass}) {
      if (const Entry *other = m_newFiles.firstWithOid(kind, entry.oid)) {
        return std::string("; the new schema has this OID as ") +
               kindName(kind) +
               (other->name.empty() ? "" : " '" + other->name + "'") + ", " +
               m_newFiles.place(*other);
      }
    }
    return "";
  }

  template <class Definition>
  void compareFields(const Entry &entry, const Definition &mine,
                     const Entry &otherEntry, const Definition &theirs) {
    const std::vector<Field> oldFields = fieldsOf(mine);
    const std::vector<Field> newFields = fieldsOf(theirs);
    std::string differences;
    for (std::size_t i = 0; i < oldFields.size(); ++i) {
      if (!sameValues(oldFields[i], newFields[i])) {
        differences += std::string("\n    ") + oldFields[i].name +
                       "\n      old: " + oldFields[i].text() +
                       "\n      new: " + newFields[i].text();
      }
    }
    if (differences.empty()) {
      m_identical.push_back(describe(entry));
    } else {
      m_different.push_back(describe(entry) + ", " + m_oldFiles.place(entry) +
                            " and " + m_newFiles.place(otherEntry) +
                            differences);
    }
  }

  static std::string atPlace(const Inventory &files, const Entry &entry) {
    return describe(entry) + ", " + files.place(entry);
  }

  Schemas &m_schemas;
  const Inventory &m_oldFiles;
  const Inventory &m_newFiles;
  Lines m_identical;
  Lines m_different;
  Lines m_onlyOld;
  Lines m_onlyNew;
  Lines m_excluded;
};

}  // namespace

bool printComparison(Schemas *schemas, std::ostream *out) {
  const Untraced untraced;
  const Comparison comparison(schemas);
  comparison.print(out);
  return comparison.equal();
}
