// Prints the attribute types and object classes that have one of the names or
// OIDs, and the storage of the attribute types.
//
//   lookup DIRECTORY NAME-OR-OID...
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "SchemaSymbolTable.h"

namespace {

const char *const kFiles[] = {
    "V3.user.at",   "V3.user.oc",   "V3.qor.at",
    "V3.qor.oc",    "V3.system.at", "V3.system.oc",
    "V3.config.at", "V3.config.oc", "V3.modifiedschema"};

bool hasName(SchemaManager *schema, const QORSchema &definition,
             const std::string &name) {
  return std::any_of(
      definition.names().begin(), definition.names().end(),
      [&](const auto &each) { return schema->convert(each) == name; });
}

// The manager finds a first name or an OID at once. The other names are
// searched for, in the order of the first names.
template <class Definition>
const Definition *find(SchemaManager *schema,
                       const DefinitionWalk<Definition> &byName,
                       const DefinitionWalk<Definition> &byOid,
                       const std::string &key) {
  const std::string name = schema->convert(key);
  if (const Definition *found = byName.find(name)) {
    return found;
  }
  if (const Definition *found = byOid.find(key)) {
    return found;
  }
  const auto found = std::find_if(
      byName.begin(), byName.end(),
      [&](const auto &each) { return hasName(schema, each, name); });
  return found == byName.end() ? nullptr : &*found;
}

void print(const char *field, const std::string &value) {
  if (!value.empty()) {
    std::cout << "  " << field << ": " << value << '\n';
  }
}

void print(const char *field, const std::vector<std::string> &values) {
  std::string text;
  for (const std::string &value : values) {
    text += (text.empty() ? "" : " ") + value;
  }
  print(field, text);
}

void printStorage(const QORAttribute &storage) {
  print("columns", storage.columnNames());
  print("length", storage.length());
  std::vector<std::string> indexes;
  if (storage.hasEquality()) indexes.push_back("equality");
  if (storage.hasOrdering()) indexes.push_back("ordering");
  if (storage.hasSubstr()) indexes.push_back("substrings");
  if (storage.hasApprox()) indexes.push_back("approximate");
  print("indexes", indexes);
}

void printType(const Attribute &type) {
  std::cout << "attribute type " << type.oid() << '\n';
  print("names", type.names());
  print("description", type.description());
  print("superiors", type.superiors());
  print("equality", type.equality());
  print("ordering", type.ordering());
  print("substrings", type.substr());
  print("syntax", type.syntax());
  print("values", type.isSingleValue() ? "one" : "many");
  print("usage", type.usage());
}

const char *kindOf(const ObjectClass &objectClass) {
  switch (objectClass.structuralType()) {
    case TOK_ABSTRACT:
      return "abstract";
    case TOK_AUXILIARY:
      return "auxiliary";
    default:
      return "structural";
  }
}

void printClass(const ObjectClass &objectClass) {
  std::cout << kindOf(objectClass) << " object class " << objectClass.oid()
            << '\n';
  print("names", objectClass.names());
  print("description", objectClass.description());
  print("superiors", objectClass.superiors());
  print("must", objectClass.requiredAttributes());
  print("may", objectClass.optionalAttributes());
}

}  // namespace

int main(int argc, char **argv) {
  if (argc < 3) {
    std::cerr << "lookup: expected DIRECTORY NAME-OR-OID...\n";
    return 2;
  }
  SchemaManager schema(argv[1]);
  for (const char *file : kFiles) {
    if (schema.readFile(file) != 0) {
      std::cerr << "lookup: cannot read " << argv[1] << '/' << file << '\n';
      return 2;
    }
  }
  int status = 0;
  const std::vector<std::string> keys(argv + 2, argv + argc);
  for (const std::string &key : keys) {
    const Attribute *type = find(&schema, schema.eachAttributeType(),
                                 schema.eachAttributeTypeByOid(), key);
    const ObjectClass *objectClass = find(&schema, schema.eachObjectClass(),
                                          schema.eachObjectClassByOid(), key);
    if (type != nullptr) {
      printType(*type);
      const auto storage = schema.eachStorageDefinition();
      if (const QORAttribute *found = storage.find(type->oid())) {
        printStorage(*found);
      }
    }
    if (objectClass != nullptr) {
      printClass(*objectClass);
    }
    if (type == nullptr && objectClass == nullptr) {
      std::cout << "nothing is called " << key << '\n';
      status = 1;
    }
  }
  return status;
}
