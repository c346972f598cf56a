// Files without fault: the examples, and what the library writes, in whatever
// layout.
#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>

#include "SchemaManager.h"
#include "StrictTesting.h"
#include "support/TemporaryDirectory.h"

using schemacheck::Clause;
using schemacheck::Definition;
using schemacheck::Reading;
using schemacheck::readStrictly;
using schemacheck::SchemaFile;
using schemacheck::Section;
using schemacheck::SourceText;
using schemacheck::Value;

namespace {

Reading read(const std::string &text) {
  return readStrictly(SourceText("file", text));
}

std::size_t countDefinitions(const Reading &reading) {
  std::size_t count = 0;
  for (const Section &section : reading.sections) {
    count += section.definitions.size();
  }
  return count;
}

struct Example {
  const char *directory;
  // The definitions of the nine files, in the order of kSchemaFiles.
  std::size_t counts[9];
};

void PrintTo(const Example &example, std::ostream *out) {
  *out << example.directory;
}

class StrictExamplesTest : public testing::TestWithParam<Example> {
 protected:
  static std::string directory() {
    return SCHEMA_EXAMPLES_DIR + std::string("/") + GetParam().directory;
  }
};

TEST_P(StrictExamplesTest, HaveNoFault) {
  for (std::size_t i = 0; i < schemacheck::kSchemaFiles.size(); ++i) {
    const char *const name = schemacheck::kSchemaFiles[i].name;
    const std::string text = readText(directory() + "/" + name);
    EXPECT_EQ(schemacheck::faultsOf(text), "") << name;
    EXPECT_EQ(countDefinitions(read(text)), GetParam().counts[i]) << name;
    for (const Section &section : read(text).sections) {
      for (const Definition &definition : section.definitions) {
        EXPECT_TRUE(definition.closed);
        EXPECT_TRUE(definition.oid.has_value());
        for (const Clause &clause : definition.clauses) {
          EXPECT_TRUE(clause.known) << clause.keyword;
        }
      }
    }
  }
}

TEST_P(StrictExamplesTest, HaveNoFaultWhenWrittenByTheLibrary) {
  const TemporaryDirectory target;
  SchemaManager schema(directory());
  for (const SchemaFile &file : schemacheck::kSchemaFiles) {
    ASSERT_EQ(schema.readFile(file.name), 0U) << file.name;
  }
  for (std::size_t i = 0; i < schemacheck::kSchemaFiles.size(); ++i) {
    const SchemaFile &file = schemacheck::kSchemaFiles[i];
    if (file.written) {
      ASSERT_EQ(schema.writeFile(target.string(), file.name), 0U) << file.name;
      EXPECT_EQ(schemacheck::faultsOf(target.read(file.name)), "") << file.name;
    }
  }
}

constexpr Example kExamples[] = {
    {"old-installation", {48, 7, 14, 8, 166, 23, 14, 2, 5}},
    {"new-release", {24, 2, 14, 8, 162, 22, 12, 2, 12}},
};

INSTANTIATE_TEST_SUITE_P(Examples, StrictExamplesTest,
                         testing::ValuesIn(kExamples));

// The library's own form of each clause of each kind, with its blanks.
struct Written {
  const char *keyword;
  const char *definitions[3];
};

constexpr Written kWritten[] = {
    {"attributetypes",
     {"( 1.2 NAME ( 'a' 'b'  )  DESC 'It(s) $ \"d\" # {' OBSOLETE SUP 1.3 "
      "EQUALITY 1.4 ORDERING 1.5 SUBSTR 1.6 SYNTAX 1.7{64} SINGLE-VALUE "
      "COLLECTIVE NO-USER-MODIFICATION USAGE dSAOperation  )",
      "( 1.2 NAME (  ) USAGE userApplications  )",
      "( a-oid NAME ( 'a'  ) SYNTAX b USAGE userApplications  )"}},
    {"objectclasses",
     {"( 1.2 NAME 'a' 'b'  DESC 'd' OBSOLETE SUP ( c $ d ) ABSTRACT MUST ( e "
      "$ f ) MAY ( g ) )",
      "( 1.2 NAME STRUCTURAL )", "( 1.2 NAME  DESC 'd' AUXILIARY )"}},
    {"QORAttributetypes",
     {"( 1.2 DBNAME ( 'A' 'A'  ) ACCESS-CLASS normal LENGTH 256 EQUALITY "
      "ORDERING SUBSTR APPROX )",
      "( 1.2 )", "( 1.2 LENGTH 5 )"}},
};

// What a reading says, wherever in the file it stands.
std::string contentOf(const Reading &reading) {
  std::string text;
  for (const Section &section : reading.sections) {
    for (const Definition &definition : section.definitions) {
      text += kindName(definition.kind) + std::string(" ") +
              std::string(definition.oid ? definition.oid->text : "-") + "\n";
      for (const Clause &clause : definition.clauses) {
        text += std::string(clause.keyword) + (clause.known ? "" : "?") +
                (clause.parenthesised ? " (" : "");
        for (const Value &value : clause.values) {
          text += " " + std::string(value.text);
        }
        text += "\n";
      }
    }
  }
  return text;
}

// `text` with `layout` in the place of each blank that separates tokens.
std::string respaced(const std::string &text, const std::string &layout) {
  std::string result;
  bool quoted = false;
  for (const char c : text) {
    quoted = quoted != (c == '\'');
    result += c == ' ' && !quoted ? layout : std::string(1, c);
  }
  return result;
}

constexpr const char *kLayouts[] = {
    " ", "\t", "\n", "\r\n", "  \t ", " # ' ( { } = $ \"\n", "#\r\n#'\n\r\n ",
};

TEST(StrictLayoutTest, LayoutMakesNoDifference) {
  for (const Written &written : kWritten) {
    std::string lines;
    std::string block;
    for (const char *const definition : written.definitions) {
      lines += written.keyword + std::string("=") + definition + "\n";
      block += definition + std::string(" ");
    }
    const std::string keyword = written.keyword;
    const std::string content = contentOf(read(lines));
    EXPECT_EQ(countDefinitions(read(lines)), 3U);
    for (const std::string layout : kLayouts) {
      for (const std::string &text :
           {lines, keyword + " { " + block + "}", keyword + "{" + block + " } ",
            keyword + " = " + written.definitions[0] + keyword + "=" +
                written.definitions[1] + keyword + "=" +
                written.definitions[2]}) {
        const std::string spaced = respaced(text, layout);
        EXPECT_EQ(contentOf(read(spaced)), content) << spaced;
        EXPECT_EQ(schemacheck::faultsOf(spaced), "") << spaced;
      }
    }
  }
}

TEST(StrictLayoutTest, KeywordsInAnotherOrderAreNoFault) {
  EXPECT_EQ(
      schemacheck::faultsOf("attributetypes=( 1.2 USAGE dSAOperation SYNTAX "
                            "1.3 SUP a DESC 'b' NAME 'c' )\n"),
      "");
}

}  // namespace
