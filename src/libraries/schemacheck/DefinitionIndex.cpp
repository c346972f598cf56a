#include "DefinitionIndex.h"

namespace schemacheck {

void DefinitionIndex::add(const Statement &statement) {
  if (!statement.isEntered()) {
    return;
  }
  const Definition &definition = *statement.definition;
  Tables &tables = m_tables[static_cast<std::size_t>(definition.kind)];
  tables.byKey.add(statement.key(), &statement);
  tables.byOid.add(statement.oid(), &statement);
  for (const Clause &clause : definition.clauses) {
    if (clause.known && clause.keyword == "NAME") {
      for (const Value &name : clause.values) {
        tables.byName.add(name.text, &statement);
      }
    }
  }
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
