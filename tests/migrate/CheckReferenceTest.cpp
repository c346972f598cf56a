// The command check: what definitions refer to, and odd forms.
#include "CheckCommandTesting.h"

namespace {

class CheckReferenceTest : public CheckCommandTest {};

TEST_P(CheckReferenceTest, FindsThisAndNoMore) { expectFindings(); }

const CheckCase kReference[] = {
    {"UndefinedSuperior",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' SUP 1.5 )\n"},
      {"V3.user.oc", "objectclasses=( 2.1 NAME 'k' SUP top ABSTRACT )\n"}},
     "d/V3.user.at:1:35: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "1.5 to be defined, found no attribute type of this OID\n"
     "attributetypes=( 1.1 NAME 'a' SUP 1.5 )\n"
     "                                  ^\n"
     "d/V3.user.oc:1:34: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "'top' to be defined, found no object class of this name\n"
     "objectclasses=( 2.1 NAME 'k' SUP top ABSTRACT )\n"
     "                                 ^\n"},
    {"CycleOfSuperiors",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SUP 1.2 )\n"
       "attributetypes=( 1.2 NAME 'b' SUP 1.1 )\n"},
      {"V3.user.oc", "objectclasses=( 2.1 NAME 'k' SUP k ABSTRACT )\n"}},
     "d/V3.user.at:1:35: warning: [SUPERIOR-CYCLE] expected a superior that "
     "does not lead back, found 'a' SUP 'b' SUP 'a'\n"
     "attributetypes=( 1.1 NAME 'a' SUP 1.2 )\n"
     "                                  ^\n"
     "d/V3.user.oc:1:34: warning: [SUPERIOR-CYCLE] expected a superior that "
     "does not lead back, found 'k' SUP 'k'\n"
     "objectclasses=( 2.1 NAME 'k' SUP k ABSTRACT )\n"
     "                                 ^\n"},
    {"UndefinedAttribute",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a $ b ) MAY ( c ) )\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME ( 'x' 'B' ) DESC 'x' )\n"}},
     "d/V3.user.oc:1:46: warning: [UNDEFINED-ATTRIBUTE] expected the attribute "
     "'a' to be defined, found no attribute type of this name\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a $ b ) MAY ( c ) )\n"
     "                                             ^\n"
     "d/V3.user.oc:1:60: warning: [UNDEFINED-ATTRIBUTE] expected the attribute "
     "'c' to be defined, found no attribute type of this name\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a $ b ) MAY ( c ) )\n"
     "                                                           ^\n"},
    {"UnknownSyntax",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' SYNTAX 1.2.3.4{5} )\n"}},
     "d/V3.user.at:1:38: warning: [UNKNOWN-SYNTAX] expected the OID of a "
     "standard syntax, found 1.2.3.4{5}\n"
     "attributetypes=( 1.1 NAME 'a' SYNTAX 1.2.3.4{5} )\n"
     "                                     ^\n"},
    {"UnknownRule",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' EQUALITY 1.2.3.4 ORDERING 2.5.13.3 "
       "SUBSTR 2.5.13.99 )\n"}},
     "d/V3.user.at:1:40: warning: [UNKNOWN-RULE] expected the OID of a "
     "standard matching rule, found 1.2.3.4\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY 1.2.3.4 ORDERING 2.5.13.3 SUBSTR "
     "2.5.13.99 )\n"
     "                                       ^\n"
     "d/V3.user.at:1:73: warning: [UNKNOWN-RULE] expected the OID of a "
     "standard matching rule, found 2.5.13.99\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY 1.2.3.4 ORDERING 2.5.13.3 SUBSTR "
     "2.5.13.99 )\n"
     "                                                                        "
     "^\n"},
    {"RequiredAndOptional",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( next ) MAY ( NEXT ) )\n"},
      {"V3.user.at", "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.oc:1:59: warning: [REQUIRED-AND-OPTIONAL] expected an "
     "attribute that MUST does not hold, found 'NEXT'\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( next ) MAY ( NEXT ) )\n"
     "                                                          ^\n"},
    {"OddOids",
     {{"V3.user.at",
       "attributetypes=( a-oid NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1..2 NAME 'b' DESC 'x' )\n"
       "attributetypes=( 1.02 NAME 'c' DESC 'x' )\n"
       "attributetypes=( 7 NAME 'd' DESC 'x' )\n"}},
     "d/V3.user.at:1:18: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found 'a-oid'\n"
     "attributetypes=( a-oid NAME 'a' DESC 'x' )\n"
     "                 ^\n"
     "d/V3.user.at:2:18: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found '1..2'\n"
     "attributetypes=( 1..2 NAME 'b' DESC 'x' )\n"
     "                 ^\n"
     "d/V3.user.at:3:18: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found '1.02'\n"
     "attributetypes=( 1.02 NAME 'c' DESC 'x' )\n"
     "                 ^\n"
     "d/V3.user.at:4:18: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found '7'\n"
     "attributetypes=( 7 NAME 'd' DESC 'x' )\n"
     "                 ^\n"},
    {"OddNames",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'two words' '' ) DESC 'x' )\n"}},
     "d/V3.user.at:1:29: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found 'a_b'\n"
     "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'two words' '' ) DESC 'x' )\n"
     "                            ^\n"
     "d/V3.user.at:1:35: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found '1a'\n"
     "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'two words' '' ) DESC 'x' )\n"
     "                                  ^\n"
     "d/V3.user.at:1:40: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found 'two words'\n"
     "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'two words' '' ) DESC 'x' )\n"
     "                                       ^\n"
     "d/V3.user.at:1:52: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found ''\n"
     "attributetypes=( 1.1 NAME ( 'a_b' '1a' 'two words' '' ) DESC 'x' )\n"
     "                                                   ^\n"},
    {"OddUsage",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' USAGE everywhere )\n"}},
     "d/V3.user.at:1:37: warning: [BAD-USAGE] expected userApplications, "
     "directoryOperation, distributedOperation or dSAOperation, found "
     "'everywhere'\n"
     "attributetypes=( 1.1 NAME 'a' USAGE everywhere )\n"
     "                                    ^\n"},
};

INSTANTIATE_TEST_SUITE_P(Reference, CheckReferenceTest,
                         testing::ValuesIn(kReference), nameOf);

}  // namespace
