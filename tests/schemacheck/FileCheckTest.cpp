// What a file says against what the library keeps of it, where both are odd.
#include "FileCheck.h"

#include <gtest/gtest.h>

#include <string>

#include "CheckTesting.h"
#include "DirectoryCheck.h"

using schemacheck::SchemaDirectory;

namespace {

class FileCheckTest : public CheckTest,
                      public testing::WithParamInterface<CheckCase> {
 protected:
  std::string findings(const Files &files) const {
    write(files);
    return textOf(checkFiles(SchemaDirectory(path())).findings);
  }
};

TEST_P(FileCheckTest, FindsThisAndNoMore) {
  EXPECT_EQ(findings(GetParam().files), GetParam().text);
}

const CheckCase kSections[] = {
    {"AKeywordThatATabMakesPartOfAWord",
     {{"V3.user.at", "x\tattributetypes=( 1.1 NAME 'a' DESC 'n' )\n"}},
     R"(./V3.user.at:1:1: error: [SECTION-SPELLING] expected the keyword of a section, found the word 'x'; the library passes over it
x       attributetypes=( 1.1 NAME 'a' DESC 'n' )
^
./V3.user.at:1:3: error: [UNREADABLE] expected a section to the library, found none; the library skips the section, definitions: 1
x       attributetypes=( 1.1 NAME 'a' DESC 'n' )
        ^
)"},
    {"ADefinitionThatIsCutOff",
     {{"V3.user.oc", "objectclasses {\nodd objectclasses )\n}\n"}},
     R"(./V3.user.oc:1:15: error: [PHANTOM] expected '}' or a definition, found what is a definition to the library alone
objectclasses {
              ^
./V3.user.oc:2:1: warning: [STRAY-TEXT] expected '(' or '}', found the word 'odd'
odd objectclasses )
^
./V3.user.oc:2:17: error: [PHANTOM] expected a section, found a word that is the keyword of one to the library alone
odd objectclasses )
                ^
)"},
    {"ADefinitionWithoutEnd",
     {{"V3.user.at", "attributetypes {\nodd NAME es )\n}\n"}},
     R"(./V3.user.at:1:16: error: [PHANTOM] expected '}' or a definition, found what is a definition to the library alone
attributetypes {
               ^
./V3.user.at:2:1: warning: [STRAY-TEXT] expected '(' or '}', found the word 'odd'
odd NAME es )
^
)"},
    {"ADifferenceWithoutCauseAndAFaultBehindIt",
     {{"V3.user.at", "attributetypes=(MUST SUP x )odd\n"}},
     R"(./V3.user.at:1:16: error: [DIFFERS] expected OID MUST to be kept; the library drops it
attributetypes=(MUST SUP x )odd
               ^
./V3.user.at:1:26: warning: [SUPERIOR-BY-NAME] expected the OID of a superior, found the name 'x'; the library drops it
attributetypes=(MUST SUP x )odd
                         ^
./V3.user.at:1:29: warning: [STRAY-TEXT] expected the keyword of a section, found the word 'odd'
attributetypes=(MUST SUP x )odd
                            ^
)"},
};

INSTANTIATE_TEST_SUITE_P(Sections, FileCheckTest, testing::ValuesIn(kSections),
                         nameOf);

const CheckCase kDefinitions[] = {
    {"OneSpellingOfTwoNames",
     {{"V3.user.oc",
       "objectclasses=( 4.1 NAME 'k' MAY ( cn $ objectClasses ) )\n"}},
     R"(./V3.user.oc:1:41: warning: [SPELLING] expected 'objectClasses' to be kept; the library keeps 'objectclasses'
objectclasses=( 4.1 NAME 'k' MAY ( cn $ objectClasses ) )
                                        ^
)"},
    {"AWarningThatAccountsForNothing",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a ) MUST ( b ) DESC "
       "'n\x7f' )\n"}},
     R"(./V3.user.oc:1:50: warning: [REPEATED-FIELD] expected MUST once, found it again
objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a ) MUST ( b ) DESC 'n?' )
                                                 ^
./V3.user.oc:1:68: error: [ODD-CHARACTER] expected printable characters, found a control character; the library gives the file up here
objectclasses=( 2.1 NAME 'k' ABSTRACT MUST ( a ) MUST ( b ) DESC 'n?' )
                                                                   ^
)"},
    {"ATextThatRepeatsANumberWithALength",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SYNTAX 1.2{3} DESC '1.2{3}' )\n"}},
     R"(./V3.user.at:1:50: error: [QUOTED-NUMBER] expected another text than that of the number before it, found '1.2{3}'; the library drops it
attributetypes=( 1.1 NAME 'a' SYNTAX 1.2{3} DESC '1.2{3}' )
                                                 ^
)"},
    {"ATextThatRepeatsADamagedNumber",
     {{"V3.user.at",
       "attributetypes=( 1.1 NAME 'a' SYNTAX 1.2 { DESC '1.2{' )\n"}},
     R"(./V3.user.at:1:39: error: [ODD-CHARACTER] expected letters, digits and hyphens after a letter, found '1.2'; the library drops it
attributetypes=( 1.1 NAME 'a' SYNTAX 1.2 { DESC '1.2{' )
                                      ^
./V3.user.at:1:42: error: [ODD-CHARACTER] expected a keyword or ')', found '{'; the library drops it
attributetypes=( 1.1 NAME 'a' SYNTAX 1.2 { DESC '1.2{' )
                                         ^
./V3.user.at:1:49: error: [QUOTED-NUMBER] expected another text than that of the number before it, found '1.2{'; the library drops it
attributetypes=( 1.1 NAME 'a' SYNTAX 1.2 { DESC '1.2{' )
                                                ^
)"},
    {"ALengthWhereThereIsNone",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' EQUALITY 1.2{3} )\n"}},
     R"(./V3.user.at:1:40: error: [BAD-LENGTH] expected a value without a length behind EQUALITY, found the number 1.2{3}; the library drops it
attributetypes=( 1.1 NAME 'a' EQUALITY 1.2{3} )
                                       ^
)"},
    {"ALengthInAList",
     {{"V3.user.oc", "objectclasses=( 2.1 NAME 'k' MAY ( 1.2{3} ) )\n"}},
     R"(./V3.user.oc:1:36: error: [BAD-LENGTH] expected a value without a length behind MAY, found the number 1.2{3}; the library ends the definition too early
objectclasses=( 2.1 NAME 'k' MAY ( 1.2{3} ) )
                                   ^
./V3.user.oc:1:36: error: [OID-IN-LIST] expected a name, found the OID 1.2{3}; the library ends the definition too early
objectclasses=( 2.1 NAME 'k' MAY ( 1.2{3} ) )
                                   ^
)"},
    {"ACharacterBeyondTheLetters",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' SUP na~me OBSOLETE )\n"}},
     R"(./V3.user.at:1:35: warning: [SUPERIOR-BY-NAME] expected the OID of a superior, found the name 'na~me'; the library drops it
attributetypes=( 1.1 NAME 'a' SUP na~me OBSOLETE )
                                  ^
./V3.user.at:1:37: error: [ODD-CHARACTER] expected letters, digits and hyphens after a letter, found 'na~me'; the library keeps OID me
attributetypes=( 1.1 NAME 'a' SUP na~me OBSOLETE )
                                    ^
)"},
    {"AWordAtTheEndOfTheFile",
     {{"V3.user.at", "attributetypes=( 1.1 NAME 'a' OBSOLETE"}},
     R"(./V3.user.at:1:16: error: [UNCLOSED] expected ')' at the end of the definition, found the end of the file; the library would never come back
attributetypes=( 1.1 NAME 'a' OBSOLETE
               ^
./V3.user.at:1:31: error: [NO-NEWLINE] expected a newline behind the last word of the file, found none
attributetypes=( 1.1 NAME 'a' OBSOLETE
                              ^
)"},
    {"ANumberThatEndsInALetterAtTheEndOfTheFile",
     {{"V3.user.at", "attributetypes=( 1Q"}},
     R"(./V3.user.at:1:16: error: [UNCLOSED] expected ')' at the end of the definition, found the end of the file; the library gives the file up here
attributetypes=( 1Q
               ^
./V3.user.at:1:18: error: [ODD-CHARACTER] expected letters, digits and hyphens after a letter, found '1Q'; the library gives the file up here
attributetypes=( 1Q
                 ^
)"},
    {"AKeywordOfASectionAsAText",
     {{"V3.user.oc",
       "objectclasses=( 2.1 NAME 'k' MAY odd~ DESC attributetypes )\n"}},
     R"(./V3.user.oc:1:37: error: [ODD-CHARACTER] expected letters, digits and hyphens after a letter, found 'odd~'; the library drops it
objectclasses=( 2.1 NAME 'k' MAY odd~ DESC attributetypes )
                                    ^
./V3.user.oc:1:44: error: [BAD-VALUE] expected a quoted string behind DESC, found the word 'attributetypes'; the library drops it
objectclasses=( 2.1 NAME 'k' MAY odd~ DESC attributetypes )
                                           ^
)"},
};

INSTANTIATE_TEST_SUITE_P(Definitions, FileCheckTest,
                         testing::ValuesIn(kDefinitions), nameOf);

// A definition that has lost its end is followed for a while only.
TEST_F(FileCheckTest, StrayTextInABlockIsNotFollowedToTheEnd) {
  std::string stray;
  for (int i = 0; i < 1000; ++i) {
    stray += "odd ";
  }
  EXPECT_EQ(findings({{"V3.user.at", "attributetypes {\n" + stray + "\n}\n"}}),
            "./V3.user.at:1:16: error: [PHANTOM] expected '}' or a definition, "
            "found what is a definition to the library alone\n"
            "attributetypes {\n"
            "               ^\n"
            "./V3.user.at:2:1: warning: [STRAY-TEXT] expected '(' or '}', "
            "found the word 'odd'\n" +
                stray.substr(0, 1000) + "...\n^\n");
}

}  // namespace
