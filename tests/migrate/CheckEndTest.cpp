// The command check: definitions and sections that run on or are not read.
#include "CheckCommandTesting.h"

namespace {

class CheckEndTest : public CheckCommandTest {};

TEST_P(CheckEndTest, FindsThisAndNoMore) { expectFindings(); }

const CheckCase kEnd[] = {
    {"NameLast",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:22: error: [NAMES-LAST] expected another field behind the "
     "names, found ')'; the library does not end the definition at its ')'\n"
     "attributetypes=( 1.1 NAME 'a' )\n"
     "                     ^\n"},
    {"NameLastInAClass",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' )\n"
       "objectclasses=( 2.9 NAME 'next' ABSTRACT )\n"}},
     "d/V3.user.oc:1:21: error: [NAMES-LAST] expected another field behind the "
     "names, found ')'; the library does not end the definition at its ')'\n"
     "objectclasses=( 2.1 NAME 'k' )\n"
     "                    ^\n"},
    {"ColumnsLast",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 DBNAME 'A' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:2:25: error: [COLUMNS-LAST] expected parentheses around the "
     "column names, or another field behind them, found ')'; the library gives "
     "the file up here\n"
     "QORAttributetypes=( 1.1 DBNAME 'A' )\n"
     "                        ^\n"
     "d/V3.user.at:3:18: warning: [NO-STORAGE] expected a storage definition "
     "with the OID 1.9, found none\n"
     "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
     "                 ^\n"},
    {"ColumnsBeforeReverse",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 DBNAME 'A' REVERSE )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:2:25: error: [COLUMNS-LAST] expected parentheses around the "
     "column names, or another field behind them, found 'REVERSE'; the library "
     "gives the file up here\n"
     "QORAttributetypes=( 1.1 DBNAME 'A' REVERSE )\n"
     "                        ^\n"
     "d/V3.user.at:2:36: warning: [REVERSE] expected no REVERSE, found it; the "
     "library drops it\n"
     "QORAttributetypes=( 1.1 DBNAME 'A' REVERSE )\n"
     "                                   ^\n"
     "d/V3.user.at:3:18: warning: [NO-STORAGE] expected a storage definition "
     "with the OID 1.9, found none\n"
     "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
     "                 ^\n"},
    {"ColumnsBeforeALength",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 DBNAME 'A' LENGTH 4 )\n"}},
     "d/V3.user.at:2:25: error: [BAD-VALUE] expected parentheses around the "
     "column names, found none; the library drops it\n"
     "QORAttributetypes=( 1.1 DBNAME 'A' LENGTH 4 )\n"
     "                        ^\n"},
    {"ParenthesisMissing",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x'\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:16: error: [UNCLOSED] expected ')' at the end of the "
     "definition, found the word 'attributetypes'; the library gives the file "
     "up here\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x'\n"
     "               ^\n"},
    {"ParenthesisMissingInABlock",
     {{"V3.user.at",
       "attributetypes {\n"
       "( 1.1 NAME 'a' DESC 'x'\n"
       "( 1.2 NAME 'b' DESC 'y' )\n"
       "}\n"}},
     "d/V3.user.at:2:1: error: [UNCLOSED] expected ')' at the end of the "
     "definition, found '('; the library does not end the definition at its "
     "')'\n"
     "( 1.1 NAME 'a' DESC 'x'\n"
     "^\n"},
    {"ParenthesisMissingAtTheEndOfABlock",
     {{"V3.user.at",
       "attributetypes {\n"
       "( 1.1 NAME 'a' DESC 'x'\n"
       "}\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:2:1: error: [UNCLOSED] expected ')' at the end of the "
     "definition, found '}'; the library does not end the definition at its "
     "')'\n"
     "( 1.1 NAME 'a' DESC 'x'\n"
     "^\n"},
    {"ListUnclosed",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' MUST ( a $ b MAY ( c ) ABSTRACT )\n"
       "objectclasses=( 2.9 NAME 'next' ABSTRACT )\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME ( 'a' 'b' 'c' ) DESC 'x' )\n"}},
     "d/V3.user.oc:1:35: warning: [LIST-FORM] expected ')' at the end of the "
     "list of MUST, found the word 'MAY'\n"
     "objectclasses=( 2.1 NAME 'k' MUST ( a $ b MAY ( c ) ABSTRACT )\n"
     "                                  ^\n"
     "d/V3.user.oc:1:49: warning: [REQUIRED-AND-OPTIONAL] expected an "
     "attribute that MUST does not hold, found 'c'\n"
     "objectclasses=( 2.1 NAME 'k' MUST ( a $ b MAY ( c ) ABSTRACT )\n"
     "                                                ^\n"},
    {"BareListLast",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST a )\n"
       "objectclasses=( 2.9 NAME 'next' ABSTRACT )\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"}},
     "d/V3.user.oc:1:39: error: [BARE-LIST-LAST] expected parentheses around "
     "the last list of an object class, found none; the library gives the file "
     "up here\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST a )\n"
     "                                      ^\n"},
    {"BareListAtTheEndOfTheFile",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT MAY a )\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"}},
     "d/V3.user.oc:1:39: error: [BARE-LIST-LAST] expected parentheses around "
     "the last list of an object class, found none; the library gives the file "
     "up here\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MAY a )\n"
     "                                      ^\n"},
    {"BareListLastInABlock",
     {{"V3.user.oc",
       "objectclasses {\n"
       "( 2.1 NAME 'k' ABSTRACT MUST a )\n"
       "( 2.2 NAME 'l' ABSTRACT MAY a )\n"
       "}\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"}},
     ""},
    {"BareListBeforeAnotherField",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' MUST a ABSTRACT )\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"}},
     ""},
    {"SectionInAnotherCase",
     {{"V3.user.at",
       "AttributeTypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:1: error: [SECTION-SPELLING] expected attributetypes, "
     "found AttributeTypes; the library skips the section, definitions: 1\n"
     "AttributeTypes=( 1.1 NAME 'a' DESC 'x' )\n"
     "^\n"},
    {"BlockInAnotherCase",
     {{"V3.user.at",
       "ATTRIBUTETYPES {\n"
       "( 1.1 NAME 'a' COLLECTIVE )\n"
       "( 1.2 NAME 'b' DESC 'x' )\n"
       "}\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:1: error: [SECTION-SPELLING] expected attributetypes, "
     "found ATTRIBUTETYPES; the library skips the section, definitions: 2\n"
     "ATTRIBUTETYPES {\n"
     "^\n"
     "d/V3.user.at:2:16: error: [COLLECTIVE] expected no COLLECTIVE in an "
     "attribute type, found it; the library would never come back\n"
     "( 1.1 NAME 'a' COLLECTIVE )\n"
     "               ^\n"},
    {"SectionOfAnUnknownKind",
     {{"V3.user.at",
       "attributetypez=( NAME 1.1 ( 'a' ) DESC 'x' )\n"
       "nameforms { ( 1.2 NAME 'n' OC person MUST cn ) }\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:1: error: [SECTION-SPELLING] expected the keyword of a "
     "section, found the word 'attributetypez'; the library passes over it\n"
     "attributetypez=( NAME 1.1 ( 'a' ) DESC 'x' )\n"
     "^\n"
     "d/V3.user.at:2:13: error: [OUTSIDE-SECTION] expected the keyword of a "
     "section before the definition, found '('; the library passes over it\n"
     "nameforms { ( 1.2 NAME 'n' OC person MUST cn ) }\n"
     "            ^\n"},
    {"SectionInTheSingular",
     {{"V3.user.at",
       "attributetype ( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:1: error: [SECTION-SPELLING] expected attributetypes, "
     "found attributetype; the library skips the section, definitions: 1\n"
     "attributetype ( 1.1 NAME 'a' DESC 'x' )\n"
     "^\n"},
    {"SectionWithAColon",
     {{"V3.user.at",
       "attributetypes: ( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:15: error: [SECTION-OPENER] expected '=' or '{' behind "
     "attributetypes, found ':'; the library gives the file up here\n"
     "attributetypes: ( 1.1 NAME 'a' DESC 'x' )\n"
     "              ^\n"},
    {"SectionWithoutOpener",
     {{"V3.user.at",
       "attributetypes ( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:15: error: [SECTION-OPENER] expected '=' or '{' behind "
     "attributetypes, found '('; the library gives the file up here\n"
     "attributetypes ( 1.1 NAME 'a' DESC 'x' )\n"
     "              ^\n"},
    {"SectionWithBothOpeners",
     {{"V3.user.at",
       "attributetypes = {\n"
       "( 1.1 NAME 'a' DESC 'x' )\n"
       "( 1.2 NAME 'b' DESC 'y' )\n"
       "}\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:15: error: [SECTION-OPENER] expected '=' or '{' behind "
     "attributetypes, found both; the library reads one definition at most\n"
     "attributetypes = {\n"
     "              ^\n"},
    {"SectionWithoutDefinition",
     {{"V3.user.at",
       "attributetypes=\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:1: error: [SECTION-EMPTY] expected a definition behind "
     "'=', found none; the library reads on for one\n"
     "attributetypes=\n"
     "^\n"},
    {"BlockWithoutEnd",
     {{"V3.user.at",
       "attributetypes {\n"
       "( 1.1 NAME 'a' DESC 'x' )\n"}},
     "d/V3.user.at:1:1: error: [SECTION-UNCLOSED] expected '}' at the end of "
     "the block of attributetypes, found none; the library gives the file up "
     "here\n"
     "attributetypes {\n"
     "^\n"},
    {"BlockWithoutEndBeforeAnother",
     {{"V3.user.at",
       "attributetypes {\n"
       "( 1.1 NAME 'a' DESC 'x' )\n"
       "objectclasses {\n"
       "( 2.1 NAME 'k' ABSTRACT )\n"
       "}\n"}},
     "d/V3.user.at:1:1: error: [SECTION-UNCLOSED] expected '}' at the end of "
     "the block of attributetypes, found none; the library gives the file up "
     "here\n"
     "attributetypes {\n"
     "^\n"
     "d/V3.user.at:4:1: warning: [WRONG-FILE] expected the object class in a "
     "file such as V3.user.oc, found it in V3.user.at\n"
     "( 2.1 NAME 'k' ABSTRACT )\n"
     "^\n"},
    {"DefinitionOutside",
     {{"V3.user.at",
       "( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:1: error: [OUTSIDE-SECTION] expected the keyword of a "
     "section before the definition, found '('; the library passes over it\n"
     "( 1.1 NAME 'a' DESC 'x' )\n"
     "^\n"},
    {"SecondDefinitionBehindASection",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
       "( 1.2 NAME 'b' DESC 'y' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:2:1: error: [OUTSIDE-SECTION] expected the keyword of a "
     "section before the definition, found '('; the library passes over it\n"
     "( 1.2 NAME 'b' DESC 'y' )\n"
     "^\n"},
    {"TextOutside",
     {{"V3.user.at",
       "version 3\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "end of file\n"}},
     "d/V3.user.at:1:1: warning: [STRAY-TEXT] expected the keyword of a "
     "section, found the word 'version'\n"
     "version 3\n"
     "^\n"
     "d/V3.user.at:3:1: warning: [STRAY-TEXT] expected the keyword of a "
     "section, found the word 'end'\n"
     "end of file\n"
     "^\n"},
    {"TextBeforeADefinition",
     {{"V3.user.at",
       "attributetypes = 'x' ( NAME 'a' DESC 'x' )\n"
       "QORAttributetypes { LENGTH ( 1.1 DBNAME ( 'A' ) ) }\n"}},
     "d/V3.user.at:1:1: error: [SECTION-EMPTY] expected a definition behind "
     "'=', found none; the library reads on for one\n"
     "attributetypes = 'x' ( NAME 'a' DESC 'x' )\n"
     "^\n"
     "d/V3.user.at:1:18: warning: [STRAY-TEXT] expected the keyword of a "
     "section, found the text 'x'\n"
     "attributetypes = 'x' ( NAME 'a' DESC 'x' )\n"
     "                 ^\n"
     "d/V3.user.at:1:22: error: [OUTSIDE-SECTION] expected the keyword of a "
     "section before the definition, found '('; the library passes over it\n"
     "attributetypes = 'x' ( NAME 'a' DESC 'x' )\n"
     "                     ^\n"
     "d/V3.user.at:2:21: warning: [STRAY-TEXT] expected '(' or '}', found the "
     "word 'LENGTH'\n"
     "QORAttributetypes { LENGTH ( 1.1 DBNAME ( 'A' ) ) }\n"
     "                    ^\n"
     "d/V3.user.at:2:21: error: [PHANTOM] expected '(', found the word "
     "'LENGTH', which is part of the definition behind it to the library\n"
     "QORAttributetypes { LENGTH ( 1.1 DBNAME ( 'A' ) ) }\n"
     "                    ^\n"
     "d/V3.user.at:2:30: error: [STORAGE-WITHOUT-TYPE] expected an attribute "
     "type with the OID 1.1, found none; the library never writes the storage "
     "definition\n"
     "QORAttributetypes { LENGTH ( 1.1 DBNAME ( 'A' ) ) }\n"
     "                             ^\n"},
    {"TextInABlock",
     {{"V3.user.at",
       "attributetypes {\n"
       "( 1.1 NAME 'a' DESC 'x' ) ;\n"
       "( 1.2 NAME 'b' DESC 'y' ) more 'text'\n"
       "}\n"}},
     "d/V3.user.at:2:27: warning: [STRAY-TEXT] expected '(' or '}', found the "
     "word ';'\n"
     "( 1.1 NAME 'a' DESC 'x' ) ;\n"
     "                          ^\n"
     "d/V3.user.at:3:27: warning: [STRAY-TEXT] expected '(' or '}', found the "
     "word 'more'\n"
     "( 1.2 NAME 'b' DESC 'y' ) more 'text'\n"
     "                          ^\n"
     "d/V3.user.at:3:30: error: [PHANTOM] expected '}' or a definition, found "
     "what is a definition to the library alone\n"
     "( 1.2 NAME 'b' DESC 'y' ) more 'text'\n"
     "                             ^\n"},
};

INSTANTIATE_TEST_SUITE_P(End, CheckEndTest, testing::ValuesIn(kEnd), nameOf);

}  // namespace
