// The fields of definitions under the names that they have in a schema file.
#ifndef SCHEMA_MIGRATE_FIELDS_H_
#define SCHEMA_MIGRATE_FIELDS_H_

#include <string>
#include <vector>

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"

struct Field {
  const char *name;                 // "DESC", "MAY", ...; "kind" of a class
  std::vector<std::string> values;  // none: the definition lacks the field
  bool isList;  // the order and the case of the values do not matter

  // The values for the user: separated by blanks, "(none)" if there is none.
  std::string text() const;
};

// Whether both hold the same values; lists are compared as sets.
bool sameValues(const Field &a, const Field &b);

// All fields, the same ones in the same order for each definition of a kind. A
// flag has the value "yes" or "no".
std::vector<Field> fieldsOf(const Attribute &attribute);
std::vector<Field> fieldsOf(const ObjectClass &objectClass);
std::vector<Field> fieldsOf(const QORAttribute &storage);

// The definition as the library writes it, without the end of line.
std::string schemaLine(QORSchema *definition);

#endif  // SCHEMA_MIGRATE_FIELDS_H_
