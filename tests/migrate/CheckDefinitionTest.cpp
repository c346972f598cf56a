// The command check: definitions against each other.
#include "CheckCommandTesting.h"

namespace {

class CheckDefinitionTest : public CheckCommandTest {};

TEST_P(CheckDefinitionTest, FindsThisAndNoMore) { expectFindings(); }

const CheckCase kDefinition[] = {
    {"NoOid",
     {{"V3.user.at", "attributetypes=( NAME 'a' DESC 'x' )\n"}},
     "d/V3.user.at:1:16: error: [NO-OID] expected an OID behind '(', found "
     "none; the library files the definition under no OID\n"
     "attributetypes=( NAME 'a' DESC 'x' )\n"
     "               ^\n"},
    {"NoOidInABlock",
     {{"V3.user.at",
       "attributetypes {\n"
       "( NAME 'a' DESC 'x' )\n"
       "}\n"}},
     "d/V3.user.at:2:1: error: [NO-OID] expected an OID behind '(', found "
     "none; the library drops the definition\n"
     "( NAME 'a' DESC 'x' )\n"
     "^\n"},
    {"NoName",
     {{"V3.user.at", "attributetypes=( 1.1 DESC 'x' )\n"}},
     "d/V3.user.at:1:16: warning: [NO-NAME] expected a name of the attribute "
     "type, found none\n"
     "attributetypes=( 1.1 DESC 'x' )\n"
     "               ^\n"},
    {"NamelessClass",
     {{"V3.user.oc", "objectclasses=( 2.1 ABSTRACT )\n"}},
     "d/V3.user.oc:1:15: error: [NAMELESS-CLASS] expected a name of the object "
     "class, found none; the library writes it in a form that cannot be read\n"
     "objectclasses=( 2.1 ABSTRACT )\n"
     "              ^\n"},
    {"Shadowed",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.1 NAME 'A' DESC 'y' )\n"}},
     "d/V3.user.at:2:27: error: [SHADOWED] expected a first name of its own, "
     "found that of d/V3.user.at:1, attribute type 'a' (1.1); the library "
     "holds that one instead of this, which differs in DESC\n"
     "attributetypes=( 1.1 NAME 'A' DESC 'y' )\n"
     "                          ^\n"},
    {"Repeated",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.1 NAME 'A' DESC 'x' )\n"}},
     "d/V3.user.at:2:27: warning: [REPEATED-DEFINITION] expected the "
     "definition once, found it again; the first is at d/V3.user.at:1, "
     "attribute type 'a' (1.1)\n"
     "attributetypes=( 1.1 NAME 'A' DESC 'x' )\n"
     "                          ^\n"},
    {"RepeatedInAnotherFile",
     {{"V3.user.at", "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"},
      {"V3.modifiedschema", "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.modifiedschema:1:27: warning: [REPEATED-DEFINITION] expected the "
     "definition once, found it again; the first is at d/V3.user.at:1, "
     "attribute type 'next' (1.9)\n"
     "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
     "                          ^\n"},
    {"StorageShadowed",
     {{"V3.user.at",
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "QORAttributetypes=( 1.9 LENGTH 4 )\n"
       "QORAttributetypes=( 1.9 LENGTH 5 )\n"}},
     "d/V3.user.at:3:21: error: [SHADOWED] expected an OID of its own, found "
     "that of d/V3.user.at:2, storage definition (1.9); the library holds that "
     "one instead of this, which differs in LENGTH\n"
     "QORAttributetypes=( 1.9 LENGTH 5 )\n"
     "                    ^\n"},
    {"OidTwice",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.1 NAME 'b' DESC 'x' )\n"}},
     "d/V3.user.at:2:18: error: [OID-TWICE] expected an OID of its own, found "
     "that of d/V3.user.at:1, attribute type 'a' (1.1); the library never "
     "writes this one\n"
     "attributetypes=( 1.1 NAME 'b' DESC 'x' )\n"
     "                 ^\n"},
    {"OidOfTwoKinds",
     {{"V3.user.at", "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"},
      {"V3.user.oc", "objectclasses=( 1.9 NAME 'k' ABSTRACT )\n"}},
     "d/V3.user.oc:1:17: error: [OID-OF-TWO-KINDS] expected an OID of its own, "
     "found that of d/V3.user.at:1, attribute type 'next' (1.9); the library "
     "writes the object class only\n"
     "objectclasses=( 1.9 NAME 'k' ABSTRACT )\n"
     "                ^\n"},
    {"AliasTwice",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME ( 'a' 'c' ) DESC 'x' )\n"
       "attributetypes=( 1.2 NAME ( 'b' 'C' ) DESC 'x' )\n"}},
     "d/V3.user.at:2:33: warning: [NAME-TWICE] expected a name of its own, "
     "found 'C', which d/V3.user.at:1, attribute type 'a' (1.1) has, too\n"
     "attributetypes=( 1.2 NAME ( 'b' 'C' ) DESC 'x' )\n"
     "                                ^\n"},
    {"StorageWithoutType",
     {{"V3.user.at",
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "QORAttributetypes=( 1.1 LENGTH 4 )\n"
       "QORAttributetypes=( 1.9 LENGTH 4 )\n"}},
     "d/V3.user.at:2:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute "
     "type with the OID 1.1, found none; the library never writes the storage "
     "definition\n"
     "QORAttributetypes=( 1.1 LENGTH 4 )\n"
     "                    ^\n"},
    {"StorageApart",
     {{"V3.user.at", "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"},
      {"V3.qor.at", "QORAttributetypes=( 1.9 LENGTH 4 )\n"}},
     "d/V3.qor.at:1:21: warning: [STORAGE-APART] expected the storage "
     "definition in the file of its attribute type, found that at "
     "d/V3.user.at:1, attribute type 'next' (1.9); the library writes both "
     "into each of the files\n"
     "QORAttributetypes=( 1.9 LENGTH 4 )\n"
     "                    ^\n"},
    {"NoStorage",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "QORAttributetypes=( 1.9 LENGTH 4 )\n"}},
     "d/V3.user.at:1:18: warning: [NO-STORAGE] expected a storage definition "
     "with the OID 1.1, found none\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "                 ^\n"},
    {"SharedColumn",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 DBNAME ( 'A' 'A' ) )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "QORAttributetypes=( 1.9 DBNAME ( 'a' 'a' ) )\n"}},
     "d/V3.user.at:4:34: warning: [SHARED-COLUMN] expected a column of its "
     "own, found 'a', which d/V3.user.at:2, storage definition (1.1) has, too\n"
     "QORAttributetypes=( 1.9 DBNAME ( 'a' 'a' ) )\n"
     "                                 ^\n"},
    {"WrongFile",
     {{"V3.user.at", "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"},
      {"V3.user.oc", "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:15: warning: [WRONG-FILE] expected the object class in a "
     "file such as V3.user.oc, found it in V3.user.at\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
     "              ^\n"
     "d/V3.user.oc:1:16: warning: [WRONG-FILE] expected the attribute type in "
     "a file such as V3.user.at, found it in V3.user.oc\n"
     "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
     "               ^\n"},
};

INSTANTIATE_TEST_SUITE_P(Definition, CheckDefinitionTest,
                         testing::ValuesIn(kDefinition), nameOf);

}  // namespace
