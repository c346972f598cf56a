#include "ReferenceChecks.h"

#include <gtest/gtest.h>

#include <string>

#include "CheckTesting.h"
#include "SchemaDirectory.h"

using schemacheck::checkReferences;
using schemacheck::SchemaDirectory;

namespace {

class ReferenceChecksTest : public CheckTest,
                            public testing::WithParamInterface<CheckCase> {};

TEST_P(ReferenceChecksTest, Finds) {
  write(GetParam().files);
  EXPECT_EQ(textOf(checkReferences(SchemaDirectory(path()))), GetParam().text);
}

const CheckCase kClean[] = {
    {"ReferencesByAnyNameInAnyCaseOrByOid",
     {{"V3.user.at",
       "attributetypes {\n"
       "( 1.1 NAME 'a' SUP 1.4 )\n( 1.2 NAME 'b' SUP D )\n"
       "( 1.3 NAME 'c' SUP Delta )\n( 1.4 NAME ( 'd' 'delta' ) DESC 'x' )\n}"
       "\n"},
      {"V3.user.oc",
       "objectclasses {\n"
       "( 2.1 NAME 'k' SUP ( L $ lambda $ 2.2 ) MUST ( A $ 1.2 ) MAY DELTA )\n"
       "( 2.2 NAME ( 'l' 'lambda' ) ABSTRACT )\n}\n"}},
     ""},
    {"StandardValues",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a-1' EQUALITY 2.5.13.2 ORDERING 2.5.13.3 "
       "SUBSTR 1.3.6.1.4.1.1466.109.114.3 SYNTAX "
       "1.3.6.1.4.1.1466.115.121.1.15{64} USAGE dSAOperation )\n"}},
     ""},
    {"RulesByName",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' EQUALITY fooMatch )\n"}},
     ""},
};

const CheckCase kUndefined[] = {
    {"SuperiorsOfAttributeTypes",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SUP k )\n"
       "attributetypes=( 1.2 NAME 'b' SUP 2.1 )\n"
       "attributetypes=( 1.3 NAME 'c' SUP '1.4' )\n"},
      {"V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"}},
     "./V3.user.at:1:35: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "'k' to be defined, found no attribute type of this name\n"
     "attributetypes=( 1.1 NAME 'a' SUP k )\n"
     "                                  ^\n"
     "./V3.user.at:2:35: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "2.1 to be defined, found no attribute type of this OID\n"
     "attributetypes=( 1.2 NAME 'b' SUP 2.1 )\n"
     "                                  ^\n"
     "./V3.user.at:3:35: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "1.4 to be defined, found no attribute type of this OID\n"
     "attributetypes=( 1.3 NAME 'c' SUP '1.4' )\n"
     "                                  ^\n"},
    {"SuperiorsOfObjectClasses",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"},
      {"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' SUP ( a $ k2 ) ABSTRACT )\n"
       "objectclasses=( 2.2 NAME 'l' SUP 2.3 ABSTRACT )\n"}},
     "./V3.user.oc:1:36: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "'a' to be defined, found no object class of this name\n"
     "objectclasses=( 2.1 NAME 'k' SUP ( a $ k2 ) ABSTRACT )\n"
     "                                   ^\n"
     "./V3.user.oc:1:40: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "'k2' to be defined, found no object class of this name\n"
     "objectclasses=( 2.1 NAME 'k' SUP ( a $ k2 ) ABSTRACT )\n"
     "                                       ^\n"
     "./V3.user.oc:2:34: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "2.3 to be defined, found no object class of this OID\n"
     "objectclasses=( 2.2 NAME 'l' SUP 2.3 ABSTRACT )\n"
     "                                 ^\n"},
    {"Attributes",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"},
      {"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' MUST ( a $ b ) MAY c ABSTRACT )\n"
       "objectclasses=( 2.2 NAME 'l' MUST k MAY ( 1.1 $\n1.2 ) )\n"}},
     "./V3.user.oc:1:41: warning: [UNDEFINED-ATTRIBUTE] expected the attribute "
     "'b' to be defined, found no attribute type of this name\n"
     "objectclasses=( 2.1 NAME 'k' MUST ( a $ b ) MAY c ABSTRACT )\n"
     "                                        ^\n"
     "./V3.user.oc:1:49: warning: [UNDEFINED-ATTRIBUTE] expected the attribute "
     "'c' to be defined, found no attribute type of this name\n"
     "objectclasses=( 2.1 NAME 'k' MUST ( a $ b ) MAY c ABSTRACT )\n"
     "                                                ^\n"
     "./V3.user.oc:2:35: warning: [UNDEFINED-ATTRIBUTE] expected the attribute "
     "'k' to be defined, found no attribute type of this name\n"
     "objectclasses=( 2.2 NAME 'l' MUST k MAY ( 1.1 $\n"
     "                                  ^\n"
     "./V3.user.oc:3:1: warning: [UNDEFINED-ATTRIBUTE] expected the attribute "
     "1.2 to be defined, found no attribute type of this OID\n"
     "1.2 ) )\n"
     "^\n"},
};

const CheckCase kCycles[] = {
    {"OwnSuperior",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' SUP 1.1 )\n"},
      {"V3.user.oc",
       "objectclasses=( 2.1 NAME ( 'k' 'l' ) SUP L ABSTRACT )\n"}},
     "./V3.user.at:1:35: warning: [SUPERIOR-CYCLE] expected a superior that "
     "does not lead back, found 'a' SUP 'a'\n"
     "attributetypes=( 1.1 NAME 'a' SUP 1.1 )\n"
     "                                  ^\n"
     "./V3.user.oc:1:42: warning: [SUPERIOR-CYCLE] expected a superior that "
     "does not lead back, found 'k' SUP 'k'\n"
     "objectclasses=( 2.1 NAME ( 'k' 'l' ) SUP L ABSTRACT )\n"
     "                                         ^\n"},
    {"ThreeBehindOneThatIsNotOnTheCycle",
     {{"V3.user.oc",
       "objectclasses {\n"
       "( 2.1 NAME 'j' SUP k )\n( 2.2 NAME 'k' SUP m )\n"
       "( 2.3 NAME 'l' SUP k )\n( 2.4 NAME 'm' SUP l )\n}\n"}},
     "./V3.user.oc:3:20: warning: [SUPERIOR-CYCLE] expected a superior that "
     "does not lead back, found 'k' SUP 'm' SUP 'l' SUP 'k'\n"
     "( 2.2 NAME 'k' SUP m )\n"
     "                   ^\n"},
    {"TwoCycles",
     {{"V3.user.at",
       "attributetypes {\n"
       "( 1.1 NAME 'a' SUP 1.4 )\n( 1.2 NAME 'b' SUP 1.3 )\n"
       "( 1.3 NAME 'c' SUP 1.2 )\n( 1.4 NAME 'd' SUP 1.1 )\n}\n"}},
     "./V3.user.at:2:20: warning: [SUPERIOR-CYCLE] expected a superior that "
     "does not lead back, found 'a' SUP 'd' SUP 'a'\n"
     "( 1.1 NAME 'a' SUP 1.4 )\n"
     "                   ^\n"
     "./V3.user.at:3:20: warning: [SUPERIOR-CYCLE] expected a superior that "
     "does not lead back, found 'b' SUP 'c' SUP 'b'\n"
     "( 1.2 NAME 'b' SUP 1.3 )\n"
     "                   ^\n"},
    {"TheShortestOfTwoThatMeet",
     {{"V3.user.oc",
       "objectclasses {\n"
       "( 2.1 NAME 'k' SUP ( l $ m ) )\n( 2.2 NAME 'l' SUP m )\n"
       "( 2.3 NAME 'm' SUP ( top $ k ) )\n( 2.4 NAME 'top' ABSTRACT )\n}\n"}},
     "./V3.user.oc:2:26: warning: [SUPERIOR-CYCLE] expected a superior that "
     "does not lead back, found 'k' SUP 'm' SUP 'k'\n"
     "( 2.1 NAME 'k' SUP ( l $ m ) )\n"
     "                         ^\n"},
    {"ManyAreNotAllShown",
     {{"V3.user.oc",
       "objectclasses {\n"
       "( 2.1 NAME 'k1' SUP k2 )\n( 2.2 NAME 'k2' SUP k3 )\n"
       "( 2.3 NAME 'k3' SUP k4 )\n( 2.4 NAME 'k4' SUP k5 )\n"
       "( 2.5 NAME 'k5' SUP k6 )\n( 2.6 NAME 'k6' SUP k1 )\n}\n"}},
     "./V3.user.oc:2:21: warning: [SUPERIOR-CYCLE] expected a superior that "
     "does not lead back, found 'k1' SUP 'k2' SUP 'k3' SUP 'k4' SUP 'k5' SUP "
     "... SUP 'k1'\n"
     "( 2.1 NAME 'k1' SUP k2 )\n"
     "                    ^\n"},
};

const CheckCase kValues[] = {
    {"Syntaxes",
     {{"V3.user.at",
       "attributetypes {\n"
       "( 1.1 NAME 'a' SYNTAX 1.3.6.1.4.1.1466.115.121.1.59 )\n"
       "( 1.2 NAME 'b' SYNTAX 1.2.3{64} )\n"
       "( 1.3 NAME 'c' SYNTAX DirectoryString )\n}\n"}},
     "./V3.user.at:2:23: warning: [UNKNOWN-SYNTAX] expected the OID of a "
     "standard syntax, found 1.3.6.1.4.1.1466.115.121.1.59\n"
     "( 1.1 NAME 'a' SYNTAX 1.3.6.1.4.1.1466.115.121.1.59 )\n"
     "                      ^\n"
     "./V3.user.at:3:23: warning: [UNKNOWN-SYNTAX] expected the OID of a "
     "standard syntax, found 1.2.3{64}\n"
     "( 1.2 NAME 'b' SYNTAX 1.2.3{64} )\n"
     "                      ^\n"
     "./V3.user.at:4:23: warning: [UNKNOWN-SYNTAX] expected the OID of a "
     "standard syntax, found 'DirectoryString'\n"
     "( 1.3 NAME 'c' SYNTAX DirectoryString )\n"
     "                      ^\n"},
    {"MatchingRules",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' EQUALITY 1.3 ORDERING 2.5.13.62 SUBSTR "
       "2.5.13 )\n"}},
     "./V3.user.at:1:40: warning: [UNKNOWN-RULE] expected the OID of a "
     "standard matching rule, found 1.3\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY 1.3 ORDERING 2.5.13.62 SUBSTR "
     "2.5.13 )\n"
     "                                       ^\n"
     "./V3.user.at:1:53: warning: [UNKNOWN-RULE] expected the OID of a "
     "standard matching rule, found 2.5.13.62\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY 1.3 ORDERING 2.5.13.62 SUBSTR "
     "2.5.13 )\n"
     "                                                    ^\n"
     "./V3.user.at:1:70: warning: [UNKNOWN-RULE] expected the OID of a "
     "standard matching rule, found 2.5.13\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY 1.3 ORDERING 2.5.13.62 SUBSTR "
     "2.5.13 )\n"
     "                                                                     "
     "^\n"},
    {"RequiredAndOptional",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME ( 'a' 'alpha' ) DESC 'x' )\n"
       "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"},
      {"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' MUST ( a $ b ) MAY ( ALPHA $ B ) )\n"}},
     "./V3.user.oc:1:51: warning: [REQUIRED-AND-OPTIONAL] expected an "
     "attribute that MUST does not hold, found 'ALPHA'\n"
     "objectclasses=( 2.1 NAME 'k' MUST ( a $ b ) MAY ( ALPHA $ B ) )\n"
     "                                                  ^\n"
     "./V3.user.oc:1:59: warning: [REQUIRED-AND-OPTIONAL] expected an "
     "attribute that MUST does not hold, found 'B'\n"
     "objectclasses=( 2.1 NAME 'k' MUST ( a $ b ) MAY ( ALPHA $ B ) )\n"
     "                                                          ^\n"},
    {"Oids",
     {{"V3.user.at",
       "attributetypes {\n"
       "( a-oid NAME 'a' DESC 'x' )\n( 1 NAME 'b' DESC 'x' )\n"
       "( 1.02 NAME 'c' DESC 'x' )\n( 1..2 NAME 'd' DESC 'x' )\n"
       "( 1.2. NAME 'e' DESC 'x' )\n( 1.2{3} NAME 'f' DESC 'x' )\n}\n"
       "QORAttributetypes=( a-oid LENGTH 4 )\n"}},
     "./V3.user.at:2:3: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found 'a-oid'\n"
     "( a-oid NAME 'a' DESC 'x' )\n"
     "  ^\n"
     "./V3.user.at:3:3: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found '1'\n"
     "( 1 NAME 'b' DESC 'x' )\n"
     "  ^\n"
     "./V3.user.at:4:3: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found '1.02'\n"
     "( 1.02 NAME 'c' DESC 'x' )\n"
     "  ^\n"
     "./V3.user.at:5:3: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found '1..2'\n"
     "( 1..2 NAME 'd' DESC 'x' )\n"
     "  ^\n"
     "./V3.user.at:6:3: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found '1.2.'\n"
     "( 1.2. NAME 'e' DESC 'x' )\n"
     "  ^\n"
     "./V3.user.at:7:3: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found '1.2{3}'\n"
     "( 1.2{3} NAME 'f' DESC 'x' )\n"
     "  ^\n"
     "./V3.user.at:9:21: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found 'a-oid'\n"
     "QORAttributetypes=( a-oid LENGTH 4 )\n"
     "                    ^\n"},
    {"Names",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'a b' '' 'a1-' ) DESC 'x' )\n"},
      {"V3.user.oc", "objectclasses=( 2.1 NAME 'k;x' ABSTRACT )\n"}},
     "./V3.user.at:1:29: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found 'a_b'\n"
     "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'a b' '' 'a1-' ) DESC 'x' )\n"
     "                            ^\n"
     "./V3.user.at:1:35: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found '1a'\n"
     "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'a b' '' 'a1-' ) DESC 'x' )\n"
     "                                  ^\n"
     "./V3.user.at:1:40: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found 'a b'\n"
     "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'a b' '' 'a1-' ) DESC 'x' )\n"
     "                                       ^\n"
     "./V3.user.at:1:46: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found ''\n"
     "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'a b' '' 'a1-' ) DESC 'x' )\n"
     "                                             ^\n"
     "./V3.user.oc:1:26: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found 'k;x'\n"
     "objectclasses=( 2.1 NAME 'k;x' ABSTRACT )\n"
     "                         ^\n"},
    {"Usages",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' USAGE userApplication )\n"
       "attributetypes=( 1.2 NAME 'b' USAGE dsaoperation )\n"}},
     "./V3.user.at:1:37: warning: [BAD-USAGE] expected userApplications, "
     "directoryOperation, distributedOperation or dSAOperation, found "
     "'userApplication'\n"
     "attributetypes=( 1.1 NAME 'a' USAGE userApplication )\n"
     "                                    ^\n"},
};

INSTANTIATE_TEST_SUITE_P(Nothing, ReferenceChecksTest,
                         testing::ValuesIn(kClean), nameOf);
INSTANTIATE_TEST_SUITE_P(Undefined, ReferenceChecksTest,
                         testing::ValuesIn(kUndefined), nameOf);
INSTANTIATE_TEST_SUITE_P(Cycles, ReferenceChecksTest,
                         testing::ValuesIn(kCycles), nameOf);
INSTANTIATE_TEST_SUITE_P(Values, ReferenceChecksTest,
                         testing::ValuesIn(kValues), nameOf);

}  // namespace
