// The checks of storage definitions, and of the files that definitions lie in.
#include <gtest/gtest.h>

#include "CheckTesting.h"
#include "DefinitionChecks.h"
#include "SchemaDirectory.h"

using schemacheck::checkDefinitions;
using schemacheck::SchemaDirectory;

namespace {

class DefinitionChecksStorageTest
    : public CheckTest,
      public testing::WithParamInterface<CheckCase> {};

TEST_P(DefinitionChecksStorageTest, Finds) {
  write(GetParam().files);
  EXPECT_EQ(textOf(checkDefinitions(SchemaDirectory(path()))), GetParam().text);
}

const CheckCase kStorage[] = {
    {"StorageBesideOneOfTwoEqualAttributeTypes",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"},
      {"V3.qor.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 LENGTH 4 )\n"}},
     "./V3.qor.at:1:27: warning: [REPEATED-DEFINITION] expected the definition "
     "once, found it again; the first is at ./V3.user.at:1, attribute type 'a' "
     "(1.1)\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "                          ^\n"},
    {"StorageWithoutType",
     {{"V3.user.at",
       "QORAttributetypes=( 1.1 LENGTH 4 )\n"
       "QORAttributetypes { ( 2.1 LENGTH 4 ) }\n"},
      {"V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"}},
     "./V3.user.at:1:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute "
     "type with the OID 1.1, found none; the library never writes the storage "
     "definition\n"
     "QORAttributetypes=( 1.1 LENGTH 4 )\n"
     "                    ^\n"
     "./V3.user.at:2:23: error: [STORAGE-WITHOUT-TYPE] expected an attribute "
     "type with the OID 2.1, found none; the library never writes the storage "
     "definition\n"
     "QORAttributetypes { ( 2.1 LENGTH 4 ) }\n"
     "                      ^\n"},
    {"StorageApart",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"},
      {"V3.qor.at", "QORAttributetypes=( 1.1 LENGTH 4 )\n"}},
     "./V3.qor.at:1:21: warning: [STORAGE-APART] expected the storage "
     "definition in the file of its attribute type, found that at "
     "./V3.user.at:1, attribute type 'a' (1.1); the library writes both into "
     "each of the files\n"
     "QORAttributetypes=( 1.1 LENGTH 4 )\n"
     "                    ^\n"},
    {"StorageApartInACopiedFile",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"},
      {"V3.config.at", "QORAttributetypes=( 1.1 LENGTH 4 )\n"}},
     "./V3.config.at:1:21: warning: [STORAGE-APART] expected the storage "
     "definition in the file of its attribute type, found that at "
     "./V3.user.at:1, attribute type 'a' (1.1)\n"
     "QORAttributetypes=( 1.1 LENGTH 4 )\n"
     "                    ^\n"},
    {"NoStorage",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 LENGTH 4 )\n"},
      {"V3.system.at",
       "attributetypes { ( 1.2 NAME 'b' DESC 'x' )\n( 1.3 NAME 'c' DESC 'x' ) "
       "}\n"}},
     "./V3.system.at:1:20: warning: [NO-STORAGE] expected a storage definition "
     "with the OID 1.2, found none\n"
     "attributetypes { ( 1.2 NAME 'b' DESC 'x' )\n"
     "                   ^\n"
     "./V3.system.at:2:3: warning: [NO-STORAGE] expected a storage definition "
     "with the OID 1.3, found none\n"
     "( 1.3 NAME 'c' DESC 'x' ) }\n"
     "  ^\n"},
    {"SharedColumns",
     {{"V3.user.at",
       "attributetypes { ( 1.1 NAME 'a' DESC 'x' ) ( 1.2 NAME 'b' DESC 'x' ) "
       "}\n"
       "QORAttributetypes=( 1.1 DBNAME ( 'A' 'A' 'B' ) )\n"
       "QORAttributetypes=( 1.2 DBNAME ( 'a' 'A' 'b' 'C' ) )\n"}},
     "./V3.user.at:3:34: warning: [SHARED-COLUMN] expected a column of its "
     "own, found 'a', which ./V3.user.at:2, storage definition (1.1) has, too\n"
     "QORAttributetypes=( 1.2 DBNAME ( 'a' 'A' 'b' 'C' ) )\n"
     "                                 ^\n"
     "./V3.user.at:3:42: warning: [SHARED-COLUMN] expected a column of its "
     "own, found 'b', which ./V3.user.at:2, storage definition (1.1) has, too\n"
     "QORAttributetypes=( 1.2 DBNAME ( 'a' 'A' 'b' 'C' ) )\n"
     "                                         ^\n"},
};

const CheckCase kFiles[] = {
    {"WrongFile",
     {{"V3.user.at", "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"},
      {"V3.config.oc",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 LENGTH 4 )\n"}},
     "./V3.user.at:1:15: warning: [WRONG-FILE] expected the object class in a "
     "file such as V3.user.oc, found it in V3.user.at\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
     "              ^\n"
     "./V3.config.oc:1:16: warning: [WRONG-FILE] expected the attribute type "
     "in a file such as V3.config.at, found it in V3.config.oc\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "               ^\n"
     "./V3.config.oc:2:19: warning: [WRONG-FILE] expected the storage "
     "definition in a file such as V3.config.at, found it in V3.config.oc\n"
     "QORAttributetypes=( 1.1 LENGTH 4 )\n"
     "                  ^\n"},
};

INSTANTIATE_TEST_SUITE_P(Storage, DefinitionChecksStorageTest,
                         testing::ValuesIn(kStorage), nameOf);
INSTANTIATE_TEST_SUITE_P(Files, DefinitionChecksStorageTest,
                         testing::ValuesIn(kFiles), nameOf);

}  // namespace
