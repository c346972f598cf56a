// One definition and everything around it, for the user.
#ifndef SCHEMA_MIGRATE_SHOW_H_
#define SCHEMA_MIGRATE_SHOW_H_

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Fields.h"
#include "ShowIndex.h"

// A superior that a definition, or a superior of it, names.
struct ShownSuperior {
  std::string name;
  const Entry *entry;  // null if nothing defines it
};

// What an object class has from a superior.
struct Inherited {
  std::string from;  // its first name, or else its OID
  std::vector<std::string> required;
  std::vector<std::string> optional;
};

struct ShownDefinition {
  const Entry *entry;
  QORSchema *definition;
  std::vector<schemacheck::Field> fields;
  std::string line;  // of a schema file
  // Each once, nearest first.
  std::vector<ShownSuperior> superiors = {};
  std::vector<Inherited> inherited = {};
  // Of an attribute type; null if it has none.
  std::unique_ptr<ShownDefinition> storage = nullptr;
};

// What a name or an OID leads to.
struct ShownKey {
  std::string key;
  std::vector<ShownDefinition> definitions;
  std::string error;  // if there are none: with the nearest names
};

// Prints the error, if there is one, on standard error.
void printError(const ShownKey &key);

// For each of some keys, the definitions of a directory that have it for a
// name, in any case, or an OID: the place, the fields, the line of a schema
// file, the superiors up to the top, for an object class the inherited
// attributes, for an attribute type its storage definition.
class Shown {
 public:
  // Warns on standard error of what is not there or ignored. Throws Trouble
  // when the directory cannot be read.
  Shown(const std::filesystem::path &directory,
        const std::vector<std::string> &keys);

  const Inventory &files() const { return m_index.files(); }
  const std::vector<ShownKey> &keys() const { return m_keys; }
  // Whether each key was found.
  bool isComplete() const;

 private:
  const ShowIndex m_index;
  std::vector<ShownKey> m_keys;
};

// Prints the definitions on standard output and the errors on standard error.
void printShown(const Shown &shown);

#endif  // SCHEMA_MIGRATE_SHOW_H_
