// What the JSON documents of all commands are made of.
#ifndef SCHEMA_MIGRATE_JSON_H_
#define SCHEMA_MIGRATE_JSON_H_

#include <iosfwd>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Fields.h"
#include "Finding.h"
#include "Inventory.h"
#include "Plan.h"
#include "Statement.h"

// Keeps the keys in the order in which they are entered.
using Json = nlohmann::ordered_json;

// A document with the version of the format and the name of the command.
Json documentOf(const char *command);

// Prints a document with an end of line. Bytes outside UTF-8 become U+FFFD.
void print(const Json &document, std::ostream *out);

// "attributeType", "objectClass" or "storageDefinition"
const char *keyOf(Kind kind);
// As verdictName(), but "replaces" and "blocked".
const char *keyOf(schemaplan::Verdict verdict);

// The text, or null if it is empty.
Json orNull(const std::string &text);

// The values of a field; a description without the quotes around it.
Json valuesOf(const schemacheck::Field &field);

// Where a definition stands and what it is called: its kind, OID, first name,
// file and line. Of null, null.
Json toJson(const Entry *entry);
Json toJson(const schemacheck::Statement *statement);

Json toJson(const schemacheck::Finding &finding);
Json toJson(const std::vector<schemacheck::Finding> &findings);

// The names of the files of a directory that it lacks.
template <class Presence>
Json missingFiles(const Presence &isPresent) {
  Json names = Json::array();
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    if (!isPresent[file]) {
      names.push_back(kSchemaFiles[file].name);
    }
  }
  return names;
}

// By kind and verdict.
Json toJson(const schemaplan::VerdictCounts &counts);

#endif  // SCHEMA_MIGRATE_JSON_H_
