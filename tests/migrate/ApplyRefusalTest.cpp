// What apply refuses to do, and says of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Apply.h"
#include "MigrateTesting.h"
#include "support/ContractLeaks.h"

using schemacheck::Code;

namespace {

using Files = std::vector<std::pair<std::string, std::string>>;
using Lines = std::vector<std::string>;

// Definitions of an attribute type, an object class and a storage definition.
std::string type(const std::string &oid, const std::string &name,
                 const std::string &description = "x") {
  return "attributetypes=( " + oid + " NAME '" + name + "' DESC '" +
         description + "' )\n";
}

std::string objectClass(const std::string &oid, const std::string &name) {
  return "objectclasses=( " + oid + " NAME '" + name + "' ABSTRACT )\n";
}

std::string storage(const std::string &oid, const std::string &length = "4") {
  return "QORAttributetypes=( " + oid + " LENGTH " + length + " )\n";
}

class ApplyRefusalTest : public MigrateTest {
 protected:
  ApplyRefusalTest() { writeSmallRelease(); }

  void writeAll(const Files &files) const {
    for (const auto &[name, text] : files) {
      write(name, text);
    }
  }

  ApplyOptions accepting(const std::set<Code> &codes) const {
    ApplyOptions accepting = options();
    accepting.migration.accepted = codes;
    return accepting;
  }

  // What is said of a migration that is refused: the findings. Nothing is
  // changed.
  std::string refusal(const std::set<Code> &accepted = {}) const {
    const auto before = snapshotOf(root());
    const std::string trouble =
        relative(troubleOf([&] { return apply(accepting(accepted)); }));
    EXPECT_EQ(snapshotOf(root()), before);
    static const std::string kAdvice =
        "nothing was written; mend the files, or leave out what is not to be "
        "carried: with --excluded-oids, --decisions, --leave-out, or --accept "
        "for "
        "errors that are acceptable";
    const std::size_t end =
        trouble.size() - std::min(trouble.size(), kAdvice.size());
    EXPECT_EQ(trouble.substr(end), kAdvice);
    return '\n' + trouble.substr(0, end);
  }

  void expectNoRefusal() const {
    const ApplyResult result = leaksDefinitions([this] { return runApply(); });
    EXPECT_EQ(result.warnings, Lines());
  }
};

struct RefusalCase {
  const char *name;
  Files files;
  const char *text;
  const char *excluded;  // OIDs that resolve it
};

void PrintTo(const RefusalCase &refusalCase, std::ostream *out) {
  *out << refusalCase.name;
}

class ApplyRefusalReasonTest : public ApplyRefusalTest,
                               public testing::WithParamInterface<RefusalCase> {
};

TEST_P(ApplyRefusalReasonTest, IsGivenAndNothingIsWritten) {
  writeAll(GetParam().files);
  EXPECT_EQ(refusal(), GetParam().text);
}

TEST_P(ApplyRefusalReasonTest, IsResolvedByExcludingTheOid) {
  writeAll(GetParam().files);
  write("excluded", std::string(GetParam().excluded) + '\n');
  const ApplyResult result = runApply();
  EXPECT_EQ(result.warnings, Lines());
  EXPECT_EQ(result.written, result.newRead);
}

const RefusalCase kCases[] = {
    {"OnlyStorageOfAnIdenticalType",
     {{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
      {"new/V3.user.at", type("1.1", "a")}},
     R"(
old/V3.user.at:2:21: error: [NOT-MERGEABLE] expected storage definition (1.1) in the release, found none; its attribute type is not carried; the storage definition cannot be carried
QORAttributetypes=( 1.1 LENGTH 4 )
                    ^
)",
     "1.1"},
    {"TypeFromConfigAt",
     {{"old/V3.config.at", type("1.1", "a")}},
     R"(
old/V3.config.at:1:27: error: [NOT-MERGEABLE] expected attribute type 'a' (1.1) in the release, found none; nothing from V3.config.at can be added; the attribute type cannot be carried
attributetypes=( 1.1 NAME 'a' DESC 'x' )
                          ^
)",
     "1.1"},
    {"StorageFromConfigAt",
     {{"old/V3.config.at", "\n" + type("1.1", "a") + storage("1.1")},
      {"new/V3.config.at", type("1.1", "a")}},
     R"(
old/V3.config.at:3:21: error: [NOT-MERGEABLE] expected storage definition (1.1) in the release, found none; nothing from V3.config.at can be added; the storage definition cannot be carried
QORAttributetypes=( 1.1 LENGTH 4 )
                    ^
)",
     "1.1"},
    {"ClassFromConfigOc",
     {{"old/V3.config.oc", objectClass("2.1", "k")}},
     R"(
old/V3.config.oc:1:26: error: [NOT-MERGEABLE] expected object class 'k' (2.1) in the release, found none; nothing from V3.config.oc can be added; the object class cannot be carried
objectclasses=( 2.1 NAME 'k' ABSTRACT )
                         ^
)",
     "2.1"},
    {"ClassFromModifiedSchema",
     {{"old/V3.modifiedschema", objectClass("2.1", "k")}},
     R"(
old/V3.modifiedschema:1:26: error: [NOT-MERGEABLE] expected object class 'k' (2.1) in the release, found none; nothing from V3.modifiedschema can be added; the object class cannot be carried
objectclasses=( 2.1 NAME 'k' ABSTRACT )
                         ^
)",
     "2.1"},
    {"TypeWithTheNameOfAnother",
     {{"old/V3.user.at", type("1.1", "Mail")},
      {"new/V3.system.at", "# first\n" + type("1.2", "mail")}},
     R"(
old/V3.user.at:1:18: error: [NAME-OTHER-OID] expected the OID of the release, 1.2, found 1.1; the release has the name at new/V3.system.at:2, attribute type 'mail' (1.2); the attribute type cannot be carried
attributetypes=( 1.1 NAME 'Mail' DESC 'x' )
                 ^
)",
     "1.1"},
    {"ClassWithTheNameOfAnother",
     {{"old/V3.user.oc", objectClass("2.1", "TOP")}},
     R"(
old/V3.user.oc:1:17: error: [NAME-OTHER-OID] expected the OID of the release, 2.5.6.0, found 2.1; the release has the name at new/V3.system.oc:1, object class 'top' (2.5.6.0); the object class cannot be carried
objectclasses=( 2.1 NAME 'TOP' ABSTRACT )
                ^
)",
     "2.1"},
    {"TypeThatIsInConfigAt",
     {{"old/V3.user.at", type("1.1", "a", "y")},
      {"new/V3.config.at", type("1.1", "a", "x")}},
     R"(
old/V3.user.at:1:27: error: [IN-COPIED-FILE] expected the definition as the release has it in a file that is copied, new/V3.config.at:1, attribute type 'a' (1.1), found one that differs in DESC; the attribute type cannot be carried
attributetypes=( 1.1 NAME 'a' DESC 'y' )
                          ^
)",
     "1.1"},
    {"ClassThatIsInConfigOc",
     {{"old/V3.config.oc", "objectclasses=( 2.1 NAME 'k' AUXILIARY )\n"},
      {"new/V3.config.oc", objectClass("2.1", "k")}},
     R"(
old/V3.config.oc:1:26: error: [IN-COPIED-FILE] expected the definition as the release has it in a file that is copied, new/V3.config.oc:1, object class 'k' (2.1), found one that differs in kind; the object class cannot be carried
objectclasses=( 2.1 NAME 'k' AUXILIARY )
                         ^
)",
     "2.1"},
    {"StorageThatIsInConfigAt",
     {{"old/V3.user.at", type("1.1", "a") + storage("1.1", "5")},
      {"new/V3.config.at", type("1.1", "a") + storage("1.1", "4")}},
     R"(
old/V3.user.at:2:21: error: [IN-COPIED-FILE] expected the definition as the release has it in a file that is copied, new/V3.config.at:2, storage definition (1.1), found one that differs in LENGTH; the storage definition cannot be carried
QORAttributetypes=( 1.1 LENGTH 5 )
                    ^
)",
     "1.1"},
    {"TypeWithTheOidOfAnotherType",
     {{"old/V3.user.at", type("1.1", "a")},
      {"new/V3.qor.at", type("1.1", "b")}},
     R"(
old/V3.user.at:1:18: error: [OID-OTHER-NAME] expected an OID that the release does not have, found that of new/V3.qor.at:1, attribute type 'b' (1.1); the attribute type cannot be carried
attributetypes=( 1.1 NAME 'a' DESC 'x' )
                 ^
)",
     "1.1"},
    {"TypeWithTheOidOfAClass",
     {{"old/V3.user.at", type("2.5.6.0", "a")}},
     R"(
old/V3.user.at:1:18: error: [OID-OTHER-NAME] expected an OID that the release does not have, found that of new/V3.system.oc:1, object class 'top' (2.5.6.0); the attribute type cannot be carried
attributetypes=( 2.5.6.0 NAME 'a' DESC 'x' )
                 ^
)",
     "2.5.6.0"},
    {"TypeWithTheOidAndNameOfAClass",
     {{"old/V3.user.at", type("2.5.6.0", "top")}},
     R"(
old/V3.user.at:1:18: error: [OID-OTHER-NAME] expected an OID that the release does not have, found that of new/V3.system.oc:1, object class 'top' (2.5.6.0); the attribute type cannot be carried
attributetypes=( 2.5.6.0 NAME 'top' DESC 'x' )
                 ^
)",
     "2.5.6.0"},
    {"ClassWithTheOidOfAType",
     {{"old/V3.user.oc", objectClass("1.1", "k")},
      {"new/V3.user.at", type("1.1", "a")}},
     R"(
old/V3.user.oc:1:17: error: [OID-OTHER-NAME] expected an OID that the release does not have, found that of new/V3.user.at:1, attribute type 'a' (1.1); the object class cannot be carried
objectclasses=( 1.1 NAME 'k' ABSTRACT )
                ^
)",
     "1.1"},
    {"ClassWithTheOidOfAClass",
     {{"old/V3.user.oc", objectClass("2.5.6.0", "k")}},
     R"(
old/V3.user.oc:1:17: error: [OID-OTHER-NAME] expected an OID that the release does not have, found that of new/V3.system.oc:1, object class 'top' (2.5.6.0); the object class cannot be carried
objectclasses=( 2.5.6.0 NAME 'k' ABSTRACT )
                ^
)",
     "2.5.6.0"},
    {"TwoTypesWithOneOid",
     {{"old/V3.user.at", type("1.1", "a") + type("1.1", "b")},
      {"old/V3.qor.at", type("1.1", "c")}},
     R"(
old/V3.user.at:2:18: error: [OID-OTHER-NAME] expected an OID that no other definition is carried with, found that of old/V3.user.at:1, attribute type 'a' (1.1); the attribute type cannot be carried
attributetypes=( 1.1 NAME 'b' DESC 'x' )
                 ^
old/V3.qor.at:1:18: error: [OID-OTHER-NAME] expected an OID that no other definition is carried with, found that of old/V3.user.at:1, attribute type 'a' (1.1); the attribute type cannot be carried
attributetypes=( 1.1 NAME 'c' DESC 'x' )
                 ^
)",
     "1.1"},
    {"ATypeAndAClassWithOneOid",
     {{"old/V3.user.oc", objectClass("1.1", "k")},
      {"old/V3.user.at", type("1.1", "a")}},
     R"(
old/V3.user.oc:1:17: error: [OID-OTHER-NAME] expected an OID that no other definition is carried with, found that of old/V3.user.at:1, attribute type 'a' (1.1); the object class cannot be carried
objectclasses=( 1.1 NAME 'k' ABSTRACT )
                ^
)",
     "1.1"},
    {"StorageWithoutType",
     {{"old/V3.user.at", storage("1.1")}},
     R"(
old/V3.user.at:1:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute type with the OID 1.1 in the release or to be carried, found none; the storage definition cannot be carried
QORAttributetypes=( 1.1 LENGTH 4 )
                    ^
)",
     "1.1"},
    {"StorageOfAClassOfTheRelease",
     {{"old/V3.user.oc", storage("2.5.6.0")}},
     R"(
old/V3.user.oc:1:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute type with the OID 2.5.6.0 in the release or to be carried, found none; the storage definition cannot be carried
QORAttributetypes=( 2.5.6.0 LENGTH 4 )
                    ^
)",
     "2.5.6.0"},
    {"StorageOfACarriedClass",
     {{"old/V3.user.oc", storage("2.1") + objectClass("2.1", "k")}},
     R"(
old/V3.user.oc:1:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute type with the OID 2.1 in the release or to be carried, found none; the storage definition cannot be carried
QORAttributetypes=( 2.1 LENGTH 4 )
                    ^
)",
     "2.1"},
    {"SeveralInOrder",
     {{"old/V3.modifiedschema", storage("1.3")},
      {"old/V3.user.oc", objectClass("2.1", "top")},
      {"old/V3.user.at", storage("1.1") + type("1.2", "a") + storage("1.2")}},
     R"(
old/V3.user.at:1:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute type with the OID 1.1 in the release or to be carried, found none; the storage definition cannot be carried
QORAttributetypes=( 1.1 LENGTH 4 )
                    ^
old/V3.user.oc:1:17: error: [NAME-OTHER-OID] expected the OID of the release, 2.5.6.0, found 2.1; the release has the name at new/V3.system.oc:1, object class 'top' (2.5.6.0); the object class cannot be carried
objectclasses=( 2.1 NAME 'top' ABSTRACT )
                ^
old/V3.modifiedschema:1:21: error: [NOT-MERGEABLE] expected storage definition (1.3) in the release, found none; nothing from V3.modifiedschema can be added; the storage definition cannot be carried
QORAttributetypes=( 1.3 LENGTH 4 )
                    ^
)",
     "1.1 1.2 2.1 1.3"},
};

std::string caseName(const testing::TestParamInfo<RefusalCase> &info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Reasons, ApplyRefusalReasonTest,
                         testing::ValuesIn(kCases), caseName);

// There is no OID that could be excluded.
TEST_F(ApplyRefusalTest, DefinitionsWithoutOid) {
  write("old/V3.user.at",
        "attributetypes=( NAME 'a' DESC 'x' )\n"
        "attributetypes { ( NAME 'b' DESC 'x' ) }\n");
  EXPECT_EQ(refusal(), R"(
old/V3.user.at:1:16: error: [NO-OID] expected an OID behind '(', found none; the attribute type cannot be carried
attributetypes=( NAME 'a' DESC 'x' )
               ^
old/V3.user.at:2:18: error: [NO-OID] expected an OID behind '(', found none; the library drops the definition
attributetypes { ( NAME 'b' DESC 'x' ) }
                 ^
)");
}

TEST_F(ApplyRefusalTest, TheStorageOfAShadowedType) {
  write("old/V3.user.at", type("1.1", "a") + type("1.2", "a") + storage("1.2"));
  const std::string withoutType = R"(
old/V3.user.at:3:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute type with the OID 1.2 in the release or to be carried, found none; the storage definition cannot be carried
QORAttributetypes=( 1.2 LENGTH 4 )
                    ^
)";
  EXPECT_EQ(leaksDefinitions([this] { return refusal(); }), R"(
old/V3.user.at:2:27: error: [SHADOWED] expected a first name of its own, found that of old/V3.user.at:1, attribute type 'a' (1.1); the library holds that one instead of this, which differs in OID
attributetypes=( 1.2 NAME 'a' DESC 'x' )
                          ^
old/V3.user.at:3:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute type with the OID 1.2 in the release or to be carried, found none; the storage definition cannot be carried
QORAttributetypes=( 1.2 LENGTH 4 )
                    ^
)");
  EXPECT_EQ(leaksDefinitions([this] { return refusal({Code::kShadowed}); }),
            withoutType);
}

// Of an OID that both have, only the object class is written.
TEST_F(ApplyRefusalTest, TheStorageOfATypeThatAClassHides) {
  writeAll({{"old/V3.user.at", storage("1.1")},
            {"new/V3.user.at", type("1.1", "a") + objectClass("1.1", "k")}});
  EXPECT_EQ(refusal(), R"(
old/V3.user.at:1:21: error: [OID-OTHER-NAME] expected an OID that the release does not have, found that of new/V3.user.at:2, object class 'k' (1.1); the storage definition cannot be carried
QORAttributetypes=( 1.1 LENGTH 4 )
                    ^
new/V3.user.at:2:17: error: [OID-OF-TWO-KINDS] expected an OID of its own, found that of new/V3.user.at:1, attribute type 'a' (1.1); the library writes the object class only
objectclasses=( 1.1 NAME 'k' ABSTRACT )
                ^
)");
}

TEST_F(ApplyRefusalTest, OfTwoDefinitionsInTheWayTheAttributeTypeIsNamed) {
  writeAll(
      {{"old/V3.user.at", type("1.1", "b")},
       {"old/V3.user.oc", objectClass("1.2", "l")},
       {"new/V3.user.oc", objectClass("1.1", "k") + type("1.1", "a") +
                              objectClass("1.2", "m") + type("1.2", "c")}});
  EXPECT_EQ(refusal({Code::kOidOfTwoKinds}), R"(
old/V3.user.at:1:18: error: [OID-OTHER-NAME] expected an OID that the release does not have, found that of new/V3.user.oc:2, attribute type 'a' (1.1); the attribute type cannot be carried
attributetypes=( 1.1 NAME 'b' DESC 'x' )
                 ^
old/V3.user.oc:1:17: error: [OID-OTHER-NAME] expected an OID that the release does not have, found that of new/V3.user.oc:4, attribute type 'c' (1.2); the object class cannot be carried
objectclasses=( 1.2 NAME 'l' ABSTRACT )
                ^
)");
}

// Written, its NAME would take what stands behind it for names.
TEST_F(ApplyRefusalTest, AnObjectClassWithoutName) {
  writeAll({{"old/V3.user.oc", "objectclasses=( 1.1 ABSTRACT )\n"},
            {"old/V3.user.at", "attributetypes=( 1.2 OBSOLETE )\n"}});
  EXPECT_EQ(refusal(), R"(
old/V3.user.oc:1:17: error: [NAMELESS-CLASS] expected a name of the object class, found none; the object class cannot be carried
objectclasses=( 1.1 ABSTRACT )
                ^
)");
  writeAll({{"new/V3.user.oc", "objectclasses=( 1.1 ABSTRACT )\n"}});
  EXPECT_EQ(refusal(), R"(
new/V3.user.oc:1:15: error: [NAMELESS-CLASS] expected a name of the object class, found none; the library writes it in a form that cannot be read
objectclasses=( 1.1 ABSTRACT )
              ^
)");
}

TEST_F(ApplyRefusalTest, WhatTheReleaseCanTakeIsNone) {
  writeAll({
      {"old/V3.user.at", type("1.1", "added") + storage("1.1") +
                             storage("1.2", "7") +
                             type("1.2", "replaced", "y")},
      {"old/V3.user.oc", objectClass("2.1", "added")},
      {"old/V3.config.at", type("1.4", "modified", "y")},
      {"old/V3.modifiedschema", type("1.3", "identical")},
      {"new/V3.user.at",
       type("1.2", "replaced") + storage("1.2") + type("1.3", "identical")},
      {"new/V3.modifiedschema", type("1.4", "modified")},
  });
  expectNoRefusal();
}

TEST_F(ApplyRefusalTest, TheNamesOfOtherKindsAreFree) {
  writeAll({{"old/V3.user.at", type("1.1", "top") + storage("1.1")},
            {"old/V3.user.oc", objectClass("2.1", "a")},
            {"new/V3.user.at", type("1.2", "a")}});
  expectNoRefusal();
}

// What is not carried cannot be in the way of anything.
TEST_F(ApplyRefusalTest, WhatIsNotCarriedIsNone) {
  writeAll({{"old/V3.config.at", type("1.1", "a") + storage("1.1")},
            {"old/V3.user.at", type("1.2", "b") + type("1.3", "b")},
            {"new/V3.config.at", type("1.1", "a") + storage("1.1")},
            {"new/V3.user.at", type("1.2", "b")},
            {"excluded", "1.3\n"}});
  expectNoRefusal();
}

TEST_F(ApplyRefusalTest, TheStorageOfAnExcludedTypeIsExcludedWithIt) {
  writeAll({{"old/V3.user.at", type("1.1", "a") + storage("1.1")},
            {"excluded", "1.1\n"}});
  expectNoRefusal();
}

}  // namespace
