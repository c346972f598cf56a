// Input that the library would read for ever.
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

#include "CommandFailureTesting.h"

namespace fs = std::filesystem;

namespace {

struct EndlessCase {
  const char *file;
  const char *text;
  const char *error;  // with "FILE" for the file's name
};

void PrintTo(const EndlessCase &endlessCase, std::ostream *out) {
  *out << endlessCase.text;
}

class CommandEndlessTest : public CommandFailureTest,
                           public testing::WithParamInterface<EndlessCase> {};

TEST_P(CommandEndlessTest, IsRefusedInEitherDirectory) {
  for (const std::string directory : {"old/", "new/"}) {
    const std::string file = directory + GetParam().file;
    const bool existed = fs::exists(path(file));
    const std::string before = existed ? read(file) : "";
    write(file, GetParam().text);
    EXPECT_EQ(failure(kFindings),
              replaceAll(GetParam().error, "FILE", file) + kAdvice);
    if (existed) {
      write(file, before);
    } else {
      fs::remove(path(file));
    }
  }
}

const EndlessCase kEndless[] = {
    {"V3.user.at", "attributetypes=( 1.2 COLLECTIVE )\n",
     R"(FILE:1:22: error: [COLLECTIVE] expected no COLLECTIVE in an attribute type, found it; the library would never come back
attributetypes=( 1.2 COLLECTIVE )
                     ^
)"},
    {"V3.qor.at", "\nattributetypes=( 1.2\n'COLLECTIVE' )\n",
     R"(FILE:3:1: error: [QUOTED-KEYWORD] expected a text that is no keyword, found 'COLLECTIVE'; the library would never come back
'COLLECTIVE' )
^
FILE:3:1: error: [UNKNOWN-FIELD] expected a field of an attribute type, found 'COLLECTIVE'; the library would never come back
'COLLECTIVE' )
^
)"},
    {"V3.system.at",
     "attributetypes=( 1.2 NAME 'b' SYNTAX 1.3 COLLECTIVE USAGE x )\n",
     R"(FILE:1:42: error: [COLLECTIVE] expected no COLLECTIVE in an attribute type, found it; the library would never come back
attributetypes=( 1.2 NAME 'b' SYNTAX 1.3 COLLECTIVE USAGE x )
                                         ^
)"},
    {"V3.config.at", "attributetypes=( 1.2 NAME 'b' COLLECTIVE )\n",
     R"(FILE:1:31: error: [COLLECTIVE] expected no COLLECTIVE in an attribute type, found it; the library would never come back
attributetypes=( 1.2 NAME 'b' COLLECTIVE )
                              ^
)"},
    {"V3.modifiedschema", "attributetypes=( 1.2 NAME ( 'COLLECTIVE' 'a' ) )\n",
     R"(FILE:1:22: error: [ENDLESS-NAMES] expected another field behind the names, found ')'; the library would never come back
attributetypes=( 1.2 NAME ( 'COLLECTIVE' 'a' ) )
                     ^
FILE:1:29: error: [QUOTED-KEYWORD] expected a text that is no keyword, found 'COLLECTIVE'
attributetypes=( 1.2 NAME ( 'COLLECTIVE' 'a' ) )
                            ^
)"},
    {"V3.user.oc", "attributetypes=( 1.2 NAME DESC COLLECTIVE )\n",
     R"(FILE:1:22: error: [MISSING-VALUE] expected a name behind NAME, found 'DESC'
attributetypes=( 1.2 NAME DESC COLLECTIVE )
                     ^
FILE:1:27: error: [MISSING-VALUE] expected a quoted text behind DESC, found the word 'COLLECTIVE'
attributetypes=( 1.2 NAME DESC COLLECTIVE )
                          ^
FILE:1:32: error: [COLLECTIVE] expected no COLLECTIVE in an attribute type, found it; the library would never come back
attributetypes=( 1.2 NAME DESC COLLECTIVE )
                               ^
)"},
    {"V3.qor.oc", "attributetypes=( 1.2 DESC COLLECTIVE COLLECTIVE )\n",
     R"(FILE:1:22: error: [MISSING-VALUE] expected a quoted text behind DESC, found the word 'COLLECTIVE'
attributetypes=( 1.2 DESC COLLECTIVE COLLECTIVE )
                     ^
FILE:1:27: error: [COLLECTIVE] expected no COLLECTIVE in an attribute type, found it; the library would never come back
attributetypes=( 1.2 DESC COLLECTIVE COLLECTIVE )
                          ^
FILE:1:38: error: [COLLECTIVE] expected no COLLECTIVE in an attribute type, found it; the library would never come back
attributetypes=( 1.2 DESC COLLECTIVE COLLECTIVE )
                                     ^
)"},
    {"V3.user.at", "attributetypes=( 1.2 NAME 'b' )\n",
     R"(FILE:1:22: error: [ENDLESS-NAMES] expected another field behind the names, found ')'; the library would never come back
attributetypes=( 1.2 NAME 'b' )
                     ^
)"},
    {"V3.user.oc", "objectclasses=( 2.1\nNAME 'k' )",
     R"(FILE:2:1: error: [ENDLESS-NAMES] expected another field behind the names, found ')'; the library would never come back
NAME 'k' )
^
)"},
    {"V3.system.at",
     "attributetypes=( 1.2 NAME 'b' DESC 'x' )\nQORAttributetypes=( 1.2 DBNAME "
     "( 'A'\n",
     R"(FILE:2:19: error: [UNCLOSED] expected ')' at the end of the definition, found the end of the file; the library would never come back
QORAttributetypes=( 1.2 DBNAME ( 'A'
                  ^
FILE:2:32: error: [UNCLOSED] expected ')' at the end of the list of DBNAME, found the end of the file; the library would never come back
QORAttributetypes=( 1.2 DBNAME ( 'A'
                               ^
)"},
};

INSTANTIATE_TEST_SUITE_P(Endless, CommandEndlessTest,
                         testing::ValuesIn(kEndless));

// Nor is input where the library gives a file up, or reads what is not there.
TEST_F(CommandFailureTest, WhatTheLibraryCannotReadCannotBeAccepted) {
  for (const char *code :
       {"COLLECTIVE", "ENDLESS-NAMES", "SECTION-OPENER", "SECTION-UNCLOSED",
        "SECTION-EMPTY", "PHANTOM", "UNREADABLE", "LIST-UNTERMINATED"}) {
    Arguments arguments = applying("old", "new", "out");
    arguments.insert(arguments.end(), {"--accept", code});
    const std::string error = failure(kUsage, arguments);
    const std::string start =
        std::string("--accept: no error that can be accepted has the code '") +
        code + "'";
    EXPECT_EQ(error.substr(0, start.size()), start);
  }
}

// A definition that the library does not come back from is not left out,
// either.
TEST_F(CommandFailureTest, WhatIsUnreadableStaysSoWhenItsCauseIsAccepted) {
  write("old/V3.qor.at",
        "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"
        "QORAttributetypes=( 1.2 DBNAME ( 'A'\n");
  Arguments arguments = applying("old", "new", "out");
  arguments.insert(arguments.end(), {"--accept", "UNCLOSED"});
  EXPECT_EQ(failure(kFindings, arguments),
            std::string("old/V3.qor.at:2:19: error: [UNREADABLE] expected "
                        "storage definition (1.2), found that the library does "
                        "not read it as it stands; check says why\n"
                        "QORAttributetypes=( 1.2 DBNAME ( 'A'\n"
                        "                  ^\n") +
                kAdvice);
}

// COLLECTIVE where it is no field of an attribute type.
TEST_F(CommandFailureTest, NotWhereCollectiveIsNoField) {
  write("old/V3.user.at",
        "# COLLECTIVE\n"
        "attributetypes=( 1.1 NAME 'a' DESC 'collective' )\n"
        "objectclasses=( 2.1 NAME 'k' COLLECTIVE ABSTRACT )\n"
        "QORAttributetypes=( 1.1 COLLECTIVE LENGTH 4 )\n");
  const CommandResult result = run(applying("old", "new", "out"));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
}

}  // namespace
