#include "Schemas.h"

#include <set>

#include "OidList.h"
#include "Trouble.h"
#include "Untraced.h"

namespace fs = std::filesystem;

namespace {

// Whether the schema's table of the kind holds something under the key.
bool holds(const SchemaManager &schema, const Entry &entry) {
  switch (entry.kind) {
    case Kind::kAttributeType:
      return schema.attributeTypes().count(entry.key) != 0;
    case Kind::kObjectClass:
      return schema.objectClasses().count(entry.key) != 0;
    case Kind::kStorage:
      break;
  }
  return schema.storageDefinitions().count(entry.key) != 0;
}

// What an OID leads to first, in words; empty when it leads to nothing.
std::string describeByOid(const SchemaManager &schema, const std::string &oid) {
  const auto objectClass = schema.objectClassesByOid().find(oid);
  if (objectClass != schema.objectClassesByOid().end()) {
    return describe(Kind::kObjectClass, objectClass->second->getFirstName(),
                    oid);
  }
  const auto attribute = schema.attributeTypesByOid().find(oid);
  if (attribute != schema.attributeTypesByOid().end()) {
    return describe(Kind::kAttributeType, attribute->second->getFirstName(),
                    oid);
  }
  return schema.storageDefinitions().count(oid) != 0
             ? describe(Kind::kStorage, "", oid)
             : "";
}

}  // namespace

void readFiles(const Inventory &inventory, SchemaManager *schema) {
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    const char *name = kSchemaFiles[file].name;
    if (inventory.hasFile(file) && schema->readFile(name) != 0) {
      throw Trouble(errorAt(inventory.directory() / name, 0,
                            "cannot read the file; was it changed just now?"));
    }
  }
}

Schemas::Schemas(const fs::path &oldDirectory, const fs::path &newDirectory)
    : m_oldFiles(oldDirectory),
      m_newFiles(newDirectory),
      m_oldSchema(oldDirectory.string()),
      m_newSchema(newDirectory.string()) {
  readFiles(m_oldFiles, &m_oldSchema);
  readFiles(m_newFiles, &m_newSchema);
}

void Schemas::readExcludedOids(const fs::path &list) {
  ::readExcludedOids(list, &m_oldSchema);
}

void Schemas::compare() {
  if (m_oldSchema.compSchemas(&m_newSchema) == 0) {
    throw Trouble("error: the comparison of the two schemas failed");
  }
  for (const Entry &entry : m_oldFiles.entries()) {
    m_fates.push_back(fateOf(entry));
  }
}

Fate Schemas::fateOf(const Entry &entry) {
  const Untraced untraced;
  if (!entry.held()) {
    return Fate::kRepeated;
  }
  if (!holds(m_oldSchema, entry)) {
    return m_oldSchema.isExcluded(entry.oid) != 0 ? Fate::kExcluded
                                                  : Fate::kIdentical;
  }
  return holds(m_newSchema, entry) ? Fate::kReplaced : Fate::kAdded;
}

bool Schemas::isCarried(const Entry &entry) const {
  const auto index =
      static_cast<std::size_t>(&entry - m_oldFiles.entries().data());
  return m_fates[index] == Fate::kAdded || m_fates[index] == Fate::kReplaced;
}

bool Schemas::canBeAdded(const Entry &entry) {
  const Untraced untraced;
  return m_newSchema.findOidInSet(&m_oldSchema, entry.oid) != nullptr;
}

void Schemas::merge() {
  if (m_newSchema.mergeSchemas(&m_oldSchema) == 0) {
    throw Trouble("error: the merge of the two schemas failed");
  }
}

// The library does not say which OIDs it knew; so that is found out before.
void Schemas::withdraw(const fs::path &modifiedOids) {
  std::set<std::string> modified;
  for (const Entry &entry : m_newFiles.entries()) {
    if (entry.file == schemacheck::kModifiedSchema && !entry.dropped) {
      modified.insert(entry.oid);
    }
  }
  for (const std::string &oid : readOidList(modifiedOids)) {
    const bool hasStorage = m_newSchema.objectClassesByOid().count(oid) == 0 &&
                            m_newSchema.attributeTypesByOid().count(oid) != 0 &&
                            m_newSchema.storageDefinitions().count(oid) != 0;
    m_withdrawals.push_back({oid, describeByOid(m_newSchema, oid), hasStorage,
                             modified.count(oid) != 0, ""});
  }
  if (m_newSchema.modifySchema(modifiedOids.string()) != 0) {
    throw Trouble(errorAt(modifiedOids, 0, "cannot open the file"));
  }
}
