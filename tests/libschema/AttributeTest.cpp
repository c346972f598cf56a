#include "Attribute.h"

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
using definitions::parseNeverEnds;
using definitions::printed;

using definitions::readBack;
using definitions::Records;
using definitions::recordsOfFailingPrint;
using definitions::recordsOfFailingWrite;
using definitions::SchemaText;
using definitions::written;

namespace {

const char kFull[] =
    "attributetypes=( 1.2 NAME ( 'a' 'b-1' ) DESC 'It is (a).' OBSOLETE "
    "SUP 1.3 EQUALITY 1.4 ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7{8} SINGLE-VALUE "
    "NO-USER-MODIFICATION USAGE dSAOperation )";

// parse() cannot give these values.
class SpecialAttribute : public Attribute {
 public:
  void setCollective() { m_collective = true; }
  void setSingleValue(int value) { m_singlevalue = value; }
  int singleValue() const { return m_singlevalue; }
};

TEST(AttributeTest, ANewDefinitionIsEmpty) {
  Attribute attribute;
  EXPECT_EQ(attribute.getOid(), "");
  EXPECT_EQ(attribute.getDescription(), "");
  EXPECT_EQ(attribute.getSuperior(), std::vector<std::string>());
  EXPECT_EQ(attribute.getFirstName(), "");
  EXPECT_EQ(attribute.getNames(), std::vector<std::string>());
  EXPECT_EQ(attribute.getFirstNameLower(), "");
  EXPECT_EQ(written(attribute),
            "attributetypes=(  NAME (  ) USAGE userApplications  )\n");
  EXPECT_EQ(printed(attribute),
            "oid --> \n"
            "names --> \n"
            "description --> \n"
            "equality --> \n"
            "syntax --> \n"
            "ordering --> \n"
            "substr --> \n"
            "superior --> \n"
            "usage --> userApplications\n");
}

TEST(AttributeTest, FieldsAreReadWithoutACopy) {
  const auto full = parsed<Attribute>(kFull);
  EXPECT_EQ(full.oid(), "1.2");
  EXPECT_EQ(full.names(), (std::vector<std::string>{"a", "b-1"}));
  EXPECT_EQ(full.description(), "It is (a).");
  EXPECT_EQ(full.superiors(), std::vector<std::string>{"1.3"});
  EXPECT_TRUE(full.isObsolete());
  EXPECT_EQ(full.equality(), "1.4");
  EXPECT_EQ(full.ordering(), "1.5");
  EXPECT_EQ(full.substr(), "1.6");
  EXPECT_EQ(full.syntax(), "1.7{8}");
  EXPECT_EQ(full.usage(), "dSAOperation");
  EXPECT_TRUE(full.isSingleValue());
  EXPECT_FALSE(full.isCollective());
  EXPECT_FALSE(full.isUserModifiable());

  SpecialAttribute collective;
  EXPECT_EQ(collective.singleValue(), 1);
  EXPECT_FALSE(collective.isObsolete());
  EXPECT_FALSE(collective.isSingleValue());
  EXPECT_FALSE(collective.isCollective());
  EXPECT_TRUE(collective.isUserModifiable());
  collective.setCollective();
  EXPECT_TRUE(collective.isCollective());
}

TEST(AttributeTest, WritesEachPiece) {
  const struct {
    std::string body, line;
  } kTable[] = {
      {"1.2", "attributetypes=( 1.2 NAME (  ) USAGE userApplications  )\n"},
      {"NAME 'a' SUP x",
       "attributetypes=(  NAME ( 'a'  ) USAGE userApplications  )\n"},
      {"1.2 NAME ( 'a' 'B' 'c' ) SUP x",
       "attributetypes=( 1.2 NAME ( 'a' 'B' 'c'  ) USAGE userApplications  "
       ")\n"},
      {"DESC 'It is'",
       "attributetypes=(  NAME (  )  DESC 'It is' "
       "USAGE userApplications  )\n"},
      {"OBSOLETE",
       "attributetypes=(  NAME (  ) OBSOLETE USAGE userApplications  )\n"},
      {"SUP 1.3",
       "attributetypes=(  NAME (  ) SUP 1.3 USAGE userApplications  )\n"},
      {"SUP 1.3 SUP 1.4 SUP 1.5",
       "attributetypes=(  NAME (  ) SUP 1.3 1.4 1.5 "
       "USAGE userApplications  )\n"},
      {"EQUALITY 1.3",
       "attributetypes=(  NAME (  ) EQUALITY 1.3 USAGE userApplications  )\n"},
      {"ORDERING 1.3",
       "attributetypes=(  NAME (  ) ORDERING 1.3 USAGE userApplications  )\n"},
      {"SUBSTR 1.3",
       "attributetypes=(  NAME (  ) SUBSTR 1.3 USAGE userApplications  )\n"},
      {"SYNTAX 1.3{4}",
       "attributetypes=(  NAME (  ) SYNTAX 1.3{4} "
       "USAGE userApplications  )\n"},
      {"SINGLE-VALUE",
       "attributetypes=(  NAME (  ) SINGLE-VALUE USAGE userApplications  )\n"},
      {"NO-USER-MODIFICATION",
       "attributetypes=(  NAME (  ) "
       "NO-USER-MODIFICATION USAGE userApplications  "
       ")\n"},
      {"USAGE directoryOperation",
       "attributetypes=(  NAME (  ) USAGE directoryOperation  )\n"},
      {"USAGE ''", "attributetypes=(  NAME (  )  )\n"},
      {"1.2.3 NAME 'cn' DESC 'Common name' "
       "SYNTAX 1.3.6.1.4.1.1466.115.121.1.15{32} SINGLE-VALUE",
       "attributetypes=( 1.2.3 NAME ( 'cn'  )  DESC 'Common name' "
       "SYNTAX 1.3.6.1.4.1.1466.115.121.1.15{32} SINGLE-VALUE "
       "USAGE userApplications  )\n"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.body);
    auto attribute = parsed<Attribute>("attributetypes=( " + row.body + " )");
    EXPECT_EQ(written(attribute), row.line);
  }
}

TEST(AttributeTest, WritesAllPieces) {
  auto attribute = parsed<Attribute>(kFull);
  EXPECT_EQ(written(attribute),
            "attributetypes=( 1.2 NAME ( 'a' 'b-1'  )  DESC 'It is (a).' "
            "OBSOLETE SUP 1.3 EQUALITY 1.4 ORDERING 1.5 SUBSTR 1.6 "
            "SYNTAX 1.7{8} SINGLE-VALUE NO-USER-MODIFICATION "
            "USAGE dSAOperation  )\n");
}

TEST(AttributeTest, WritesCollectiveBetweenTheOtherFlags) {
  SpecialAttribute attribute;
  SchemaText<> file(kFull);
  ASSERT_EQ(attribute.parse(file.lexan()), 1);
  attribute.setCollective();
  EXPECT_EQ(written(attribute),
            "attributetypes=( 1.2 NAME ( 'a' 'b-1'  )  DESC 'It is (a).' "
            "OBSOLETE SUP 1.3 EQUALITY 1.4 ORDERING 1.5 SUBSTR 1.6 "
            "SYNTAX 1.7{8} SINGLE-VALUE COLLECTIVE NO-USER-MODIFICATION "
            "USAGE dSAOperation  )\n");
}

TEST(AttributeTest, OnlyTheKeywordsCodeIsWrittenAsSingleValue) {
  for (const int value : {0, 1, 2, 1012, 1014, -1}) {
    SCOPED_TRACE(value);
    SpecialAttribute attribute;
    attribute.setSingleValue(value);
    EXPECT_EQ(written(attribute),
              "attributetypes=(  NAME (  ) USAGE userApplications  )\n");
  }
  SpecialAttribute attribute;
  attribute.setSingleValue(1013);
  EXPECT_EQ(
      written(attribute),
      "attributetypes=(  NAME (  ) SINGLE-VALUE USAGE userApplications  )\n");
}

TEST(AttributeTest, ALineIsAppended) {
  const TemporaryDirectory directory;
  std::ofstream out(directory.path() / "lines");
  out << "# attributes\n";
  auto attribute = parsed<Attribute>("attributetypes=( 1.2 )");
  attribute.dump(out);
  attribute.dump(out);
  EXPECT_EQ(directory.read("lines"),
            "# attributes\n"
            "attributetypes=( 1.2 NAME (  ) USAGE userApplications  )\n"
            "attributetypes=( 1.2 NAME (  ) USAGE userApplications  )\n");
}

TEST(AttributeTest, PrintsEverythingButTheFlags) {
  auto attribute = parsed<Attribute>(kFull);
  EXPECT_EQ(printed(attribute),
            "oid --> 1.2\n"
            "names --> a b-1 \n"
            "description --> It is (a).\n"
            "equality --> 1.4\n"
            "syntax --> 1.7{8}\n"
            "ordering --> 1.5\n"
            "substr --> 1.6\n"
            "superior --> 1.3 \n"
            "usage --> dSAOperation\n");
}

TEST(AttributeTest, EachPrintedLineIsFlushed) {
  auto attribute = parsed<Attribute>(
      "attributetypes=( 1.2 NAME 'a' SUP 1.3 SUP 1.4 USAGE '' )");
  EXPECT_EQ(printed(attribute, "<flush>"),
            "oid --> 1.2\n<flush>"
            "names --> a \n<flush>"
            "description --> \n<flush>"
            "equality --> \n<flush>"
            "syntax --> \n<flush>"
            "ordering --> \n<flush>"
            "substr --> \n<flush>"
            "superior --> 1.3 1.4 \n<flush>"
            "usage --> \n<flush>");
}

TEST(AttributeTest, AWrittenLineReadsBack) {
  for (const char *text :
       {kFull, "attributetypes=()", "attributetypes=( 1.2 )",
        "attributetypes=( 1.2 NAME 'a' SUP 1.3 )",
        "attributetypes=( 1.2 DESC 'd' )",
        "attributetypes=( 1.2 SYNTAX DirectoryString SINGLE-VALUE )",
        "attributetypes=( 2.5.21.6 NAME 'objectClasses' SYNTAX 1.3 )",
        "attributetypes=( 1.2 NAME ( 'a' 'A' 'a' ) SUP 1.2 )",
        "attributetypes=( 1.2 NO-USER-MODIFICATION EQUALITY 1.4 )"}) {
    SCOPED_TRACE(text);
    auto attribute = parsed<Attribute>(text);
    auto back = readBack(attribute);
    EXPECT_EQ(written(back), written(attribute));
    EXPECT_EQ(attribute.attrsEqual(back), 1);
  }
}

// Kept on purpose, as the next.
TEST(AttributeTest, OfSeveralSuperiorsTheFirstReadsBack) {
  auto attribute = parsed<Attribute>(
      "attributetypes=( 1.2 NAME 'a' SUP 1.3 SUP 1.4 SUP 1.5 )");
  auto back = readBack(attribute);
  EXPECT_EQ(written(back),
            "attributetypes=( 1.5 NAME ( 'a'  ) SUP 1.3 "
            "USAGE userApplications  )\n");
}

TEST(AttributeTest, ACollectiveLineDoesNotReadBack) {
  SpecialAttribute attribute;
  attribute.setCollective();
  const std::string line = written(attribute);
  EXPECT_EQ(line,
            "attributetypes=(  NAME (  ) COLLECTIVE USAGE userApplications  "
            ")\n");
  EXPECT_TRUE(parseNeverEnds<Attribute>(line));
}

TEST(AttributeTest, CopiesAreIndependent) {
  Attribute original = parsed<Attribute>(kFull);
  const std::string line = written(original);
  Attribute copy(original);
  Attribute assigned;
  assigned = original;
  SchemaText<> other(
      "attributetypes=( 2.2 NAME 'n' DESC 'e' SUP 2.3 EQUALITY 2.4 "
      "ORDERING 2.5 SUBSTR 2.6 SYNTAX 2.7 USAGE x )");
  original.parse(other.lexan());
  EXPECT_EQ(written(original),
            "attributetypes=( 2.2 NAME ( 'a' 'b-1' 'n'  )  DESC 'e' OBSOLETE "
            "SUP 1.3 2.3 EQUALITY 2.4 ORDERING 2.5 SUBSTR 2.6 SYNTAX 2.7 "
            "SINGLE-VALUE NO-USER-MODIFICATION USAGE x  )\n");
  EXPECT_EQ(written(copy), line);
  EXPECT_EQ(written(assigned), line);

  SpecialAttribute collective;
  collective.setCollective();
  Attribute collectiveCopy(collective);
  EXPECT_EQ(written(collectiveCopy), written(collective));
}

TEST(AttributeTest, ParseIsTraced) {
  expectParseRecords<Attribute>(
      "attributetypes=( 1.2 NAME 'a' SYNTAX 1.3 )",
      call(
          "53010200", 1,
          {match('('), match(TOK_NUMBER), lexan(TOK_NAME), match(TOK_ID),
           lexan(TOK_SYNTAX), lexan(TOK_NUMBER), lexan(')'), lexan(TOK_DONE)}));
  // No parenthesis, and each value of a wrong kind.
  expectParseRecords<Attribute>(
      "attributetypes= DESC 1 SUP a EQUALITY a ORDERING a SUBSTR a SYNTAX $ "
      "USAGE 1 OBSOLETE }",
      call("53010200", 1,
           {match(TOK_DESC), match(), lexan(TOK_NUMBER), lexan(TOK_SUP),
            lexan(TOK_ID), lexan(TOK_EQUALITY), lexan(TOK_ID),
            lexan(TOK_ORDERING), lexan(TOK_ID), lexan(TOK_SUBSTR),
            lexan(TOK_ID), lexan(TOK_SYNTAX), lexan('$'), lexan(TOK_USAGE),
            lexan(TOK_NUMBER), lexan(TOK_OBSOLETE), lexan('}')}));
}

TEST(AttributeTest, AFailedParseIsTraced) {
  expectParseRecords<Attribute>(
      "attributetypes=( objectclasses",
      call("53010200", 0, {match('('), match(TOK_DONE)}));
  expectParseRecords<Attribute>(
      "attributetypes=( 1.2 QORAttributetypes=",
      call("53010200", 0,
           {match('('), match(TOK_NUMBER), lexan(TOK_QORATTRIBUTETYPES)}));
}

TEST(AttributeTest, DumpsAndComparisonAreTraced) {
  const auto attribute = parsed<Attribute>(kFull);
  Attribute empty;
  expectCallRecords([&] { empty.attrsEqual(attribute); }, call("53010100", 0));
  expectCallRecords([&] { empty.attrsEqual(empty); }, call("53010100", 1));
  expectCallRecords([&] { written(empty); }, call("53010300", 0));
  expectCallRecords([&] { printed(empty); }, call("53010400", 0));
}

TEST(AttributeTest, AnExceptionWritesTheExitRecord) {
  expectExitsOnExceptions<Attribute>(
      "attributetypes=( 1.2 NAME 'a' DESC 'd' SUP 1.3 EQUALITY 1.4 "
      "ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7 USAGE x SINGLE-VALUE OBSOLETE "
      "NO-USER-MODIFICATION )",
      "53010200", 23);

  SchemaText<FailingLexan> file("attributetypes=( 1.2 )");
  file.lexan()->failAfter(1);
  Attribute attribute;
  {
    const TraceRecorder trace(kTraceAll);
    EXPECT_THROW(attribute.parse(file.lexan()), std::runtime_error);
    EXPECT_EQ(trace.records(), call("53010200", 0, {match('('), match()}));
  }
  EXPECT_EQ(recordsOfFailingWrite(&attribute), call("53010300", 0));
  EXPECT_EQ(recordsOfFailingPrint(&attribute), call("53010400", 0));
}

TEST(AttributeTest, SmallOperationsAreNotTraced) {
  auto attribute = parsed<Attribute>(kFull);
  const TraceRecorder trace(~0U);
  EXPECT_EQ(attribute.convert("A"), "a");
  EXPECT_EQ(attribute.getOidAndName(), "OID --> 1.2\nName --> a, b-1\n\n");
  EXPECT_EQ(attribute.getOid(), "1.2");
  EXPECT_EQ(attribute.getFirstNameLower(), "a");
  const Attribute copy(attribute);
  EXPECT_EQ(trace.records(), Records());
}

}  // namespace
