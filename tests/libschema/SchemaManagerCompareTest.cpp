#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/TraceRecorder.h"

namespace {

// What the kinds of definitions have in common.
class SchemaManagerCompareKindTest : public testing::TestWithParam<Kind> {
 protected:
  const Kind &kind() const { return GetParam(); }

  std::string line(const std::string &oid, const std::string &name,
                   const std::string &text) const {
    return kind().line(oid, name, text);
  }

  unsigned int compare(const Schema &schema, const Schema &other) const {
    return (schema.get()->*kind().compare)(other.get());
  }

  // What is left of the one definition of a schema after its removal.
  std::string removed(const std::string &oid, const std::string &text) const {
    return kind().isStorage() ? kind().file + ": " + oid + '\n'
                              : kind().byOid(oid, text);
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, SchemaManagerCompareKindTest,
                         testing::ValuesIn(kKinds), kindName);

TEST_P(SchemaManagerCompareKindTest, RemovesWhatIsEqualOrExcluded) {
  const struct {
    const char *what;
    const char *inRelease;  // the text of the release's definition, or null
    bool excluded;
    bool removed;
  } kCases[] = {
      {"absent", nullptr, false, false},
      {"absent, excluded", nullptr, true, true},
      {"different, excluded", "theirs", true, true},
      {"equal, excluded", "mine", true, true},
      {"equal", "mine", false, true},
      {"different", "theirs", false, false},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.what);
    const std::string mine = line("1.1", "cn", "mine");
    const auto old = makeSchema({{kind().file, mine}});
    const auto release =
        test.inRelease == nullptr
            ? emptySchema()
            : makeSchema({{kind().file, line("1.1", "cn", test.inRelease)}});
    if (test.excluded) {
      exclude(old.get(), "1.1");
    }
    const std::string releaseBefore = stateOf(release.get());

    EXPECT_EQ(compare(old, release), 1U);

    const std::string kept =
        kind().only("1.1", "cn", mine) + kind().file + ": 1.1\n";
    EXPECT_EQ(stateOf(old.get()), (test.removed ? removed("1.1", mine) : kept) +
                                      (test.excluded ? "excluded: 1.1\n" : ""));
    EXPECT_EQ(stateOf(release.get()), releaseBefore);
  }
}

TEST_P(SchemaManagerCompareKindTest, AnEmptyTableStaysEmpty) {
  const auto old = emptySchema();
  const auto release = makeSchema({{kind().file, line("1.1", "cn", "x")}});
  EXPECT_EQ(compare(old, release), 1U);
  EXPECT_EQ(stateOf(old.get()), "");
}

// Each number of definitions, with the equal ones at each place.
TEST_P(SchemaManagerCompareKindTest, RemovesTheEqualOnesOfMany) {
  for (unsigned int count = 1; count <= 4; ++count) {
    for (unsigned int equal = 0; equal < 1U << count; ++equal) {
      SCOPED_TRACE(testing::Message() << count << " with " << equal);
      std::string mine, theirs, owned, byOid, oids;
      for (unsigned int i = 0; i < count; ++i) {
        const bool removed = (equal >> i & 1U) != 0;
        const std::string name(1, static_cast<char>('a' + i));
        const std::string oid = "1." + std::to_string(i);
        const std::string definition = line(oid, name, "mine");
        mine += definition;
        theirs += line(oid, name, removed ? "mine" : "theirs");
        owned += removed ? "" : kind().owned(oid, name, definition);
        byOid += kind().byOid(oid, removed ? definition : name);
        oids += removed && !kind().isStorage() ? "" : ' ' + oid;
      }
      const auto old = makeSchema({{kind().file, mine}});
      const auto release = makeSchema({{kind().file, theirs}});

      EXPECT_EQ(compare(old, release), 1U);

      EXPECT_EQ(stateOf(old.get()),
                owned + byOid +
                    (oids.empty() ? "" : kind().file + ':' + oids + '\n'));
    }
  }
}

TEST_P(SchemaManagerCompareKindTest, LeavesTheOtherKindsAlone) {
  const std::vector<SchemaFile> files = {
      {"V3.system.at", typeLine("1.1", {"cn"}, "x")},
      {"V3.system.oc", classLine("1.2", {"person"}, "x")},
      {"V3.qor.at", storageLine("1.3", "x")}};
  const auto old = makeSchema(files);
  const auto release = makeSchema(files);

  EXPECT_EQ(compare(old, release), 1U);

  std::string expected;
  const auto show = [&](const char *label, const char *oid, const char *name) {
    for (const Kind &each : kKinds) {
      if (each.label == label) {
        const std::string definition = each.line(oid, name, "x");
        expected += label == kind().label ? each.byOid(oid, definition)
                                          : each.only(oid, name, definition);
      }
    }
  };
  show("type", "1.1", "cn");
  show("class", "1.2", "person");
  show("storage", "1.3", "");
  expected += "V3.qor.at: 1.3\n";  // in each case
  expected += kind().label == "class" ? "" : "V3.system.oc: 1.2\n";
  expected += kind().label == "type" ? "" : "V3.system.at: 1.1\n";
  EXPECT_EQ(stateOf(old.get()), expected);
}

TEST_P(SchemaManagerCompareKindTest, TheOthersExcludedOidsDoNotCount) {
  const std::string mine = line("1.1", "cn", "mine");
  const auto old = makeSchema({{kind().file, mine}});
  const auto release = makeSchema({{kind().file, line("1.1", "cn", "other")}});
  exclude(release.get(), "1.1");
  EXPECT_EQ(compare(old, release), 1U);
  EXPECT_EQ(stateOf(old.get()),
            kind().only("1.1", "cn", mine) + kind().file + ": 1.1\n");
}

TEST_P(SchemaManagerCompareKindTest, ExcludesByTheWholeOidOnly) {
  const std::string mine = line("1.1.10", "cn", "mine");
  const auto old = makeSchema({{kind().file, mine}});
  exclude(old.get(), "1.1 1.1.1 1.1.100 1.1.10.1 .1.10 cn");
  EXPECT_EQ(compare(old, emptySchema()), 1U);
  EXPECT_EQ(stateOf(old.get()),
            kind().only("1.1.10", "cn", mine) + kind().file + ": 1.1.10\n");
}

// A list matches another of the same length that holds each of its elements, so
// that it matters which side is asked: it is this schema's.
TEST(SchemaManagerCompareTest, AsksThisSchemasDefinitionWhetherItIsEqual) {
  const std::string twice = typeLine("1.1", {"a", "A"}, "x") +
                            classLine("1.2", {"a", "A"}, "x") +
                            "QORAttributetypes=( 1.3 DBNAME ( 'a' 'A'  ) )\n";
  const std::string once = typeLine("1.1", {"A", "b"}, "x") +
                           classLine("1.2", {"A", "b"}, "x") +
                           "QORAttributetypes=( 1.3 DBNAME ( 'a' 'b'  ) )\n";
  {
    const auto old = makeSchema({{"V3.config.at", twice}});
    const auto release = makeSchema({{"V3.config.at", once}});
    EXPECT_EQ(old->compSchemas(release.get()), 1U);
    EXPECT_TRUE(old->attributeTypes().empty());
    EXPECT_TRUE(old->objectClasses().empty());
    EXPECT_TRUE(old->storageDefinitions().empty());
  }
  {
    const auto old = makeSchema({{"V3.config.at", once}});
    const auto release = makeSchema({{"V3.config.at", twice}});
    const std::string before = stateOf(old.get());
    EXPECT_EQ(old->compSchemas(release.get()), 1U);
    EXPECT_EQ(stateOf(old.get()), before);
  }
}

TEST(SchemaManagerCompareTest, MatchesFirstNamesInAnyCase) {
  const auto old =
      makeSchema({{"V3.user.at", typeLine("1.1", {"CN"}, "x") +
                                     classLine("1.2", {"Person"}, "x")}});
  const auto release =
      makeSchema({{"V3.user.at", typeLine("1.1", {"cN"}, "x") +
                                     classLine("1.2", {"PERSON"}, "x")}});
  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(stateOf(old.get()),
            "type by OID 1.1: " + typeLine("1.1", {"CN"}, "x") +
                "class by OID 1.2: " + classLine("1.2", {"Person"}, "x"));
}

TEST(SchemaManagerCompareTest, ALaterNameMatchesNothing) {
  const auto old =
      makeSchema({{"V3.user.at", typeLine("1.1", {"cn", "commonName"}, "x") +
                                     classLine("1.2", {"p", "q"}, "x")}});
  const auto release =
      makeSchema({{"V3.user.at", typeLine("1.1", {"commonName", "cn"}, "x") +
                                     classLine("1.2", {"q", "p"}, "x")}});
  const std::string before = stateOf(old.get());
  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(stateOf(old.get()), before);
}

TEST(SchemaManagerCompareTest, ANamesakeWithAnotherOidDiffers) {
  for (const bool excluded : {false, true}) {
    SCOPED_TRACE(excluded);
    const auto old =
        makeSchema({{"V3.user.at", typeLine("1.1", {"cn"}, "x") +
                                       classLine("1.2", {"person"}, "x")}});
    const auto release =
        makeSchema({{"V3.user.at", typeLine("2.1", {"cn"}, "x") +
                                       classLine("2.2", {"person"}, "x")}});
    exclude(old.get(), excluded ? "1.1 1.2" : "2.1 2.2");
    const std::string before = stateOf(old.get());
    EXPECT_EQ(old->compSchemas(release.get()), 1U);
    EXPECT_EQ(stateOf(old.get()),
              excluded ? "type by OID 1.1: " + typeLine("1.1", {"cn"}, "x") +
                             "class by OID 1.2: " +
                             classLine("1.2", {"person"}, "x") +
                             "excluded: 1.1 1.2\n"
                       : before);
  }
}

TEST(SchemaManagerCompareTest, MatchesDefinitionsWithoutNames) {
  const std::string type = typeLine("1.1", {}, "x");
  const auto old =
      makeSchema({{"V3.user.at", type + namelessClassLine("1.2", "mine")}});
  const auto release =
      makeSchema({{"V3.user.at", type + namelessClassLine("1.2", "theirs")}});
  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(stateOf(old.get()),
            "type by OID 1.1: " + type +
                "class : objectclasses=( 1.2 NAME  DESC 'mine' STRUCTURAL )\n"
                "class by OID 1.2: \n"
                "V3.user.at: 1.2\n");
}

TEST(SchemaManagerCompareTest, StorageIsMatchedByItsOidExactly) {
  const auto old = makeSchema(
      {{"V3.qor.at", storageLine("oid", "x") + storageLine("1.1", "x")}});
  const auto release = makeSchema(
      {{"V3.qor.at", storageLine("OID", "x") + storageLine("1.10", "x")}});
  const std::string before = stateOf(old.get());
  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(stateOf(old.get()), before);
}

TEST(SchemaManagerCompareTest, DoesAllThreeKinds) {
  const std::vector<SchemaFile> files = {
      {"V3.user.at", typeLine("1.1", {"cn"}, "x")},
      {"V3.user.oc", classLine("1.2", {"person"}, "x")},
      {"V3.qor.at", storageLine("1.1", "x")}};
  const auto old = makeSchema(files);
  const auto release = makeSchema(files);
  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(stateOf(old.get()),
            "type by OID 1.1: " + typeLine("1.1", {"cn"}, "x") +
                "class by OID 1.2: " + classLine("1.2", {"person"}, "x") +
                "V3.qor.at: 1.1\n");
  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(stateOf(old.get()),
            "type by OID 1.1: " + typeLine("1.1", {"cn"}, "x") +
                "class by OID 1.2: " + classLine("1.2", {"person"}, "x") +
                "V3.qor.at: 1.1\n");
}

TEST(SchemaManagerCompareTest, ARemovedOidLeavesTheFirstSetThatHoldsIt) {
  for (const char *first : kSearchedFiles) {
    bool later = false;
    for (const char *second : kSearchedFiles) {
      if (later) {
        SCOPED_TRACE(testing::Message() << first << " and " << second);
        const std::string type = typeLine("1.1", {"cn"}, "x");
        const auto old = makeSchema(
            {{second, type}, {first, classLine("1.1", {"person"}, "x")}});
        exclude(old.get(), "1.1");
        EXPECT_EQ(old->compAttrTables(emptySchema().get()), 1U);
        EXPECT_EQ(stateOf(old.get()),
                  "type by OID 1.1: " + type +
                      "class person: " + classLine("1.1", {"person"}, "x") +
                      "class by OID 1.1: person\n" + second +
                      ": 1.1\nexcluded: 1.1\n");
      }
      later = later || first == second;
    }
  }
}

TEST(SchemaManagerCompareTest, RemovesWhatIsRecordedForNoFile) {
  for (const char *file : kUnsearchedFiles) {
    SCOPED_TRACE(file);
    const std::string type = typeLine("1.1", {"cn"}, "x");
    const std::string objectClass = classLine("1.2", {"person"}, "x");
    const auto old =
        makeSchema({{file, type + objectClass + storageLine("1.3", "x")}});
    const auto release = makeSchema(
        {{"V3.user.at", type + objectClass + storageLine("1.3", "x")}});

    TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(old->compSchemas(release.get()), 1U);

    EXPECT_EQ(recorder.messages(),
              (std::vector<std::string>{
                  "delOidFromFileSet: Unable to delete OID from set, 1.1.\n",
                  "delOidFromFileSet: Unable to delete OID from set, 1.2.\n"}));
    EXPECT_EQ(stateOf(old.get()), "type by OID 1.1: " + type +
                                      "class by OID 1.2: " + objectClass +
                                      (file == std::string("V3.modifiedschema")
                                           ? "V3.modifiedschema: 1.1 1.2\n"
                                           : ""));
  }
}

TEST(SchemaManagerCompareTest, RemovedDefinitionsAreFoundByOidAlone) {
  const auto old =
      makeSchema({{"V3.user.at", typeLine("1.1", {"cn"}, "x") +
                                     classLine("1.2", {"p"}, "x")}});
  Attribute *const type = old->attributeTypes().at("cn");
  ObjectClass *const objectClass = old->objectClasses().at("p");
  exclude(old.get(), "1.1 1.2");
  EXPECT_EQ(old->compSchemas(emptySchema().get()), 1U);
  EXPECT_EQ(old->attributeTypesByOid().at("1.1"), type);
  EXPECT_EQ(old->objectClassesByOid().at("1.2"), objectClass);
  EXPECT_EQ(old->getAttr("1.1").getNames(), Names{"cn"});
  EXPECT_EQ(old->getObjClass("1.2").getNames(), Names{"p"});
}

// The second of two definitions with one OID is found by name alone.
TEST(SchemaManagerCompareTest, OneOfTwoDefinitionsWithAnOidIsRemoved) {
  const std::string first = typeLine("1.1", {"a"}, "x");
  const std::string second = typeLine("1.1", {"b"}, "x");
  const auto release = [&](const std::string &line) {
    return makeSchema({{"V3.user.at", line}});
  };
  {
    const auto old = makeSchema({{"V3.user.at", first + second}});
    EXPECT_EQ(old->compSchemas(release(first).get()), 1U);
    EXPECT_EQ(stateOf(old.get()),
              "type b: " + second + "type by OID 1.1: " + first);
  }
  {
    const auto old = makeSchema({{"V3.user.at", first + second}});
    EXPECT_EQ(old->compSchemas(release(second).get()), 1U);
    EXPECT_EQ(stateOf(old.get()), "type a: " + first + "type by OID 1.1: a\n");
  }
}

TEST(SchemaManagerCompareTest, ASchemaHasNothingBeyondItself) {
  const auto files = [](const char *text) {
    return std::vector<SchemaFile>{
        {"V3.user.at",
         typeLine("1.1", {"cn"}, text) + typeLine("1.2", {}, text)},
        {"V3.user.oc", classLine("1.3", {"p"}, text)},
        {"V3.qor.at", storageLine("1.1", text)}};
  };
  const auto schema = makeSchema(files("x"));
  EXPECT_EQ(schema->compSchemas(schema.get()), 1U);
  EXPECT_EQ(stateOf(schema.get()),
            "type by OID 1.1: " + typeLine("1.1", {"cn"}, "x") +
                "type by OID 1.2: " + typeLine("1.2", {}, "x") +
                "class by OID 1.3: " + classLine("1.3", {"p"}, "x") +
                "V3.qor.at: 1.1\n");
}

TEST_P(SchemaManagerCompareKindTest, AKindHasNothingBeyondItself) {
  const std::string mine = line("1.1", "cn", "x");
  const auto schema = makeSchema({{kind().file, mine}});
  EXPECT_EQ(compare(schema, schema), 1U);
  EXPECT_EQ(stateOf(schema.get()), removed("1.1", mine));
}

// Names and OIDs are words alike; the tables do not mix them up.
TEST(SchemaManagerCompareTest, AnOidThatIsAnotherDefinitionsNameIsNoName) {
  const std::string a = typeLine("b", {"a"}, "x");
  const std::string b = typeLine("a", {"b"}, "x");
  const auto old = makeSchema({{"V3.user.at", a + b}});
  const auto release = makeSchema({{"V3.user.at", a}});
  EXPECT_EQ(old->compSchemas(release.get()), 1U);
  EXPECT_EQ(stateOf(old.get()), "type b: " + b + "type by OID a: b\n" +
                                    "type by OID b: " + a + "V3.user.at: a\n");
}

}  // namespace
