// The parsers and written lines of the three kinds of definitions against the
// model, on every short sequence of tokens and on random definitions.
//
// The environment variable MODEL_TEST_LENGTH sets how many tokens the sequences
// have at most, RANDOM_TEST_SEED and RANDOM_TEST_RUNS which random definitions
// there are.
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "SchemaLexan.h"
#include "libschema/SchemaLexanTesting.h"
#include "libschema/SchemaManagerTesting.h"
#include "model/Definitions.h"
#include "model/ModelTesting.h"
#include "model/RandomTexts.h"
#include "model/Rendering.h"
#include "model/Scanner.h"
#include "model/Trace.h"
#include "support/Child.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

constexpr char kName[] = "V3.user.at";
constexpr std::size_t kKindCount = 3;
constexpr const char *kSections[kKindCount] = {
    "attributetypes=", "objectclasses=", "QORAttributetypes="};

// What a parse gives, and what the scanner gives behind it.
struct Outcome {
  bool endless = false;
  std::string text;
  std::vector<std::string> records;
};

template <class Definition>
Outcome modelOutcome(const std::string &text, unsigned int mask) {
  Outcome outcome;
  model::Trace trace;
  model::Scanner scanner(text, &trace);
  scanner.lexan();
  scanner.lexan();
  Definition definition;
  try {
    trace.mask = mask;
    const int result = definition.parse(&scanner, &trace);
    const std::string line = definition.written(&trace);
    outcome.text = std::to_string(result) + " " + fieldsOf(definition) + "\n" +
                   line + "current " + std::to_string(scanner.current());
  } catch (const model::Endless &) {
    outcome.endless = true;
    return outcome;
  }
  outcome.records = trace.records;
  trace.mask = 0;
  for (int code = 0; code != model::kDone;) {
    code = scanner.lexan();
    outcome.text +=
        " " + std::to_string(code) + " at " + std::to_string(scanner.line());
  }
  return outcome;
}

class DefinitionModelTest : public testing::Test {
 protected:
  template <class Definition>
  Outcome outcome(const std::string &text, unsigned int mask) const {
    std::filesystem::remove(m_directory.path() / kName);
    m_directory.write(kName, text);
    SchemaLexan lexan(m_directory.string(), kName);
    lexan.lexan();
    lexan.lexan();
    Outcome outcome;
    Definition definition;
    {
      std::filesystem::remove(m_directory.path() / "line");
      std::ofstream out(m_directory.path() / "line");
      const TraceRecorder recorder(mask);
      const int result = definition.parse(&lexan);
      definition.dump(out);
      out.close();
      outcome.records = recorder.records();
      outcome.text = std::to_string(result) + " ";
    }
    outcome.text += fieldsOf(definition) + "\n" + m_directory.read("line") +
                    "current " + std::to_string(lexan.getCurrentToken());
    for (int code = 0; code != TOK_DONE;) {
      code = lexan.lexan();
      outcome.text += " " + std::to_string(code) + " at " +
                      std::to_string(lexan.getLineNumber());
    }
    return outcome;
  }

  template <class Definition, class Model>
  void expectAgreement(const std::string &text, unsigned int mask) {
    const Outcome expected = modelOutcome<Model>(text, mask);
    ++(expected.endless ? m_endless : m_compared);
    if (!expected.endless) {
      const Outcome actual = outcome<Definition>(text, mask);
      ASSERT_EQ(actual.text, expected.text) << testing::PrintToString(text);
      ASSERT_EQ(actual.records, expected.records)
          << testing::PrintToString(text);
    }
  }

  void expectAgreement(std::size_t kind, const std::string &definition,
                       unsigned int mask = 0) {
    const std::string text = kSections[kind] + definition;
    if (kind == 0) {
      expectAgreement<Attribute, model::AttributeType>(text, mask);
    } else if (kind == 1) {
      expectAgreement<ObjectClass, model::ObjectClass>(text, mask);
    } else {
      expectAgreement<QORAttribute, model::Storage>(text, mask);
    }
  }

  // Every sequence of so many of the tokens behind `start`, with each end.
  void expectAgreementOnAll(std::size_t kind,
                            const std::vector<std::string> &tokens,
                            std::size_t count, const std::string &start) {
    if (count == 0) {
      for (const char *end :
           {"", ")", ") x ", "DESC 'd' ACCESS-CLASS c ) x "}) {
        expectAgreement(kind, start + end);
      }
      return;
    }
    for (const std::string &token : tokens) {
      expectAgreementOnAll(kind, tokens, count - 1, start + token + " ");
      if (HasFatalFailure()) {
        return;
      }
    }
  }

  const TemporaryDirectory m_directory;
  std::size_t m_compared = 0;
  std::size_t m_endless = 0;
};

class DefinitionModelSequenceTest
    : public DefinitionModelTest,
      public testing::WithParamInterface<std::size_t> {};

TEST_P(DefinitionModelSequenceTest, EveryShortSequenceOfTokens) {
  const std::vector<std::string> tokens = {"(",
                                           ")",
                                           "{",
                                           "}",
                                           "$",
                                           "=",
                                           "x",
                                           "'y'",
                                           "1.2",
                                           "1{2}",
                                           "1{",
                                           "NAME",
                                           "DESC",
                                           "SUP",
                                           "AUXILIARY",
                                           "MUST",
                                           "MAY",
                                           "STRUCTURAL",
                                           "EQUALITY",
                                           "SYNTAX",
                                           "SINGLE-VALUE",
                                           "USAGE",
                                           "NO-USER-MODIFICATION",
                                           "ACCESS-CLASS",
                                           "DBNAME",
                                           "SUBSTR",
                                           "REVERSE",
                                           "ORDERING",
                                           "COLLECTIVE",
                                           "OBSOLETE",
                                           "ABSTRACT",
                                           "LENGTH",
                                           "APPROX",
                                           "attributetypes",
                                           "objectclasses",
                                           "QORAttributetypes"};
  const std::size_t longest =
      setting("MODEL_TEST_LENGTH", isSanitized() ? 1 : 2);
  for (std::size_t count = 0; count <= longest; ++count) {
    expectAgreementOnAll(GetParam(), tokens, count, "( ");
    expectAgreementOnAll(GetParam(), tokens, count, "");
  }
  std::cout << m_compared << " compared, " << m_endless << " endless\n";
}

INSTANTIATE_TEST_SUITE_P(Kinds, DefinitionModelSequenceTest,
                         testing::Range<std::size_t>(0, kKindCount));

TEST_F(DefinitionModelTest, RandomDefinitions) {
  const RandomCases cases;
  for (unsigned int i = 0; i < cases.runs && !HasFailure(); ++i) {
    SCOPED_TRACE("RANDOM_TEST_SEED=" + std::to_string(cases.seed + i));
    RandomTexts texts(cases.seed + i);
    const std::size_t kind = texts.below(kKindCount);
    const std::string definition = texts.definition(kind);
    const unsigned int mask = texts.once(2) ? 0 : kTraceEntry;
    expectAgreement(kind, definition, mask);
    expectAgreement(kind, definition + " DESC 'd' ACCESS-CLASS c ) x ", mask);
  }
  std::cout << m_compared << " compared, " << m_endless << " endless\n";
}

}  // namespace
