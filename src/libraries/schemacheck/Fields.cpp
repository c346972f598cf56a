#include "Fields.h"

#include <cstring>
#include <set>
#include <utility>

#include "SchemaSymbolTable.h"

namespace schemacheck {

namespace {

Field single(const char *name, const std::string &value) {
  Field field{name, {}, false};
  if (!value.empty()) {
    field.values.push_back(value);
  }
  return field;
}

Field quoted(const char *name, const std::string &value) {
  return single(name, value.empty() ? value : "'" + value + "'");
}

Field list(const char *name, const std::vector<std::string> &values) {
  return {name, values, true};
}

Field flag(const char *name, bool isSet) {
  return single(name, isSet ? "yes" : "no");
}

const char *classKind(int token) {
  switch (token) {
    case TOK_AUXILIARY:
      return "AUXILIARY";
    case TOK_ABSTRACT:
      return "ABSTRACT";
    default:
      return "STRUCTURAL";
  }
}

bool isClassKind(const std::string &keyword) {
  return keyword == "ABSTRACT" || keyword == "STRUCTURAL" ||
         keyword == "AUXILIARY";
}

// Enters the values of a clause into the field that it states.
void state(const Clause &clause, bool isFlag, Field *field) {
  if (field->isList) {
    for (const Value &value : clause.values) {
      field->values.push_back(value.text);
    }
  } else if (isFlag) {
    *field = flag(field->name, true);
  } else if (!clause.values.empty()) {
    const std::string &text = clause.values.front().text;
    *field = std::strcmp(field->name, "DESC") == 0 ? quoted("DESC", text)
                                                   : single(field->name, text);
  }
}

// The fields of a definition that states none.
const std::vector<Field> &noFieldsOf(Kind kind) {
  static const std::vector<Field> kType = fieldsOf(Attribute());
  static const std::vector<Field> kClass = fieldsOf(ObjectClass());
  static const std::vector<Field> kStorage = fieldsOf(QORAttribute());
  switch (kind) {
    case Kind::kAttributeType:
      return kType;
    case Kind::kObjectClass:
      return kClass;
    case Kind::kStorage:
      break;
  }
  return kStorage;
}

std::set<std::string> lowerSet(const std::vector<std::string> &values) {
  std::set<std::string> lower;
  for (const std::string &value : values) {
    lower.insert(lowerCase(value));
  }
  return lower;
}

}  // namespace

std::string Field::text() const {
  std::string text;
  for (const std::string &value : values) {
    text += (text.empty() ? "" : " ") + value;
  }
  return values.empty() ? "(none)" : text;
}

bool sameValues(const Field &a, const Field &b) {
  return a.isList ? lowerSet(a.values) == lowerSet(b.values)
                  : a.values == b.values;
}

std::vector<Field> fieldsOf(const Attribute &attribute) {
  return {single("OID", attribute.oid()),
          list("NAME", attribute.names()),
          quoted("DESC", attribute.description()),
          flag("OBSOLETE", attribute.isObsolete()),
          list("SUP", attribute.superiors()),
          single("EQUALITY", attribute.equality()),
          single("ORDERING", attribute.ordering()),
          single("SUBSTR", attribute.substr()),
          single("SYNTAX", attribute.syntax()),
          flag("SINGLE-VALUE", attribute.isSingleValue()),
          flag("COLLECTIVE", attribute.isCollective()),
          flag("NO-USER-MODIFICATION", !attribute.isUserModifiable()),
          single("USAGE", attribute.usage())};
}

std::vector<Field> fieldsOf(const ObjectClass &objectClass) {
  return {single("OID", objectClass.oid()),
          list("NAME", objectClass.names()),
          quoted("DESC", objectClass.description()),
          flag("OBSOLETE", objectClass.isObsolete()),
          list("SUP", objectClass.superiors()),
          single("kind", classKind(objectClass.structuralType())),
          list("MUST", objectClass.requiredAttributes()),
          list("MAY", objectClass.optionalAttributes())};
}

std::vector<Field> fieldsOf(const QORAttribute &storage) {
  return {single("OID", storage.oid()),
          list("DBNAME", storage.columnNames()),
          single("ACCESS-CLASS", storage.accessClass()),
          single("LENGTH", storage.length()),
          flag("EQUALITY", storage.hasEquality()),
          flag("ORDERING", storage.hasOrdering()),
          flag("SUBSTR", storage.hasSubstr()),
          flag("APPROX", storage.hasApprox())};
}
std::vector<Field> fieldsOf(const Definition &definition) {
  const std::vector<Field> &none = noFieldsOf(definition.kind);
  std::vector<Field> fields = none;
  if (definition.oid) {
    fields.front() = single("OID", definition.oid->text);
  }
  for (const Clause &clause : definition.clauses) {
    if (!clause.known) {
      continue;
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
      Field &field = fields[i];
      if (clause.keyword == field.name) {
        state(clause, none[i].values == flag("", false).values, &field);
      } else if (std::strcmp(field.name, "kind") == 0 &&
                 isClassKind(clause.keyword)) {
        field = single("kind", clause.keyword);
      }
    }
  }
  return fields;
}

std::string lowerCase(std::string text) {
  for (char &c : text) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return text;
}

}  // namespace schemacheck
