// What stands in the files of a schema directory, found out in a way that no
// input can keep from ending.
#ifndef SCHEMA_MIGRATE_INVENTORY_H_
#define SCHEMA_MIGRATE_INVENTORY_H_

#include <array>
#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "SchemaFiles.h"

using schemacheck::Kind;
using schemacheck::kindName;
using schemacheck::kKinds;
using schemacheck::kSchemaFiles;
using schemacheck::SchemaFile;

// A definition as the library reads it.
struct Entry {
  Kind kind;
  std::size_t file;  // an index of kSchemaFiles
  int line;          // on which it begins
  std::string oid;
  std::string name;  // the first name; empty for storage definitions
  // What a manager files it under: the first name in lower case, or the OID.
  std::string key;
  // The entry that took the key before, an index of entries(); kNone if this
  // one has it.
  std::size_t shadowedBy;
  // Whether a later entry has the same key.
  bool repeated;
  // Whether a manager leaves it out for want of an OID.
  bool dropped;

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  // Whether a manager's table holds it.
  bool held() const { return !dropped && shadowedBy == kNone; }
};

// A definition in words: "attribute type 'cn' (2.5.4.3)". The name is left out
// when it is empty.
std::string describe(Kind kind, const std::string &name,
                     const std::string &oid);
std::string describe(const Entry &entry);

// Reads the files of one directory, definition by definition, as
// SchemaManager::readFile() does, through a scanner that stops a reading which
// would never end. When it has been constructed, readFile() on each file that
// is there ends and succeeds, as long as nobody changes the files.
class Inventory {
 public:
  // Throws Trouble when `directory` is not a directory, holds none of the
  // files, or holds one that is not a regular file, cannot be read, or does not
  // parse.
  explicit Inventory(std::filesystem::path directory);

  const std::filesystem::path &directory() const { return m_directory; }
  bool hasFile(std::size_t file) const { return m_present[file]; }
  const std::vector<Entry> &entries() const { return m_entries; }

  // The entry of this kind that a manager holds under `key`, or null.
  const Entry *holder(Kind kind, const std::string &key) const;
  // The first entry of this kind that has the OID, or null.
  const Entry *firstWithOid(Kind kind, const std::string &oid) const;

  // The files that the directory lacks, as one line, "DIR: warning: not there:
  // V3.user.oc ..."; none if it is complete.
  std::vector<std::string> missingFiles() const;

  // Whether a manager leads to the entry by its OID alone: another has taken
  // its name, but none its OID.
  bool isFoundByOidOnly(const Entry &entry) const;

  // Why no name leads to an entry that is not held: "FILE:LINE: warning:
  // MESSAGE".
  std::string warningOf(const Entry &entry) const;
  // The warnings of all such entries.
  std::vector<std::string> ignoredEntries() const;

  // "FILE:LINE" of an entry.
  std::string place(const Entry &entry) const;

 private:
  void readFile(std::size_t file, const std::string &text);
  void add(Entry entry);

  std::filesystem::path m_directory;
  std::array<bool, kSchemaFiles.size()> m_present{};
  std::vector<Entry> m_entries;  // in the order read
  // The entry that has a key, and the first that has an OID, for each kind:
  // indexes of m_entries.
  using Index = std::map<std::string, std::size_t>;
  const Entry *find(const Index &index, const std::string &key) const;
  std::array<Index, kKinds> m_holders;
  std::array<Index, kKinds> m_firstWithOid;
};

#endif  // SCHEMA_MIGRATE_INVENTORY_H_
