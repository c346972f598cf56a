// Helpers of the tests of comparison and merge.
#ifndef TESTS_LIBSCHEMA_SCHEMAMANAGERMERGETESTING_H_
#define TESTS_LIBSCHEMA_SCHEMAMANAGERMERGETESTING_H_

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "SchemaManagerTesting.h"
#include "support/TemporaryDirectory.h"

using Schema = std::unique_ptr<SchemaManager>;
using Names = std::vector<std::string>;

// A definition as a line of a file, in the form in which it is written again.
inline std::string typeLine(const std::string &oid, const Names &names,
                            const std::string &description) {
  std::string line = "attributetypes=( " + oid + " NAME ( ";
  for (const std::string &name : names) {
    line += '\'' + name + "' ";
  }
  return line + " )  DESC '" + description + "' USAGE userApplications  )\n";
}

inline std::string classLine(const std::string &oid, const Names &names,
                             const std::string &description) {
  std::string line = "objectclasses=( " + oid + " NAME ";
  for (const std::string &name : names) {
    line += '\'' + name + "' ";
  }
  return line + " DESC '" + description + "' STRUCTURAL )\n";
}

// Of the two forms without names this is the one that can be read.
inline std::string namelessClassLine(const std::string &oid,
                                     const std::string &description) {
  return "objectclasses=( " + oid + " NAME ( ) DESC '" + description +
         "' STRUCTURAL )\n";
}

inline std::string storageLine(const std::string &oid,
                               const std::string &accessClass) {
  return "QORAttributetypes=( " + oid + " ACCESS-CLASS " + accessClass + " )\n";
}

// A kind of definitions, for what is done alike with each of the three.
struct Kind {
  std::string label;  // in stateOf(): "type", "class" or "storage"
  std::string file;   // one that records their OIDs
  unsigned int (SchemaManager::*compare)(SchemaManager *);
  unsigned int (SchemaManager::*merge)(SchemaManager *);
  std::string mergeOperation;

  bool isStorage() const { return label == "storage"; }

  // A definition; of a storage definition the name is no part.
  std::string line(const std::string &oid, const std::string &name,
                   const std::string &text) const {
    if (isStorage()) {
      return storageLine(oid, text);
    }
    return label == "type" ? typeLine(oid, {name}, text)
                           : classLine(oid, {name}, text);
  }

  // What stateOf() shows of a definition in the owning table, ...
  std::string owned(const std::string &oid, const std::string &name,
                    const std::string &definition) const {
    return label + ' ' + (isStorage() ? oid : name) + ": " + definition;
  }
  // ... in the table of OIDs (`shown` is the name, or the line of a definition
  // that only its OID leads to), ...
  std::string byOid(const std::string &oid, const std::string &shown) const {
    return isStorage() ? ""
                       : label + " by OID " + oid + ": " + shown +
                             (shown.back() == '\n' ? "" : "\n");
  }
  // ... and of one that is alone in both.
  std::string only(const std::string &oid, const std::string &name,
                   const std::string &definition) const {
    return owned(oid, name, definition) + byOid(oid, name);
  }
};

inline const Kind kKinds[] = {
    {"type", "V3.user.at", &SchemaManager::compAttrTables,
     &SchemaManager::mergeAttrs, "mergeAttrs"},
    {"class", "V3.user.oc", &SchemaManager::compObjTables,
     &SchemaManager::mergeObjClasses, "mergeObjClasses"},
    {"storage", "V3.qor.at", &SchemaManager::compQORAttrTables,
     &SchemaManager::mergeQORAttrs, "mergeQORAttrs"},
};

inline std::ostream &operator<<(std::ostream &out, const Kind &kind) {
  return out << kind.label;
}

inline std::string kindName(const testing::TestParamInfo<Kind> &kind) {
  return kind.param.label;
}

// The files of user, qor and system definitions, in the order in which their
// sets of OIDs are searched.
inline const char *const kSearchedFiles[] = {"V3.user.oc",   "V3.user.at",
                                             "V3.qor.oc",    "V3.qor.at",
                                             "V3.system.oc", "V3.system.at"};

// Files that record OIDs nowhere that a comparison or a merge would look.
inline const char *const kUnsearchedFiles[] = {"V3.modifiedschema",
                                               "V3.config.at", "V3.config.oc"};

// Puts OIDs, separated by blanks, on the list of excluded ones.
inline void exclude(SchemaManager *schema, const std::string &oids) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("excluded", oids + '\n');
  EXPECT_EQ(schema->readExcludedOids(path), 0U);
}

// A schema without definitions.
inline Schema emptySchema() { return makeSchema({}); }

// The tables, a line for each entry: "type cn: 2.5.4.3 description", and "type
// by OID" likewise. Writes no files and changes nothing, unlike stateOf().
inline std::string tablesOf(const SchemaManager &schema) {
  std::string text;
  const auto append = [&text](const char *label, const auto &table) {
    for (const auto &[key, definition] : table) {
      text += label + key + ": " + definition->oid() + ' ' +
              definition->getDescription() + '\n';
    }
  };
  append("type ", schema.attributeTypes());
  append("type by OID ", schema.attributeTypesByOid());
  append("class ", schema.objectClasses());
  append("class by OID ", schema.objectClassesByOid());
  append("storage ", schema.storageDefinitions());
  return text;
}

// Which of two schemas is destroyed first.
enum class Order { kFirstFirst, kSecondFirst };

inline void destroy(Order order, Schema *first, Schema *second) {
  if (order == Order::kFirstFirst) {
    first->reset();
    second->reset();
  } else {
    second->reset();
    first->reset();
  }
}

#endif  // TESTS_LIBSCHEMA_SCHEMAMANAGERMERGETESTING_H_
