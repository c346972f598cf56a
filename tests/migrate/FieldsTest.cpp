// The fields of definitions.
#include "Fields.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MigrateTesting.h"
#include "SchemaLine.h"
#include "SchemaManager.h"

using schemacheck::Field;
using schemacheck::fieldsOf;
using schemacheck::sameValues;

namespace {

// "NAME=text" of each field; a list has "*" behind its name.
std::vector<std::string> textOf(const std::vector<Field> &fields) {
  std::vector<std::string> text;
  for (const Field &field : fields) {
    text.push_back(std::string(field.name) + (field.isList ? "*=" : "=") +
                   field.text());
  }
  return text;
}

class FieldsTest : public MigrateTest {
 protected:
  // Reads one file of definitions.
  void readDefinitions(const std::string &text) {
    write("old/V3.user.at", text);
    ASSERT_EQ(m_schema.readFile("V3.user.at"), 0U);
  }

  SchemaManager m_schema{path("old").string()};
};

using Texts = std::vector<std::string>;

TEST_F(FieldsTest, OfAnAttributeType) {
  readDefinitions(
      "attributetypes=( 1.1 NAME ( 'a' 'B' ) DESC 'x y' OBSOLETE SUP 1.2 SUP "
      "1.3 EQUALITY 2.1 ORDERING 2.2 SUBSTR 2.3 SYNTAX 2.4{8} SINGLE-VALUE "
      "NO-USER-MODIFICATION USAGE dSAOperation )\n"
      "attributetypes=( 1.2 )\n");
  EXPECT_EQ(textOf(fieldsOf(*m_schema.attributeTypes().at("a"))),
            (Texts{"OID=1.1", "NAME*=a B", "DESC='x y'", "OBSOLETE=yes",
                   "SUP*=1.2 1.3", "EQUALITY=2.1", "ORDERING=2.2", "SUBSTR=2.3",
                   "SYNTAX=2.4{8}", "SINGLE-VALUE=yes", "COLLECTIVE=no",
                   "NO-USER-MODIFICATION=yes", "USAGE=dSAOperation"}));
  EXPECT_EQ(textOf(fieldsOf(*m_schema.attributeTypes().at(""))),
            (Texts{"OID=1.2", "NAME*=(none)", "DESC=(none)", "OBSOLETE=no",
                   "SUP*=(none)", "EQUALITY=(none)", "ORDERING=(none)",
                   "SUBSTR=(none)", "SYNTAX=(none)", "SINGLE-VALUE=no",
                   "COLLECTIVE=no", "NO-USER-MODIFICATION=no",
                   "USAGE=userApplications"}));
  EXPECT_EQ(textOf(fieldsOf(Attribute()))[0], "OID=(none)");
}

TEST_F(FieldsTest, OfAnObjectClass) {
  readDefinitions(
      "objectclasses=( 1.1 NAME ( 'a' 'B' ) DESC 'x' OBSOLETE SUP ( c $ d ) "
      "AUXILIARY MUST ( e $ f ) MAY ( g $ h ) )\n"
      "objectclasses=( 1.2 NAME 'b' ABSTRACT )\n"
      "objectclasses=( 1.3 )\n");
  EXPECT_EQ(textOf(fieldsOf(*m_schema.objectClasses().at("a"))),
            (Texts{"OID=1.1", "NAME*=a B", "DESC='x'", "OBSOLETE=yes",
                   "SUP*=c d", "kind=AUXILIARY", "MUST*=e f", "MAY*=g h"}));
  EXPECT_EQ(textOf(fieldsOf(*m_schema.objectClasses().at("b")))[5],
            "kind=ABSTRACT");
  EXPECT_EQ(
      textOf(fieldsOf(*m_schema.objectClasses().at(""))),
      (Texts{"OID=1.3", "NAME*=(none)", "DESC=(none)", "OBSOLETE=no",
             "SUP*=(none)", "kind=STRUCTURAL", "MUST*=(none)", "MAY*=(none)"}));
}

TEST_F(FieldsTest, OfAStorageDefinition) {
  readDefinitions(
      "QORAttributetypes=( 1.1 DBNAME ( 'a' 'b' ) ACCESS-CLASS normal LENGTH 4 "
      "EQUALITY ORDERING SUBSTR APPROX )\n"
      "QORAttributetypes=( 1.2 )\n");
  EXPECT_EQ(
      textOf(fieldsOf(*m_schema.storageDefinitions().at("1.1"))),
      (Texts{"OID=1.1", "DBNAME*=a b", "ACCESS-CLASS=normal", "LENGTH=4",
             "EQUALITY=yes", "ORDERING=yes", "SUBSTR=yes", "APPROX=yes"}));
  EXPECT_EQ(
      textOf(fieldsOf(*m_schema.storageDefinitions().at("1.2"))),
      (Texts{"OID=1.2", "DBNAME*=(none)", "ACCESS-CLASS=(none)", "LENGTH=0",
             "EQUALITY=no", "ORDERING=no", "SUBSTR=no", "APPROX=no"}));
}

TEST_F(FieldsTest, TheLineOfADefinitionIsTheOneThatIsWritten) {
  const FixedDate date;
  readDefinitions(
      "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n"
      "QORAttributetypes=( 1.1 LENGTH 4 )\n"
      "objectclasses=( 1.2 NAME ( 'c' 'd' ) MUST ( a ) )\n");
  ASSERT_EQ(m_schema.writeFile(path("new").string(), "V3.user.at"), 0U);
  EXPECT_EQ(
      read("new/V3.user.at"),
      kHeaderLine + lines({schemaLine(m_schema.attributeTypes().at("a")),
                           schemaLine(m_schema.storageDefinitions().at("1.1")),
                           schemaLine(m_schema.objectClasses().at("c"))}));
  EXPECT_EQ(schemaLine(m_schema.storageDefinitions().at("1.1")),
            "QORAttributetypes=( 1.1 LENGTH 4 )");
}

TEST(FieldTest, TextIsTheValuesOrNone) {
  EXPECT_EQ((Field{"X", {}, false}).text(), "(none)");
  EXPECT_EQ((Field{"X", {}, true}).text(), "(none)");
  EXPECT_EQ((Field{"X", {"a"}, false}).text(), "a");
  EXPECT_EQ((Field{"X", {"a", "B", "a"}, true}).text(), "a B a");
}

TEST(FieldTest, ListsAreComparedAsSets) {
  const struct {
    Texts one;
    Texts other;
    bool asLists;
    bool exactly;
  } kCases[] = {
      {{}, {}, true, true},
      {{"a"}, {"a"}, true, true},
      {{"a"}, {"A"}, true, false},
      {{"a"}, {"b"}, false, false},
      {{"a"}, {}, false, false},
      {{"a", "b"}, {"B", "a"}, true, false},
      {{"a", "a"}, {"a", "b"}, false, false},
      {{"a", "a"}, {"a"}, true, false},
      {{"a"}, {"a", "b"}, false, false},
  };
  for (const auto &[one, other, asLists, exactly] : kCases) {
    SCOPED_TRACE(Field({"", one, true}).text() + " / " +
                 Field({"", other, true}).text());
    EXPECT_EQ(sameValues({"X", one, true}, {"X", other, true}), asLists);
    EXPECT_EQ(sameValues({"X", other, true}, {"X", one, true}), asLists);
    EXPECT_EQ(sameValues({"X", one, false}, {"X", other, false}), exactly);
  }
}

}  // namespace
