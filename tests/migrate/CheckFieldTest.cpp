// The command check: fields that are dropped or not in their form.
#include "CheckCommandTesting.h"

namespace {

class CheckFieldTest : public CheckCommandTest {};

TEST_P(CheckFieldTest, FindsThisAndNoMore) { expectFindings(); }

const CheckCase kField[] = {
    {"RuleByName",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' EQUALITY caseIgnoreMatch ORDERING "
       "caseIgnoreOrderingMatch SUBSTR 2.5.13.4 )\n"}},
     "d/V3.user.at:1:40: warning: [RULE-BY-NAME] expected the OID of a "
     "matching rule, found the name 'caseIgnoreMatch'; the library drops it\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY caseIgnoreMatch ORDERING "
     "caseIgnoreOrderingMatch SUBSTR 2.5.13.4 )\n"
     "                                       ^\n"
     "d/V3.user.at:1:65: warning: [RULE-BY-NAME] expected the OID of a "
     "matching rule, found the name 'caseIgnoreOrderingMatch'; the library "
     "drops it\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY caseIgnoreMatch ORDERING "
     "caseIgnoreOrderingMatch SUBSTR 2.5.13.4 )\n"
     "                                                                ^\n"},
    {"SuperiorByName",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SUP next )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:35: warning: [SUPERIOR-BY-NAME] expected the OID of a "
     "superior, found the name 'next'; the library drops it\n"
     "attributetypes=( 1.1 NAME 'a' SUP next )\n"
     "                                  ^\n"},
    {"SuperiorByNumber",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' SUP 2.9 ABSTRACT )\n"
       "objectclasses=( 2.9 NAME 'next' ABSTRACT )\n"}},
     "d/V3.user.oc:1:34: warning: [SUPERIOR-BY-NUMBER] expected the name of an "
     "object class, found the OID 2.9; the library drops it\n"
     "objectclasses=( 2.1 NAME 'k' SUP 2.9 ABSTRACT )\n"
     "                                 ^\n"},
    {"RepeatedFields",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' NAME 'b' DESC 'y' )\n"}},
     "d/V3.user.at:1:40: warning: [REPEATED-FIELD] expected NAME once, found "
     "it again\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' NAME 'b' DESC 'y' )\n"
     "                                       ^\n"
     "d/V3.user.at:1:49: warning: [REPEATED-FIELD] expected DESC once, found "
     "it again\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' NAME 'b' DESC 'y' )\n"
     "                                                ^\n"},
    {"Reverse",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 DBNAME ( 'A' ) REVERSE )\n"}},
     "d/V3.user.at:2:40: warning: [REVERSE] expected no REVERSE, found it; the "
     "library drops it\n"
     "QORAttributetypes=( 1.1 DBNAME ( 'A' ) REVERSE )\n"
     "                                       ^\n"},
    {"SecondSuperior",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SUP 1.9 SUP 1.8 )\n"
       "attributetypes=( 1.8 NAME 'b' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:39: error: [SECOND-SUPERIOR] expected one superior, found "
     "another; written, it takes the place of the OID\n"
     "attributetypes=( 1.1 NAME 'a' SUP 1.9 SUP 1.8 )\n"
     "                                      ^\n"},
    {"QuotedSyntax",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SYNTAX '1.3.6.1.4.1.1466.115.121.1.15' "
       ")\n"}},
     "d/V3.user.at:1:38: warning: [QUOTES] expected a value without quotes "
     "behind SYNTAX, found the text '1.3.6.1.4.1.1466.115.121.1.15'\n"
     "attributetypes=( 1.1 NAME 'a' SYNTAX '1.3.6.1.4.1.1466.115.121.1.15' )\n"
     "                                     ^\n"},
    {"QuotedRule",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' EQUALITY '2.5.13.2' )\n"}},
     "d/V3.user.at:1:40: error: [BAD-VALUE] expected a value without quotes "
     "behind EQUALITY, found the text '2.5.13.2'; the library drops it\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY '2.5.13.2' )\n"
     "                                       ^\n"},
    {"QuotedNumbersInAList",
     {{"V3.user.oc",
       "objectclasses=( 9.1 NAME 'a' STRUCTURAL MUST ( '1.9' ) )\n"},
      {"V3.user.at", "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.oc:1:15: error: [REWRITING] expected MUST 1.9 to read back as "
     "it is written, found (none)\n"
     "objectclasses=( 9.1 NAME 'a' STRUCTURAL MUST ( '1.9' ) )\n"
     "              ^\n"
     "d/V3.user.oc:1:15: error: [REWRITING] expected OID 9.1 to read back as "
     "it is written, found 1.9\n"
     "objectclasses=( 9.1 NAME 'a' STRUCTURAL MUST ( '1.9' ) )\n"
     "              ^\n"
     "d/V3.user.oc:1:48: warning: [QUOTES] expected a value without quotes "
     "behind MUST, found the text '1.9'\n"
     "objectclasses=( 9.1 NAME 'a' STRUCTURAL MUST ( '1.9' ) )\n"
     "                                               ^\n"},
    {"QuotedWords",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' USAGE 'two words' )\n"}},
     "d/V3.user.at:1:16: error: [REWRITING] expected OID 1.1 to read back as "
     "it is written, found words\n"
     "attributetypes=( 1.1 NAME 'a' USAGE 'two words' )\n"
     "               ^\n"
     "d/V3.user.at:1:16: error: [REWRITING] expected USAGE two words to read "
     "back as it is written, found two\n"
     "attributetypes=( 1.1 NAME 'a' USAGE 'two words' )\n"
     "               ^\n"
     "d/V3.user.at:1:37: warning: [QUOTES] expected a value without quotes "
     "behind USAGE, found the text 'two words'\n"
     "attributetypes=( 1.1 NAME 'a' USAGE 'two words' )\n"
     "                                    ^\n"
     "d/V3.user.at:1:37: warning: [BAD-USAGE] expected userApplications, "
     "directoryOperation, distributedOperation or dSAOperation, found 'two "
     "words'\n"
     "attributetypes=( 1.1 NAME 'a' USAGE 'two words' )\n"
     "                                    ^\n"},
    {"QuotedDefinition",
     {{"V3.user.oc",
       "objectclasses=( 1.1 NAME 'a' STRUCTURAL MUST ( a'c ) MAY d ) "
       "objectclasses=( 1.2 NAME'SUP k )\n"},
      {"V3.user.at", "attributetypes=( 1.3 NAME 'a' DESC 'x' )\n"}},
     "d/V3.user.oc:1:15: error: [REWRITING] expected MAY (none) to read back "
     "as it is written, found d\n"
     "objectclasses=( 1.1 NAME 'a' STRUCTURAL MUST ( a'c ) MAY d ) "
     "objectclasses=( 1.2 NAME'SUP k )\n"
     "              ^\n"
     "d/V3.user.oc:1:15: error: [REWRITING] expected MUST a c ) MAY d ) "
     "objectclasses=( 1.2 NAME to read back as it is written, found a c\n"
     "objectclasses=( 1.1 NAME 'a' STRUCTURAL MUST ( a'c ) MAY d ) "
     "objectclasses=( 1.2 NAME'SUP k )\n"
     "              ^\n"
     "d/V3.user.oc:1:46: warning: [LIST-FORM] expected ')' at the end of the "
     "list of MUST, found the word 'SUP'\n"
     "objectclasses=( 1.1 NAME 'a' STRUCTURAL MUST ( a'c ) MAY d ) "
     "objectclasses=( 1.2 NAME'SUP k )\n"
     "                                             ^\n"
     "d/V3.user.oc:1:49: warning: [LIST-FORM] expected '$' behind 'a', found "
     "the text 'c ) MAY d ) objectclasses=( 1.2 NAME'\n"
     "objectclasses=( 1.1 NAME 'a' STRUCTURAL MUST ( a'c ) MAY d ) "
     "objectclasses=( 1.2 NAME'SUP k )\n"
     "                                                ^\n"
     "d/V3.user.oc:1:49: warning: [QUOTES] expected a value without quotes "
     "behind MUST, found the text 'c ) MAY d ) objectclasses=( 1.2 NAME'\n"
     "objectclasses=( 1.1 NAME 'a' STRUCTURAL MUST ( a'c ) MAY d ) "
     "objectclasses=( 1.2 NAME'SUP k )\n"
     "                                                ^\n"
     "d/V3.user.oc:1:49: warning: [UNDEFINED-ATTRIBUTE] expected the attribute "
     "'c ) MAY d ) objectclasses=( 1.2 NAME' to be defined, found no attribute "
     "type of this name\n"
     "objectclasses=( 1.1 NAME 'a' STRUCTURAL MUST ( a'c ) MAY d ) "
     "objectclasses=( 1.2 NAME'SUP k )\n"
     "                                                ^\n"
     "d/V3.user.oc:1:91: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "'k' to be defined, found no object class of this name\n"
     "objectclasses=( 1.1 NAME 'a' STRUCTURAL MUST ( a'c ) MAY d ) "
     "objectclasses=( 1.2 NAME'SUP k )\n"
     "                                                                         "
     "                 ^\n"},
    {"QuotedNothing",
     {{"V3.user.at",
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "QORAttributetypes=( 1.9 LENGTH '' ACCESS-CLASS '' EQUALITY )\n"}},
     "d/V3.user.at:2:19: error: [REWRITING] expected EQUALITY yes to read back "
     "as it is written, found no\n"
     "QORAttributetypes=( 1.9 LENGTH '' ACCESS-CLASS '' EQUALITY )\n"
     "                  ^\n"
     "d/V3.user.at:2:19: error: [REWRITING] expected LENGTH (none) to read "
     "back as it is written, found EQUALITY\n"
     "QORAttributetypes=( 1.9 LENGTH '' ACCESS-CLASS '' EQUALITY )\n"
     "                  ^\n"
     "d/V3.user.at:2:32: warning: [QUOTES] expected a value without quotes "
     "behind LENGTH, found the text ''\n"
     "QORAttributetypes=( 1.9 LENGTH '' ACCESS-CLASS '' EQUALITY )\n"
     "                               ^\n"
     "d/V3.user.at:2:48: warning: [QUOTES] expected a value without quotes "
     "behind ACCESS-CLASS, found the text ''\n"
     "QORAttributetypes=( 1.9 LENGTH '' ACCESS-CLASS '' EQUALITY )\n"
     "                                               ^\n"},
    {"TwoKinds",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT DESC 'x' AUXILIARY )\n"}},
     "d/V3.user.oc:1:48: warning: [REPEATED-FIELD] expected the kind of the "
     "object class once, found it again\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT DESC 'x' AUXILIARY )\n"
     "                                               ^\n"},
    {"UnquotedName",
     {{"V3.user.at", "attributetypes=( 1.1 NAME a DESC 'x' )\n"}},
     "d/V3.user.at:1:27: warning: [QUOTES] expected a quoted string behind "
     "NAME, found the word 'a'\n"
     "attributetypes=( 1.1 NAME a DESC 'x' )\n"
     "                          ^\n"},
    {"UnquotedDescription",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC two words )\n"}},
     "d/V3.user.at:1:36: error: [BAD-VALUE] expected a quoted string behind "
     "DESC, found the word 'two'; the library keeps OID words\n"
     "attributetypes=( 1.1 NAME 'a' DESC two words )\n"
     "                                   ^\n"},
    {"DollarMissing",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a b ) )\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"}},
     "d/V3.user.oc:1:48: warning: [LIST-FORM] expected '$' behind 'a', found "
     "the word 'b'\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a b ) )\n"
     "                                               ^\n"},
    {"DollarTooMany",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( $ a $ $ b $ ) )\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"}},
     "d/V3.user.oc:1:46: warning: [LIST-FORM] expected a name or an OID in the "
     "list of MUST, found '$'\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( $ a $ $ b $ ) )\n"
     "                                             ^\n"
     "d/V3.user.oc:1:52: warning: [LIST-FORM] expected a name or an OID in the "
     "list of MUST, found '$'\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( $ a $ $ b $ ) )\n"
     "                                                   ^\n"
     "d/V3.user.oc:1:58: warning: [LIST-FORM] expected a name or an OID behind "
     "'$', found ')'\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( $ a $ $ b $ ) )\n"
     "                                                         ^\n"},
    {"ListWithoutParentheses",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' MUST a $ b ABSTRACT )\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"}},
     "d/V3.user.oc:1:37: warning: [LIST-FORM] expected parentheses around the "
     "list of MUST, found '$'\n"
     "objectclasses=( 2.1 NAME 'k' MUST a $ b ABSTRACT )\n"
     "                                    ^\n"},
    {"NestedList",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( ( a ) $ b ) )\n"
       "objectclasses=( 2.9 NAME 'next' ABSTRACT )\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"}},
     "d/V3.user.oc:1:46: error: [BAD-VALUE] expected no further parentheses in "
     "the list of MUST, found '('; the library does not end the definition at "
     "its ')'\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( ( a ) $ b ) )\n"
     "                                             ^\n"},
    {"EmptyList",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( ) )\n"}},
     "d/V3.user.oc:1:39: warning: [LIST-FORM] expected a name or an OID behind "
     "MUST, found ')'\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( ) )\n"
     "                                      ^\n"},
    {"NameMissing",
     {{"V3.user.at", "attributetypes=( 1.1 NAME DESC 'x' OBSOLETE )\n"}},
     "d/V3.user.at:1:16: warning: [NO-NAME] expected a name of the attribute "
     "type, found none\n"
     "attributetypes=( 1.1 NAME DESC 'x' OBSOLETE )\n"
     "               ^\n"
     "d/V3.user.at:1:22: error: [MISSING-VALUE] expected a name behind NAME, "
     "found 'DESC'; the library keeps NAME x\n"
     "attributetypes=( 1.1 NAME DESC 'x' OBSOLETE )\n"
     "                     ^\n"},
    {"ColumnMissing",
     {{"V3.user.at",
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "QORAttributetypes=( 1.9 DBNAME LENGTH 4 )\n"}},
     "d/V3.user.at:2:25: error: [MISSING-VALUE] expected a name behind DBNAME, "
     "found 'LENGTH'; the library gives the file up here\n"
     "QORAttributetypes=( 1.9 DBNAME LENGTH 4 )\n"
     "                        ^\n"},
    {"LengthThatIsAWord",
     {{"V3.user.at",
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "QORAttributetypes=( 1.9 LENGTH long ACCESS-CLASS no ACCESS-CLASS yes "
       ")\n"}},
     "d/V3.user.at:2:32: warning: [BAD-FORM] expected a number behind LENGTH, "
     "found the word 'long'\n"
     "QORAttributetypes=( 1.9 LENGTH long ACCESS-CLASS no ACCESS-CLASS yes )\n"
     "                               ^\n"
     "d/V3.user.at:2:53: warning: [REPEATED-FIELD] expected ACCESS-CLASS once, "
     "found it again\n"
     "QORAttributetypes=( 1.9 LENGTH long ACCESS-CLASS no ACCESS-CLASS yes )\n"
     "                                                    ^\n"},
    {"ValueMissing",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC SYNTAX "
       "1.3.6.1.4.1.1466.115.121.1.15 )\n"}},
     "d/V3.user.at:1:31: error: [MISSING-VALUE] expected a quoted text behind "
     "DESC, found the word 'SYNTAX'; the library keeps OID "
     "1.3.6.1.4.1.1466.115.121.1.15\n"
     "attributetypes=( 1.1 NAME 'a' DESC SYNTAX 1.3.6.1.4.1.1466.115.121.1.15 "
     ")\n"
     "                              ^\n"},
    {"ValueMissingAtTheEnd",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SYNTAX )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:31: error: [MISSING-VALUE] expected a name or an OID "
     "behind SYNTAX, found ')'; the library gives the file up here\n"
     "attributetypes=( 1.1 NAME 'a' SYNTAX )\n"
     "                              ^\n"},
    {"ListForOneValue",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SYNTAX ( 1.3.6.1.4.1.1466.115.121.1.15 ) "
       ")\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:38: error: [BAD-VALUE] expected one value behind SYNTAX, "
     "found '('; the library ends the definition too early\n"
     "attributetypes=( 1.1 NAME 'a' SYNTAX ( 1.3.6.1.4.1.1466.115.121.1.15 ) "
     ")\n"
     "                                     ^\n"},
};

INSTANTIATE_TEST_SUITE_P(Field, CheckFieldTest, testing::ValuesIn(kField),
                         nameOf);

}  // namespace
