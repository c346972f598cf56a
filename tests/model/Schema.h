// A schema once more: tables, files and lists of OIDs, slow and obvious, on
// texts in memory.
#ifndef TESTS_MODEL_SCHEMA_H_
#define TESTS_MODEL_SCHEMA_H_

#include <map>
#include <set>
#include <string>

#include "model/Definitions.h"
#include "model/Trace.h"

namespace model {

// The texts of the files of a directory, by name.
using Directory = std::map<std::string, std::string>;

using OidSet = std::set<std::string>;

// The operations have the results of SchemaManager's, and throw Endless where
// those do not return.
struct Schema {
  explicit Schema(Trace *records) : trace(records) {}

  int readFile(const Directory &directory, const std::string &name);
  // Stores what the file holds afterwards in `text`, unless the name is
  // refused.
  int writeFile(const std::string &name, const std::string &timeStamp,
                std::string *text);
  // The text of the list, or null for one that cannot be opened, and its path.
  int readExcludedOids(const std::string *list, const std::string &path);
  int modifySchema(const std::string *list, const std::string &path);
  int delOidFromFileSet(const std::string &oid);
  int delOidFromModSch(const std::string &oid);
  int isExcluded(const std::string &oid);
  int isModFileEmpty();

  Trace *const trace;  // not owned

  std::map<std::string, AttributeType> types;  // by name
  std::map<std::string, ObjectClass> classes;  // by name
  std::map<std::string, Storage> storage;      // by OID
  std::map<std::string, AttributeType> typesByOid;
  std::map<std::string, ObjectClass> classesByOid;
  // The OIDs of each file that has a set.
  std::map<std::string, OidSet> files = {
      {"V3.user.oc", {}},       {"V3.user.at", {}},   {"V3.qor.oc", {}},
      {"V3.qor.at", {}},        {"V3.system.oc", {}}, {"V3.system.at", {}},
      {"V3.modifiedschema", {}}};
  OidSet excluded;

  // Whether something was read that the library never frees.
  bool leaks = false;

 private:
  int readTokens(Scanner *scanner, OidSet *oids);
  bool readDefinition(int keyword, bool inBraces, Scanner *scanner,
                      OidSet *oids);
  void enter(const AttributeType &type);
  void enter(const ObjectClass &objectClass);
  void enter(const Storage &definition);
  template <class Definition>
  bool readInto(Definition definition, bool inBraces, Scanner *scanner,
                OidSet *oids);
  std::string writtenSet(const OidSet &oids, const std::string &timeStamp);
};

}  // namespace model

#endif  // TESTS_MODEL_SCHEMA_H_
