#include "Clashes.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "MigrateTesting.h"

namespace {

class ClashesTest : public MigrateTest {
 protected:
  std::string clashes(const std::set<std::string> &excludedOids = {}) const {
    const schemacheck::SchemaDirectory old(path("old"));
    const schemacheck::SchemaDirectory release(path("new"));
    std::ostringstream out;
    printClashes(findClashes(old, release, excludedOids), &out);
    return relative(out.str());
  }
};

TEST_F(ClashesTest, NoneWhereAllIsIdenticalOrDifferent) {
  const std::string common =
      "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
      "QORAttributetypes=( 1.1 LENGTH 4 )\n";
  write("old/V3.user.at", common + "attributetypes=( 1.2 NAME 'b' DESC 'x' )");
  write("new/V3.user.at", "QORAttributetypes=( 1.2 LENGTH 4 )\n" + common);
  EXPECT_EQ(clashes(), "All clashes of names and OIDs: 0\n");
}

TEST_F(ClashesTest, ByAnyNameAndByOidWithinAndAcrossKinds) {
  write("old/V3.user.at",
        "attributetypes=( 1.1 NAME ( 'a' 'Alias' ) DESC 'x' )\n"
        "attributetypes=( 1.2 NAME 'b' DESC 'x' )\n"
        "QORAttributetypes=( 1.2 LENGTH 4 )\n"
        "attributetypes=( 1.3 NAME 'same' DESC 'old' )\n");
  write("old/V3.user.oc", "objectclasses=( 2.1 NAME 'k' AUXILIARY )\n");
  write("new/V3.user.at",
        "attributetypes=( 1.9 NAME ( 'z' 'alias' ) DESC 'x' )\n"
        "attributetypes=( 1.3 NAME 'same' DESC 'new' )\n"
        "attributetypes=( 2.1 NAME 'K' DESC 'x' )\n");
  write("new/V3.user.oc",
        "objectclasses=( 1.2 NAME 'l' AUXILIARY )\n"
        "objectclasses=( 2.2 NAME 'A' AUXILIARY )\n");
  EXPECT_EQ(
      clashes(),
      "All clashes of names and OIDs: 6\n"
      "  old/V3.user.at:1, attribute type 'a' (1.1), and new/V3.user.oc:2, "
      "object class 'A' (2.2): name 'a'\n"
      "  old/V3.user.at:1, attribute type 'a' (1.1), and new/V3.user.at:1, "
      "attribute type 'z' (1.9): name 'alias'\n"
      "  old/V3.user.at:2, attribute type 'b' (1.2), and new/V3.user.oc:1, "
      "object class 'l' (1.2): OID 1.2\n"
      "  old/V3.user.at:3, storage definition (1.2), and new/V3.user.oc:1, "
      "object class 'l' (1.2): OID 1.2\n"
      "  old/V3.user.at:4, attribute type 'same' (1.3), and new/V3.user.at:2, "
      "attribute type 'same' (1.3): OID 1.3, name 'same'\n"
      "  old/V3.user.oc:1, object class 'k' (2.1), and new/V3.user.at:3, "
      "attribute type 'K' (2.1): OID 2.1, name 'k'\n");
  EXPECT_EQ(clashes({"1.1", "1.2", "1.3", "2.1"}),
            "All clashes of names and OIDs: 0\n");
}

TEST_F(ClashesTest, OfOneNameAreAllNamed) {
  std::string many;
  for (int i = 0; i < 150; ++i) {
    many +=
        "attributetypes=( 1.1." + std::to_string(i) + " NAME 'a' DESC 'x' )\n";
  }
  write("old/V3.user.at", "attributetypes=( 2.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.user.at", many);
  const std::string text = clashes();
  EXPECT_EQ(text.substr(0, text.find('\n')),
            "All clashes of names and OIDs: 150");
}

TEST_F(ClashesTest, ArePrintedOnRequestOnly) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  write("new/V3.user.at", "attributetypes=( 1.1 NAME 'b' DESC 'x' )\n");
  const std::string none =
      "No objectClasses definition collisions found.\n"
      "No attributeTypes definition collisions found.\n"
      "No QORAttributeTypes definition collisions found.\n";
  const CommandResult without =
      run({"collisions", "--old", "old", "--new", "new"});
  EXPECT_EQ(without.out, none);
  EXPECT_EQ(without.status, 0);
  const CommandResult with =
      run({"collisions", "--old", "old", "--new", "new", "--all"});
  EXPECT_EQ(with.out,
            none +
                "All clashes of names and OIDs: 1\n"
                "  old/V3.user.at:1, attribute type 'a' (1.1), and "
                "new/V3.user.at:1, attribute type 'b' (1.1): OID 1.1\n");
  EXPECT_EQ(with.status, kFindings);
  write("excluded", "1.1\n");
  EXPECT_EQ(run({"collisions", "--old", "old", "--new", "new", "--all",
                 "--excluded-oids", "excluded"})
                .out,
            none + "All clashes of names and OIDs: 0\n");
}

}  // namespace
