#include "DefinitionIndex.h"

namespace schemacheck {

void DefinitionIndex::add(const Statement &statement) {
  if (!statement.isEntered()) {
    return;
  }
  Tables &tables =
      m_tables[static_cast<std::size_t>(statement.definition->kind)];
  tables.byKey.emplace(statement.key(), &statement);
  tables.byOid.emplace(statement.oid(), &statement);
  for (const Value *name : statement.valuesOf("NAME")) {
    tables.byName.emplace(lowerCase(name->text), &statement);
  }
}

const Statement *DefinitionIndex::find(const Table &table,
                                       const std::string &key) {
  const auto found = table.find(key);
  return found == table.end() ? nullptr : found->second;
}

const Statement *DefinitionIndex::holder(Kind kind,
                                         const std::string &key) const {
  return find(of(kind).byKey, key);
}

const Statement *DefinitionIndex::withOid(Kind kind,
                                          const std::string &oid) const {
  return find(of(kind).byOid, oid);
}

const Statement *DefinitionIndex::withName(Kind kind,
                                           const std::string &name) const {
  return find(of(kind).byName, lowerCase(name));
}

const Statement *DefinitionIndex::target(Kind kind,
                                         const std::string &reference) const {
  const Statement *named = withName(kind, reference);
  return named != nullptr ? named : withOid(kind, reference);
}

}  // namespace schemacheck
