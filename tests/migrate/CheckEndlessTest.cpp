// The command check: readings that would never end.
#include "CheckCommandTesting.h"

namespace {

class CheckEndlessTest : public CheckCommandTest {};

TEST_P(CheckEndlessTest, FindsThisAndNoMore) { expectFindings(); }

const CheckCase kEndless[] = {
    {"Collective",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' COLLECTIVE )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:31: error: [COLLECTIVE] expected no COLLECTIVE in an "
     "attribute type, found it; the library would never come back\n"
     "attributetypes=( 1.1 NAME 'a' COLLECTIVE )\n"
     "                              ^\n"},
    {"CollectiveInABlock",
     {{"V3.user.at",
       "attributetypes {\n"
       "( 1.1 NAME 'a' COLLECTIVE )\n"
       "( 1.2 NAME 'b' DESC 'x' )\n"
       "}\n"}},
     "d/V3.user.at:2:16: error: [COLLECTIVE] expected no COLLECTIVE in an "
     "attribute type, found it; the library would never come back\n"
     "( 1.1 NAME 'a' COLLECTIVE )\n"
     "               ^\n"},
    {"CollectiveBehindWhatIsDropped",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' EQUALITY caseIgnoreMatch COLLECTIVE X-A "
       "'b' )\n"}},
     "d/V3.user.at:1:40: warning: [RULE-BY-NAME] expected the OID of a "
     "matching rule, found the name 'caseIgnoreMatch'; the library drops it\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY caseIgnoreMatch COLLECTIVE X-A "
     "'b' )\n"
     "                                       ^\n"
     "d/V3.user.at:1:56: error: [COLLECTIVE] expected no COLLECTIVE in an "
     "attribute type, found it; the library would never come back\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY caseIgnoreMatch COLLECTIVE X-A "
     "'b' )\n"
     "                                                       ^\n"
     "d/V3.user.at:1:67: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'X-A'\n"
     "attributetypes=( 1.1 NAME 'a' EQUALITY caseIgnoreMatch COLLECTIVE X-A "
     "'b' )\n"
     "                                                                  ^\n"},
    {"CollectiveAsText",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'COLLECTIVE' DESC 'x' )\n"}},
     "d/V3.user.at:1:27: error: [QUOTED-KEYWORD] expected a text that is no "
     "keyword, found 'COLLECTIVE'; the library drops it\n"
     "attributetypes=( 1.1 NAME 'COLLECTIVE' DESC 'x' )\n"
     "                          ^\n"},
    {"NamesToTheEndOfTheFile",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' )\n"}},
     "d/V3.user.at:1:22: error: [ENDLESS-NAMES] expected another field behind "
     "the names, found ')'; the library would never come back\n"
     "attributetypes=( 1.1 NAME 'a' )\n"
     "                     ^\n"},
    {"NamesInAListToTheEndOfTheFile",
     {{"V3.user.at", "attributetypes=( 1.1 NAME ( 'a' 'b' ) )\n"}},
     "d/V3.user.at:1:22: error: [ENDLESS-NAMES] expected another field behind "
     "the names, found ')'; the library would never come back\n"
     "attributetypes=( 1.1 NAME ( 'a' 'b' ) )\n"
     "                     ^\n"},
    {"NamesOfAClassToTheEndOfTheFile",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' )\n"}},
     "d/V3.user.oc:1:21: error: [ENDLESS-NAMES] expected another field behind "
     "the names, found ')'; the library would never come back\n"
     "objectclasses=( 2.1 NAME 'k' )\n"
     "                    ^\n"},
    {"ColumnsToTheEndOfTheFile",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 DBNAME 'A' )\n"}},
     "d/V3.user.at:2:25: error: [COLUMNS-LAST] expected parentheses around the "
     "column names, or another field behind them, found ')'; the library gives "
     "the file up here\n"
     "QORAttributetypes=( 1.1 DBNAME 'A' )\n"
     "                        ^\n"},
    {"OpenColumnsToTheEndOfTheFile",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 DBNAME ( 'A'\n"}},
     "d/V3.user.at:2:19: error: [UNCLOSED] expected ')' at the end of the "
     "definition, found the end of the file; the library would never come "
     "back\n"
     "QORAttributetypes=( 1.1 DBNAME ( 'A'\n"
     "                  ^\n"
     "d/V3.user.at:2:32: error: [UNCLOSED] expected ')' at the end of the list "
     "of DBNAME, found the end of the file; the library would never come back\n"
     "QORAttributetypes=( 1.1 DBNAME ( 'A'\n"
     "                               ^\n"},
};

INSTANTIATE_TEST_SUITE_P(Endless, CheckEndlessTest, testing::ValuesIn(kEndless),
                         nameOf);

}  // namespace
