// A schema as its users see it, small, slow and obvious: what the tests of
// SchemaManager with random operations compare it with.
#ifndef TESTS_LIBSCHEMA_SCHEMAMODEL_H_
#define TESTS_LIBSCHEMA_SCHEMAMODEL_H_

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"

namespace model {

// The indexes of kKinds.
enum : std::size_t { kType, kClass, kStorage, kAllKinds };

inline std::string lower(std::string text) {
  for (char &c : text) {
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return text;
}

struct Definition {
  std::size_t kind;
  std::string oid;
  Names names;  // of storage definitions: none
  std::string text;
  bool leaked = false;  // there is a moment from which nobody owns it

  std::string key() const {
    return kind == kStorage ? oid : names.empty() ? "" : lower(names[0]);
  }

  bool equals(const Definition &other) const {
    return oid == other.oid && text == other.text &&
           names.size() == other.names.size() &&
           std::all_of(names.begin(), names.end(), [&](const auto &name) {
             return std::any_of(other.names.begin(), other.names.end(),
                                [&](const auto &candidate) {
                                  return lower(name) == lower(candidate);
                                });
           });
  }

  std::string written() const {
    return kind == kType    ? typeLine(oid, names, text)
           : kind == kClass ? classLine(oid, names, text)
                            : storageLine(oid, text);
  }

  std::string source() const {
    return kind == kClass && names.empty() ? namelessClassLine(oid, text)
                                           : written();
  }
};

using Table = std::map<std::string, Definition *>;

inline Definition *find(const Table &table, const std::string &key) {
  const auto entry = table.find(key);
  return entry == table.end() ? nullptr : entry->second;
}

// The tables and sets of a schema. It owns nothing.
struct Schema {
  Table owning[3];
  Table byOid[2];  // of types and classes
  std::map<std::string, std::set<std::string>> files;
  std::set<std::string> excluded;

  void read(const std::string &file, const std::vector<Definition *> &added) {
    for (Definition *definition : added) {
      if (!owning[definition->kind]
               .emplace(definition->key(), definition)
               .second) {
        definition->leaked = true;
      }
      if (definition->kind != kStorage) {
        byOid[definition->kind].emplace(definition->oid, definition);
      }
      files[file].insert(definition->oid);
    }
  }

  unsigned int removeFromFiles(const std::string &oid) {
    for (const char *file : kSearchedFiles) {
      if (files[file].erase(oid) != 0) {
        return 0;
      }
    }
    return 32;
  }

  void compare(std::size_t kind, const Schema &other) {
    const Table theirs = other.owning[kind];  // may be this one
    const Table mine = owning[kind];
    for (const auto &[key, definition] : mine) {
      const Definition *match = find(theirs, key);
      if (excluded.count(definition->oid) != 0 ||
          (match != nullptr && definition->equals(*match))) {
        owning[kind].erase(key);
        if (kind != kStorage) {
          removeFromFiles(definition->oid);
        }
      }
    }
  }

  Definition *lookUp(std::size_t kind, const std::string &key) const {
    Definition *named = find(owning[kind], kind == kType ? lower(key) : key);
    return named != nullptr || kind == kStorage ? named
                                                : find(byOid[kind], key);
  }

  // The one that gives way to a definition that has the key of `namesake`.
  Definition *replacedBy(Definition *definition, Definition *namesake) const {
    if (definition->oid != namesake->oid) {
      return namesake;
    }
    Definition *found = lookUp(definition->kind, definition->oid);
    return found != nullptr ? found : namesake;
  }

  unsigned int merge(std::size_t kind, Schema *source) {
    if (source == this) {
      return 1;
    }
    for (const auto &[key, definition] : source->owning[kind]) {
      if (Definition *namesake = find(owning[kind], key)) {
        const Definition *replaced = replacedBy(definition, namesake);
        owning[kind].erase(replaced->key());
        if (kind != kStorage) {
          byOid[kind].erase(replaced->oid);
        }
      } else {
        const auto file =
            std::find_if(std::begin(kSearchedFiles), std::end(kSearchedFiles),
                         [&, oid = definition->oid](const char *name) {
                           return source->files[name].count(oid) != 0;
                         });
        if (file == std::end(kSearchedFiles)) {
          return 0;
        }
        files[*file].insert(definition->oid);
      }
      owning[kind].emplace(key, definition);
      if (kind != kStorage) {
        byOid[kind].emplace(definition->oid, definition);
        definition->leaked = definition->leaked ||
                             (find(owning[kind], key) != definition &&
                              find(byOid[kind], definition->oid) == definition);
      }
    }
    const Table moved = source->owning[kind];
    source->owning[kind].clear();
    for (const auto &[key, definition] : moved) {
      if (kind != kStorage) {
        source->byOid[kind].erase(definition->oid);
      }
    }
    return 1;
  }

  // What a file with these OIDs holds.
  std::string written(const std::set<std::string> &oids) const {
    std::string text = oids.empty() ? "" : kHeaderLine;
    for (const std::string &oid : oids) {
      if (const Definition *objectClass = find(byOid[kClass], oid)) {
        text += objectClass->written();
      } else if (const Definition *type = find(byOid[kType], oid)) {
        text += type->written();
        const Definition *storage = find(owning[kStorage], oid);
        text += storage != nullptr ? storage->written() : "";
      }
    }
    return text;
  }
};

}  // namespace model

#endif  // TESTS_LIBSCHEMA_SCHEMAMODEL_H_
