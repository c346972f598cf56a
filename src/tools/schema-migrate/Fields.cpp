#include "Fields.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <set>
#include <system_error>

#include "SchemaSymbolTable.h"
#include "Trouble.h"

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

std::set<std::string> lowerSet(const std::vector<std::string> &values) {
  std::set<std::string> lower;
  for (const std::string &value : values) {
    lower.insert(Attribute().convert(value));
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

// The library writes to files only; this one is in memory.
std::string schemaLine(QORSchema *definition) {
  const int descriptor = memfd_create("definition", MFD_CLOEXEC);
  if (descriptor == -1) {
    throw Trouble("error: cannot make a file in memory: " +
                  std::generic_category().message(errno));
  }
  const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
  {
    std::ofstream out(path);
    definition->dump(out);
  }
  std::ifstream in(path);
  std::string line;
  std::getline(in, line);
  close(descriptor);
  return line;
}
