// The definitions of a directory by their names and OIDs.
#ifndef SCHEMACHECK_DEFINITIONINDEX_H_
#define SCHEMACHECK_DEFINITIONINDEX_H_

#include <array>
#include <string_view>

#include "SchemaFiles.h"
#include "Statement.h"
#include "StatementTable.h"

namespace schemacheck {

// Finds the first definition, in the order of reading, that has a key, among
// those that a manager enters in a table.
class DefinitionIndex {
 public:
  // To be called for all definitions, in that order. They are not owned, and
  // must stay where they are. Returns whether it is the first that is entered
  // under its key.
  bool add(const Statement &statement);

  // The definition that a manager holds under the key; null if there is none.
  const Statement *holder(Kind kind, std::string_view key) const;
  // The first with the OID.
  const Statement *withOid(Kind kind, std::string_view oid) const;
  // The first with the name, in any case, wherever it stands among its names.
  const Statement *withName(Kind kind, std::string_view name) const;
  // The first that a reference leads to, which is a name in any case or an OID.
  const Statement *target(Kind kind, std::string_view reference) const;

 private:
  struct Tables {
    StatementTable byKey{StatementTable::Case::kMatters};
    StatementTable byOid{StatementTable::Case::kMatters};
    StatementTable byName;
  };
  const Tables &of(Kind kind) const {
    return m_tables[static_cast<std::size_t>(kind)];
  }

  std::array<Tables, kKinds> m_tables;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_DEFINITIONINDEX_H_
