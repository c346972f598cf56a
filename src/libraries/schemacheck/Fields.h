// The fields of definitions under the names that they have in a schema file.
#ifndef SCHEMACHECK_FIELDS_H_
#define SCHEMACHECK_FIELDS_H_

#include <string>
#include <string_view>
#include <vector>

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "StrictReader.h"

namespace schemacheck {

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

// The same of a definition as a file states it: what the fields above would be
// if the library kept all of it. Of a field that is repeated the last value
// counts, and all those of a list.
std::vector<Field> fieldsOf(const Definition &definition);

// A field for comparisons: its texts are those of the definition, without
// quotes, and valid as long as that is.
struct FieldView {
  enum class Form { kText, kFlag, kList };

  std::string_view name;  // a literal
  Form form = Form::kText;
  std::string_view text;  // of what is no list; empty: the field is lacking
  std::vector<std::string_view> values{};  // of a list
};

// Whether both hold the same text and the same values in the same order.
bool isSame(const FieldView &a, const FieldView &b);

// The same fields as above. What `views` held before is overwritten, and its
// memory used again.
void viewFields(const Attribute &attribute, std::vector<FieldView> *views);
void viewFields(const ObjectClass &objectClass, std::vector<FieldView> *views);
void viewFields(const QORAttribute &storage, std::vector<FieldView> *views);
void viewFields(const Definition &definition, std::vector<FieldView> *views);
void viewFields(const std::vector<Field> &fields,
                std::vector<FieldView> *views);
Field toField(const FieldView &view);

// In lower case, as the library compares names.
std::string lowerCase(std::string_view text);

// Whether the texts are the same in lower case.
bool isSameInAnyCase(std::string_view a, std::string_view b);

}  // namespace schemacheck

#endif  // SCHEMACHECK_FIELDS_H_
