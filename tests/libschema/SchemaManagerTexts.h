// Definitions and expected texts of the tests of SchemaManager's operations on
// one schema.
#ifndef TESTS_LIBSCHEMA_SCHEMAMANAGERTEXTS_H_
#define TESTS_LIBSCHEMA_SCHEMAMANAGERTEXTS_H_

#include <map>
#include <string>
#include <utility>
#include <vector>

// Definitions without their keyword, in the form in which they are written.
inline std::string typeBody(const std::string &oid, const std::string &name) {
  return "( " + oid + " NAME ( '" + name +
         "'  ) OBSOLETE USAGE userApplications  )";
}
inline std::string classBody(const std::string &oid, const std::string &name) {
  return "( " + oid + " NAME '" + name + "' OBSOLETE STRUCTURAL )";
}
inline std::string storageBody(const std::string &oid) {
  return "( " + oid + " LENGTH 8 )";
}

// The same as the lines of a file. What is read from such a line is written as
// the same line.
inline std::string typeLine(const std::string &oid, const std::string &name) {
  return "attributetypes=" + typeBody(oid, name) + '\n';
}
inline std::string classLine(const std::string &oid, const std::string &name) {
  return "objectclasses=" + classBody(oid, name) + '\n';
}
inline std::string storageLine(const std::string &oid) {
  return "QORAttributetypes=" + storageBody(oid) + '\n';
}

// What stateOf() gives for such definitions, each a pair of OID and name, if
// neither occurs twice.
using OidsAndNames = std::vector<std::pair<std::string, std::string>>;

inline std::string definitionsState(const std::string &kind,
                                    std::string (*line)(const std::string &,
                                                        const std::string &),
                                    const OidsAndNames &definitions) {
  std::map<std::string, std::string> entries;  // names sort before OIDs
  for (const auto &[oid, name] : definitions) {
    entries["name " + name] = kind + ' ' + name + ": " + line(oid, name);
    entries["oid " + oid] = kind + " by OID " + oid + ": " + name + '\n';
  }
  std::string text;
  for (const auto &entry : entries) {
    text += entry.second;
  }
  return text;
}

inline std::string typesState(const OidsAndNames &definitions) {
  return definitionsState("type", typeLine, definitions);
}
inline std::string typeState(const std::string &oid, const std::string &name) {
  return typesState({{oid, name}});
}

inline std::string classesState(const OidsAndNames &definitions) {
  return definitionsState("class", classLine, definitions);
}
inline std::string classState(const std::string &oid, const std::string &name) {
  return classesState({{oid, name}});
}

inline std::string storageState(const std::string &oid) {
  return "storage " + oid + ": " + storageLine(oid);
}

#endif  // TESTS_LIBSCHEMA_SCHEMAMANAGERTEXTS_H_
