// What the tests of the classes of definitions share.
#ifndef TESTS_LIBSCHEMA_DEFINITIONTESTING_H_
#define TESTS_LIBSCHEMA_DEFINITIONTESTING_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iostream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "QORSchema.h"
#include "SchemaLexan.h"
#include "support/Child.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace definitions {

// Every bit of trcEvents that the library looks at.
constexpr unsigned int kTraceAll =
    kTraceEntry | kTraceExit | kTraceWalkEntry | kTraceWalkExit | kTraceDebug;

// A schema file, and an analyser that stands where readFile() has it when it
// calls parse(): on the token behind the section keyword.
template <class Lexan = SchemaLexan>
class SchemaText {
 public:
  explicit SchemaText(const std::string &text)
      : m_path(m_directory.write("V3.user.at", text)),
        m_lexan(m_directory.string(), "V3.user.at") {
    m_lexan.lexan();
    m_lexan.lexan();
  }

  Lexan *lexan() { return &m_lexan; }

 private:
  TemporaryDirectory m_directory;
  std::string m_path;
  Lexan m_lexan;
};

// What dump() writes to a file that is empty before. The file is read before
// the stream is closed: what is there was flushed.
inline std::string written(QORSchema &definition) {
  const TemporaryDirectory directory;
  std::ofstream out(directory.path() / "lines");
  definition.dump(out);
  return directory.read("lines");
}

// While it exists, what is printed to standard output is kept here instead,
// with `flushMark` in each place where the stream was flushed.
class PrintedText : public std::stringbuf {
 public:
  explicit PrintedText(std::string flushMark = "")
      : m_flushMark(std::move(flushMark)), m_output(std::cout.rdbuf(this)) {}
  ~PrintedText() override { std::cout.rdbuf(m_output); }

  PrintedText(const PrintedText &) = delete;
  PrintedText &operator=(const PrintedText &) = delete;

 protected:
  int sync() override {
    sputn(m_flushMark.data(), static_cast<std::streamsize>(m_flushMark.size()));
    return 0;
  }

 private:
  std::string m_flushMark;
  std::streambuf *m_output;
};

// What dump() prints to standard output.
inline std::string printed(QORSchema &definition,
                           const std::string &flushMark = "") {
  const PrintedText text(flushMark);
  definition.dump();
  return text.str();
}

// What comes of a call of parse().
struct Outcome {
  int result;
  int current;       // the token that the analyser stands on afterwards
  int next;          // the one that it reads next
  std::string line;  // what the object writes afterwards
};

inline bool operator==(const Outcome &a, const Outcome &b) {
  return a.result == b.result && a.current == b.current && a.next == b.next &&
         a.line == b.line;
}

inline std::ostream &operator<<(std::ostream &out, const Outcome &outcome) {
  return out << outcome.result << ", on token " << outcome.current
             << ", before token " << outcome.next << ", " << outcome.line;
}

// Parses the definition that `text` begins with, once with tracing off and once
// with it on, which must make no difference.
template <class Definition>
Outcome parse(const std::string &text) {
  Outcome outcomes[2];
  for (const bool traced : {false, true}) {
    SchemaText<> file(text);
    const TraceRecorder trace(traced ? kTraceAll : 0);
    Definition definition;
    const int result = definition.parse(file.lexan());
    const int current = file.lexan()->getCurrentToken();
    const int next = file.lexan()->lexan();
    outcomes[traced] = {result, current, next, written(definition)};
  }
  EXPECT_EQ(outcomes[0], outcomes[1]) << "tracing makes a difference";
  return outcomes[0];
}

// For a text that ends in a character which is a token of its own: parses it
// with and without a newline at its end, which must make no difference.
template <class Definition>
Outcome parseWhole(const std::string &text) {
  const Outcome outcome = parse<Definition>(text);
  EXPECT_EQ(outcome, parse<Definition>(text + "\n"))
      << "the final newline makes a difference";
  return outcome;
}

// Parses the definitions of a block, one by one, until the analyser stands on
// the closing brace or a definition fails. Returns what each of them writes,
// and a line with the last result and the token on which the analyser stands.
template <class Definition>
std::string parseBlock(const std::string &text) {
  SchemaText<> file(text);
  std::ostringstream lines;
  int result = 0;
  do {
    Definition definition;
    result = definition.parse(file.lexan());
    lines << written(definition);
  } while (result != 0 && file.lexan()->getCurrentToken() != '}');
  lines << result << ", on token " << file.lexan()->getCurrentToken() << '\n';
  return lines.str();
}

// The definition that `text` holds. Anything but success fails the test.
template <class Definition>
Definition parsed(const std::string &text) {
  SchemaText<> file(text);
  Definition definition;
  EXPECT_EQ(definition.parse(file.lexan()), 1) << text;
  return definition;
}

// Whether the parsing of the definition that `text` begins with does not end.
template <class Definition>
bool parseNeverEnds(const std::string &text) {
  return neverEnds([&text] {
    SchemaText<> file(text);
    Definition definition;
    definition.parse(file.lexan());
  });
}

// What `definition` reads back from the line that it writes.
template <class Definition>
Definition readBack(Definition &definition) {
  return parsed<Definition>(written(definition));
}

// The comparison of each class.
inline int compare(Attribute &a, const Attribute &b) { return a.attrsEqual(b); }
inline int compare(ObjectClass &a, const ObjectClass &b) {
  return a.objsEqual(b);
}
inline int compare(QORAttribute &a, const QORAttribute &b) {
  return a.qorAttrsEqual(b);
}

// Expects that the definitions differ, whichever is compared with the other,
// and that each equals itself and another reading of its text.
template <class Definition>
void expectDifferent(const std::string &a, const std::string &b) {
  auto first = parsed<Definition>(a);
  auto second = parsed<Definition>(b);
  EXPECT_EQ(compare(first, second), 0);
  EXPECT_EQ(compare(second, first), 0);
  for (const std::string &text : {a, b}) {
    auto definition = parsed<Definition>(text);
    EXPECT_EQ(compare(definition, definition), 1);
    EXPECT_EQ(compare(definition, parsed<Definition>(text)), 1);
  }
}

// Expects that the definitions are equal, whichever is compared with the other.
template <class Definition>
void expectEqual(const std::string &a, const std::string &b) {
  auto first = parsed<Definition>(a);
  auto second = parsed<Definition>(b);
  EXPECT_EQ(compare(first, second), 1);
  EXPECT_EQ(compare(second, first), 1);
}

// All keywords.
inline const std::vector<std::string> &keywords() {
  static const std::vector<std::string> all = {
      "objectclasses", "NAME",         "DESC",
      "SUP",           "AUXILIARY",    "MUST",
      "MAY",           "STRUCTURAL",   "attributetypes",
      "EQUALITY",      "SYNTAX",       "SINGLE-VALUE",
      "USAGE",         "DBNAME",       "NO-USER-MODIFICATION",
      "SUBSTR",        "ACCESS-CLASS", "QORAttributetypes",
      "REVERSE",       "ORDERING",     "COLLECTIVE",
      "OBSOLETE",      "ABSTRACT",     "LENGTH",
      "APPROX"};
  return all;
}

// `all` without `others`.
inline std::vector<std::string> without(
    std::vector<std::string> all, const std::vector<std::string> &others) {
  for (const std::string &other : others) {
    all.erase(std::remove(all.begin(), all.end(), other), all.end());
  }
  return all;
}

// `pattern` with `text` in the place of each "%".
inline std::string filled(const std::string &pattern, const std::string &text) {
  std::string result;
  for (const char c : pattern) {
    if (c == '%') {
      result += text;
    } else {
      result += c;
    }
  }
  return result;
}

// Trace records, as TraceRecorder gives them. A call's records hold those of
// the calls that it makes.
using Records = std::vector<std::string>;

inline Records call(const std::string &id, int code,
                    const std::vector<Records> &calls = {}) {
  Records records = {"entry " + id + " kind 3200000"};
  for (const Records &inner : calls) {
    records.insert(records.end(), inner.begin(), inner.end());
  }
  records.push_back("exit " + id + " kind 21 event 1000 code " +
                    std::to_string(code));
  return records;
}

// A call of SchemaLexan::lexan() that gives `token`.
inline Records lexan(int token) { return call("53040200", token); }

// A call of SchemaLexan::match() that reads `token`, or does nothing.
inline Records match(int token) { return call("53040300", 0, {lexan(token)}); }
inline Records match() { return call("53040300", 0); }

// Expects that `run`, which is given the trace mask and returns the records,
// writes `all` where entries and exits are asked for, the exits among them
// where exits alone are, and nothing for any other bit.
template <class Run>
void expectRecords(const Run &run, const Records &all) {
  Records exits;
  for (const std::string &record : all) {
    if (record.rfind("exit ", 0) == 0) {
      exits.push_back(record);
    }
  }
  EXPECT_EQ(run(kTraceEntry), all);
  EXPECT_EQ(run(kTraceEntry | kTraceExit), all);
  EXPECT_EQ(run(~0U), all);
  EXPECT_EQ(run(kTraceExit), exits);
  EXPECT_EQ(run(0), Records());
  EXPECT_EQ(run(kTraceWalkEntry), Records());
  EXPECT_EQ(run(kTraceWalkExit), Records());
  EXPECT_EQ(run(kTraceDebug), Records());
  EXPECT_EQ(run(~(kTraceEntry | kTraceExit)), Records());
}

// The records of a function that is called with the mask.
template <class Function>
void expectCallRecords(const Function &function, const Records &all) {
  expectRecords(
      [&function](unsigned int mask) {
        const TraceRecorder trace(mask);
        function();
        return trace.records();
      },
      all);
}

// The records of the parsing of the first definition in `text`.
template <class Definition>
void expectParseRecords(const std::string &text, const Records &all) {
  expectRecords(
      [&text](unsigned int mask) {
        SchemaText<> file(text);
        Definition definition;
        const TraceRecorder trace(mask);
        definition.parse(file.lexan());
        return trace.records();
      },
      all);
}

// An analyser that fails.
class FailingLexan : public SchemaLexan {
 public:
  using SchemaLexan::SchemaLexan;

  // Lets the call of lexan() that follows `calls` further ones throw.
  void failAfter(int calls) { m_left = calls; }

  int lexan() override {
    if (m_left == 0) {
      throw std::runtime_error("no token");
    }
    --m_left;
    return SchemaLexan::lexan();
  }

 private:
  int m_left = -1;
};

// Lets each of the `calls` calls of lexan() that a parsing makes throw in turn,
// and expects that every operation writes its exit record all the same, the
// parsing with the code 0.
template <class Definition>
void expectExitsOnExceptions(const std::string &text, const std::string &id,
                             int calls) {
  for (int failing = 0; failing <= calls; ++failing) {
    SCOPED_TRACE(failing);
    SchemaText<FailingLexan> file(text);
    file.lexan()->failAfter(failing);
    Definition definition;
    const TraceRecorder trace(kTraceEntry);
    if (failing == calls) {
      EXPECT_EQ(definition.parse(file.lexan()), 1);
      break;
    }
    EXPECT_THROW(definition.parse(file.lexan()), std::runtime_error);
    const Records &records = trace.records();
    const Records empty = call(id, 0);
    ASSERT_GE(records.size(), 2U);
    EXPECT_EQ(records.front(), empty.front());
    EXPECT_EQ(records.back(), empty.back());
    EXPECT_EQ(2 * std::count_if(records.begin(), records.end(),
                                [](const std::string &record) {
                                  return record.rfind("exit ", 0) == 0;
                                }),
              static_cast<std::ptrdiff_t>(records.size()));
  }
}

// While it exists, printing to standard output throws.
class UnwritableOutput : public std::streambuf {
 public:
  UnwritableOutput() : m_output(std::cout.rdbuf(this)) {
    std::cout.exceptions(std::ios::badbit);
  }
  ~UnwritableOutput() override {
    std::cout.exceptions(std::ios::goodbit);
    std::cout.rdbuf(m_output);
  }

  UnwritableOutput(const UnwritableOutput &) = delete;
  UnwritableOutput &operator=(const UnwritableOutput &) = delete;

 private:
  std::streambuf *m_output;
};

// The records of dump() when standard output throws, or of the other dump()
// when the file does.
inline Records recordsOfFailingPrint(QORSchema *definition) {
  const UnwritableOutput output;
  const TraceRecorder trace(kTraceEntry);
  EXPECT_THROW(definition->dump(), std::ios::failure);
  return trace.records();
}

inline Records recordsOfFailingWrite(QORSchema *definition) {
  std::ofstream closed;
  closed.exceptions(std::ios::badbit | std::ios::failbit);
  const TraceRecorder trace(kTraceEntry);
  EXPECT_THROW(definition->dump(closed), std::ios::failure);
  return trace.records();
}

}  // namespace definitions

#endif  // TESTS_LIBSCHEMA_DEFINITIONTESTING_H_
