// The two schemas of a migration.
#ifndef SCHEMA_MIGRATE_SCHEMAS_H_
#define SCHEMA_MIGRATE_SCHEMAS_H_

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "Inventory.h"
#include "SchemaManager.h"

// What became of a definition of the old installation. Each has one fate.
enum class Fate {
  kIdentical,  // the release has it in the same form
  kExcluded,   // its OID is excluded
  kAdded,      // the release had none of that name or OID
  kReplaced,   // took the place of the release's
  kRepeated,   // another of the same name or OID came before it
};

constexpr std::size_t kFates = 5;

// What became of an OID of the list of modified ones.
struct Withdrawal {
  std::string oid;
  // The definition that has the OID, in words; empty when none has.
  std::string definition;
  // Whether it is an attribute type with a storage definition, which goes or
  // stays with it.
  bool hasStorage;
  // Whether V3.modifiedschema recorded the OID until now.
  bool wasModified;
  // The file of the result that holds it all the same, because its OID is
  // recorded there; empty when it is gone. Known when the result is written.
  std::string staysIn;
};

// Reads the files of the inventory into `schema`, which is one for the same
// directory. Throws Trouble when one has been changed so that it cannot be
// read.
void readFiles(const Inventory &inventory, SchemaManager *schema);

// The old installation and the new release on their way through a migration.
class Schemas {
 public:
  // Reads both directories. Throws Trouble where one cannot be read.
  Schemas(const std::filesystem::path &oldDirectory,
          const std::filesystem::path &newDirectory);

  // The steps, once each and in this order; the first and the last may be left
  // out. Throw Trouble when they fail.
  void readExcludedOids(const std::filesystem::path &list);
  void compare();
  void merge();
  void withdraw(const std::filesystem::path &modifiedOids);

  const Inventory &oldFiles() const { return m_oldFiles; }
  const Inventory &newFiles() const { return m_newFiles; }

  // After merge() the new schema is the migration's result.
  SchemaManager *oldSchema() { return &m_oldSchema; }
  SchemaManager *newSchema() { return &m_newSchema; }

  // The fate of each of the old installation's entries; known after compare().
  const std::vector<Fate> &fates() const { return m_fates; }

  // What withdraw() did with each OID of its list.
  const std::vector<Withdrawal> &withdrawals() const { return m_withdrawals; }

  // Whether an entry of the old installation is, or will be, carried into the
  // result; known after compare().
  bool isCarried(const Entry &entry) const;

  // Whether the merge can add an entry of the old installation that the release
  // lacks; to be asked between compare() and merge().
  bool canBeAdded(const Entry &entry);

 private:
  Fate fateOf(const Entry &entry);

  Inventory m_oldFiles;
  Inventory m_newFiles;
  SchemaManager m_oldSchema;
  SchemaManager m_newSchema;
  std::vector<Fate> m_fates;
  std::vector<Withdrawal> m_withdrawals;
};

#endif  // SCHEMA_MIGRATE_SCHEMAS_H_
