// Lists of OIDs.
#include "OidList.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "MigrateTesting.h"
#include "SchemaManager.h"

namespace {

using Oids = std::set<std::string>;

class OidListTest : public MigrateTest {
 protected:
  std::string trouble() const {
    return relative(troubleOf([this] { readOidList(path("list")); }));
  }
};

TEST_F(OidListTest, HoldsTheWordsBeforeAHashSign) {
  const struct {
    const char *text;
    Oids oids;
  } kCases[] = {
      {"", {}},
      {"\n", {}},
      {"1.1\n", {"1.1"}},
      {"1.1 1.2\t1.3\n\n  1.4\r\n", {"1.1", "1.2", "1.3", "1.4"}},
      {"1.2\n1.1\n1.2\n", {"1.1", "1.2"}},
      {"# 1.1\n1.2 # 1.3 1.4\n1.5\n", {"1.2", "1.5"}},
      {"1.1# 1.2\n1.3\n", {"1.3"}},
      {"1.1 x#y 1.2\n1.3\n", {"1.1", "1.3"}},
      {"not-an-oid\n", {"not-an-oid"}},
      {"1.1 \v1.2\f1.3\n", {"1.1", "1.2", "1.3"}},
  };
  for (const auto &[text, oids] : kCases) {
    SCOPED_TRACE(text);
    write("list", text);
    EXPECT_EQ(readOidList(path("list")), oids);
    // So does the library.
    SchemaManager schema("");
    readExcludedOids(path("list"), &schema);
    for (const char *oid : {"1.1", "1.2", "1.3", "1.4", "1.5", "not-an-oid",
                            "1.1#", "x#y", "#"}) {
      EXPECT_EQ(schema.isExcluded(oid), oids.count(oid)) << oid;
    }
  }
}

TEST_F(OidListTest, MustEndInANewline) {
  const struct {
    const char *text;
    int line;
  } kCases[] = {
      {"1.1", 1}, {" ", 1}, {"1.1\n1.2", 2}, {"1.1\n\n# end", 3}, {"\n\r", 2},
  };
  for (const auto &[text, line] : kCases) {
    SCOPED_TRACE(text);
    write("list", text);
    const std::string expected =
        "list:" + std::to_string(line) +
        ": error: expected a newline at the end of the file, found none; the "
        "last word would be ignored";
    EXPECT_EQ(trouble(), expected);
    SchemaManager schema("");
    EXPECT_EQ(
        relative(troubleOf([&] { readExcludedOids(path("list"), &schema); })),
        expected);
    EXPECT_EQ(schema.isExcluded("1.1"), 0U);
  }
}

TEST_F(OidListTest, MustBeAReadableFile) {
  EXPECT_EQ(trouble(), "list: error: No such file or directory");
  std::filesystem::create_directory(path("list"));
  EXPECT_EQ(trouble(),
            "list: error: expected a regular file, found something else");
}

TEST_F(OidListTest, SeveralListsAddUp) {
  SchemaManager schema("");
  write("one", "1.1\n");
  write("two", "1.2\n");
  readExcludedOids(path("one"), &schema);
  readExcludedOids(path("two"), &schema);
  EXPECT_EQ(schema.isExcluded("1.1"), 1U);
  EXPECT_EQ(schema.isExcluded("1.2"), 1U);
}

}  // namespace
