#include "ObjectClass.h"

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
using definitions::Outcome;
using definitions::parse;
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
    "objectclasses=( 1.2 NAME ( 'a' 'b-1' ) DESC 'It is (a).' OBSOLETE "
    "SUP ( top $ alias ) AUXILIARY MUST ( sn $ cn ) MAY ( uid $ mail ) )";

TEST(ObjectClassTest, ANewDefinitionIsEmpty) {
  ObjectClass objectClass;
  EXPECT_EQ(objectClass.getOid(), "");
  EXPECT_EQ(objectClass.getDescription(), "");
  EXPECT_EQ(objectClass.getSuperior(), std::vector<std::string>());
  EXPECT_EQ(objectClass.getFirstName(), "");
  EXPECT_EQ(objectClass.getNames(), std::vector<std::string>());
  EXPECT_EQ(objectClass.getFirstNameLower(), "");
  EXPECT_EQ(objectClass.getReqAttrs(), std::vector<std::string>());
  EXPECT_EQ(objectClass.getOptAttrs(), std::vector<std::string>());
  EXPECT_EQ(written(objectClass), "objectclasses=(  NAME STRUCTURAL )\n");
  EXPECT_EQ(printed(objectClass),
            "\n\noid --> \n"
            "names --> \n"
            "description --> \n"
            "superior --> \n"
            "structural type --> STRUCTURAL\n"
            "Obsolete --> NO\n"
            "required Attrs --> \n"
            "optional Attrs --> \n"
            "\n\n");
}

TEST(ObjectClassTest, FieldsAreReadWithoutACopy) {
  using List = std::vector<std::string>;
  const auto full = parsed<ObjectClass>(kFull);
  EXPECT_EQ(full.oid(), "1.2");
  EXPECT_EQ(full.names(), (List{"a", "b-1"}));
  EXPECT_EQ(full.description(), "It is (a).");
  EXPECT_EQ(full.superiors(), (List{"top", "alias"}));
  EXPECT_TRUE(full.isObsolete());
  EXPECT_EQ(full.structuralType(), TOK_AUXILIARY);
  EXPECT_EQ(full.requiredAttributes(), (List{"sn", "cn"}));
  EXPECT_EQ(full.optionalAttributes(), (List{"uid", "mail"}));

  const ObjectClass empty;
  EXPECT_FALSE(empty.isObsolete());
  EXPECT_EQ(empty.structuralType(), TOK_STRUCTURAL);
}

TEST(ObjectClassTest, WritesEachPiece) {
  const struct {
    std::string body, line;
  } kTable[] = {
      {"1.2", "objectclasses=( 1.2 NAME STRUCTURAL )\n"},
      {"NAME 'a' SUP 1", "objectclasses=(  NAME 'a' STRUCTURAL )\n"},
      {"1.2 NAME ( 'a' 'B' 'c' ) SUP 1",
       "objectclasses=( 1.2 NAME 'a' 'B' 'c' STRUCTURAL )\n"},
      {"DESC 'It is'", "objectclasses=(  NAME  DESC 'It is' STRUCTURAL )\n"},
      {"OBSOLETE", "objectclasses=(  NAME OBSOLETE STRUCTURAL )\n"},
      {"SUP top", "objectclasses=(  NAME SUP ( top ) STRUCTURAL )\n"},
      {"SUP ( top $ alias $ x )",
       "objectclasses=(  NAME SUP ( top $ alias $ x ) STRUCTURAL )\n"},
      {"STRUCTURAL", "objectclasses=(  NAME STRUCTURAL )\n"},
      {"AUXILIARY", "objectclasses=(  NAME AUXILIARY )\n"},
      {"ABSTRACT", "objectclasses=(  NAME ABSTRACT )\n"},
      {"MUST ( cn )", "objectclasses=(  NAME STRUCTURAL MUST ( cn ) )\n"},
      {"MUST ( sn $ cn $ uid )",
       "objectclasses=(  NAME STRUCTURAL MUST ( sn $ cn $ uid ) )\n"},
      {"MAY ( cn )", "objectclasses=(  NAME STRUCTURAL MAY ( cn ) )\n"},
      {"MAY ( sn $ cn $ uid )",
       "objectclasses=(  NAME STRUCTURAL MAY ( sn $ cn $ uid ) )\n"},
      {"2.5.6.6 NAME 'person' DESC 'A person' SUP top STRUCTURAL "
       "MUST ( sn $ cn ) MAY ( description )",
       "objectclasses=( 2.5.6.6 NAME 'person'  DESC 'A person' SUP ( top ) "
       "STRUCTURAL MUST ( sn $ cn ) MAY ( description ) )\n"},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(row.body);
    auto objectClass =
        parsed<ObjectClass>("objectclasses=( " + row.body + " )");
    EXPECT_EQ(written(objectClass), row.line);
  }
}

TEST(ObjectClassTest, WritesAllPieces) {
  auto objectClass = parsed<ObjectClass>(kFull);
  EXPECT_EQ(written(objectClass),
            "objectclasses=( 1.2 NAME 'a' 'b-1'  DESC 'It is (a).' OBSOLETE "
            "SUP ( top $ alias ) AUXILIARY MUST ( sn $ cn ) "
            "MAY ( uid $ mail ) )\n");
}

TEST(ObjectClassTest, ALineIsAppended) {
  const TemporaryDirectory directory;
  std::ofstream out(directory.path() / "lines");
  out << "# classes\n";
  auto objectClass = parsed<ObjectClass>("objectclasses=( 1.2 )");
  objectClass.dump(out);
  objectClass.dump(out);
  EXPECT_EQ(directory.read("lines"),
            "# classes\n"
            "objectclasses=( 1.2 NAME STRUCTURAL )\n"
            "objectclasses=( 1.2 NAME STRUCTURAL )\n");
}

TEST(ObjectClassTest, PrintsEveryField) {
  auto objectClass = parsed<ObjectClass>(kFull);
  EXPECT_EQ(printed(objectClass),
            "\n\noid --> 1.2\n"
            "names --> a b-1 \n"
            "description --> It is (a).\n"
            "superior --> top alias \n"
            "structural type --> AUXILIARY\n"
            "Obsolete --> YES\n"
            "required Attrs --> sn cn \n"
            "optional Attrs --> uid mail \n"
            "\n\n");
}

TEST(ObjectClassTest, TheLastPrintedLinesAreNotFlushed) {
  auto objectClass = parsed<ObjectClass>("objectclasses=( 1.2 ABSTRACT )");
  EXPECT_EQ(printed(objectClass, "<flush>"),
            "\n\noid --> 1.2\n<flush>"
            "names --> \n<flush>"
            "description --> \n<flush>"
            "superior --> \n<flush>"
            "structural type --> ABSTRACT\n<flush>"
            "Obsolete --> NO\n<flush>"
            "required Attrs --> \n<flush>"
            "optional Attrs --> \n<flush>"
            "\n\n");
}

TEST(ObjectClassTest, AWrittenLineReadsBack) {
  for (const char *text :
       {kFull, "objectclasses=( 1.2 NAME 'a' DESC '$ (' )",
        "objectclasses=( 1.2 NAME 'a' ABSTRACT )",
        "objectclasses=( 1.2 NAME ( 'a' 'A' 'a' ) AUXILIARY MAY ( cn ) )",
        "objectclasses=( 1.2 NAME 'a' SUP top MUST ( objectClasses ) )",
        "objectclasses=( NAME 'a' OBSOLETE MAY ( uid $ attributeTypes ) )",
        "objectclasses=( 1.2 NAME 'a' SUP ( a $ top $ a ) MUST ( a $ a ) )"}) {
    SCOPED_TRACE(text);
    auto objectClass = parsed<ObjectClass>(text);
    auto back = readBack(objectClass);
    EXPECT_EQ(written(back), written(objectClass));
    EXPECT_EQ(objectClass.objsEqual(back), 1);
  }
}

// Kept on purpose: nothing stands for the names that are not there, so that
// the field behind NAME is taken for one.
TEST(ObjectClassTest, ALineWithoutNamesDoesNotReadBack) {
  auto objectClass = parsed<ObjectClass>("objectclasses=( 1.2 ABSTRACT )");
  const std::string line = written(objectClass);
  EXPECT_EQ(line, "objectclasses=( 1.2 NAME ABSTRACT )\n");
  EXPECT_EQ(
      parse<ObjectClass>(line + "objectclasses=( 1.3 NAME 'b' MAY cn }"),
      (Outcome{1, '}', TOK_DONE,
               "objectclasses=( 1.2 NAME 'b' STRUCTURAL MAY ( cn ) )\n"}));
  EXPECT_TRUE(parseNeverEnds<ObjectClass>(line));
}

TEST(ObjectClassTest, CopiesAreIndependent) {
  ObjectClass original = parsed<ObjectClass>(kFull);
  const std::string line = written(original);
  ObjectClass copy(original);
  ObjectClass assigned;
  assigned = original;
  SchemaText<> other(
      "objectclasses=( 2.2 NAME 'n' DESC 'e' SUP x ABSTRACT MUST ( y ) "
      "MAY ( z ) )");
  original.parse(other.lexan());
  EXPECT_EQ(written(original),
            "objectclasses=( 2.2 NAME 'a' 'b-1' 'n'  DESC 'e' OBSOLETE "
            "SUP ( top $ alias $ x ) ABSTRACT MUST ( sn $ cn $ y ) "
            "MAY ( uid $ mail $ z ) )\n");
  EXPECT_EQ(written(copy), line);
  EXPECT_EQ(written(assigned), line);
}

TEST(ObjectClassTest, ReturnedListsAreCopies) {
  auto objectClass = parsed<ObjectClass>(kFull);
  objectClass.getReqAttrs().push_back("x");
  objectClass.getOptAttrs().clear();
  EXPECT_EQ(objectClass.getReqAttrs(), (std::vector<std::string>{"sn", "cn"}));
  EXPECT_EQ(objectClass.getOptAttrs(),
            (std::vector<std::string>{"uid", "mail"}));
}

TEST(ObjectClassTest, ParseIsTraced) {
  expectParseRecords<ObjectClass>(
      "objectclasses=( 1.2 NAME 'a' SUP top MUST ( cn $ sn ) MAY uid )",
      call(
          "53030200", 0,
          {match('('), match(TOK_NUMBER), lexan(TOK_NAME), match(TOK_ID),
           lexan(TOK_SUP), lexan(TOK_ID), lexan(TOK_MUST), match('('),
           match(TOK_ID), lexan('$'), lexan(TOK_ID), lexan(')'), match(TOK_MAY),
           match(TOK_ID), match(), lexan(')'), match(TOK_DONE)}));
  // No parenthesis around the definition, one around the superiors.
  expectParseRecords<ObjectClass>(
      "objectclasses= DESC 1 SUP 1 SUP ( a ) OBSOLETE ABSTRACT )",
      call("53030200", 1,
           {match(TOK_DESC), match(), lexan(TOK_NUMBER), lexan(TOK_SUP),
            lexan(TOK_NUMBER), lexan(TOK_SUP), lexan('('), match(TOK_ID),
            lexan(')'), match(TOK_OBSOLETE), lexan(TOK_ABSTRACT), lexan(')'),
            lexan(TOK_DONE)}));
}

TEST(ObjectClassTest, AFailedParseIsTraced) {
  expectParseRecords<ObjectClass>(
      "objectclasses=( objectClasses",
      call("53030200", 0, {match('('), match(TOK_DONE)}));
  expectParseRecords<ObjectClass>(
      "objectclasses=( 1.2{ )",
      call("53030200", 0, {match('('), match(TOK_NUMBER_BAD)}));
}

TEST(ObjectClassTest, DumpsAndComparisonAreTraced) {
  const auto objectClass = parsed<ObjectClass>(kFull);
  ObjectClass empty;
  expectCallRecords([&] { empty.objsEqual(objectClass); }, call("53030100", 0));
  expectCallRecords([&] { empty.objsEqual(empty); }, call("53030100", 1));
  expectCallRecords([&] { written(empty); }, call("53030300", 0));
  expectCallRecords([&] { printed(empty); }, call("53030400", 0));
}

TEST(ObjectClassTest, AnExceptionWritesTheExitRecord) {
  expectExitsOnExceptions<ObjectClass>(
      "objectclasses=( 1.2 NAME 'a' DESC 'd' SUP top SUP ( x $ y ) OBSOLETE "
      "ABSTRACT MUST ( cn $ sn ) MAY ( uid ) )",
      "53030200", 28);

  SchemaText<FailingLexan> file("objectclasses=( 1.2 )");
  file.lexan()->failAfter(1);
  ObjectClass objectClass;
  {
    const TraceRecorder trace(kTraceAll);
    EXPECT_THROW(objectClass.parse(file.lexan()), std::runtime_error);
    EXPECT_EQ(trace.records(), call("53030200", 0, {match('('), match()}));
  }
  EXPECT_EQ(recordsOfFailingWrite(&objectClass), call("53030300", 0));
  EXPECT_EQ(recordsOfFailingPrint(&objectClass), call("53030400", 0));
}

TEST(ObjectClassTest, SmallOperationsAreNotTraced) {
  auto objectClass = parsed<ObjectClass>(kFull);
  const TraceRecorder trace(~0U);
  EXPECT_EQ(objectClass.convert("A"), "a");
  EXPECT_EQ(objectClass.getOidAndName(), "OID --> 1.2\nName --> a, b-1\n\n");
  EXPECT_EQ(objectClass.getOid(), "1.2");
  EXPECT_EQ(objectClass.getFirstNameLower(), "a");
  EXPECT_EQ(objectClass.getReqAttrs().size(), 2U);
  EXPECT_EQ(objectClass.getOptAttrs().size(), 2U);
  const ObjectClass copy(objectClass);
  EXPECT_EQ(trace.records(), Records());
}

}  // namespace
