// What collides with another schema.
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/SchemaManagerMergeTesting.h"
#include "libschema/SchemaManagerTesting.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

constexpr char kNoClasses[] = "No objectClasses definition collisions found.\n";
constexpr char kNoTypes[] = "No attributeTypes definition collisions found.\n";
constexpr char kNoStorage[] =
    "No QORAttributeTypes definition collisions found.\n";
constexpr char kClasses[] =
    "The following objectClasses definition collisions found:\n";
constexpr char kTypes[] = "The following attributeTypes collisions found:\n";
constexpr char kStorage[] =
    "The following QORAttributeTypes definition collisions found:\n";

// An entry of a report.
std::string reported(const std::string &oid, const std::string &names) {
  return "OID --> " + oid + "\nName --> " + names + "\n\n";
}

// What the kinds of definitions have in common.
class SchemaManagerCollisionTest : public testing::TestWithParam<Kind> {
 protected:
  const Kind &kind() const { return GetParam(); }
  const std::string &file() const { return kind().file; }

  std::string line(const std::string &oid, const std::string &name,
                   const std::string &text = "mine") const {
    return kind().line(oid, name, text);
  }

  unsigned int check(const Schema &schema, const Schema &other) const {
    if (kind().label == "type") {
      return schema->checkAttrs(other.get());
    }
    return kind().label == "class" ? schema->checkObjClasses(other.get())
                                   : schema->checkQORAttrs(other.get());
  }

  // The state of a schema that has read one definition of `file()`, and what
  // is left of it when the definition collides with nothing.
  std::string kept(const std::string &oid, const std::string &name) const {
    return kind().only(oid, name, line(oid, name)) + recorded(oid);
  }
  std::string removed(const std::string &oid, const std::string &name) const {
    return kind().byOid(oid, line(oid, name)) + recorded(oid);
  }
  std::string recorded(const std::string &oid) const {
    return file() + ": " + (oid.empty() ? "''" : oid) + '\n';
  }

  std::string report(const Schema &schema) const {
    if (kind().label == "type") {
      return schema->getAttrTable();
    }
    return kind().label == "class" ? schema->getOcTable()
                                   : schema->getQORAttrTable();
  }
  std::string emptyReport() const {
    return kind().label == "type"    ? kNoTypes
           : kind().label == "class" ? kNoClasses
                                     : kNoStorage;
  }
  std::string heading() const {
    return kind().label == "type"    ? kTypes
           : kind().label == "class" ? kClasses
                                     : kStorage;
  }
  // Storage definitions have no names.
  std::string entry(const std::string &oid, const std::string &name) const {
    return reported(oid, kind().isStorage() ? "" : name);
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, SchemaManagerCollisionTest,
                         testing::ValuesIn(kKinds), kindName);

// One definition here, one in the other schema, and which kinds of the former
// collide with the latter.
struct Meeting {
  const char *what;
  std::string oid;
  std::string name;
  std::string theirs;
  bool types;
  bool classes;
  bool storage;
};

const Meeting kMeetings[] = {
    {"nothing", "1.2.3", "x", "", false, false, false},

    {"class of the name", "1.2.3", "x", classLine("9.9", {"x"}, "theirs"),
     false, true, false},
    {"class of the name in capitals", "1.2.3", "x",
     classLine("9.9", {"X"}, "theirs"), false, true, false},
    {"class of the name in small letters", "1.2.3", "XyZ",
     classLine("9.9", {"xyz"}, "theirs"), false, true, false},
    {"class with the name as its second", "1.2.3", "x",
     classLine("9.9", {"y", "x"}, "theirs"), false, false, false},
    {"class of a longer name", "1.2.3", "x", classLine("9.9", {"xx"}, "theirs"),
     false, false, false},
    {"class of the OID", "1.2.3", "x", classLine("1.2.3", {"y"}, "theirs"),
     false, false, false},
    {"class of the name and the OID", "1.2.3", "x",
     classLine("1.2.3", {"x"}, "theirs"), false, true, false},
    {"class with the OID for a name", "1.2.3", "x",
     classLine("9.9", {"1.2.3"}, "theirs"), true, true, true},
    {"class with the OID for its second name", "1.2.3", "x",
     classLine("9.9", {"y", "1.2.3"}, "theirs"), false, false, false},
    {"class with a longer OID for a name", "1.2.3", "x",
     classLine("9.9", {"1.2.3.4"}, "theirs"), false, false, false},
    {"class with a shorter OID for a name", "1.2.3", "x",
     classLine("9.9", {"1.2"}, "theirs"), false, false, false},

    {"type of the name", "1.2.3", "x", typeLine("9.9", {"x"}, "theirs"), true,
     false, false},
    {"type of the name in capitals", "1.2.3", "cn",
     typeLine("9.9", {"CN"}, "theirs"), true, false, false},
    {"type of the name in small letters", "1.2.3", "XyZ",
     typeLine("9.9", {"xyz"}, "theirs"), true, false, false},
    {"type with the name as its second", "1.2.3", "x",
     typeLine("9.9", {"y", "x"}, "theirs"), false, false, false},
    {"type of a longer name", "1.2.3", "x", typeLine("9.9", {"xx"}, "theirs"),
     false, false, false},
    {"type of the OID", "1.2.3", "x", typeLine("1.2.3", {"y"}, "theirs"), false,
     false, false},
    {"type of the name and the OID", "1.2.3", "x",
     typeLine("1.2.3", {"x"}, "theirs"), true, false, false},
    {"type with the OID for a name", "1.2.3", "x",
     typeLine("9.9", {"1.2.3"}, "theirs"), true, true, true},
    {"type with the OID for its second name", "1.2.3", "x",
     typeLine("9.9", {"y", "1.2.3"}, "theirs"), false, false, false},
    {"type with a longer OID for a name", "1.2.3", "x",
     typeLine("9.9", {"1.2.3.4"}, "theirs"), false, false, false},
    {"type with a shorter OID for a name", "1.2.3", "x",
     typeLine("9.9", {"1.2"}, "theirs"), false, false, false},

    {"storage of the OID", "1.2.3", "x", storageLine("1.2.3", "theirs"), true,
     true, true},
    {"storage with the name for its OID", "1.2.3", "x",
     storageLine("'x'", "theirs"), false, false, false},
    {"storage of a longer OID", "1.2.3", "x", storageLine("1.2.3.4", "theirs"),
     false, false, false},
    {"storage of a shorter OID", "1.2.3", "x", storageLine("1.2", "theirs"),
     false, false, false},

    // OIDs are looked up as they are written; the keys of names are in lower
    // case.
    {"storage of the OID, with capitals", "Abc", "x",
     storageLine("Abc", "theirs"), true, true, true},
    {"storage of the OID in small letters", "Abc", "x",
     storageLine("abc", "theirs"), false, false, false},
    {"storage of the OID in capitals", "abc", "x", storageLine("ABC", "theirs"),
     false, false, false},
    {"class with the OID, with capitals, for a name", "Abc", "x",
     classLine("9.9", {"Abc"}, "theirs"), false, false, false},
    {"class with the OID in capitals for a name", "abc", "x",
     classLine("9.9", {"ABC"}, "theirs"), true, true, true},
    {"type with the OID, with capitals, for a name", "Abc", "x",
     typeLine("9.9", {"Abc"}, "theirs"), false, false, false},
    {"type with the OID in capitals for a name", "abc", "x",
     typeLine("9.9", {"ABC"}, "theirs"), true, true, true},

    // The key of a definition without names is empty, and so may an OID be.
    {"class without names", "1.2.3", "x", namelessClassLine("9.9", "theirs"),
     false, false, false},
    {"type without names", "1.2.3", "x", typeLine("9.9", {}, "theirs"), false,
     false, false},
    {"class without names for none as OID", "", "x",
     namelessClassLine("9.9", "theirs"), true, true, true},
    {"type without names for none as OID", "", "x",
     typeLine("9.9", {}, "theirs"), true, true, true},
    {"storage without OID for none as OID", "", "x", storageLine("", "theirs"),
     true, true, true},
    {"class without OID for none as OID", "", "x",
     classLine("", {"y"}, "theirs"), false, false, false},
};

TEST_P(SchemaManagerCollisionTest, OneMeetsOne) {
  for (const Meeting &meeting : kMeetings) {
    SCOPED_TRACE(meeting.what);
    const bool collides = kind().label == "type"    ? meeting.types
                          : kind().label == "class" ? meeting.classes
                                                    : meeting.storage;
    const std::string &oid = meeting.oid;
    const std::string &name = meeting.name;
    const auto other = makeSchema({{"V3.system.at", meeting.theirs}});
    const std::string otherBefore = stateOf(other.get());
    for (const unsigned int mask : {0U, ~0U}) {
      SCOPED_TRACE(mask);
      const auto schema = makeSchema({{file(), line(oid, name)}});
      const TraceRecorder recorder(mask);

      EXPECT_EQ(check(schema, other), 1U);

      std::string small = name;
      for (char &letter : small) {
        letter = letter >= 'A' && letter <= 'Z'
                     ? static_cast<char>(letter - 'A' + 'a')
                     : letter;
      }
      const std::string stays = kind().owned(oid, small, line(oid, name)) +
                                kind().byOid(oid, small) + recorded(oid);
      EXPECT_EQ(stateOf(schema.get()), collides ? stays : removed(oid, name));
      EXPECT_EQ(report(schema),
                collides ? heading() + entry(oid, name) : emptyReport());
    }
    EXPECT_EQ(stateOf(other.get()), otherBefore);
  }
}

// A definition that was taken out of the other schema's table is met no longer,
// though its OID leads to it there.
TEST_P(SchemaManagerCollisionTest, WhatTheOtherHasByOidAloneIsNotMet) {
  const auto schema = makeSchema({{file(), line("1.1", "x")}});
  const auto other = makeSchema({{file(), line("1.1", "x", "theirs")}});
  const auto nothing = emptySchema();
  ASSERT_EQ(check(other, nothing), 1U);
  EXPECT_EQ(check(schema, other), 1U);
  EXPECT_EQ(stateOf(schema.get()), removed("1.1", "x"));
}

// Each number of definitions, with the colliding ones at each place.
TEST_P(SchemaManagerCollisionTest, WhatCollidesOfMany) {
  for (unsigned int count = 0; count <= 5; ++count) {
    for (unsigned int colliding = 0; colliding < 1U << count; ++colliding) {
      SCOPED_TRACE(testing::Message() << count << " with " << colliding);
      std::string mine, theirs, owned, byOid, oids, entries;
      for (unsigned int i = 0; i < count; ++i) {
        const bool collides = (colliding >> i & 1U) != 0;
        const std::string name(1, static_cast<char>('a' + i));
        const std::string oid = "1." + std::to_string(i);
        const std::string definition = line(oid, name);
        mine = definition + mine;
        theirs += collides ? line(oid, name, "theirs") : "";
        owned += collides ? kind().owned(oid, name, definition) : "";
        byOid += kind().byOid(oid, collides ? name : definition);
        oids += ' ' + oid;
        entries += collides ? entry(oid, name) : "";
      }
      const auto schema = makeSchema({{file(), mine}});
      const auto other = makeSchema({{file(), theirs}});

      EXPECT_EQ(check(schema, other), 1U);

      EXPECT_EQ(
          stateOf(schema.get()),
          owned + byOid + (oids.empty() ? "" : file() + ':' + oids + '\n'));
      EXPECT_EQ(report(schema),
                colliding == 0 ? emptyReport() : heading() + entries);
    }
  }
}

TEST_P(SchemaManagerCollisionTest, OtherKindsAndSetsStayAsTheyAre) {
  const std::vector<SchemaFile> files = {
      {"V3.user.at", typeLine("1.1", {"a"}, "x")},
      {"V3.user.oc", classLine("1.2", {"k"}, "x")},
      {"V3.qor.at", storageLine("1.3", "x")},
      {"V3.modifiedschema", typeLine("1.4", {"b"}, "x") +
                                classLine("1.5", {"l"}, "x") +
                                storageLine("1.4", "x")}};
  const auto schema = makeSchema(files);
  exclude(schema.get(), "1.1 1.2 1.3");
  std::string expected = stateOf(schema.get());
  const auto other = emptySchema();

  EXPECT_EQ(check(schema, other), 1U);

  const auto replace = [&expected](const std::string &text,
                                   const std::string &replacement) {
    ASSERT_NE(expected.find(text), std::string::npos) << text;
    expected.replace(expected.find(text), text.size(), replacement);
  };
  const auto takeOut = [&](const std::string &oid, const std::string &name,
                           const std::string &definition) {
    replace(kind().owned(oid, name, definition), "");
    if (!kind().isStorage()) {
      replace(kind().byOid(oid, name), kind().byOid(oid, definition));
    }
  };
  if (kind().label == "type") {
    takeOut("1.1", "a", typeLine("1.1", {"a"}, "x"));
    takeOut("1.4", "b", typeLine("1.4", {"b"}, "x"));
  } else if (kind().label == "class") {
    takeOut("1.2", "k", classLine("1.2", {"k"}, "x"));
    takeOut("1.5", "l", classLine("1.5", {"l"}, "x"));
  } else {
    takeOut("1.3", "", storageLine("1.3", "x"));
    takeOut("1.4", "", storageLine("1.4", "x"));
  }
  EXPECT_EQ(stateOf(schema.get()), expected);
  EXPECT_EQ(stateOf(other.get()), "");
}

TEST_P(SchemaManagerCollisionTest, EverythingCollidesWithItself) {
  // A storage definition whose OID is taken would find no place at all.
  const std::string oid = kind().isStorage() ? "1.4" : "1.1";
  const auto schema =
      makeSchema({{file(), line("1.1", "a") + line("1.2", "b")},
                  {"V3.modifiedschema", line(oid, "c") + line("1.3", "d")}});
  const std::string before = stateOf(schema.get());
  EXPECT_EQ(check(schema, schema), 1U);
  EXPECT_EQ(stateOf(schema.get()), before);
}

TEST_P(SchemaManagerCollisionTest, SecondCheckLeavesWhatCollidesInBoth) {
  const auto schema = makeSchema(
      {{file(), line("1.1", "a") + line("1.2", "b") + line("1.3", "c")}});
  const auto first = makeSchema(
      {{file(), line("1.1", "a", "theirs") + line("1.2", "b", "theirs")}});
  const auto second = makeSchema(
      {{file(), line("1.2", "b", "theirs") + line("1.3", "c", "theirs")}});
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(check(schema, first), 1U);
    EXPECT_EQ(report(schema),
              heading() + entry("1.1", "a") + entry("1.2", "b"));
  }
  EXPECT_EQ(check(schema, second), 1U);
  EXPECT_EQ(report(schema), heading() + entry("1.2", "b"));
}

// Who owns what is taken out. Much of it is said by the checks for leaks and
// for uses after a release.

TEST_P(SchemaManagerCollisionTest, SchemasMayBeDestroyedInEitherOrder) {
  for (const Order order : {Order::kFirstFirst, Order::kSecondFirst}) {
    auto schema = makeSchema(
        {{file(), line("1.1", "a") + line("1.2", "b") + line("1.3", "c")}});
    auto other = makeSchema({{file(), line("1.2", "b", "theirs")}});
    EXPECT_EQ(check(schema, other), 1U);
    EXPECT_EQ(report(schema), heading() + entry("1.2", "b"));
    destroy(order, &schema, &other);
  }
}

TEST(SchemaManagerCollisionOwnershipTest, WhatIsTakenOutStaysWithItsOid) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", {"a"}, "mine") +
                                     classLine("1.2", {"k"}, "mine") +
                                     storageLine("1.1", "mine")}});
  Attribute *type = schema->attributeTypes().at("a");
  ObjectClass *klass = schema->objectClasses().at("k");
  const auto other = emptySchema();

  EXPECT_EQ(schema->checkCollisions(other.get()), 1U);

  EXPECT_EQ(tablesOf(*schema),
            "type by OID 1.1: 1.1 mine\n"
            "class by OID 1.2: 1.2 mine\n");
  EXPECT_EQ(schema->attributeTypesByOid().at("1.1"), type);
  EXPECT_EQ(schema->objectClassesByOid().at("1.2"), klass);
  EXPECT_EQ(schema->getAttr("1.1").getDescription(), "mine");
  EXPECT_EQ(schema->getObjClass("1.2").getDescription(), "mine");
  // What is written is found by OID. The storage definition is gone.
  const FixedDate date;
  const TemporaryDirectory directory;
  EXPECT_EQ(schema->writeFile(directory.string(), "V3.user.at"), 0U);
  EXPECT_EQ(directory.read("V3.user.at"), kHeaderLine +
                                              typeLine("1.1", {"a"}, "mine") +
                                              classLine("1.2", {"k"}, "mine"));
}

// The OID leads to the first of them, and nothing to the second once it is
// taken out: it is released.
TEST(SchemaManagerCollisionOwnershipTest, SecondOfItsOidIsReleased) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", {"a"}, "first") +
                                     typeLine("1.1", {"b"}, "second") +
                                     classLine("1.2", {"k"}, "first") +
                                     classLine("1.2", {"l"}, "second")}});
  const auto other = emptySchema();
  EXPECT_EQ(schema->checkCollisions(other.get()), 1U);
  EXPECT_EQ(tablesOf(*schema),
            "type by OID 1.1: 1.1 first\n"
            "class by OID 1.2: 1.2 first\n");
}

// Kept on purpose: the second of a name is never freed, nor is it looked at.
TEST(SchemaManagerCollisionOwnershipTest, SecondOfItsNameIsLeftAlone) {
  auto schema =
      makeSchema({{"V3.user.at", typeLine("1.1", {"a"}, "first") +
                                     typeLine("1.2", {"A"}, "second") +
                                     classLine("1.3", {"k"}, "first") +
                                     classLine("1.4", {"K"}, "second")}});
  // They are deleted here.
  const std::unique_ptr<Attribute> type(
      schema->attributeTypesByOid().at("1.2"));
  const std::unique_ptr<ObjectClass> klass(
      schema->objectClassesByOid().at("1.4"));
  const auto other =
      makeSchema({{"V3.user.at", storageLine("1.2", "theirs") +
                                     storageLine("1.4", "theirs")}});
  EXPECT_EQ(schema->checkCollisions(other.get()), 1U);
  EXPECT_EQ(tablesOf(*schema),
            "type by OID 1.1: 1.1 first\n"
            "type by OID 1.2: 1.2 second\n"
            "class by OID 1.3: 1.3 first\n"
            "class by OID 1.4: 1.4 second\n");
  schema.reset();
  EXPECT_EQ(type->getDescription(), "second");
  EXPECT_EQ(klass->getDescription(), "second");
}

// Both schemas hold the definition after the merge that fails. Each in turn
// loses it, and each is destroyed first.
TEST_P(SchemaManagerCollisionTest, WhatTwoSchemasShareStaysWithTheOther) {
  for (const Order order : {Order::kFirstFirst, Order::kSecondFirst}) {
    for (const bool inOld : {true, false}) {
      SCOPED_TRACE(inOld);
      auto old = makeSchema(
          {{file(), line("1.1", "a")}, {"V3.config.at", line("1.2", "b")}});
      auto release = emptySchema();
      const auto nothing = emptySchema();
      ASSERT_EQ((release.get()->*kind().merge)(old.get()), 0U);
      const Schema &checked = inOld ? old : release;
      const Schema &untouched = inOld ? release : old;
      const std::string before = stateOf(untouched.get());

      EXPECT_EQ(check(checked, nothing), 1U);

      EXPECT_EQ(report(checked), emptyReport());
      EXPECT_EQ(stateOf(untouched.get()), before);
      destroy(order, &old, &release);
    }
  }
}

TEST_P(SchemaManagerCollisionTest, SharedDefinitionsCollide) {
  const auto old = makeSchema(
      {{file(), line("1.1", "a")}, {"V3.config.at", line("1.2", "b")}});
  const auto release = emptySchema();
  ASSERT_EQ((release.get()->*kind().merge)(old.get()), 0U);
  EXPECT_EQ(check(old, release), 1U);
  EXPECT_EQ(report(old), heading() + entry("1.1", "a"));
}

}  // namespace
