// The comparison of two schemas for the user.
#ifndef SCHEMA_MIGRATE_COMPARE_H_
#define SCHEMA_MIGRATE_COMPARE_H_

#include <iosfwd>
#include <vector>

#include "Fields.h"
#include "Inventory.h"
#include "Schemas.h"

// A field that differs.
struct Difference {
  schemacheck::Field old;
  schemacheck::Field release;
};

// A definition of one of the schemas or of both. The entries are those of the
// schemas' inventories.
struct ComparedDefinition {
  const Entry *old;      // null if the old schema lacks it
  const Entry *release;  // null if the new schema lacks it
  std::vector<Difference> differences = {};
  // Of what the new schema lacks: the attribute type or object class there that
  // has its OID, or null.
  const Entry *sameOid = nullptr;
};

struct Comparison {
  std::vector<ComparedDefinition> identical;
  std::vector<ComparedDefinition> different;
  std::vector<ComparedDefinition> onlyOld;
  std::vector<ComparedDefinition> onlyNew;
  std::vector<ComparedDefinition> excluded;

  // Whether the schemas are equal but for what is excluded.
  bool equal() const {
    return different.empty() && onlyOld.empty() && onlyNew.empty();
  }
};

// Says which definitions are identical in both schemas, which differ and in
// what fields, which only one of them has, and which are excluded. Definitions
// are matched as the library matches them: attribute types and object classes
// by their first name, and those that only their OID leads to among themselves
// by that; storage definitions by their OID. To be called before
// Schemas::compare().
Comparison compareSchemas(Schemas *schemas);

void printComparison(const Schemas &schemas, const Comparison &comparison,
                     std::ostream *out);

#endif  // SCHEMA_MIGRATE_COMPARE_H_
