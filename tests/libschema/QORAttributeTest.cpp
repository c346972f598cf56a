#include "QORAttribute.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "DefinitionTesting.h"

using definitions::call;
using definitions::expectCallRecords;
using definitions::expectExitsOnExceptions;
using definitions::expectParseRecords;
using definitions::FailingLexan;
using definitions::kTraceAll;
using definitions::lexan;
using definitions::match;
using definitions::parsed;
using definitions::printed;
using definitions::readBack;
using definitions::Records;
using definitions::recordsOfFailingPrint;
using definitions::recordsOfFailingWrite;
using definitions::SchemaText;
using definitions::written;

namespace {

const char kFull[] =
    "QORAttributetypes=( 1.2 DBNAME ( 'A' 'b c' ) ACCESS-CLASS critical "
    "LENGTH 32 EQUALITY ORDERING SUBSTR APPROX )";

// A storage definition with the fields of an attribute type, which its own
// parse() never fills.
QORAttribute withAttributeFields(const std::string &text,
                                 const std::string &attributeText) {
  auto attribute = parsed<QORAttribute>(text);
  SchemaText<> file(attributeText);
  EXPECT_EQ(attribute.Attribute::parse(file.lexan()), 1);
  return attribute;
}

TEST(QORAttributeTest, ANewDefinitionIsEmpty) {
  QORAttribute attribute;
  EXPECT_EQ(attribute.getOid(), "");
  EXPECT_EQ(attribute.getDescription(), "");
  EXPECT_EQ(attribute.getSuperior(), std::vector<std::string>());
  EXPECT_EQ(attribute.getFirstName(), "");
  EXPECT_EQ(attribute.getNames(), std::vector<std::string>());
  EXPECT_EQ(attribute.getFirstNameLower(), "");
  EXPECT_EQ(written(attribute), "QORAttributetypes=(  )\n");
  EXPECT_EQ(printed(attribute),
            "oid --> \n"
            "accessClass --> \n"
            "length --> 0\n"
            "equality --> NO\n"
            "ordering --> NO\n"
            "substr --> NO\n"
            "approx --> NO\n"
            "names--> \n");
}

TEST(QORAttributeTest, FieldsAreReadWithoutACopy) {
  const auto full = parsed<QORAttribute>(kFull);
  EXPECT_EQ(full.oid(), "1.2");
  EXPECT_EQ(full.columnNames(), (std::vector<std::string>{"A", "b c"}));
  EXPECT_EQ(full.accessClass(), "critical");
  EXPECT_EQ(full.length(), "32");
  EXPECT_TRUE(full.hasEquality());
  EXPECT_TRUE(full.hasOrdering());
  EXPECT_TRUE(full.hasSubstr());
  EXPECT_TRUE(full.hasApprox());

  const QORAttribute empty;
  EXPECT_EQ(empty.length(), "0");
  EXPECT_FALSE(empty.hasEquality());
  EXPECT_FALSE(empty.hasOrdering());
  EXPECT_FALSE(empty.hasSubstr());
  EXPECT_FALSE(empty.hasApprox());
}

TEST(QORAttributeTest, TheAttributeTypeInItKeepsItsDefaults) {
  Attribute attribute(parsed<QORAttribute>(kFull));
  EXPECT_EQ(written(attribute),
            "attributetypes=( 1.2 NAME (  ) USAGE userApplications  )\n");
}

TEST(QORAttributeTest, WritesEachPiece) {
  const struct {
    std::string body, line;
  } kTable[] = {
      {"1.2", "QORAttributetypes=( 1.2 )\n"},
      {"DBNAME ( 'A' )", "QORAttributetypes=(  DBNAME ( 'A'  ) )\n"},
      {"1.2 DBNAME ( 'A' 'b' 'c' )",
       "QORAttributetypes=( 1.2 DBNAME ( 'A' 'b' 'c'  ) )\n"},
      {"1.2 DBNAME ()", "QORAttributetypes=( 1.2 )\n"},
      {"ACCESS-CLASS normal", "QORAttributetypes=(  ACCESS-CLASS normal )\n"},
      {"LENGTH 0", "QORAttributetypes=(  )\n"},
      {"LENGTH 256", "QORAttributetypes=(  LENGTH 256 )\n"},
      {"EQUALITY", "QORAttributetypes=(  EQUALITY )\n"},
      {"ORDERING", "QORAttributetypes=(  ORDERING )\n"},
      {"SUBSTR", "QORAttributetypes=(  SUBSTR )\n"},
      {"APPROX", "QORAttributetypes=(  APPROX )\n"},
      {"APPROX SUBSTR ORDERING EQUALITY",
       "QORAttributetypes=(  EQUALITY ORDERING SUBSTR APPROX )\n"},
      {"REVERSE", "QORAttributetypes=(  )\n"},
      {"2.5.4.3 DBNAME ( 'CN' 'CN' ) ACCESS-CLASS normal LENGTH 256 EQUALITY "
       "ORDERING SUBSTR APPROX",
       "QORAttributetypes=( 2.5.4.3 DBNAME ( 'CN' 'CN'  ) "
       "ACCESS-CLASS normal LENGTH 256 EQUALITY ORDERING SUBSTR APPROX )\n"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.body);
    auto attribute =
        parsed<QORAttribute>("QORAttributetypes=( " + row.body + " )");
    EXPECT_EQ(written(attribute), row.line);
  }
}

TEST(QORAttributeTest, WritesNoFieldOfAnAttributeType) {
  auto attribute = withAttributeFields(
      kFull,
      "attributetypes=( 1.3 NAME 'a' DESC 'd' OBSOLETE SUP 1.4 EQUALITY 1.5 "
      "SYNTAX 1.6 SINGLE-VALUE )");
  EXPECT_EQ(written(attribute),
            "QORAttributetypes=( 1.3 DBNAME ( 'A' 'b c'  ) "
            "ACCESS-CLASS critical LENGTH 32 EQUALITY ORDERING SUBSTR APPROX "
            ")\n");
}

TEST(QORAttributeTest, ALineIsAppended) {
  const TemporaryDirectory directory;
  std::ofstream out(directory.path() / "lines");
  out << "# storage\n";
  auto attribute = parsed<QORAttribute>("QORAttributetypes=( 1.2 )");
  attribute.dump(out);
  attribute.dump(out);
  EXPECT_EQ(directory.read("lines"),
            "# storage\n"
            "QORAttributetypes=( 1.2 )\n"
            "QORAttributetypes=( 1.2 )\n");
}

TEST(QORAttributeTest, PrintsTheStorageFields) {
  auto attribute = withAttributeFields(
      kFull, "attributetypes=( 1.2 NAME 'a' DESC 'd' EQUALITY 1.5 )");
  EXPECT_EQ(printed(attribute),
            "oid --> 1.2\n"
            "accessClass --> critical\n"
            "length --> 32\n"
            "equality --> YES\n"
            "ordering --> YES\n"
            "substr --> YES\n"
            "approx --> YES\n"
            "names--> A b c \n");
}

TEST(QORAttributeTest, PrintsEachFlag) {
  for (const std::string flag : {"EQUALITY", "ORDERING", "SUBSTR", "APPROX"}) {
    SCOPED_TRACE(flag);
    auto attribute =
        parsed<QORAttribute>("QORAttributetypes=( 1.2 " + flag + " )");
    const auto yesFor = [&flag](const char *printedFlag) {
      return flag == printedFlag ? "YES" : "NO";
    };
    EXPECT_EQ(printed(attribute), std::string("oid --> 1.2\n"
                                              "accessClass --> \n"
                                              "length --> 0\n"
                                              "equality --> ") +
                                      yesFor("EQUALITY") + "\nordering --> " +
                                      yesFor("ORDERING") + "\nsubstr --> " +
                                      yesFor("SUBSTR") + "\napprox --> " +
                                      yesFor("APPROX") + "\nnames--> \n");
  }
}

TEST(QORAttributeTest, EachPrintedLineIsFlushed) {
  auto attribute =
      parsed<QORAttribute>("QORAttributetypes=( 1.2 DBNAME ( 'A' ) )");
  EXPECT_EQ(printed(attribute, "<flush>"),
            "oid --> 1.2\n<flush>"
            "accessClass --> \n<flush>"
            "length --> 0\n<flush>"
            "equality --> NO\n<flush>"
            "ordering --> NO\n<flush>"
            "substr --> NO\n<flush>"
            "approx --> NO\n<flush>"
            "names--> A \n<flush>");
}

TEST(QORAttributeTest, AWrittenLineReadsBack) {
  for (const char *text :
       {kFull, "QORAttributetypes=()", "QORAttributetypes=( 1.2 )",
        "QORAttributetypes=( 1.2 DBNAME ( 'A' ) )",
        "QORAttributetypes=( 1.2 ACCESS-CLASS normal )",
        "QORAttributetypes=( 1.2 LENGTH 256 REVERSE )",
        "QORAttributetypes=( 2.5.21.6 DBNAME ( 'objectClasses' ) APPROX )",
        "QORAttributetypes=( 1.2 DBNAME ( 'A' 'a' 'A' ) EQUALITY SUBSTR )"}) {
    SCOPED_TRACE(text);
    auto attribute = parsed<QORAttribute>(text);
    auto back = readBack(attribute);
    EXPECT_EQ(written(back), written(attribute));
    EXPECT_EQ(attribute.qorAttrsEqual(back), 1);
  }
}

TEST(QORAttributeTest, CopiesAreIndependent) {
  QORAttribute original = withAttributeFields(
      kFull, "attributetypes=( 1.2 NAME 'a' DESC 'd' SUP 1.3 )");
  const std::string line = written(original);
  QORAttribute copy(original);
  QORAttribute assigned;
  assigned = original;
  SchemaText<> other(
      "QORAttributetypes=( 2.2 DBNAME ( 'x' ) ACCESS-CLASS y LENGTH 9 )");
  original.parse(other.lexan());
  EXPECT_EQ(written(original),
            "QORAttributetypes=( 2.2 DBNAME ( 'A' 'b c' 'x'  ) ACCESS-CLASS y "
            "LENGTH 9 EQUALITY ORDERING SUBSTR APPROX )\n");
  for (QORAttribute *definition : {&copy, &assigned}) {
    EXPECT_EQ(written(*definition), line);
    EXPECT_EQ(definition->getFirstName(), "a");
    EXPECT_EQ(definition->getDescription(), "d");
    EXPECT_EQ(definition->getSuperior(), std::vector<std::string>{"1.3"});
  }
}

TEST(QORAttributeTest, ParseIsTraced) {
  expectParseRecords<QORAttribute>(
      "QORAttributetypes=( 1.2 DBNAME ( 'A' ) LENGTH 5 APPROX )",
      call("53020100", 1,
           {match('('), match(TOK_NUMBER), lexan(TOK_DBNAME), match('('),
            lexan(TOK_ID), lexan(')'), lexan(TOK_LENGTH), lexan(TOK_NUMBER),
            lexan(TOK_APPROX), lexan(')'), lexan(TOK_DONE)}));
  // No parenthesis, and a list that the next field ends.
  expectParseRecords<QORAttribute>(
      "QORAttributetypes= DBNAME $ A ACCESS-CLASS ( }",
      call("53020100", 1,
           {match(TOK_DBNAME), match(), match('$'), lexan(TOK_ID),
            lexan(TOK_ACCESS_CLASS), lexan('('), lexan('}')}));
}

TEST(QORAttributeTest, AFailedParseIsTraced) {
  expectParseRecords<QORAttribute>(
      "QORAttributetypes=( attributetypes",
      call("53020100", 0, {match('('), match(TOK_DONE)}));
  expectParseRecords<QORAttribute>(
      "QORAttributetypes=( 1.2 attributetypes=",
      call("53020100", 0,
           {match('('), match(TOK_NUMBER), lexan(TOK_ATTRIBUTETYPES)}));
}

TEST(QORAttributeTest, DumpsAndComparisonAreTraced) {
  const auto attribute = parsed<QORAttribute>(kFull);
  QORAttribute empty;
  expectCallRecords([&] { empty.qorAttrsEqual(attribute); },
                    call("53020200", 0));
  expectCallRecords([&] { empty.qorAttrsEqual(empty); }, call("53020200", 1));
  expectCallRecords([&] { written(empty); }, call("53020300", 0));
  expectCallRecords([&] { printed(empty); }, call("53020400", 0));
}

TEST(QORAttributeTest, AnExceptionWritesTheExitRecord) {
  expectExitsOnExceptions<QORAttribute>(
      "QORAttributetypes=( 1.2 DBNAME ( 'A' 'b' ) ACCESS-CLASS x LENGTH 5 "
      "EQUALITY ORDERING SUBSTR APPROX )",
      "53020100", 17);

  SchemaText<FailingLexan> file("QORAttributetypes=( 1.2 )");
  file.lexan()->failAfter(1);
  QORAttribute attribute;
  {
    const TraceRecorder trace(kTraceAll);
    EXPECT_THROW(attribute.parse(file.lexan()), std::runtime_error);
    EXPECT_EQ(trace.records(), call("53020100", 0, {match('('), match()}));
  }
  EXPECT_EQ(recordsOfFailingWrite(&attribute), call("53020300", 0));
  EXPECT_EQ(recordsOfFailingPrint(&attribute), call("53020400", 0));
}

TEST(QORAttributeTest, SmallOperationsAreNotTraced) {
  auto attribute = parsed<QORAttribute>(kFull);
  const TraceRecorder trace(~0U);
  EXPECT_EQ(attribute.convert("A"), "a");
  EXPECT_EQ(attribute.getOidAndName(), "OID --> 1.2\nName --> \n\n");
  EXPECT_EQ(attribute.getOid(), "1.2");
  EXPECT_EQ(attribute.getFirstNameLower(), "");
  const QORAttribute copy(attribute);
  EXPECT_EQ(trace.records(), Records());
}

TEST(QORAttributeTest, NamesOfTheAttributeTypeInItAreReported) {
  auto attribute = withAttributeFields(
      kFull, "attributetypes=( 1.3 NAME ( 'Cn' 'x' ) DESC 'd' SUP 1.4 )");
  EXPECT_EQ(attribute.getOid(), "1.3");
  EXPECT_EQ(attribute.getFirstName(), "Cn");
  EXPECT_EQ(attribute.getFirstNameLower(), "cn");
  EXPECT_EQ(attribute.getNames(), (std::vector<std::string>{"Cn", "x"}));
  EXPECT_EQ(attribute.getDescription(), "d");
  EXPECT_EQ(attribute.getOidAndName(), "OID --> 1.3\nName --> Cn, x\n\n");
}

}  // namespace
