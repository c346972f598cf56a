#include "Schemas.h"

#include "OidList.h"
#include "Trouble.h"

namespace fs = std::filesystem;

bool holds(const SchemaManager &schema, Kind kind, const std::string &key) {
  switch (kind) {
    case Kind::kAttributeType:
      return schema.attributeTypes().count(key) != 0;
    case Kind::kObjectClass:
      return schema.objectClasses().count(key) != 0;
    case Kind::kStorage:
      break;
  }
  return schema.storageDefinitions().count(key) != 0;
}

void requireRead(bool isRead, const fs::path &file) {
  if (!isRead) {
    throw Trouble(
        kFileError,
        errorAt(file, 0, "cannot read the file; was it changed just now?"));
  }
}

void readFiles(const Inventory &inventory, SchemaManager *schema) {
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    const char *name = kSchemaFiles[file].name;
    requireRead(!inventory.hasFile(file) || schema->readFile(name) == 0,
                inventory.directory() / name);
  }
  for (const Entry &entry : inventory.entries()) {
    requireRead(!entry.held() || holds(*schema, entry.kind, entry.key),
                inventory.directory() / kSchemaFiles[entry.file].name);
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
