// The two schemas that a command compares.
#ifndef SCHEMA_MIGRATE_SCHEMAS_H_
#define SCHEMA_MIGRATE_SCHEMAS_H_

#include <filesystem>

#include "Inventory.h"
#include "SchemaManager.h"

// Reads the files of the inventory into `schema`, which is one for the same
// directory. Throws Trouble when one has been changed so that it cannot be
// read.
void readFiles(const Inventory &inventory, SchemaManager *schema);

// The schemas of an old installation and of a new release, to be looked at.
class Schemas {
 public:
  // Reads both directories. Throws Trouble where one cannot be read.
  Schemas(const std::filesystem::path &oldDirectory,
          const std::filesystem::path &newDirectory);

  // Throws Trouble when the list cannot be read.
  void readExcludedOids(const std::filesystem::path &list);

  const Inventory &oldFiles() const { return m_oldFiles; }
  const Inventory &newFiles() const { return m_newFiles; }
  SchemaManager *oldSchema() { return &m_oldSchema; }
  SchemaManager *newSchema() { return &m_newSchema; }

 private:
  Inventory m_oldFiles;
  Inventory m_newFiles;
  SchemaManager m_oldSchema;
  SchemaManager m_newSchema;
};

#endif  // SCHEMA_MIGRATE_SCHEMAS_H_
