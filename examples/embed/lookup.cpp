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

// As the manager lowers names: ASCII letters only, in every locale.
std::string lower(std::string text) {
  for (char &c : text) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return text;
}

bool hasName(const QORSchema &definition, const std::string &name) {
  return std::any_of(definition.names().begin(), definition.names().end(),
                     [&](const auto &each) { return lower(each) == name; });
}

// The manager finds a first name or an OID at once. The other names are
// searched for, in the order of the first names.
template <class Definition>
const Definition *find(const DefinitionWalk<Definition> &byName,
                       const DefinitionWalk<Definition> &byOid,
                       const std::string &key) {
  const std::string name = lower(key);
  if (const Definition *found = byName.find(name)) {
    return found;
  }
  if (const Definition *found = byOid.find(key)) {
    return found;
  }
  const auto found =
      std::find_if(byName.begin(), byName.end(),
                   [&](const auto &each) { return hasName(each, name); });
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

void printFlag(const char *field, bool value) {
  print(field, std::string(value ? "yes" : "no"));
}

void printStorage(const QORAttribute &storage) {
  print("columns", storage.columnNames());
  print("access class", storage.accessClass());
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
  printFlag("obsolete", type.isObsolete());
  print("superiors", type.superiors());
  print("equality", type.equality());
  print("ordering", type.ordering());
  print("substrings", type.substr());
  print("syntax", type.syntax());
  printFlag("single-valued", type.isSingleValue());
  printFlag("collective", type.isCollective());
  printFlag("modifiable by users", type.isUserModifiable());
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
  printFlag("obsolete", objectClass.isObsolete());
  print("superiors", objectClass.superiors());
  print("must", objectClass.requiredAttributes());
  print("may", objectClass.optionalAttributes());
}

// Prints what has the name or the OID. False if nothing has.
bool lookUp(const SchemaManager &schema, const std::string &key) {
  const Attribute *type =
      find(schema.eachAttributeType(), schema.eachAttributeTypeByOid(), key);
  const ObjectClass *objectClass =
      find(schema.eachObjectClass(), schema.eachObjectClassByOid(), key);
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
  return type != nullptr || objectClass != nullptr;
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
    if (!lookUp(schema, key)) {
      std::cout << "nothing is called " << key << '\n';
      status = 1;
    }
  }
  return status;
}
