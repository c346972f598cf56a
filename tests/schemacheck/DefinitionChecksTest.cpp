#include "DefinitionChecks.h"

#include <gtest/gtest.h>

#include "CheckTesting.h"
#include "SchemaDirectory.h"

using schemacheck::checkDefinitions;
using schemacheck::SchemaDirectory;

namespace {

class DefinitionChecksTest : public CheckTest,
                             public testing::WithParamInterface<CheckCase> {};

TEST_P(DefinitionChecksTest, Finds) {
  write(GetParam().files);
  EXPECT_EQ(textOf(checkDefinitions(SchemaDirectory(path()))), GetParam().text);
}

const CheckCase kClean[] = {
    {"NoDefinitions", {{"V3.user.at", "# none\n"}}, ""},
    {"OneOfEachKind",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"
       "QORAttributetypes=( 1.1 DBNAME ( 'A' 'A' ) LENGTH 4 )\n"},
      {"V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"}},
     ""},
    {"AnythingInTheModifiedSchema",
     {{"V3.modifiedschema",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 LENGTH 4 )\n"}},
     ""},
    {"AnAttributeTypeWithTheNameOfAnObjectClass",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"},
      {"V3.user.oc", "objectclasses=( 2.1 NAME 'a' ABSTRACT )\n"}},
     ""},
    {"AnyNumberWithoutStorageWhereThereIsNone",
     {{"V3.user.at",
       "attributetypes { ( 1.1 NAME 'a' DESC 'x' ) "
       "( 1.2 NAME 'b' DESC 'x' ) }\n"}},
     ""},
};

const CheckCase kMissing[] = {
    {"NoOid",
     {{"V3.user.at",
       "attributetypes { ( NAME 'a' DESC 'x' ) }\n"
       "attributetypes=( NAME 'b' DESC 'x' )\n"
       "QORAttributetypes=( DBNAME ( 'A' ) )\n"},
      {"V3.user.oc", "objectclasses { ( NAME 'k' ABSTRACT ) }\n"}},
     "./V3.user.at:1:18: error: [NO-OID] expected an OID behind '(', found "
     "none; the library drops the definition\n"
     "attributetypes { ( NAME 'a' DESC 'x' ) }\n"
     "                 ^\n"
     "./V3.user.at:2:16: error: [NO-OID] expected an OID behind '(', found "
     "none; the library files the definition under no OID\n"
     "attributetypes=( NAME 'b' DESC 'x' )\n"
     "               ^\n"
     "./V3.user.at:3:19: error: [NO-OID] expected an OID behind '(', found "
     "none; the library files the definition under no OID\n"
     "QORAttributetypes=( DBNAME ( 'A' ) )\n"
     "                  ^\n"
     "./V3.user.oc:1:17: error: [NO-OID] expected an OID behind '(', found "
     "none; the library drops the definition\n"
     "objectclasses { ( NAME 'k' ABSTRACT ) }\n"
     "                ^\n"},
    {"DroppedDefinitionsTakeNoName",
     {{"V3.user.at",
       "attributetypes { ( NAME 'a' DESC 'x' ) ( 1.1 NAME 'a' DESC 'x' ) }\n"}},
     "./V3.user.at:1:18: error: [NO-OID] expected an OID behind '(', found "
     "none; the library drops the definition\n"
     "attributetypes { ( NAME 'a' DESC 'x' ) ( 1.1 NAME 'a' DESC 'x' ) }\n"
     "                 ^\n"},
    {"NoName",
     {{"V3.user.at", "attributetypes=( 1.1 DESC 'x' )\n"},
      {"V3.user.oc", "objectclasses=( 2.1 NAME '' ABSTRACT )\n"}},
     "./V3.user.at:1:16: warning: [NO-NAME] expected a name of the attribute "
     "type, found none\n"
     "attributetypes=( 1.1 DESC 'x' )\n"
     "               ^\n"
     "./V3.user.oc:1:15: error: [NAMELESS-CLASS] expected a name of the object "
     "class, found none; the library writes it in a form that cannot be read\n"
     "objectclasses=( 2.1 NAME '' ABSTRACT )\n"
     "              ^\n"},
};

const CheckCase kRepeated[] = {
    {"FirstNameInAnotherCaseAndFile",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'cn' DESC 'x' )\n"},
      {"V3.system.at",
       "\nattributetypes=( 1.1 NAME 'CN' DESC 'y' SINGLE-VALUE )\n"}},
     "./V3.system.at:2:27: error: [SHADOWED] expected a first name of its own, "
     "found that of ./V3.user.at:1, attribute type 'cn' (1.1); the library "
     "holds that one instead of this, which differs in DESC, SINGLE-VALUE\n"
     "attributetypes=( 1.1 NAME 'CN' DESC 'y' SINGLE-VALUE )\n"
     "                          ^\n"},
    {"FirstNameWithAnotherOid",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
       "objectclasses=( 2.2 NAME 'k' ABSTRACT )\n"
       "objectclasses=( 2.3 NAME ( 'k' 'l' ) ABSTRACT )\n"}},
     "./V3.user.oc:2:26: error: [SHADOWED] expected a first name of its own, "
     "found that of ./V3.user.oc:1, object class 'k' (2.1); the library holds "
     "that one instead of this, which differs in OID\n"
     "objectclasses=( 2.2 NAME 'k' ABSTRACT )\n"
     "                         ^\n"
     "./V3.user.oc:3:28: error: [SHADOWED] expected a first name of its own, "
     "found that of ./V3.user.oc:1, object class 'k' (2.1); the library holds "
     "that one instead of this, which differs in OID, NAME\n"
     "objectclasses=( 2.3 NAME ( 'k' 'l' ) ABSTRACT )\n"
     "                           ^\n"},
    {"FirstNameWithFewerOthers",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME ( 'k' 'l' ) ABSTRACT )\n"
       "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"}},
     "./V3.user.oc:2:26: error: [SHADOWED] expected a first name of its own, "
     "found that of ./V3.user.oc:1, object class 'k' (2.1); the library holds "
     "that one instead of this, which differs in NAME\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
     "                         ^\n"},
    {"TwoWithoutNames",
     {{"V3.user.at",
       "attributetypes=( 1.1 DESC 'x' )\nattributetypes=( 1.2 DESC 'x' )\n"}},
     "./V3.user.at:1:16: warning: [NO-NAME] expected a name of the attribute "
     "type, found none\n"
     "attributetypes=( 1.1 DESC 'x' )\n"
     "               ^\n"
     "./V3.user.at:2:16: warning: [NO-NAME] expected a name of the attribute "
     "type, found none\n"
     "attributetypes=( 1.2 DESC 'x' )\n"
     "               ^\n"
     "./V3.user.at:2:16: error: [SHADOWED] expected a first name of its own, "
     "found that of ./V3.user.at:1, attribute type (1.1); the library holds "
     "that one instead of this, which differs in OID\n"
     "attributetypes=( 1.2 DESC 'x' )\n"
     "               ^\n"},
    {"Storage",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 LENGTH 4 )\n"
       "QORAttributetypes=( 1.1 LENGTH 5 EQUALITY )\n"}},
     "./V3.user.at:3:21: error: [SHADOWED] expected an OID of its own, found "
     "that of ./V3.user.at:2, storage definition (1.1); the library holds that "
     "one instead of this, which differs in LENGTH, EQUALITY\n"
     "QORAttributetypes=( 1.1 LENGTH 5 EQUALITY )\n"
     "                    ^\n"},
    {"IdenticalInOtherOrderAndCase",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"
       "attributetypes=( 1.1 DESC 'x' NAME ( 'A' 'B' ) )\n"
       "QORAttributetypes=( 1.1 DBNAME ( 'X' 'Y' ) )\n"
       "QORAttributetypes=( 1.1 DBNAME ( 'y' 'x' ) )\n"},
      {"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' MAY ( a $ b ) ABSTRACT )\n"
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MAY ( B $ A ) )\n"}},
     "./V3.user.at:2:38: warning: [REPEATED-DEFINITION] expected the "
     "definition once, found it again; the first is at ./V3.user.at:1, "
     "attribute type 'a' (1.1)\n"
     "attributetypes=( 1.1 DESC 'x' NAME ( 'A' 'B' ) )\n"
     "                                     ^\n"
     "./V3.user.at:4:21: warning: [REPEATED-DEFINITION] expected the "
     "definition once, found it again; the first is at ./V3.user.at:3, storage "
     "definition (1.1)\n"
     "QORAttributetypes=( 1.1 DBNAME ( 'y' 'x' ) )\n"
     "                    ^\n"
     "./V3.user.oc:2:26: warning: [REPEATED-DEFINITION] expected the "
     "definition once, found it again; the first is at ./V3.user.oc:1, object "
     "class 'k' (2.1)\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MAY ( B $ A ) )\n"
     "                         ^\n"},
};

const CheckCase kOids[] = {
    {"OidOfAnother",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.1 NAME 'b' DESC 'x' )\n"},
      {"V3.system.oc",
       "objectclasses { ( 2.1 NAME 'k' ABSTRACT )\n"
       "( 2.1 NAME 'l' ABSTRACT ) }\n"}},
     "./V3.user.at:2:18: error: [OID-TWICE] expected an OID of its own, found "
     "that of ./V3.user.at:1, attribute type 'a' (1.1); the library never "
     "writes this one\n"
     "attributetypes=( 1.1 NAME 'b' DESC 'x' )\n"
     "                 ^\n"
     "./V3.system.oc:2:3: error: [OID-TWICE] expected an OID of its own, found "
     "that of ./V3.system.oc:1, object class 'k' (2.1); the library never "
     "writes this one\n"
     "( 2.1 NAME 'l' ABSTRACT ) }\n"
     "  ^\n"},
    {"OidOfOneThatIsShadowed",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.2 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"}},
     "./V3.user.at:2:27: error: [SHADOWED] expected a first name of its own, "
     "found that of ./V3.user.at:1, attribute type 'a' (1.1); the library "
     "holds that one instead of this, which differs in OID\n"
     "attributetypes=( 1.2 NAME 'a' DESC 'x' )\n"
     "                          ^\n"
     "./V3.user.at:3:18: error: [OID-TWICE] expected an OID of its own, found "
     "that of ./V3.user.at:2, attribute type 'a' (1.2); the library never "
     "writes this one\n"
     "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"
     "                 ^\n"},
    {"OidOfTwoKinds",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"},
      {"V3.user.oc",
       "objectclasses=( 1.1 NAME 'k' ABSTRACT )\n"
       "objectclasses=( 2.1 NAME 'l' ABSTRACT )\n"},
      {"V3.system.at", "attributetypes=( 2.1 NAME 'b' DESC 'x' )\n"}},
     "./V3.user.oc:1:17: error: [OID-OF-TWO-KINDS] expected an OID of its own, "
     "found that of ./V3.user.at:1, attribute type 'a' (1.1); the library "
     "writes the object class only\n"
     "objectclasses=( 1.1 NAME 'k' ABSTRACT )\n"
     "                ^\n"
     "./V3.system.at:1:18: error: [OID-OF-TWO-KINDS] expected an OID of its "
     "own, found that of ./V3.user.oc:2, object class 'l' (2.1); the library "
     "writes the object class only\n"
     "attributetypes=( 2.1 NAME 'b' DESC 'x' )\n"
     "                 ^\n"},
};

const CheckCase kNames[] = {
    {"FirstNameThatIsAnotherNameBefore",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"
       "attributetypes=( 1.2 NAME 'B' DESC 'x' )\n"}},
     "./V3.user.at:2:27: warning: [NAME-TWICE] expected a name of its own, "
     "found 'B', which ./V3.user.at:1, attribute type 'a' (1.1) has, too\n"
     "attributetypes=( 1.2 NAME 'B' DESC 'x' )\n"
     "                          ^\n"},
    {"OtherNamesThatStandBefore",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME ( 'k' 'l' ) ABSTRACT )\n"
       "objectclasses=( 2.2 NAME ( 'm' 'K' 'L' ) ABSTRACT )\n"}},
     "./V3.user.oc:2:32: warning: [NAME-TWICE] expected a name of its own, "
     "found 'K', which ./V3.user.oc:1, object class 'k' (2.1) has, too\n"
     "objectclasses=( 2.2 NAME ( 'm' 'K' 'L' ) ABSTRACT )\n"
     "                               ^\n"
     "./V3.user.oc:2:36: warning: [NAME-TWICE] expected a name of its own, "
     "found 'L', which ./V3.user.oc:1, object class 'k' (2.1) has, too\n"
     "objectclasses=( 2.2 NAME ( 'm' 'K' 'L' ) ABSTRACT )\n"
     "                                   ^\n"},
    {"NamesOfRepeatedDefinitionsAreNotFoundAgain",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"
       "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"}},
     "./V3.user.at:2:29: warning: [REPEATED-DEFINITION] expected the "
     "definition once, found it again; the first is at ./V3.user.at:1, "
     "attribute type 'a' (1.1)\n"
     "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"
     "                            ^\n"},
    {"ANameTwiceInOneDefinition",
     {{"V3.user.at", "attributetypes=( 1.1 NAME ( 'a' 'A' ) DESC 'x' )\n"}},
     ""},
};

INSTANTIATE_TEST_SUITE_P(Nothing, DefinitionChecksTest,
                         testing::ValuesIn(kClean), nameOf);
INSTANTIATE_TEST_SUITE_P(Missing, DefinitionChecksTest,
                         testing::ValuesIn(kMissing), nameOf);
INSTANTIATE_TEST_SUITE_P(Repeated, DefinitionChecksTest,
                         testing::ValuesIn(kRepeated), nameOf);
INSTANTIATE_TEST_SUITE_P(Oids, DefinitionChecksTest, testing::ValuesIn(kOids),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Names, DefinitionChecksTest, testing::ValuesIn(kNames),
                         nameOf);

}  // namespace
