#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

#include "Attribute.h"
#include "Fields.h"
#include "GuardedLexan.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "Rewriting.h"
#include "SchemaFiles.h"
#include "Support.h"
#include "Targets.h"
#include "model/Definitions.h"
#include "model/Rendering.h"
#include "model/Scanner.h"

namespace {

using schemacheck::Kind;

constexpr char kName[] = "text";

struct Outcome {
  bool endless = false;
  std::string text;     // fields, result and where the parse stopped
  std::string fields;   // those alone
  std::string written;  // the line in a file
};

template <class Model>
Outcome modelOutcome(const std::string &text) {
  Outcome outcome;
  model::Trace untraced;
  model::Scanner scanner(text, &untraced);
  scanner.lexan();
  scanner.lexan();
  Model definition;
  int result = 0;
  try {
    result = definition.parse(&scanner, &untraced);
  } catch (const model::Endless &) {
    outcome.endless = true;
    return outcome;
  }
  outcome.fields = fieldsOf(definition);
  outcome.written = definition.written(&untraced);
  outcome.text = std::to_string(result) + " current " +
                 std::to_string(scanner.current()) + " line " +
                 std::to_string(scanner.line()) + " " + outcome.fields;
  return outcome;
}

// `Lexan` is the library's analyser, or the one that ends every reading.
template <class Definition, class Lexan>
Outcome outcome(const Scratch &directory, Lexan *lexan,
                Definition *definition) {
  const int result = definition->parse(lexan);
  Outcome outcome;
  outcome.fields = fieldsOf(*definition);
  std::ofstream out(directory.path("line"));
  definition->dump(out);
  out.close();
  outcome.written = directory.read("line");
  outcome.text = std::to_string(result) + " current " +
                 std::to_string(lexan->getCurrentToken()) + " line " +
                 std::to_string(lexan->getLineNumber()) + " " + outcome.fields;
  return outcome;
}

void expectSame(const Outcome &actual, const Outcome &expected,
                const char *what) {
  expectEqual(actual.text, expected.text, what);
  expectEqual(actual.written, expected.written, what);
}

template <class Definition>
void expectGuarded(const Scratch &directory, int keyword,
                   const Outcome &expected) {
  schemacheck::GuardedLexan lexan(directory.path(), kName);
  lexan.lexan();
  lexan.lexan();
  lexan.beginDefinition(keyword);
  Definition definition;
  try {
    const Outcome actual = outcome(directory, &lexan, &definition);
    expect(!expected.endless, "the guard to see that the reading never ends");
    expectSame(actual, expected, "guarded reading");
  } catch (const schemacheck::EndlessReading &) {
    expect(expected.endless, "the guard to see that the reading ends");
  }
}

// Whether the written line reads back to the same fields.
template <class Definition, class Model>
void expectRereading(const Scratch &directory, const Outcome &first,
                     bool isSure) {
  const Outcome expected = modelOutcome<Model>(first.written);
  expect(!isSure || !expected.endless, "a plain line to be read to its end");
  if (expected.endless) {
    return;
  }
  SchemaLexan lexan(directory.path(), "line");
  lexan.lexan();
  lexan.lexan();
  Definition definition;
  expectSame(outcome(directory, &lexan, &definition), expected, "written line");
  if (isSure) {
    expectEqual(expected.fields, first.fields, "fields of a plain line");
  }
}

template <class Definition, class Model>
void run(Kind kind, int keyword, const std::string &text) {
  const Scratch directory("definition");
  directory.write(kName, text);
  const Outcome expected = modelOutcome<Model>(text);
  expectGuarded<Definition>(directory, keyword, expected);
  if (expected.endless) {
    return;
  }
  SchemaLexan lexan(directory.path(), kName);
  lexan.lexan();
  lexan.lexan();
  Definition definition;
  expectSame(outcome(directory, &lexan, &definition), expected, "definition");
  std::vector<schemacheck::FieldView> views;
  schemacheck::viewFields(definition, &views);
  expectRereading<Definition, Model>(directory, expected,
                                     schemacheck::isPlain(kind, views));
}

}  // namespace

void fuzzDefinition(std::string_view input) {
  if (input.empty()) {
    return;
  }
  const std::string definition(input.substr(1));
  switch (static_cast<unsigned char>(input[0]) % 3) {
    case 0:
      return run<Attribute, model::AttributeType>(
          Kind::kAttributeType, TOK_ATTRIBUTETYPES,
          "attributetypes=" + definition);
    case 1:
      return run<ObjectClass, model::ObjectClass>(
          Kind::kObjectClass, TOK_OBJECTCLASSES, "objectclasses=" + definition);
    default:
      return run<QORAttribute, model::Storage>(
          Kind::kStorage, TOK_QORATTRIBUTETYPES,
          "QORAttributetypes=" + definition);
  }
}
