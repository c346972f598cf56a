// The command check: text that the library cuts or takes for something else.
#include "CheckCommandTesting.h"

namespace {

class CheckTextTest : public CheckCommandTest {};

TEST_P(CheckTextTest, FindsThisAndNoMore) { expectFindings(); }

const CheckCase kText[] = {
    {"BytesOutsideAscii",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'Gr\xc3"
       "\xb6"
       "\xc3"
       "\x9f"
       "e' SINGLE-VALUE )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:39: error: [NON-ASCII] expected ASCII characters, found a "
     "byte outside ASCII; the library gives the file up here\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'Gr\xc3"
     "\xb6"
     "\xc3"
     "\x9f"
     "e' SINGLE-VALUE )\n"},
    {"Latin1",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'Gr\xf6"
       " 2' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:39: error: [NON-ASCII] expected ASCII characters, found a "
     "byte outside ASCII; the library gives the file up here\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'Gr\xf6"
     " 2' )\n"},
    {"BytesOutsideAsciiInAName",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'gr\xc3"
       "\xb6"
       "' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:27: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found 'gr\xc3"
     "\xb6"
     "'\n"
     "attributetypes=( 1.1 NAME 'gr\xc3"
     "\xb6"
     "' DESC 'x' )\n"
     "d/V3.user.at:1:30: error: [NON-ASCII] expected ASCII characters, found a "
     "byte outside ASCII; the library does not end the definition at its ')'\n"
     "attributetypes=( 1.1 NAME 'gr\xc3"
     "\xb6"
     "' DESC 'x' )\n"},
    {"BytesOutsideAsciiInAComment",
     {{"V3.user.at",
       "# Gr\xc3"
       "\xb6"
       "\xc3"
       "\x9f"
       "e\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     ""},
    {"ByteOrderMark",
     {{"V3.user.at",
       "\xef"
       "\xbb"
       "\xbf"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     ""},
    {"Apostrophe",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'It's here' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:39: error: [APOSTROPHE] expected a quoted text without "
     "apostrophes, found one; the library gives the file up here\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'It's here' )\n"
     "                                      ^\n"},
    {"Apostrophes",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'It's the user's' SINGLE-VALUE )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:39: error: [APOSTROPHE] expected a quoted text without "
     "apostrophes, found one; the library keeps OID s\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'It's the user's' SINGLE-VALUE )\n"
     "                                      ^\n"},
    {"ApostropheInNamesToTheEndOfTheFile",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'a'b' SUP k )\n"}},
     "d/V3.user.oc:1:26: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found 'a'b'\n"
     "objectclasses=( 2.1 NAME 'a'b' SUP k )\n"
     "                         ^\n"
     "d/V3.user.oc:1:28: error: [APOSTROPHE] expected a quoted text without "
     "apostrophes, found one; the library would never come back\n"
     "objectclasses=( 2.1 NAME 'a'b' SUP k )\n"
     "                           ^\n"
     "d/V3.user.oc:1:36: warning: [UNDEFINED-SUPERIOR] expected the superior "
     "'k' to be defined, found no object class of this name\n"
     "objectclasses=( 2.1 NAME 'a'b' SUP k )\n"
     "                                   ^\n"},
    {"LineBreak",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'one\n"
       " two' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:40: error: [LINE-BREAK] expected the closing quote on the "
     "same line, found the line's end; the library gives the file up here\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'one\n"
     "                                       ^\n"},
    {"QuoteUnclosed",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'one )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:16: error: [UNCLOSED] expected ')' at the end of the "
     "definition, found the word 'attributetypes'; the library gives the file "
     "up here\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'one )\n"
     "               ^\n"
     "d/V3.user.at:1:36: error: [QUOTE-UNCLOSED] expected a closing quote, "
     "found the end of the line; the library gives the file up here\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'one )\n"
     "                                   ^\n"},
    {"QuoteUnopened",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME a' DESC 'one' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:16: error: [UNCLOSED] expected ')' at the end of the "
     "definition, found the word 'attributetypes'; the library does not end "
     "the definition at its ')'\n"
     "attributetypes=( 1.1 NAME a' DESC 'one' )\n"
     "               ^\n"
     "d/V3.user.at:1:22: error: [NAMES-LAST] expected another field behind the "
     "names, found 'one'; the library does not end the definition at its ')'\n"
     "attributetypes=( 1.1 NAME a' DESC 'one' )\n"
     "                     ^\n"
     "d/V3.user.at:1:27: error: [BAD-VALUE] expected a quoted string behind "
     "NAME, found the word 'a'; the library does not end the definition at its "
     "')'\n"
     "attributetypes=( 1.1 NAME a' DESC 'one' )\n"
     "                          ^\n"
     "d/V3.user.at:1:28: warning: [BAD-NAME] expected a letter and then "
     "letters, digits or hyphens, found ' DESC '\n"
     "attributetypes=( 1.1 NAME a' DESC 'one' )\n"
     "                           ^\n"
     "d/V3.user.at:1:36: error: [UNKNOWN-FIELD] expected a field of an "
     "attribute type, found 'one'; the library does not end the definition at "
     "its ')'\n"
     "attributetypes=( 1.1 NAME a' DESC 'one' )\n"
     "                                   ^\n"
     "d/V3.user.at:1:39: error: [QUOTE-UNCLOSED] expected a closing quote, "
     "found the end of the line; the library does not end the definition at "
     "its ')'\n"
     "attributetypes=( 1.1 NAME a' DESC 'one' )\n"
     "                                      ^\n"},
    {"TabBehindAKeyword",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME\t'a' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:26: error: [TAB] expected a blank behind 'NAME', found a "
     "tab; the library keeps OID a\n"
     "attributetypes=( 1.1 NAME       'a' DESC 'x' )\n"
     "                         ^\n"},
    {"TabBehindAFlag",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' OBSOLETE\t)\n"}},
     "d/V3.user.at:1:48: error: [TAB] expected a blank behind 'OBSOLETE', "
     "found a tab; the library keeps OID OBSOLETE \n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x' OBSOLETE )\n"
     "                                               ^\n"},
    {"TabsWithoutHarm",
     {{"V3.user.at", "\tattributetypes=(\t1.1\tNAME 'a'\tDESC 'x\ty'\t)\t\n"}},
     ""},
    {"TabBehindASection",
     {{"V3.user.at",
       "attributetypes\t=( 1.1 NAME 'a' DESC 'x' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:15: error: [TAB] expected '=' or a blank behind "
     "attributetypes, found a tab; the library skips the section, definitions: "
     "1\n"
     "attributetypes  =( 1.1 NAME 'a' DESC 'x' )\n"
     "              ^\n"},
    {"CarriageReturnsWithoutHarm",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a'\r\n"
       " DESC 'x' )\r\n"}},
     ""},
    {"CarriageReturnInAList",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a $\r\n"
       " b ) )\r\n"},
      {"V3.user.at", "attributetypes=( 1.1 NAME ( 'a' 'b' ) DESC 'x' )\n"}},
     "d/V3.user.oc:1:49: error: [CARRIAGE-RETURN] expected a blank or a line "
     "feed within MUST, found a carriage return; the library ends the "
     "definition too early\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a $\n"
     "                                                ^\n"},
    {"CarriageReturnBehindAKeyword",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC\r\n"
       " 'x' )\r\n"}},
     "d/V3.user.at:1:35: error: [CARRIAGE-RETURN] expected a blank or a line "
     "feed within DESC, found a carriage return; the library keeps OID x\n"
     "attributetypes=( 1.1 NAME 'a' DESC\n"
     "                                  ^\n"},
    {"CarriageReturnBehindASection",
     {{"V3.user.at",
       "attributetypes\r\n"
       "{ ( 1.1 NAME 'a' DESC 'x' ) }\n"}},
     "d/V3.user.at:1:15: error: [SECTION-OPENER] expected '=' or '{' behind "
     "attributetypes, found a carriage return; the library gives the file up "
     "here\n"
     "attributetypes\n"
     "              ^\n"},
    {"CarriageReturnBehindAnEqualsSign",
     {{"V3.user.oc",
       "objectclasses=\r\n"
       "( 2.1 NAME 'k' ABSTRACT )\n"}},
     "d/V3.user.oc:1:15: error: [CARRIAGE-RETURN] expected '(', found a "
     "carriage return, which is part of the definition behind it to the "
     "library\n"
     "objectclasses=\n"
     "              ^\n"},
    {"QuotedKeyword",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'MAY' )\n"}},
     "d/V3.user.at:1:36: error: [QUOTED-KEYWORD] expected a text that is no "
     "keyword, found 'MAY'; the library drops it\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'MAY' )\n"
     "                                   ^\n"},
    {"QuotedKeywordAsName",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'DESC' SINGLE-VALUE )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:27: error: [QUOTED-KEYWORD] expected a text that is no "
     "keyword, found 'DESC'; the library drops it\n"
     "attributetypes=( 1.1 NAME 'DESC' SINGLE-VALUE )\n"
     "                          ^\n"},
    {"QuotedKeywordAsColumn",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'name' DESC 'x' )\n"
       "QORAttributetypes=( 1.1 DBNAME ( 'NAME' ) LENGTH 4 )\n"}},
     "d/V3.user.at:2:34: error: [QUOTED-KEYWORD] expected a text that is no "
     "keyword, found 'NAME'; the library drops it\n"
     "QORAttributetypes=( 1.1 DBNAME ( 'NAME' ) LENGTH 4 )\n"
     "                                 ^\n"},
    {"QuotedKeywordOfASection",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'objectClasses' DESC 'x' )\n"}},
     "d/V3.user.at:1:27: warning: [SPELLING] expected 'objectClasses' to be "
     "kept; the library keeps 'objectclasses'\n"
     "attributetypes=( 1.1 NAME 'objectClasses' DESC 'x' )\n"
     "                          ^\n"},
    {"QuotedNumber",
     {{"V3.user.at", "attributetypes=( 1.1 DESC '1.1' NAME 'a' OBSOLETE )\n"}},
     "d/V3.user.at:1:27: error: [QUOTED-NUMBER] expected another text than "
     "that of the number before it, found '1.1'; the library drops it\n"
     "attributetypes=( 1.1 DESC '1.1' NAME 'a' OBSOLETE )\n"
     "                          ^\n"},
    {"NumberThatWasQuoted",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC '2.5.13.2' EQUALITY 2.5.13.2 )\n"}},
     "d/V3.user.at:1:56: error: [QUOTED-NUMBER] expected another number than "
     "the text before it, found 2.5.13.2; the library drops it\n"
     "attributetypes=( 1.1 NAME 'a' DESC '2.5.13.2' EQUALITY 2.5.13.2 )\n"
     "                                                       ^\n"},
    {"WordWithOddCharacters",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' SYNTAX x;y )\n"}},
     "d/V3.user.at:1:38: warning: [UNKNOWN-SYNTAX] expected the OID of a "
     "standard syntax, found 'x;y'\n"
     "attributetypes=( 1.1 NAME 'a' SYNTAX x;y )\n"
     "                                     ^\n"
     "d/V3.user.at:1:39: error: [ODD-CHARACTER] expected letters, digits and "
     "hyphens after a letter, found 'x;y'; the library keeps OID y\n"
     "attributetypes=( 1.1 NAME 'a' SYNTAX x;y )\n"
     "                                      ^\n"},
    {"LengthThatIsNone",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SYNTAX 1.3.6.1.4.1.1466.115.121.1.15{x} "
       ")\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:38: error: [BAD-LENGTH] expected a length such as {64}, "
     "found the number 1.3.6.1.4.1.1466.115.121.1.15{x}; the library does not "
     "end the definition at its ')'\n"
     "attributetypes=( 1.1 NAME 'a' SYNTAX 1.3.6.1.4.1.1466.115.121.1.15{x} )\n"
     "                                     ^\n"},
    {"LengthThatIsNoneInAClass",
     {{"V3.user.oc",
       "objectclasses=( 2.1{x} NAME 'k' ABSTRACT )\n"
       "objectclasses=( 2.9 NAME 'next' ABSTRACT )\n"}},
     "d/V3.user.oc:1:17: error: [BAD-LENGTH] expected a length such as {64}, "
     "found the number 2.1{x}; the library gives the file up here\n"
     "objectclasses=( 2.1{x} NAME 'k' ABSTRACT )\n"
     "                ^\n"
     "d/V3.user.oc:1:17: warning: [BAD-OID] expected an OID of numbers and "
     "dots, found '2.1{x}'\n"
     "objectclasses=( 2.1{x} NAME 'k' ABSTRACT )\n"
     "                ^\n"},
    {"ControlCharacter",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' DESC 'x\x01"
       "y' )\n"
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"}},
     "d/V3.user.at:1:38: error: [ODD-CHARACTER] expected printable characters, "
     "found a control character; the library gives the file up here\n"
     "attributetypes=( 1.1 NAME 'a' DESC 'x?y' )\n"
     "                                     ^\n"},
    {"KeywordInAList",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a $ MAY $ b ) )\n"},
      {"V3.user.at",
       "attributetypes=( 1.1 NAME ( 'a' 'b' 'MAY' ) DESC 'x' )\n"}},
     "d/V3.user.at:1:37: error: [QUOTED-KEYWORD] expected a text that is no "
     "keyword, found 'MAY'; the library keeps NAME a b\n"
     "attributetypes=( 1.1 NAME ( 'a' 'b' 'MAY' ) DESC 'x' )\n"
     "                                    ^\n"
     "d/V3.user.oc:1:50: error: [QUOTED-KEYWORD] expected a name that is no "
     "keyword, found 'MAY'; the library keeps MUST a\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a $ MAY $ b ) )\n"
     "                                                 ^\n"},
    {"WordOfUnderscores",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT MAY ( _ ) )\n"}},
     "d/V3.user.oc:1:45: error: [ODD-CHARACTER] expected letters, digits and "
     "hyphens after a letter, found '_'; the library ends the definition too "
     "early\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MAY ( _ ) )\n"
     "                                            ^\n"
     "d/V3.user.oc:1:45: warning: [UNDEFINED-ATTRIBUTE] expected the attribute "
     "'_' to be defined, found no attribute type of this name\n"
     "objectclasses=( 2.1 NAME 'k' ABSTRACT MAY ( _ ) )\n"
     "                                            ^\n"},
    {"NoNewlineBehindTheParenthesis",
     {{"V3.user.at", "attributetypes=( 1.9 NAME 'next' DESC 'n' )"}},
     ""},
    {"NoNewlineBehindAWord",
     {{"V3.user.at",
       "attributetypes=( 1.9 NAME 'next' DESC 'n' )\n"
       "attributetypes"}},
     "d/V3.user.at:2:1: error: [NO-NEWLINE] expected a section, found its "
     "keyword alone\n"
     "attributetypes\n"
     "^\n"},
};

INSTANTIATE_TEST_SUITE_P(Text, CheckTextTest, testing::ValuesIn(kText), nameOf);

}  // namespace
