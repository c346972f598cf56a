// The definitions of a schema directory, for a user who names them.
#ifndef SCHEMA_MIGRATE_SHOWINDEX_H_
#define SCHEMA_MIGRATE_SHOWINDEX_H_

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Inventory.h"
#include "SchemaManager.h"

// What a key leads to: all definitions that have it for a name or an OID.
struct Found {
  std::vector<Attribute *> attributes;
  std::vector<ObjectClass *> classes;
  std::vector<QORAttribute *> storage;

  bool empty() const {
    return attributes.empty() && classes.empty() && storage.empty();
  }
};

// Finds definitions by all their names, in any case, and by their OIDs, which
// are matched exactly. The definitions belong to the index.
class ShowIndex {
 public:
  // Reads the directory. Throws Trouble when it cannot be read.
  explicit ShowIndex(const std::filesystem::path &directory);

  Found find(const std::string &key) const;

  // The definition that a superior of another names: the one that has the name
  // for its OID, or else for its first name, or else another that has it for
  // any name; null if none has.
  Attribute *superiorOf(const Attribute &attribute,
                        const std::string &name) const;
  ObjectClass *superiorOf(const ObjectClass &objectClass,
                          const std::string &name) const;

  // The storage definition of an attribute type, or null.
  QORAttribute *storageOf(const Attribute &attribute) const;

  // The entry that a definition was read from.
  const Entry &entryOf(Attribute *attribute) const;
  const Entry &entryOf(ObjectClass *objectClass) const;
  const Entry &entryOf(QORAttribute *storage) const;

  const Inventory &files() const { return m_files; }

  // Every name and OID, as written.
  const std::set<std::string> &known() const { return m_known; }

 private:
  // A table of the manager.
  template <class Definition>
  using Table = std::map<std::string, Definition *>;

  // The definitions of one kind. One key may lead to several.
  template <class Definition>
  struct Keys {
    std::multimap<std::string, Definition *> byName;  // in lower case
    std::multimap<std::string, Definition *> byOid;
    std::set<Definition *> all;
  };

  template <class Definition>
  void add(const Table<Definition> &table, Keys<Definition> *keys);
  template <class Definition>
  const Entry &entryOf(Kind kind, const Table<Definition> &held,
                       Definition *definition) const;

  Inventory m_files;
  SchemaManager m_schema;
  Keys<Attribute> m_attributes;
  Keys<ObjectClass> m_classes;
  Keys<QORAttribute> m_storage;
  std::set<std::string> m_known;
};

#endif  // SCHEMA_MIGRATE_SHOWINDEX_H_
