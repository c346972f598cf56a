#include "DefinitionIndex.h"

namespace schemacheck {

bool DefinitionIndex::add(const Statement &statement) {
  if (!statement.isEntered()) {
    return false;
  }
  Tables &tables =
      m_tables[static_cast<std::size_t>(statement.definition->kind)];
  const Statement *holder = tables.byKey.add(statement.key(), &statement);
  tables.byOid.add(statement.oid(), &statement);
  statement.forValuesOf("NAME", [&](const Value &name) {
    tables.byName.add(name.text, &statement);
  });
  return holder == &statement;
}

const Statement *DefinitionIndex::holder(Kind kind,
                                         std::string_view key) const {
  return of(kind).byKey.find(key);
}

const Statement *DefinitionIndex::withOid(Kind kind,
                                          std::string_view oid) const {
  return of(kind).byOid.find(oid);
}

const Statement *DefinitionIndex::withName(Kind kind,
                                           std::string_view name) const {
  return of(kind).byName.find(name);
}

const Statement *DefinitionIndex::target(Kind kind,
                                         std::string_view reference) const {
  const Statement *named = withName(kind, reference);
  return named != nullptr ? named : withOid(kind, reference);
}

}  // namespace schemacheck
