#include "Show.h"

#include <algorithm>
#include <iostream>
#include <set>

#include "Fields.h"
#include "Nearest.h"
#include "SchemaLine.h"
#include "ShowIndex.h"
#include "Trouble.h"

using schemacheck::lowerCase;

namespace {

class Shower {
 public:
  explicit Shower(const std::filesystem::path &directory) : m_index(directory) {
    warn(m_index.files().missingFiles());
  }

  // Warns of what a key leads to, or would lead to if a manager held it.
  void warnOf(const std::vector<std::string> &keys) const {
    std::set<const Entry *> shown;
    std::set<std::string> names;
    for (const std::string &key : keys) {
      const Found found = m_index.find(key);
      addEntries(found.attributes, &shown);
      addEntries(found.classes, &shown);
      names.insert(lowerCase(key));
    }
    for (const Entry &entry : m_index.files().entries()) {
      const bool isMeant =
          shown.count(&entry) != 0 ||
          (entry.kind != Kind::kStorage && names.count(entry.key) != 0) ||
          std::find(keys.begin(), keys.end(), entry.oid) != keys.end();
      if (isMeant && !entry.held()) {
        warn({m_index.files().warningOf(entry)});
      }
    }
  }

  bool show(const std::string &key) const {
    const Found found = m_index.find(key);
    if (found.empty()) {
      reportUnknown(key);
      return false;
    }
    for (Attribute *attribute : found.attributes) {
      print(attribute);
    }
    for (ObjectClass *objectClass : found.classes) {
      print(objectClass);
    }
    for (QORAttribute *storage : found.storage) {
      if (!isShownWithItsType(*storage, found.attributes)) {
        print(storage);
      }
    }
    return true;
  }

 private:
  template <class Definition>
  void addEntries(const std::vector<Definition *> &definitions,
                  std::set<const Entry *> *entries) const {
    for (Definition *definition : definitions) {
      entries->insert(&m_index.entryOf(definition));
    }
  }

  static bool isShownWithItsType(const QORAttribute &storage,
                                 const std::vector<Attribute *> &shown) {
    return std::any_of(shown.begin(), shown.end(),
                       [&storage](const Attribute *attribute) {
                         return attribute->oid() == storage.oid();
                       });
  }

  // What is shown of each kind: the place, the fields, the line.
  template <class Definition>
  void printDefinition(Definition *definition) const {
    printPlace(m_index.entryOf(definition));
    definition->dump();
    std::cout << schemaLine(definition) << '\n';
  }

  void printPlace(const Entry &entry) const {
    std::cout << describe(entry) << ", " << m_index.files().place(entry)
              << '\n';
  }

  void print(QORAttribute *storage) const {
    printDefinition(storage);
    std::cout << '\n';
  }

  void print(Attribute *attribute) const {
    printDefinition(attribute);
    printSuperiors(attribute);
    if (QORAttribute *storage = m_index.storageOf(*attribute)) {
      print(storage);
    } else {
      std::cout << "no storage definition\n\n";
    }
  }

  void print(ObjectClass *objectClass) const {
    printDefinition(objectClass);
    for (const ObjectClass *superior : printSuperiors(objectClass)) {
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
  std::vector<Definition *> printSuperiors(Definition *definition) const {
    std::vector<Definition *> superiors;
    std::vector<Definition *> pending = {definition};
    std::set<Definition *> seen = {definition};
    std::set<std::string> missing;
    for (std::size_t next = 0; next < pending.size(); ++next) {
      for (const std::string &name : pending[next]->superiors()) {
        Definition *superior = m_index.superiorOf(*definition, name);
        if (superior == nullptr) {
          if (missing.insert(lowerCase(name)).second) {
            std::cout << "superior '" << name << "' is not defined\n";
          }
        } else if (seen.insert(superior).second) {
          std::cout << "superior ";
          printPlace(m_index.entryOf(superior));
          superiors.push_back(superior);
          pending.push_back(superior);
        }
      }
    }
    return superiors;
  }

  void reportUnknown(const std::string &key) const {
    std::cerr << m_index.files().directory().string()
              << ": error: nothing is called '" << key << "'"
              << didYouMean(key, m_index.known()) << '\n';
  }

  ShowIndex m_index;
};

}  // namespace

bool show(const std::filesystem::path &directory,
          const std::vector<std::string> &keys) {
  const Shower shower(directory);
  shower.warnOf(keys);
  bool all = true;
  for (const std::string &key : keys) {
    all = shower.show(key) && all;
  }
  return all;
}
