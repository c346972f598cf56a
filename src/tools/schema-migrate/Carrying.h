// The library's part of a migration.
#ifndef SCHEMA_MIGRATE_CARRYING_H_
#define SCHEMA_MIGRATE_CARRYING_H_

#include <filesystem>
#include <vector>

#include "Migration.h"
#include "SchemaManager.h"
#include "Withdrawals.h"

// Takes a migration through the library, step by step.
class Carrying {
 public:
  // Reads both directories and the OIDs that the plan excludes. The migration
  // must have no errors, and outlive this. Throws Trouble when a file has been
  // changed meanwhile so that it cannot be read.
  explicit Carrying(const Migration &migration);

  // The steps, once each and in this order.

  // Compares. Throws InternalError unless what is left of the old installation
  // is what is planned to be carried.
  void compare();
  // Merges what is left into the release.
  void merge();
  // Withdraws what the list of modified OIDs names, if there is one.
  void withdraw();
  // Writes the files that the library can write to a directory, and copies the
  // others from the release. Throws Trouble when that fails. The library tells
  // nobody that it cannot write or close a file; so it writes to the directory
  // `scratch`, and what is there is copied.
  void write(const std::filesystem::path &directory,
             const std::filesystem::path &scratch);

  // What withdraw() did with each OID of its list.
  const std::vector<Withdrawal> &withdrawals() const { return m_withdrawals; }

 private:
  void readExcludedOids();

  const Migration &m_migration;
  SchemaManager m_old;
  SchemaManager m_new;
  std::vector<Withdrawal> m_withdrawals;
};

#endif  // SCHEMA_MIGRATE_CARRYING_H_
