#include "Conflicts.h"

#include <map>
#include <set>

#include "Inventory.h"

namespace {

// The library writes the keyword NAME of any object class, and reads what
// stands behind it as names.
constexpr char kNameless[] = "it has no name";

bool isNamelessClass(const Entry &entry) {
  return entry.kind == Kind::kObjectClass && entry.name.empty();
}

// A written file holds, for each OID recorded for it, the object class, or else
// the attribute type and its storage definition; so an OID must lead to one
// attribute type or object class, and from a storage definition to an attribute
// type.
class Conflicts {
 public:
  explicit Conflicts(Schemas *schemas)
      : m_schemas(*schemas),
        m_oldFiles(schemas->oldFiles()),
        m_newFiles(schemas->newFiles()) {}

  std::vector<std::string> find() {
    for (const Entry &entry : m_oldFiles.entries()) {
      if (m_schemas.isCarried(entry) && entry.kind != Kind::kStorage) {
        m_carriedByOid.try_emplace(entry.oid, &entry);
      }
    }
    std::vector<std::string> lines;
    for (const Entry &entry : m_oldFiles.entries()) {
      if (!m_schemas.isCarried(entry)) {
        continue;
      }
      const std::string reason = reasonAgainst(entry);
      if (!reason.empty()) {
        lines.push_back(m_oldFiles.place(entry) + ": error: " +
                        describe(entry) + " cannot be carried: " + reason);
      }
    }
    return lines;
  }

 private:
  // Empty when there is none.
  std::string reasonAgainst(const Entry &entry) {
    if (isNamelessClass(entry)) {
      return kNameless;
    }
    const Entry *namesake = m_newFiles.holder(entry.kind, entry.key);
    if (namesake == nullptr && !m_schemas.canBeAdded(entry)) {
      const SchemaFile &file = kSchemaFiles[entry.file];
      return file.recorded
                 ? std::string(
                       "the release lacks it, and its attribute type "
                       "is not carried")
                 : std::string("the release lacks it, and nothing from ") +
                       file.name + " can be added to a release";
    }
    if (namesake != nullptr && namesake->oid != entry.oid) {
      return "the release has this name with another OID: " +
             atPlace(m_newFiles, *namesake);
    }
    if (namesake != nullptr && !kSchemaFiles[namesake->file].written) {
      return "the release has it in a file that is copied unchanged: " +
             atPlace(m_newFiles, *namesake);
    }
    return entry.kind == Kind::kStorage ? againstStorage(entry)
                                        : againstOid(entry);
  }

  std::string againstOid(const Entry &entry) const {
    for (const Kind kind : {Kind::kAttributeType, Kind::kObjectClass}) {
      const Entry *rival = m_newFiles.firstWithOid(kind, entry.oid);
      if (rival != nullptr &&
          (rival->kind != entry.kind || rival->key != entry.key)) {
        return "the release has this OID with another definition: " +
               atPlace(m_newFiles, *rival);
      }
    }
    const Entry *first = m_carriedByOid.at(entry.oid);
    if (first != &entry) {
      return "another definition has the same OID: " +
             atPlace(m_oldFiles, *first);
    }
    return "";
  }

  std::string againstStorage(const Entry &entry) const {
    const auto carried = m_carriedByOid.find(entry.oid);
    if (m_newFiles.firstWithOid(Kind::kAttributeType, entry.oid) == nullptr &&
        (carried == m_carriedByOid.end() ||
         carried->second->kind != Kind::kAttributeType)) {
      return "there is no attribute type with its OID";
    }
    const Entry *rival = m_newFiles.firstWithOid(Kind::kObjectClass, entry.oid);
    return rival == nullptr
               ? ""
               : "the release has this OID with another definition: " +
                     atPlace(m_newFiles, *rival);
  }

  static std::string atPlace(const Inventory &files, const Entry &entry) {
    return files.place(entry) + ", " + describe(entry);
  }

  Schemas &m_schemas;
  const Inventory &m_oldFiles;
  const Inventory &m_newFiles;
  // The first attribute type or object class to be carried that has an OID.
  std::map<std::string, const Entry *> m_carriedByOid;
};

}  // namespace

std::vector<std::string> findConflicts(Schemas *schemas) {
  return Conflicts(schemas).find();
}

std::vector<std::string> findUnwritable(const Schemas &schemas) {
  std::set<std::string> withdrawn;
  for (const Withdrawal &one : schemas.withdrawals()) {
    withdrawn.insert(one.oid);
  }
  const Inventory &files = schemas.newFiles();
  std::vector<std::string> lines;
  for (const Entry &entry : files.entries()) {
    const bool isWritten = kSchemaFiles[entry.file].written &&
                           (entry.file != schemacheck::kModifiedSchema ||
                            withdrawn.count(entry.oid) == 0);
    if (isWritten && !entry.dropped && isNamelessClass(entry)) {
      lines.push_back(files.place(entry) + ": error: " + describe(entry) +
                      " cannot be written: " + kNameless);
    }
  }
  return lines;
}
