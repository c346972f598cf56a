#include "Show.h"

#include <iostream>
#include <map>
#include <set>

#include "Inventory.h"
#include "Nearest.h"
#include "SchemaLine.h"
#include "SchemaManager.h"
#include "Schemas.h"
#include "Trouble.h"

namespace {

std::string lower(const std::string &text) { return Attribute().convert(text); }

// Definitions by all their names, in lower case, and by their OIDs. One key may
// lead to several.
template <class Definition>
using Index = std::multimap<std::string, Definition *>;

class Shower {
 public:
  explicit Shower(const std::filesystem::path &directory)
      : m_files(directory), m_schema(directory.string()) {
    readFiles(m_files, &m_schema);
    warn(m_files.ignoredEntries());
    add(m_schema.attributeTypes(), &m_attributes);
    add(m_schema.attributeTypesByOid(), &m_attributes);
    add(m_schema.objectClasses(), &m_classes);
    add(m_schema.objectClassesByOid(), &m_classes);
    add(m_schema.storageDefinitions(), &m_storage);
  }

  bool show(const std::string &key) {
    const bool known = m_attributes.count(lower(key)) != 0 ||
                       m_classes.count(lower(key)) != 0 ||
                       m_storage.count(lower(key)) != 0;
    if (!known) {
      reportUnknown(key);
      return false;
    }
    forEach(m_attributes, key, [this](Attribute *a) { print(a); });
    forEach(m_classes, key, [this](ObjectClass *c) { print(c); });
    if (m_attributes.count(lower(key)) == 0) {
      forEach(m_storage, key, [this](QORAttribute *s) { print(s); });
    }
    return true;
  }

 private:
  // Adds the definitions of a table that are not in the index yet.
  template <class Definition>
  void add(const std::map<std::string, Definition *> &table,
           Index<Definition> *index) {
    for (const auto &entry : table) {
      Definition *definition = entry.second;
      std::set<std::string> keys = {definition->oid()};
      keys.insert(definition->names().begin(), definition->names().end());
      m_known.insert(keys.begin(), keys.end());
      for (const std::string &key : keys) {
        if (!contains(*index, lower(key), definition)) {
          index->emplace(lower(key), definition);
        }
      }
    }
  }

  template <class Definition>
  static bool contains(const Index<Definition> &index, const std::string &key,
                       const Definition *definition) {
    const auto range = index.equal_range(key);
    for (auto entry = range.first; entry != range.second; ++entry) {
      if (entry->second == definition) {
        return true;
      }
    }
    return false;
  }

  template <class Definition, class Action>
  static void forEach(const Index<Definition> &index, const std::string &key,
                      const Action &action) {
    const auto range = index.equal_range(lower(key));
    for (auto entry = range.first; entry != range.second; ++entry) {
      action(entry->second);
    }
  }

  // The definition that a superior names: the one that has it for its first
  // name, or else another that has it for a name or an OID; null if none has.
  template <class Definition>
  static Definition *find(const Index<Definition> &index,
                          const std::string &name) {
    const auto range = index.equal_range(lower(name));
    for (auto entry = range.first; entry != range.second; ++entry) {
      if (entry->second->getFirstNameLower() == entry->first) {
        return entry->second;
      }
    }
    return range.first == range.second ? nullptr : range.first->second;
  }

  // The entry that a definition was read from.
  template <class Definition>
  const Entry &entryOf(Kind kind,
                       const std::map<std::string, Definition *> &owning,
                       Definition *definition) const {
    const std::string key = kind == Kind::kStorage
                                ? definition->oid()
                                : definition->getFirstNameLower();
    const auto holder = owning.find(key);
    return holder != owning.end() && holder->second == definition
               ? *m_files.holder(kind, key)
               : *m_files.firstWithOid(kind, definition->oid());
  }

  const Entry &entryOf(Attribute *attribute) const {
    return entryOf(Kind::kAttributeType, m_schema.attributeTypes(), attribute);
  }
  const Entry &entryOf(ObjectClass *objectClass) const {
    return entryOf(Kind::kObjectClass, m_schema.objectClasses(), objectClass);
  }
  const Entry &entryOf(QORAttribute *storage) const {
    return entryOf(Kind::kStorage, m_schema.storageDefinitions(), storage);
  }

  // What is shown of each kind: the place, the fields, the line.
  template <class Definition>
  void printDefinition(Definition *definition) const {
    const Entry &entry = entryOf(definition);
    std::cout << describe(entry) << ", " << m_files.place(entry) << '\n';
    definition->dump();
    std::cout << schemaLine(definition) << '\n';
  }

  void print(QORAttribute *storage) const {
    printDefinition(storage);
    std::cout << '\n';
  }

  void print(Attribute *attribute) const {
    printDefinition(attribute);
    printSuperiors(attribute, m_attributes);
    const auto storage = m_schema.storageDefinitions().find(attribute->oid());
    if (storage == m_schema.storageDefinitions().end()) {
      std::cout << "no storage definition\n\n";
    } else {
      print(storage->second);
    }
  }

  void print(ObjectClass *objectClass) const {
    printDefinition(objectClass);
    const std::vector<ObjectClass *> superiors =
        printSuperiors(objectClass, m_classes);
    for (const ObjectClass *superior : superiors) {
      printInherited("required", superior->requiredAttributes(), *superior);
      printInherited("optional", superior->optionalAttributes(), *superior);
    }
    std::cout << '\n';
  }

  static void printInherited(const char *what,
                             const std::vector<std::string> &attributes,
                             const ObjectClass &superior) {
    if (attributes.empty()) {
      return;
    }
    std::cout << what << " by '"
              << (superior.names().empty() ? superior.oid()
                                           : superior.names().front())
              << "':";
    for (const std::string &attribute : attributes) {
      std::cout << ' ' << attribute;
    }
    std::cout << '\n';
  }

  // Prints the superiors of a definition, theirs and so on, each once, nearest
  // first, and returns those that are defined.
  template <class Definition>
  std::vector<Definition *> printSuperiors(
      Definition *definition, const Index<Definition> &index) const {
    std::vector<Definition *> superiors;
    std::vector<Definition *> pending = {definition};
    std::set<Definition *> seen = {definition};
    std::set<std::string> missing;
    for (std::size_t next = 0; next < pending.size(); ++next) {
      for (const std::string &name : pending[next]->superiors()) {
        Definition *superior = find(index, name);
        if (superior == nullptr) {
          if (missing.insert(lower(name)).second) {
            std::cout << "superior '" << name << "' is not defined\n";
          }
        } else if (seen.insert(superior).second) {
          const Entry &entry = entryOf(superior);
          std::cout << "superior " << describe(entry) << ", "
                    << m_files.place(entry) << '\n';
          superiors.push_back(superior);
          pending.push_back(superior);
        }
      }
    }
    return superiors;
  }

  void reportUnknown(const std::string &key) const {
    std::cerr << m_files.directory().string() << ": error: nothing is called '"
              << key << "'";
    const char *before = "; did you mean ";
    for (const std::string &name : nearest(key, m_known)) {
      std::cerr << before << "'" << name << "'";
      before = " or ";
    }
    std::cerr << '\n';
  }

  Inventory m_files;
  SchemaManager m_schema;
  Index<Attribute> m_attributes;
  Index<ObjectClass> m_classes;
  Index<QORAttribute> m_storage;
  std::set<std::string> m_known;  // every name and OID, as written
};

}  // namespace

bool show(const std::filesystem::path &directory,
          const std::vector<std::string> &keys) {
  Shower shower(directory);
  bool all = true;
  for (const std::string &key : keys) {
    all = shower.show(key) && all;
  }
  return all;
}
