// Definitions and tables as texts, alike for the library's and the model's.
#ifndef TESTS_MODEL_RENDERING_H_
#define TESTS_MODEL_RENDERING_H_

#include <map>
#include <string>

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "SchemaManager.h"
#include "model/Definitions.h"
#include "model/Schema.h"

// A text in quotes, with what cannot be printed as a number.
inline std::string shown(const std::string &text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c >= ' ' && c < 127) {
      quoted += c;
    } else {
      quoted += '\\' + std::to_string(static_cast<unsigned char>(c));
    }
  }
  return quoted + '"';
}

inline std::string shown(const model::Names &names) {
  std::string list = "(";
  for (const std::string &name : names) {
    list += ' ' + shown(name);
  }
  return list + " )";
}

// All fields of a definition.

inline std::string flag(const char *name, bool set) {
  return set ? std::string(" ") + name : "";
}

inline std::string fieldsOf(const Attribute &type) {
  return "oid " + shown(type.oid()) + " names " + shown(type.names()) +
         " description " + shown(type.description()) + " superiors " +
         shown(type.superiors()) + " equality " + type.equality() +
         " ordering " + type.ordering() + " substr " + type.substr() +
         " syntax " + shown(type.syntax()) + " usage " + shown(type.usage()) +
         flag("obsolete", type.isObsolete()) +
         flag("single", type.isSingleValue()) +
         flag("collective", type.isCollective()) +
         flag("modifiable", type.isUserModifiable());
}

inline std::string fieldsOf(const model::AttributeType &type) {
  return "oid " + shown(type.oid) + " names " + shown(type.names) +
         " description " + shown(type.description) + " superiors " +
         shown(type.superiors) + " equality " + type.equality + " ordering " +
         type.ordering + " substr " + type.substr + " syntax " +
         shown(type.syntax) + " usage " + shown(type.usage) +
         flag("obsolete", type.obsolete) + flag("single", type.singleValue) +
         flag("modifiable", type.userModification);
}

inline std::string fieldsOf(const ObjectClass &objectClass) {
  return "oid " + shown(objectClass.oid()) + " names " +
         shown(objectClass.names()) + " description " +
         shown(objectClass.description()) + " superiors " +
         shown(objectClass.superiors()) + " kind " +
         std::to_string(objectClass.structuralType()) + " must " +
         shown(objectClass.requiredAttributes()) + " may " +
         shown(objectClass.optionalAttributes()) +
         flag("obsolete", objectClass.isObsolete());
}

inline std::string fieldsOf(const model::ObjectClass &objectClass) {
  return "oid " + shown(objectClass.oid) + " names " +
         shown(objectClass.names) + " description " +
         shown(objectClass.description) + " superiors " +
         shown(objectClass.superiors) + " kind " +
         std::to_string(objectClass.kind) + " must " + shown(objectClass.must) +
         " may " + shown(objectClass.may) +
         flag("obsolete", objectClass.obsolete);
}

inline std::string fieldsOf(const QORAttribute &storage) {
  return "oid " + shown(storage.oid()) + " columns " +
         shown(storage.columnNames()) + " access class " +
         shown(storage.accessClass()) + " length " + shown(storage.length()) +
         flag("equality", storage.hasEquality()) +
         flag("ordering", storage.hasOrdering()) +
         flag("substr", storage.hasSubstr()) +
         flag("approx", storage.hasApprox());
}

inline std::string fieldsOf(const model::Storage &storage) {
  return "oid " + shown(storage.oid) + " columns " + shown(storage.columns) +
         " access class " + shown(storage.accessClass) + " length " +
         shown(storage.length) + flag("equality", storage.equality) +
         flag("ordering", storage.ordering) + flag("substr", storage.substr) +
         flag("approx", storage.approx);
}

// A table, one line an entry. `pointed` gives the definition of a value.
template <class Table, class Pointed>
std::string tableText(const char *label, const Table &table,
                      const Pointed &pointed) {
  std::string text;
  for (const auto &[key, definition] : table) {
    text += label + (" " + shown(key)) + ": " + fieldsOf(pointed(definition)) +
            '\n';
  }
  return text;
}

// All tables of a schema.

inline std::string tablesOf(const SchemaManager &schema) {
  const auto at = [](auto *definition) -> const auto & { return *definition; };
  return tableText("type", schema.attributeTypes(), at) +
         tableText("type by OID", schema.attributeTypesByOid(), at) +
         tableText("class", schema.objectClasses(), at) +
         tableText("class by OID", schema.objectClassesByOid(), at) +
         tableText("storage", schema.storageDefinitions(), at);
}

inline std::string tablesOf(const model::Schema &schema) {
  const auto itself = [](const auto &definition) -> const auto & {
    return definition;
  };
  return tableText("type", schema.types, itself) +
         tableText("type by OID", schema.typesByOid, itself) +
         tableText("class", schema.classes, itself) +
         tableText("class by OID", schema.classesByOid, itself) +
         tableText("storage", schema.storage, itself);
}

#endif  // TESTS_MODEL_RENDERING_H_
