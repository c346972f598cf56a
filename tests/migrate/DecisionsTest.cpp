#include "Decisions.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "MigrateTesting.h"

namespace {

class DecisionsTest : public MigrateTest {
 protected:
  std::map<std::string, std::string> decisions(const std::string &text) const {
    write("decisions", text);
    std::map<std::string, std::string> found;
    for (const auto &[oid, decision] : readDecisions(path("decisions"))) {
      found[oid] = (decision.side == schemaplan::Side::kOld ? "old " : "new ") +
                   std::to_string(decision.line);
    }
    return found;
  }

  std::string trouble(const std::string &text) const {
    write("decisions", text);
    return relative(troubleOf([this] { readDecisions(path("decisions")); }));
  }
};

using Decisions = std::map<std::string, std::string>;

TEST_F(DecisionsTest, AreReadByLines) {
  EXPECT_EQ(decisions(""), Decisions());
  EXPECT_EQ(decisions("# nothing old\n \t\n"), Decisions());
  EXPECT_EQ(decisions("1.2 old\n\n\t1.10  new # the release's\r\n1.3 new"),
            (Decisions{{"1.10", "new 3"}, {"1.2", "old 1"}, {"1.3", "new 4"}}));
}

TEST_F(DecisionsTest, AllThatIsWrongIsNamed) {
  EXPECT_EQ(trouble("1.2 old\n1.3\n1.4 New\n1.5 old new\n1.2 new\nold 1.6\n"),
            "decisions:2: error: expected an OID and 'old' or 'new', found "
            "'1.3'\n"
            "decisions:3: error: expected an OID and 'old' or 'new', found "
            "'1.4 New'\n"
            "decisions:4: error: expected an OID and 'old' or 'new', found "
            "'1.5 old new'\n"
            "decisions:5: error: expected one decision on 1.2, found another "
            "on line 1\n"
            "decisions:6: error: expected an OID and 'old' or 'new', found "
            "'old 1.6'");
}

TEST_F(DecisionsTest, ThatAreNotThere) {
  EXPECT_EQ(relative(troubleOf([this] { readDecisions(path("none")); })),
            "none: error: No such file or directory");
}

}  // namespace
