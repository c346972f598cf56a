// Withdrawing definitions, and the OIDs of V3.modifiedschema.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/SchemaManagerMergeTesting.h"
#include "libschema/SchemaManagerTesting.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

using Messages = std::vector<std::string>;

// Withdraws the OIDs, which are separated by blanks.
unsigned int withdraw(const Schema &schema, const std::string &oids) {
  const TemporaryDirectory directory;
  return schema->modifySchema(directory.write("list", oids + '\n'));
}

// Withdrawing.

// The kind is of the definition that is withdrawn.
class SchemaManagerWithdrawTest : public testing::TestWithParam<Kind> {
 protected:
  const Kind &kind() const { return GetParam(); }
  std::string line(const std::string &oid, const std::string &name,
                   const std::string &text = "x") const {
    return kind().line(oid, name, text);
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, SchemaManagerWithdrawTest,
                         testing::ValuesIn(kKinds), kindName);

TEST_P(SchemaManagerWithdrawTest, LeavesItsTableAndTheModifiedOids) {
  for (const unsigned int mask : {0U, ~0U}) {
    SCOPED_TRACE(mask);
    const auto schema = makeSchema({{"V3.modifiedschema", line("1.1", "a")}});
    ASSERT_EQ(stateOf(schema.get()),
              kind().only("1.1", "a", line("1.1", "a")) +
                  (kind().isStorage() ? "" : "V3.modifiedschema: 1.1\n"));
    const TraceRecorder recorder(mask);
    EXPECT_EQ(withdraw(schema, "1.1"), 0U);
    EXPECT_EQ(stateOf(schema.get()), kind().byOid("1.1", line("1.1", "a")));
    EXPECT_EQ(schema->isModFileEmpty(), 1U);
    EXPECT_EQ(recorder.messages(), Messages());
  }
}

// Each number of definitions, with the withdrawn ones at each place.
TEST_P(SchemaManagerWithdrawTest, SomeOfMany) {
  for (unsigned int count = 0; count <= 4; ++count) {
    for (unsigned int chosen = 0; chosen < 1U << count; ++chosen) {
      SCOPED_TRACE(testing::Message() << count << " with " << chosen);
      std::string text, owned, byOid, left, list;
      for (unsigned int i = 0; i < count; ++i) {
        const bool withdrawn = (chosen >> i & 1U) != 0;
        const std::string name(1, static_cast<char>('a' + i));
        const std::string oid = "1." + std::to_string(i);
        const std::string definition = line(oid, name);
        text += definition;
        owned += withdrawn ? "" : kind().owned(oid, name, definition);
        byOid += kind().byOid(oid, withdrawn ? definition : name);
        left += withdrawn || kind().isStorage() ? "" : ' ' + oid;
        list = (withdrawn ? oid + ' ' : "") + list;
      }
      const auto schema = makeSchema({{"V3.modifiedschema", text}});
      // The second time nothing is there to be withdrawn.
      for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(withdraw(schema, list), 0U);
        EXPECT_EQ(stateOf(schema.get()),
                  owned + byOid +
                      (left.empty() ? "" : "V3.modifiedschema:" + left + '\n'));
        EXPECT_EQ(schema->isModFileEmpty(),
                  chosen + 1 == 1U << count ? 1U : 0U);
      }
    }
  }
}

// It need not be of V3.modifiedschema. The sets of the other files, and the
// excluded OIDs, stay as they are.
TEST_P(SchemaManagerWithdrawTest, OfAnyFile) {
  for (const std::string file :
       {"V3.user.oc", "V3.user.at", "V3.qor.oc", "V3.qor.at", "V3.system.oc",
        "V3.system.at", "V3.config.oc", "V3.config.at"}) {
    SCOPED_TRACE(file);
    const auto schema = makeSchema({{file, line("1.1", "a")}});
    exclude(schema.get(), "1.1");
    std::string expected = stateOf(schema.get());
    const std::string before = kind().only("1.1", "a", line("1.1", "a"));
    ASSERT_EQ(expected.substr(0, before.size()), before);
    EXPECT_EQ(withdraw(schema, "1.1"), 0U);
    // Where nothing else has the OID, stateOf() does not ask for it.
    const bool known = !kind().isStorage() || file.rfind("V3.config", 0) != 0;
    EXPECT_EQ(stateOf(schema.get()),
              kind().byOid("1.1", line("1.1", "a")) +
                  (known ? expected.substr(before.size()) : ""));
    EXPECT_EQ(schema->isExcluded("1.1"), 1U);
  }
}

TEST_P(SchemaManagerWithdrawTest, UnknownKeysWithdrawNothing) {
  const auto schema = makeSchema(
      {{"V3.modifiedschema", line("1.2.3", "a") + line("Oid-x", "b")}});
  const std::string before = stateOf(schema.get());
  EXPECT_EQ(
      withdraw(schema, "1.2 1.2.3. 1.2.3.4 2.3 oid-x OID-X a b A V3.user.at"),
      0U);
  EXPECT_EQ(withdraw(schema, ""), 0U);
  EXPECT_EQ(stateOf(schema.get()), before);
  EXPECT_EQ(schema->delOidFromModSch("1.2.3"), 0U);
  EXPECT_EQ(schema->delOidFromModSch("Oid-x"), 0U);
}

// An OID that is in no table stays among the modified ones.
TEST(SchemaManagerWithdrawAloneTest, OidWithoutDefinition) {
  const auto schema =
      makeSchema({{"V3.modifiedschema", storageLine("1.1", "x")}});
  const auto nothing = emptySchema();
  ASSERT_EQ(schema->checkQORAttrs(nothing.get()), 1U);
  EXPECT_EQ(withdraw(schema, "1.1"), 0U);
  EXPECT_EQ(schema->isModFileEmpty(), 0U);
  EXPECT_EQ(schema->delOidFromModSch("1.1"), 0U);
}

// The first kind that has the OID is the one: the tables of OIDs keep what was
// withdrawn, so that a second time does not come to the next kind.
TEST(SchemaManagerWithdrawAloneTest, OidOfMoreThanOneKind) {
  const std::string type = typeLine("1.1", {"a"}, "x");
  const std::string klass = classLine("1.1", {"a"}, "x");
  const std::string storage = storageLine("1.1", "x");
  const struct {
    const char *what;
    std::string text;
    std::string tables;
  } kCases[] = {
      {"all", storage + type + klass,
       "type a: 1.1 x\ntype by OID 1.1: 1.1 x\n"
       "class by OID 1.1: 1.1 x\nstorage 1.1: 1.1 \n"},
      {"class and type", type + klass,
       "type a: 1.1 x\ntype by OID 1.1: 1.1 x\nclass by OID 1.1: 1.1 x\n"},
      {"class and storage", storage + klass,
       "class by OID 1.1: 1.1 x\nstorage 1.1: 1.1 \n"},
      {"type and storage", storage + type,
       "type by OID 1.1: 1.1 x\nstorage 1.1: 1.1 \n"},
      {"storage", storage, ""},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.what);
    const auto schema = makeSchema({{"V3.modifiedschema", test.text}});
    for (int time = 0; time < 2; ++time) {
      EXPECT_EQ(withdraw(schema, "1.1"), 0U);
      EXPECT_EQ(tablesOf(*schema), test.tables);
      EXPECT_EQ(schema->isModFileEmpty(), 1U);
    }
  }
}

// Kept on purpose: an OID is looked up as a name first. The definition that has
// it for a name leaves the table; its own OID stays among the modified ones.
TEST(SchemaManagerWithdrawAloneTest, OidThatIsANameWithdrawsItsBearer) {
  const auto schema = makeSchema(
      {{"V3.modifiedschema",
        typeLine("1.1", {"a"}, "x") + typeLine("2.1", {"1.1"}, "x") +
            classLine("1.2", {"k"}, "x") + classLine("2.2", {"1.2"}, "x")}});
  EXPECT_EQ(withdraw(schema, "1.1 1.2"), 0U);
  EXPECT_EQ(stateOf(schema.get()),
            "type a: " + typeLine("1.1", {"a"}, "x") +
                "type by OID 1.1: a\n"
                "type by OID 2.1: " +
                typeLine("2.1", {"1.1"}, "x") +
                "class k: " + classLine("1.2", {"k"}, "x") +
                "class by OID 1.2: k\n"
                "class by OID 2.2: " +
                classLine("2.2", {"1.2"}, "x") +
                "V3.modifiedschema: 2.1 2.2\n");
  // Now the OIDs lead to their own definitions.
  EXPECT_EQ(withdraw(schema, "1.1 1.2"), 0U);
  EXPECT_EQ(tablesOf(*schema),
            "type by OID 1.1: 1.1 x\ntype by OID 2.1: 2.1 x\n"
            "class by OID 1.2: 1.2 x\nclass by OID 2.2: 2.2 x\n");
}

// Kept on purpose: the OID is lowered for the look-up of an attribute type, and
// not for that of an object class.
TEST(SchemaManagerWithdrawAloneTest, OidIsLoweredForAttributeTypesAlone) {
  const auto schema = makeSchema(
      {{"V3.user.at",
        typeLine("Abc", {"a"}, "x") + typeLine("2.1", {"aBC"}, "x") +
            classLine("Def", {"k"}, "x") + classLine("2.2", {"dEF"}, "x") +
            classLine("ghi", {"l"}, "x") + classLine("2.3", {"GHI"}, "x")}});
  EXPECT_EQ(withdraw(schema, "Abc Def ghi"), 0U);
  EXPECT_EQ(tablesOf(*schema),
            "type a: Abc x\n"
            "type by OID 2.1: 2.1 x\n"
            "type by OID Abc: Abc x\n"
            "class def: 2.2 x\n"
            "class l: ghi x\n"
            "class by OID 2.2: 2.2 x\n"
            "class by OID 2.3: 2.3 x\n"
            "class by OID Def: Def x\n"
            "class by OID ghi: ghi x\n");
}

// 10 goes before 9: it takes out the definition that has the name 9, so that 9
// is the OID of the other then. Each OID is taken once.
TEST_P(SchemaManagerWithdrawTest, OidsAreTakenOnceInTheOrderOfTheirBytes) {
  const std::string byOid =
      kind().byOid("10", "10 x") + kind().byOid("9", "9 x");
  const auto tablesAfter = [this](const std::string &oids) {
    const auto schema =
        makeSchema({{"V3.user.at", line("10", "9") + line("9", "a")}});
    EXPECT_EQ(withdraw(schema, oids), 0U);
    return tablesOf(*schema);
  };
  for (const char *list : {"10 9", "9 10", "9 10 9 10", "9\n10\n9"}) {
    EXPECT_EQ(tablesAfter(list), byOid) << list;
  }
  const std::string other =
      kind().isStorage() ? "storage 10: 10 \n" : kind().label + " a: 9 x\n";
  for (const char *list : {"9", "9 9", "9\n9\n9"}) {
    EXPECT_EQ(tablesAfter(list), other + byOid) << list;
  }
}

// Of two with one first name the second has no place but its OID. Withdrawing
// it takes the name, and with it the first.
TEST(SchemaManagerWithdrawAloneTest, SecondOfAName) {
  auto schema = makeSchema(
      {{"V3.modifiedschema", typeLine("1.1", {"a"}, "first") +
                                 typeLine("1.2", {"A"}, "second") +
                                 classLine("1.3", {"k"}, "first") +
                                 classLine("1.4", {"K"}, "second")}});
  // Kept on purpose: they are never freed. They are deleted here.
  const std::unique_ptr<Attribute> type(
      schema->attributeTypesByOid().at("1.2"));
  const std::unique_ptr<ObjectClass> klass(
      schema->objectClassesByOid().at("1.4"));
  for (const char *list : {"1.2 1.4", "1.1 1.2 1.3 1.4"}) {
    EXPECT_EQ(withdraw(schema, list), 0U);
    EXPECT_EQ(tablesOf(*schema),
              "type by OID 1.1: 1.1 first\ntype by OID 1.2: 1.2 second\n"
              "class by OID 1.3: 1.3 first\nclass by OID 1.4: 1.4 second\n");
    EXPECT_EQ(schema->delOidFromModSch("1.2"), 32U);
    EXPECT_EQ(schema->delOidFromModSch("1.4"), 32U);
  }
  EXPECT_EQ(schema->isModFileEmpty(), 1U);
  schema.reset();
  EXPECT_EQ(type->getDescription(), "second");
  EXPECT_EQ(klass->getDescription(), "second");
}

// Of two with one OID the first is withdrawn, and no second time brings the
// other.
TEST(SchemaManagerWithdrawAloneTest, SecondOfAnOidStays) {
  const auto schema = makeSchema(
      {{"V3.user.at",
        typeLine("1.1", {"b"}, "first") + typeLine("1.1", {"a"}, "second") +
            classLine("1.2", {"l"}, "first") +
            classLine("1.2", {"k"}, "second") + storageLine("1.3", "x")}});
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(withdraw(schema, "1.1 1.2"), 0U);
    EXPECT_EQ(tablesOf(*schema),
              "type a: 1.1 second\ntype by OID 1.1: 1.1 first\n"
              "class k: 1.2 second\nclass by OID 1.2: 1.2 first\n"
              "storage 1.3: 1.3 \n");
  }
}

// The second of an OID can be withdrawn, by its name for an OID; nothing leads
// to it then, and it is released.
TEST(SchemaManagerWithdrawAloneTest, WhatNothingLeadsToIsReleased) {
  const auto schema = makeSchema(
      {{"V3.user.at",
        typeLine("1.1", {"a"}, "first") + typeLine("1.1", {"2.1"}, "second") +
            typeLine("2.1", {"b"}, "third") + classLine("1.2", {"k"}, "first") +
            classLine("1.2", {"2.2"}, "second") +
            classLine("2.2", {"l"}, "third")}});
  EXPECT_EQ(withdraw(schema, "2.1 2.2"), 0U);
  EXPECT_EQ(tablesOf(*schema),
            "type a: 1.1 first\ntype b: 2.1 third\n"
            "type by OID 1.1: 1.1 first\ntype by OID 2.1: 2.1 third\n"
            "class k: 1.2 first\nclass l: 2.2 third\n"
            "class by OID 1.2: 1.2 first\nclass by OID 2.2: 2.2 third\n");
}

TEST(SchemaManagerWithdrawAloneTest, DefinitionsWithoutNames) {
  const auto schema =
      makeSchema({{"V3.modifiedschema",
                   typeLine("1.1", {}, "x") + namelessClassLine("1.2", "x")}});
  EXPECT_EQ(withdraw(schema, "1.1 1.2"), 0U);
  EXPECT_EQ(tablesOf(*schema),
            "type by OID 1.1: 1.1 x\nclass by OID 1.2: 1.2 x\n");
  EXPECT_EQ(schema->isModFileEmpty(), 1U);
}

// What is withdrawn is the same object still, and is written for a file whose
// set holds its OID.
TEST(SchemaManagerWithdrawAloneTest, StaysWithItsOid) {
  const auto schema =
      makeSchema({{"V3.modifiedschema", typeLine("1.1", {"a"}, "x") +
                                            classLine("1.2", {"k"}, "x") +
                                            typeLine("1.3", {"b"}, "x")},
                  {"V3.user.at", typeLine("1.1", {"c"}, "x")}});
  Attribute *type = schema->attributeTypes().at("a");
  ObjectClass *klass = schema->objectClasses().at("k");
  EXPECT_EQ(withdraw(schema, "1.1 1.2"), 0U);
  EXPECT_EQ(schema->attributeTypesByOid().at("1.1"), type);
  EXPECT_EQ(schema->objectClassesByOid().at("1.2"), klass);
  EXPECT_EQ(schema->getAttr("1.1").getFirstName(), "a");
  EXPECT_EQ(schema->getObjClass("1.2").getFirstName(), "k");
  const FixedDate date;
  const TemporaryDirectory directory;
  EXPECT_EQ(schema->writeFile(directory.string(), "V3.modifiedschema"), 0U);
  EXPECT_EQ(schema->writeFile(directory.string(), "V3.user.at"), 0U);
  EXPECT_EQ(directory.read("V3.modifiedschema"),
            kHeaderLine + typeLine("1.3", {"b"}, "x"));
  EXPECT_EQ(directory.read("V3.user.at"),
            kHeaderLine + typeLine("1.1", {"a"}, "x"));
}

// The name is free for another, while the OID leads to the withdrawn one.
TEST(SchemaManagerWithdrawAloneTest, MayBeReadAgain) {
  const TemporaryDirectory directory;
  directory.write("V3.modifiedschema", typeLine("1.1", {"a"}, "x") +
                                           classLine("1.2", {"k"}, "x") +
                                           storageLine("1.3", "x"));
  const auto schema = std::make_unique<SchemaManager>(directory.string());
  ASSERT_EQ(schema->readFile("V3.modifiedschema"), 0U);
  EXPECT_EQ(withdraw(schema, "1.1 1.2 1.3"), 0U);
  Attribute *type = schema->attributeTypesByOid().at("1.1");
  ObjectClass *klass = schema->objectClassesByOid().at("1.2");
  EXPECT_EQ(schema->isModFileEmpty(), 1U);
  ASSERT_EQ(schema->readFile("V3.modifiedschema"), 0U);
  EXPECT_EQ(schema->isModFileEmpty(), 0U);
  EXPECT_EQ(tablesOf(*schema),
            "type a: 1.1 x\ntype by OID 1.1: 1.1 x\n"
            "class k: 1.2 x\nclass by OID 1.2: 1.2 x\n"
            "storage 1.3: 1.3 \n");
  EXPECT_EQ(schema->attributeTypesByOid().at("1.1"), type);
  EXPECT_NE(schema->attributeTypes().at("a"), type);
  EXPECT_EQ(schema->objectClassesByOid().at("1.2"), klass);
  EXPECT_NE(schema->objectClasses().at("k"), klass);
  // Withdrawn again, the new ones are reached by nothing, and are released.
  EXPECT_EQ(withdraw(schema, "1.1 1.2 1.3"), 0U);
  EXPECT_EQ(tablesOf(*schema),
            "type by OID 1.1: 1.1 x\nclass by OID 1.2: 1.2 x\n");
}

// Both schemas hold the definition after the merge that fails. Each in turn
// loses it, and each is destroyed first.
TEST_P(SchemaManagerWithdrawTest, WhatTwoSchemasShareStaysWithTheOther) {
  for (const Order order : {Order::kFirstFirst, Order::kSecondFirst}) {
    for (const bool inOld : {true, false}) {
      SCOPED_TRACE(inOld);
      auto old = makeSchema({{kind().file, line("1.1", "a")},
                             {"V3.config.at", line("1.2", "b")}});
      auto release = emptySchema();
      ASSERT_EQ((release.get()->*kind().merge)(old.get()), 0U);
      const Schema &changed = inOld ? old : release;
      const Schema &untouched = inOld ? release : old;
      const std::string before = stateOf(untouched.get());
      EXPECT_EQ(withdraw(changed, "1.1"), 0U);
      EXPECT_EQ(tablesOf(*changed).find(kind().label + " a"),
                std::string::npos);
      EXPECT_EQ(changed->storageDefinitions().count("1.1"), 0U);
      EXPECT_EQ(stateOf(untouched.get()), before);
      destroy(order, &old, &release);
    }
  }
}

// The OIDs of V3.modifiedschema.

TEST(SchemaManagerModifiedOidsTest, NoneAtFirst) {
  const auto schema = emptySchema();
  EXPECT_EQ(schema->isModFileEmpty(), 1U);
  EXPECT_EQ(schema->delOidFromModSch(""), 32U);
  EXPECT_EQ(schema->delOidFromModSch("1.1"), 32U);
  EXPECT_EQ(schema->isModFileEmpty(), 1U);
}

TEST(SchemaManagerModifiedOidsTest, AreThoseOfTheFileAlone) {
  for (const char *file :
       {"V3.user.oc", "V3.user.at", "V3.qor.oc", "V3.qor.at", "V3.system.oc",
        "V3.system.at", "V3.config.oc", "V3.config.at"}) {
    SCOPED_TRACE(file);
    const auto schema = makeSchema({{file, typeLine("1.1", {"a"}, "x")},
                                    {"V3.modifiedschema", "# nothing\n"}});
    EXPECT_EQ(schema->isModFileEmpty(), 1U);
    EXPECT_EQ(schema->delOidFromModSch("1.1"), 32U);
  }
  for (const Kind &kind : kKinds) {
    SCOPED_TRACE(kind);
    const auto schema =
        makeSchema({{"V3.modifiedschema", kind.line("1.1", "a", "x")}});
    EXPECT_EQ(schema->isModFileEmpty(), 0U);
    EXPECT_EQ(schema->delOidFromModSch("1.1"), 0U);
    EXPECT_EQ(schema->isModFileEmpty(), 1U);
    EXPECT_EQ(schema->delOidFromModSch("1.1"), 32U);
  }
}

TEST(SchemaManagerModifiedOidsTest, WholeOidIsRemovedAlone) {
  const auto schema =
      makeSchema({{"V3.user.at", typeLine("1.9", {"u"}, "x")},
                  {"V3.modifiedschema", typeLine("1.2.3", {"a"}, "x") +
                                            typeLine("Oid-x", {"b"}, "x")}});
  const std::string before = stateOf(schema.get());
  for (const std::string oid : {"", "1.2", "1.2.3.", "1.2.3.4", "1.2.3 ", "2.3",
                                "oid-x", "OID-X", "a", "1.9", "%s%n"}) {
    SCOPED_TRACE(oid);
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(schema->delOidFromModSch(oid), 32U);
    EXPECT_EQ(recorder.messages(), Messages());
    EXPECT_EQ(stateOf(schema.get()), before);
  }
  EXPECT_EQ(schema->delOidFromModSch(std::string("1.2.3\0", 6)), 32U);
  EXPECT_EQ(schema->delOidFromModSch("1.2.3"), 0U);
  EXPECT_EQ(schema->isModFileEmpty(), 0U);
  EXPECT_EQ(schema->delOidFromModSch("Oid-x"), 0U);
  EXPECT_EQ(schema->isModFileEmpty(), 1U);
}

// The definition and the other sets stay as they are, wherever the OID is.
TEST(SchemaManagerModifiedOidsTest, OnlyTheSetChanges) {
  const std::vector<std::string> oids = {"1.1", "1.2", "1.3"};
  for (const std::string &removed : oids) {
    SCOPED_TRACE(removed);
    std::string definitions, modified, left;
    for (const std::string &oid : oids) {
      definitions += typeLine(oid, {"a" + oid}, "x");
      modified += typeLine(oid, {"b" + oid}, "x");
      left += oid == removed ? "" : ' ' + oid;
    }
    const auto schema = makeSchema(
        {{"V3.user.at", definitions}, {"V3.modifiedschema", modified}});
    std::string expected = stateOf(schema.get());
    const std::string line = "V3.modifiedschema: 1.1 1.2 1.3\n";
    ASSERT_NE(expected.find(line), std::string::npos);
    expected.replace(expected.find(line), line.size(),
                     "V3.modifiedschema:" + left + '\n');
    EXPECT_EQ(schema->delOidFromModSch(removed), 0U);
    EXPECT_EQ(stateOf(schema.get()), expected);
  }
}

}  // namespace
