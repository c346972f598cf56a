// Whatever a file holds: the reading ends, and its places are in order.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "StrictTesting.h"

using schemacheck::Clause;
using schemacheck::Definition;
using schemacheck::Fault;
using schemacheck::Reading;
using schemacheck::readStrictly;
using schemacheck::Section;
using schemacheck::SourceText;
using schemacheck::Span;
using schemacheck::Value;

namespace {

// Checks that spans which follow each other lie within another one.
class Nest {
 public:
  explicit Nest(Span outer) : m_end(outer.end), m_reached(outer.begin) {}

  Nest add(Span span) {
    m_sound = m_sound && m_reached <= span.begin && span.begin <= span.end &&
              span.end <= m_end;
    m_reached = span.end;
    return Nest(span);
  }

  bool sound() const { return m_sound; }

 private:
  std::size_t m_end;
  std::size_t m_reached;
  bool m_sound = true;
};

bool isSound(const Clause &clause) {
  Nest nest(clause.span);
  nest.add(clause.keywordSpan);
  for (const Value &value : clause.values) {
    nest.add(value.span);
  }
  return nest.sound() && clause.keywordSpan.begin == clause.span.begin &&
         (!clause.keyword.empty() || !clause.known);
}

bool isSound(const Definition &definition) {
  bool sound = true;
  Nest nest(definition.span);
  if (definition.oid) {
    nest.add(definition.oid->span);
  }
  for (const Clause &clause : definition.clauses) {
    nest.add(clause.span);
    sound = sound && isSound(clause);
  }
  return sound && nest.sound();
}

// Whether the fault lies within one definition or outside of all.
bool isPlaced(const Fault &fault, const Definition &definition) {
  const Span span = definition.span;
  return fault.at.end <= span.begin || fault.at.begin >= span.end ||
         (fault.at.begin >= span.begin && fault.at.end <= span.end);
}

bool isSound(const Reading &reading, std::size_t size) {
  bool sound = true;
  Nest nest({0, size});
  for (const Section &section : reading.sections) {
    nest.add(section.keyword);
    for (const Definition &definition : section.definitions) {
      nest.add(definition.span);
      sound = sound && isSound(definition) && definition.kind == section.kind;
      for (const Fault &fault : reading.faults) {
        sound = sound && isPlaced(fault, definition);
      }
    }
  }
  std::size_t reached = 0;
  for (const Fault &fault : reading.faults) {
    sound = sound && reached <= fault.at.begin &&
            fault.at.begin <= fault.at.end && fault.at.end <= size &&
            !fault.expected.empty() && !fault.found.empty();
    reached = fault.at.begin;
  }
  return sound && nest.sound();
}

void expectSound(const std::string &text) {
  const Reading reading = readStrictly(SourceText("file", text));
  EXPECT_TRUE(isSound(reading, text.size())) << schemacheck::readingOf(text);
}

constexpr char kFile[] =
    "# It's a comment\r\n"
    "attributetypes=( 1.2 NAME ( 'a' 'b' ) DESC 'It's' SUP c SYNTAX 1.3{64} "
    "SINGLE-VALUE X-O 'x' )\n"
    "objectclasses {\n"
    " ( 1.4 NAME 'd' SUP top STRUCTURAL MUST ( a $ b )\n"
    "   MAY c )\r\n"
    " ( 1.5 NAME 'e' 'f' MAY ( name $ desc ) ) }\n"
    "QORAttributetypes=( 1.2 DBNAME ( 'A' 'A' ) LENGTH 5 EQUALITY )\n";

constexpr char kBytes[] = "()$={}'\"#: \t\r\n.1aN-_,\\\x01\x80\xFF";

TEST(StrictDamageTest, TheFileItselfIsWithoutFault) {
  EXPECT_EQ(schemacheck::faultsOf(kFile), "");
  expectSound(kFile);
}

TEST(StrictDamageTest, EveryBeginningAndEnd) {
  const std::string file = kFile;
  for (std::size_t i = 0; i <= file.size(); ++i) {
    expectSound(file.substr(0, i));
    expectSound(file.substr(i));
  }
}

TEST(StrictDamageTest, EveryByteLeftOut) {
  const std::string file = kFile;
  for (std::size_t i = 0; i < file.size(); ++i) {
    expectSound(std::string(file).erase(i, 1));
  }
}

TEST(StrictDamageTest, EveryByteAnother) {
  const std::string file = kFile;
  for (std::size_t i = 0; i < file.size(); ++i) {
    for (const char byte : std::string(kBytes, sizeof(kBytes))) {
      std::string damaged = file;
      damaged[i] = byte;
      expectSound(damaged);
    }
  }
}

TEST(StrictDamageTest, EveryByteAdded) {
  const std::string file = kFile;
  for (std::size_t i = 0; i <= file.size(); ++i) {
    for (const char byte : std::string(kBytes, sizeof(kBytes))) {
      expectSound(std::string(file).insert(i, 1, byte));
    }
  }
}

// A byte that is left out in one definition leaves the others alone.
TEST(StrictDamageTest, TheNextDefinitionIsNotHarmed) {
  const std::string before =
      "( 1.2 NAME ( 'a' 'b' ) DESC 'c' SUP d MUST ( e $ f ) MAY g )";
  const std::string after = "( 1.3 NAME 'h' DESC 'i' MUST ( j $ k ) )";
  for (std::size_t i = 0; i < before.size(); ++i) {
    const std::string damaged = std::string(before).erase(i, 1);
    for (const std::string &text :
         {"objectclasses=" + damaged + "\nobjectclasses=" + after + "\n",
          "objectclasses {\n" + damaged + "\n" + after + "\n}\n"}) {
      const Reading reading = readStrictly(SourceText("file", text));
      ASSERT_FALSE(reading.sections.empty());
      ASSERT_FALSE(reading.sections.back().definitions.empty());
      const Definition &last = reading.sections.back().definitions.back();
      EXPECT_EQ(schemacheck::dumpOf(last, text),
                "  <" + after +
                    ">\n    oid #1.3\n    NAME 'h'\n    DESC 'i'\n"
                    "    MUST ( j k )<MUST ( j $ k )>\n")
          << text;
    }
  }
}

std::string repeated(const std::string &part, int times) {
  std::string text;
  for (int i = 0; i < times; ++i) {
    text += part;
  }
  return text;
}

TEST(StrictDamageTest, NestingNeedsNoStack) {
  for (const std::string beginning :
       {"", "attributetypes=", "objectclasses { ( 1.2 MUST "}) {
    for (const char *const part : {"(", "( a $ ", "( 1.2 NAME 'a' ", "{ 1 "}) {
      const std::string text = beginning + repeated(part, 50000);
      const Reading reading = readStrictly(SourceText("file", text));
      EXPECT_LE(reading.faults.size(), text.size());
    }
  }
}

TEST(StrictDamageTest, FilesOfOneThing) {
  for (const std::string beginning :
       {"", "'", "\"", "attributetypes=( 1.2 NAME 'a\n",
        "objectclasses { ( 1.2 MUST "}) {
    for (const char *const part : {"(",
                                   ")",
                                   "'",
                                   "x'y ",
                                   "x'y \n",
                                   "\"a\n",
                                   "( cn ",
                                   "\n",
                                   "\n(1.1\n",
                                   "\n(1.1 #\n",
                                   "#",
                                   "1.2{",
                                   "1 {  ",
                                   ":",
                                   "x:",
                                   "a'SYNTAX ",
                                   "{ 1 ",
                                   "attributetypes ",
                                   "attributetypes=",
                                   "\nobjectclasses {",
                                   "( 1.2 NAME 'x' "}) {
      expectSound(beginning + repeated(part, 100));
    }
  }
}

}  // namespace
