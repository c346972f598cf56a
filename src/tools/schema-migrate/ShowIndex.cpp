#include "ShowIndex.h"

#include <algorithm>

#include "Fields.h"
#include "Schemas.h"

using schemacheck::lowerCase;

namespace {

template <class Definition>
Definition *findIn(const std::map<std::string, Definition *> &table,
                   const std::string &key) {
  const auto found = table.find(key);
  return found == table.end() ? nullptr : found->second;
}

// Those that have the key for a name, and then those that have it for an OID.
template <class Keys, class Definition>
void findAll(const Keys &keys, const std::string &key,
             std::vector<Definition *> *found) {
  const auto named = keys.byName.equal_range(lowerCase(key));
  for (auto entry = named.first; entry != named.second; ++entry) {
    found->push_back(entry->second);
  }
  const auto numbered = keys.byOid.equal_range(key);
  for (auto entry = numbered.first; entry != numbered.second; ++entry) {
    if (std::find(found->begin(), found->end(), entry->second) ==
        found->end()) {
      found->push_back(entry->second);
    }
  }
}

template <class Keys, class Definition>
Definition *findSuperior(const std::map<std::string, Definition *> &byOid,
                         const std::map<std::string, Definition *> &byFirstName,
                         const Keys &keys, const std::string &name) {
  Definition *superior = findIn(byOid, name);
  if (superior == nullptr) {
    superior = findIn(byFirstName, lowerCase(name));
  }
  if (superior == nullptr) {
    const auto alias = keys.byName.find(lowerCase(name));
    superior = alias == keys.byName.end() ? nullptr : alias->second;
  }
  return superior;
}

}  // namespace

ShowIndex::ShowIndex(const std::filesystem::path &directory)
    : m_files(directory), m_schema(directory.string()) {
  readFiles(m_files, &m_schema);
  add(m_schema.attributeTypes(), &m_attributes);
  add(m_schema.attributeTypesByOid(), &m_attributes);
  add(m_schema.objectClasses(), &m_classes);
  add(m_schema.objectClassesByOid(), &m_classes);
  add(m_schema.storageDefinitions(), &m_storage);
}

// Adds the definitions of a table that are not there yet.
template <class Definition>
void ShowIndex::add(const Table<Definition> &table, Keys<Definition> *keys) {
  for (const auto &entry : table) {
    Definition *definition = entry.second;
    if (!keys->all.insert(definition).second) {
      continue;
    }
    keys->byOid.emplace(definition->oid(), definition);
    m_known.insert(definition->oid());
    std::set<std::string> names;
    for (const std::string &name : definition->names()) {
      names.insert(lowerCase(name));
      m_known.insert(name);
    }
    for (const std::string &name : names) {
      keys->byName.emplace(name, definition);
    }
  }
}

Found ShowIndex::find(const std::string &key) const {
  Found found;
  findAll(m_attributes, key, &found.attributes);
  findAll(m_classes, key, &found.classes);
  findAll(m_storage, key, &found.storage);
  return found;
}

Attribute *ShowIndex::superiorOf(const Attribute & /*attribute*/,
                                 const std::string &name) const {
  return findSuperior(m_schema.attributeTypesByOid(), m_schema.attributeTypes(),
                      m_attributes, name);
}

ObjectClass *ShowIndex::superiorOf(const ObjectClass & /*objectClass*/,
                                   const std::string &name) const {
  return findSuperior(m_schema.objectClassesByOid(), m_schema.objectClasses(),
                      m_classes, name);
}

QORAttribute *ShowIndex::storageOf(const Attribute &attribute) const {
  return findIn(m_schema.storageDefinitions(), attribute.oid());
}

template <class Definition>
const Entry &ShowIndex::entryOf(Kind kind, const Table<Definition> &held,
                                Definition *definition) const {
  const std::string key = kind == Kind::kStorage
                              ? definition->oid()
                              : definition->getFirstNameLower();
  return findIn(held, key) == definition
             ? *m_files.holder(kind, key)
             : *m_files.firstWithOid(kind, definition->oid());
}

const Entry &ShowIndex::entryOf(Attribute *attribute) const {
  return entryOf(Kind::kAttributeType, m_schema.attributeTypes(), attribute);
}

const Entry &ShowIndex::entryOf(ObjectClass *objectClass) const {
  return entryOf(Kind::kObjectClass, m_schema.objectClasses(), objectClass);
}

const Entry &ShowIndex::entryOf(QORAttribute *storage) const {
  return entryOf(Kind::kStorage, m_schema.storageDefinitions(), storage);
}
