#include "DefinitionIndex.h"

namespace schemacheck {

DefinitionIndex::DefinitionIndex(const SchemaDirectory &directory) {
  for (const Statement &statement : directory.statements()) {
    if (!isEntered(statement)) {
      continue;
    }
    Tables &tables =
        m_tables[static_cast<std::size_t>(statement.definition->kind)];
    tables.byKey.emplace(statement.key(), &statement);
    tables.byOid.emplace(statement.oid(), &statement);
    for (const Value *name : valuesOf(statement, "NAME")) {
      tables.byName.emplace(lowerCase(name->text), &statement);
    }
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

bool DefinitionIndex::isEntered(const Statement &statement) {
  return statement.definition->oid || statement.section->opener == '=';
}

std::vector<const Value *> valuesOf(const Statement &statement,
                                    std::string_view keyword) {
  std::vector<const Value *> values;
  for (const Clause &clause : statement.definition->clauses) {
    if (clause.known && clause.keyword == keyword) {
      for (const Value &value : clause.values) {
        values.push_back(&value);
      }
    }
  }
  return values;
}

}  // namespace schemacheck
