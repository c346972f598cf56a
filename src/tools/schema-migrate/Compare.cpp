#include "Compare.h"

#include <map>
#include <ostream>
#include <string>
#include <utility>

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

class Comparer {
 public:
  explicit Comparer(Schemas *schemas)
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

  Comparison takeResult() { return std::move(m_result); }

 private:
  template <class Definition>
  using Table = std::map<std::string, Definition *>;

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
        m_result.excluded.push_back({entry, other});
      } else if (other == nullptr) {
        m_result.onlyOld.push_back({entry, nullptr, {}, sameOidAs(*entry)});
      } else {
        compareFields({entry, other}, *definition, *theirs.at(key));
      }
    }
    for (const auto &[key, definition] : theirs) {
      const Entry *entry = find(m_newFiles, kind, key);
      if (entry != nullptr && find(m_oldFiles, kind, key) == nullptr) {
        m_result.onlyNew.push_back({nullptr, entry});
      }
    }
  }

  // The release's attribute type or object class with the OID of an entry that
  // the release lacks, or null.
  const Entry *sameOidAs(const Entry &entry) const {
    if (entry.kind == Kind::kStorage || entry.oid.empty()) {
      return nullptr;
    }
    for (const Kind kind :
         {entry.kind, Kind::kAttributeType, Kind::kObjectClass}) {
      if (const Entry *other = m_newFiles.firstWithOid(kind, entry.oid)) {
        return other;
      }
    }
    return nullptr;
  }

  template <class Definition>
  void compareFields(ComparedDefinition compared, const Definition &mine,
                     const Definition &theirs) {
    std::vector<Field> oldFields = fieldsOf(mine);
    std::vector<Field> newFields = fieldsOf(theirs);
    for (std::size_t i = 0; i < oldFields.size(); ++i) {
      if (!sameValues(oldFields[i], newFields[i])) {
        compared.differences.push_back(
            {std::move(oldFields[i]), std::move(newFields[i])});
      }
    }
    (compared.differences.empty() ? m_result.identical : m_result.different)
        .push_back(std::move(compared));
  }

  Schemas &m_schemas;
  const Inventory &m_oldFiles;
  const Inventory &m_newFiles;
  Comparison m_result;
};

class Printer {
 public:
  Printer(const Schemas &schemas, std::ostream *out)
      : m_oldFiles(schemas.oldFiles()),
        m_newFiles(schemas.newFiles()),
        m_out(*out) {}

  void print(const Comparison &comparison) {
    print("identical", comparison.identical,
          [this](const auto &compared) { m_out << describe(*compared.old); });
    print("different", comparison.different, [this](const auto &compared) {
      m_out << atPlace(m_oldFiles, *compared.old) << " and "
            << m_newFiles.place(*compared.release);
      printDifferences(compared.differences);
    });
    print("only in the old schema", comparison.onlyOld,
          [this](const auto &compared) {
            m_out << atPlace(m_oldFiles, *compared.old);
            printSameOid(compared.sameOid);
          });
    print("only in the new schema", comparison.onlyNew,
          [this](const auto &compared) {
            m_out << atPlace(m_newFiles, *compared.release);
          });
    print("excluded", comparison.excluded, [this](const auto &compared) {
      m_out << atPlace(m_oldFiles, *compared.old);
    });
  }

 private:
  template <class PrintOne>
  void print(const char *heading, const std::vector<ComparedDefinition> &list,
             PrintOne printOne) {
    m_out << heading << ": " << list.size() << '\n';
    for (const ComparedDefinition &compared : list) {
      m_out << "  ";
      printOne(compared);
      m_out << '\n';
    }
  }

  void printDifferences(const std::vector<Difference> &differences) {
    for (const Difference &one : differences) {
      m_out << "\n    " << one.old.name << "\n      old: " << one.old.text()
            << "\n      new: " << one.release.text();
    }
  }

  void printSameOid(const Entry *other) {
    if (other != nullptr) {
      m_out << "; the new schema has this OID as " << kindName(other->kind)
            << (other->name.empty() ? "" : " '" + other->name + "'") << ", "
            << m_newFiles.place(*other);
    }
  }

  static std::string atPlace(const Inventory &files, const Entry &entry) {
    return describe(entry) + ", " + files.place(entry);
  }

  const Inventory &m_oldFiles;
  const Inventory &m_newFiles;
  std::ostream &m_out;
};

}  // namespace

Comparison compareSchemas(Schemas *schemas) {
  const Untraced untraced;
  return Comparer(schemas).takeResult();
}

void printComparison(const Schemas &schemas, const Comparison &comparison,
                     std::ostream *out) {
  Printer(schemas, out).print(comparison);
}
