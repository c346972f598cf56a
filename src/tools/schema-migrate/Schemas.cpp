#include "Schemas.h"

#include "OidList.h"
#include "Trouble.h"

namespace fs = std::filesystem;

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
