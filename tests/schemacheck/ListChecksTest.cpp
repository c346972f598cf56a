#include "ListChecks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <set>
#include <string>

#include "CheckTesting.h"
#include "SchemaDirectory.h"
#include "SchemaManager.h"

using schemacheck::checkOidList;
using schemacheck::OidList;
using schemacheck::SchemaDirectory;

namespace {

using Oids = std::set<std::string>;

struct ListCase {
  const char *name;
  const char *list;
  Oids oids;
  const char *text;
};

void PrintTo(const ListCase &listCase, std::ostream *out) {
  *out << listCase.name;
}

std::string nameOfList(const testing::TestParamInfo<ListCase> &info) {
  return info.param.name;
}

class ListChecksTest : public CheckTest {
 protected:
  ListChecksTest() {
    write({{"a/V3.user.at",
            "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
            "QORAttributetypes=( 1.2 LENGTH 4 )\n"},
           {"b/V3.user.oc",
            "objectclasses=( 2.1 NAME 'k' ABSTRACT )\n"
            "objectclasses=( k-oid NAME 'l' ABSTRACT )\n"}});
  }

  OidList check() const {
    const SchemaDirectory a(path("a"));
    const SchemaDirectory b(path("b"));
    return checkOidList(path("list"), {&a, &b});
  }
};

class ListChecksTextTest : public ListChecksTest,
                           public testing::WithParamInterface<ListCase> {};

TEST_P(ListChecksTextTest, Finds) {
  write({{"list", GetParam().list}});
  const OidList list = check();
  EXPECT_EQ(textOf(list.findings), GetParam().text);
  EXPECT_EQ(list.oids, GetParam().oids);
}

// A list that the library does not come back from is not given to it.
TEST_P(ListChecksTextTest, TakesWhatTheLibraryTakes) {
  const std::string text = GetParam().list;
  if (text.rfind('#') != std::string::npos &&
      text.find('\n', text.rfind('#')) == std::string::npos) {
    return;
  }
  write({{"list", text}});
  SchemaManager manager("");
  ASSERT_EQ(manager.readExcludedOids(path("list").string()), 0U);
  for (const char *oid :
       {"1.1", "1.2", "1.3", "2.1", "k-oid", "cn", "1.1,1.2"}) {
    EXPECT_EQ(manager.isExcluded(oid), GetParam().oids.count(oid)) << oid;
  }
}

const ListCase kLists[] = {
    {"Empty", "", {}, ""},
    {"Clean",
     "# all\n1.1 1.2\t2.1\r\n\v\fk-oid\n",
     {"1.1", "1.2", "2.1", "k-oid"},
     ""},
    {"Comments", "1.1 # 1.2 1.3\n2.1#x 1.3\n1.2\n#\n", {"1.1", "1.2"}, ""},
    {"BlankAtTheEnd", "1.1\n1.2 ", {"1.1", "1.2"}, ""},
    {"LastWordLost",
     "1.1\n1.2",
     {"1.1"},
     "./list:2:1: error: [LIST-UNTERMINATED] expected a newline behind '1.2', "
     "found the end of the file; the library ignores the word\n"
     "1.2\n"
     "^\n"},
    {"OnlyWordLost",
     "1.1",
     {},
     "./list:1:1: error: [LIST-UNTERMINATED] expected a newline behind '1.1', "
     "found the end of the file; the library ignores the word\n"
     "1.1\n"
     "^\n"},
    {"CommentWithoutEnd",
     "1.1\n1.2 # the last",
     {"1.1", "1.2"},
     "./list:2:5: error: [LIST-UNTERMINATED] expected a newline at the end of "
     "the comment, found the end of the file; the library would never come "
     "back\n"
     "1.2 # the last\n"
     "    ^\n"},
    {"CommentInAWordWithoutEnd",
     "1.1\n1.2#",
     {"1.1"},
     "./list:2:1: error: [LIST-UNTERMINATED] expected a newline at the end of "
     "the comment, found the end of the file\n"
     "1.2#\n"
     "^\n"},
    {"Unknown",
     "1.1\n  1.3\n",
     {"1.1", "1.3"},
     "./list:2:3: warning: [LIST-UNKNOWN] expected the OID of a definition, "
     "found 1.3, which no definition has\n"
     "  1.3\n"
     "  ^\n"},
    {"Repeated",
     "1.1 1.2\n1.1\n1.1\n",
     {"1.1", "1.2"},
     "./list:2:1: warning: [LIST-REPEATED] expected each OID once, found 1.1 "
     "again; it stands on line 1 already\n"
     "1.1\n"
     "^\n"
     "./list:3:1: warning: [LIST-REPEATED] expected each OID once, found 1.1 "
     "again; it stands on line 1 already\n"
     "1.1\n"
     "^\n"},
    {"UnknownAndRepeated",
     "1.3 1.3\n",
     {"1.3"},
     "./list:1:1: warning: [LIST-UNKNOWN] expected the OID of a definition, "
     "found 1.3, which no definition has\n"
     "1.3 1.3\n"
     "^\n"
     "./list:1:5: warning: [LIST-REPEATED] expected each OID once, found 1.3 "
     "again; it stands on line 1 already\n"
     "1.3 1.3\n"
     "    ^\n"},
    {"NoOids",
     "cn\n1.1,1.2\n",
     {"cn", "1.1,1.2"},
     "./list:1:1: warning: [LIST-BAD-OID] expected an OID of numbers and dots, "
     "found 'cn'\n"
     "cn\n"
     "^\n"
     "./list:2:1: warning: [LIST-BAD-OID] expected an OID of numbers and dots, "
     "found '1.1,1.2'\n"
     "1.1,1.2\n"
     "^\n"},
};

INSTANTIATE_TEST_SUITE_P(Lists, ListChecksTextTest, testing::ValuesIn(kLists),
                         nameOfList);

TEST_F(ListChecksTest, FindsListsThatAreNotThere) {
  EXPECT_EQ(textOf(check().findings),
            "./list: error: [UNREADABLE-FILE] expected a file that can be "
            "read, found: No such file or directory\n");
}

TEST_F(ListChecksTest, FindsListsThatAreNoFiles) {
  std::filesystem::create_directory(path("list"));
  EXPECT_EQ(textOf(check().findings),
            "./list: error: [NOT-A-FILE] expected a regular file, found a "
            "directory\n");
}

TEST_F(ListChecksTest, FindsListsThatAreNoText) {
  write({{"list", std::string("1.1\n\0", 5)}});
  EXPECT_EQ(textOf(check().findings),
            "./list:2:1: error: [BINARY-FILE] expected text, found a zero "
            "byte; the file is not checked\n"
            "?\n"
            "^\n");
}

TEST_F(ListChecksTest, FindsListsThatAreTooLarge) {
  write({{"list", "1.1\n1.2\n"}});
  EXPECT_EQ(textOf(checkOidList(path("list"), {}, 7).findings),
            "./list: error: [LARGE-FILE] expected at most 7 bytes, found 8\n");
}

}  // namespace
