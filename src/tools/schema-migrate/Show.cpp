#include "Show.h"

#include <algorithm>
#include <iostream>
#include <set>

#include "Nearest.h"
#include "SchemaLine.h"
#include "Trouble.h"

using schemacheck::lowerCase;

namespace {

template <class Definition>
void addEntries(const ShowIndex &index,
                const std::vector<Definition *> &definitions,
                std::set<const Entry *> *entries) {
  for (Definition *definition : definitions) {
    entries->insert(&index.entryOf(definition));
  }
}

// Warns of what a key leads to, or would lead to if a manager held it.
void warnOf(const ShowIndex &index, const std::vector<std::string> &keys) {
  std::set<const Entry *> shown;
  std::set<std::string> names;
  for (const std::string &key : keys) {
    const Found found = index.find(key);
    addEntries(index, found.attributes, &shown);
    addEntries(index, found.classes, &shown);
    names.insert(lowerCase(key));
  }
  for (const Entry &entry : index.files().entries()) {
    const bool isMeant =
        shown.count(&entry) != 0 ||
        (entry.kind != Kind::kStorage && names.count(entry.key) != 0) ||
        std::find(keys.begin(), keys.end(), entry.oid) != keys.end();
    if (isMeant && !entry.held()) {
      warn({index.files().warningOf(entry)});
    }
  }
}

// Finds what is to be shown.
class Shower {
 public:
  explicit Shower(const ShowIndex &index) : m_index(index) {}

  ShownKey show(const std::string &key) const {
    const Found found = m_index.find(key);
    ShownKey shown = {key, {}, ""};
    if (found.empty()) {
      shown.error = m_index.files().directory().string() +
                    ": error: nothing is called '" + key + "'" +
                    didYouMean(key, m_index.known());
    }
    for (Attribute *attribute : found.attributes) {
      shown.definitions.push_back(show(attribute));
    }
    for (ObjectClass *objectClass : found.classes) {
      shown.definitions.push_back(show(objectClass));
    }
    for (QORAttribute *storage : found.storage) {
      if (!isShownWithItsType(*storage, found.attributes)) {
        shown.definitions.push_back(describeOne(storage));
      }
    }
    return shown;
  }

 private:
  static bool isShownWithItsType(const QORAttribute &storage,
                                 const std::vector<Attribute *> &shown) {
    return std::any_of(shown.begin(), shown.end(),
                       [&storage](const Attribute *attribute) {
                         return attribute->oid() == storage.oid();
                       });
  }

  // What is shown of each kind.
  template <class Definition>
  ShownDefinition describeOne(Definition *definition) const {
    return {&m_index.entryOf(definition), definition,
            schemacheck::fieldsOf(*definition), schemaLine(definition)};
  }

  ShownDefinition show(Attribute *attribute) const {
    ShownDefinition shown = describeOne(attribute);
    addSuperiors(attribute, &shown);
    if (QORAttribute *storage = m_index.storageOf(*attribute)) {
      shown.storage = std::make_unique<ShownDefinition>(describeOne(storage));
    }
    return shown;
  }

  ShownDefinition show(ObjectClass *objectClass) const {
    ShownDefinition shown = describeOne(objectClass);
    for (const ObjectClass *superior : addSuperiors(objectClass, &shown)) {
      if (!superior->requiredAttributes().empty() ||
          !superior->optionalAttributes().empty()) {
        shown.inherited.push_back(
            {superior->names().empty() ? superior->oid()
                                       : superior->names().front(),
             superior->requiredAttributes(), superior->optionalAttributes()});
      }
    }
    return shown;
  }

  // Adds the superiors of a definition, theirs and so on, each once, nearest
  // first, and returns those that are defined.
  template <class Definition>
  std::vector<Definition *> addSuperiors(Definition *definition,
                                         ShownDefinition *shown) const {
    std::vector<Definition *> superiors;
    std::vector<Definition *> pending = {definition};
    std::set<Definition *> seen = {definition};
    std::set<std::string> missing;
    for (std::size_t next = 0; next < pending.size(); ++next) {
      for (const std::string &name : pending[next]->superiors()) {
        Definition *superior = m_index.superiorOf(*definition, name);
        if (superior == nullptr) {
          if (missing.insert(lowerCase(name)).second) {
            shown->superiors.push_back({name, nullptr});
          }
        } else if (seen.insert(superior).second) {
          shown->superiors.push_back({name, &m_index.entryOf(superior)});
          superiors.push_back(superior);
          pending.push_back(superior);
        }
      }
    }
    return superiors;
  }

  const ShowIndex &m_index;
};

// Prints what was found.
class Printer {
 public:
  explicit Printer(const Inventory &files) : m_files(files) {}

  void print(const ShownDefinition &shown) const {
    printPlace(*shown.entry);
    shown.definition->dump();
    std::cout << shown.line << '\n';
    for (const ShownSuperior &superior : shown.superiors) {
      print(superior);
    }
    for (const Inherited &inherited : shown.inherited) {
      printInherited("required", inherited.required, inherited.from);
      printInherited("optional", inherited.optional, inherited.from);
    }
    if (shown.storage) {
      print(*shown.storage);
    } else {
      std::cout << (shown.entry->kind == Kind::kAttributeType
                        ? "no storage definition\n\n"
                        : "\n");
    }
  }

 private:
  void printPlace(const Entry &entry) const {
    std::cout << describe(entry) << ", " << m_files.place(entry) << '\n';
  }

  void print(const ShownSuperior &superior) const {
    if (superior.entry == nullptr) {
      std::cout << "superior '" << superior.name << "' is not defined\n";
    } else {
      std::cout << "superior ";
      printPlace(*superior.entry);
    }
  }

  static void printInherited(const char *what,
                             const std::vector<std::string> &attributes,
                             const std::string &from) {
    if (attributes.empty()) {
      return;
    }
    std::cout << what << " by '" << from << "':";
    for (const std::string &attribute : attributes) {
      std::cout << ' ' << attribute;
    }
    std::cout << '\n';
  }

  const Inventory &m_files;
};

}  // namespace

Shown::Shown(const std::filesystem::path &directory,
             const std::vector<std::string> &keys)
    : m_index(directory) {
  warn(files().missingFiles());
  warnOf(m_index, keys);
  const Shower shower(m_index);
  for (const std::string &key : keys) {
    m_keys.push_back(shower.show(key));
  }
}

bool Shown::isComplete() const {
  return std::none_of(m_keys.begin(), m_keys.end(), [](const ShownKey &key) {
    return key.definitions.empty();
  });
}

void printShown(const Shown &shown) {
  const Printer printer(shown.files());
  for (const ShownKey &key : shown.keys()) {
    for (const ShownDefinition &definition : key.definitions) {
      printer.print(definition);
    }
    printError(key);
  }
}

void printError(const ShownKey &key) {
  if (!key.error.empty()) {
    warn({key.error});
  }
}
