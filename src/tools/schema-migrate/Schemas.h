// The two schemas that a command compares.
#ifndef SCHEMA_MIGRATE_SCHEMAS_H_
#define SCHEMA_MIGRATE_SCHEMAS_H_

#include <filesystem>

#include "Inventory.h"
#include "SchemaManager.h"

// Whether the schema's table of the kind holds something under the key.
bool holds(const SchemaManager &schema, Kind kind, const std::string &key);

// Throws Trouble unless `isRead`: the library has read of the file what had
// been seen there before. (It takes an error while it reads for the end of the
// file, so that its result alone does not say.)
void requireRead(bool isRead, const std::filesystem::path &file);

// Reads the files of the inventory into `schema`, which is one for the same
// directory. Throws Trouble when one cannot be read.
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
