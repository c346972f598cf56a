// How long a definition of each kind takes to parse, to write and to compare.
#include <benchmark/benchmark.h>

#include <fstream>
#include <map>
#include <memory>
#include <string>

#include "Corpus.h"
#include "SchemaLexan.h"
#include "SchemaManager.h"

namespace {

struct Types {
  using Definition = Attribute;
  static constexpr char kFile[] = "V3.user.at";
  static constexpr char kPrefix[] = "attributetypes=";
  static constexpr int kKeyword = TOK_ATTRIBUTETYPES;

  static const auto &table(const SchemaManager &schema) {
    return schema.attributeTypes();
  }
  static int equal(Attribute *a, const Attribute &b) {
    return a->attrsEqual(b);
  }
};

struct Storage {
  using Definition = QORAttribute;
  static constexpr char kFile[] = "V3.user.at";
  static constexpr char kPrefix[] = "QORAttributetypes=";
  static constexpr int kKeyword = TOK_QORATTRIBUTETYPES;

  static const auto &table(const SchemaManager &schema) {
    return schema.storageDefinitions();
  }
  static int equal(QORAttribute *a, const QORAttribute &b) {
    return a->qorAttrsEqual(b);
  }
};

struct Classes {
  using Definition = ObjectClass;
  static constexpr char kFile[] = "V3.user.oc";
  static constexpr char kPrefix[] = "objectclasses=";
  static constexpr int kKeyword = TOK_OBJECTCLASSES;

  static const auto &table(const SchemaManager &schema) {
    return schema.objectClasses();
  }
  static int equal(ObjectClass *a, const ObjectClass &b) {
    return a->objsEqual(b);
  }
};

// Writes the definitions of the kind alone to a file of the same name. Returns
// how many there are. No schema is made: what it leaves to the allocator when
// it goes would be tidied up at the measured function's cost.
template <class Kind>
std::size_t writeKind(const Corpus &corpus) {
  std::ifstream in(corpus.oldSchema() / Kind::kFile);
  std::ofstream out(corpus.scratch() / Kind::kFile);
  std::size_t definitions = 0;
  for (std::string line; std::getline(in, line);) {
    if (line.rfind(Kind::kPrefix, 0) == 0) {
      out << line << '\n';
      ++definitions;
    }
  }
  return definitions;
}

// Each into an object of its own, which is not kept; the file is read, too.
template <class Kind>
void parse(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  const std::size_t definitions = writeKind<Kind>(corpus);
  for (auto _ : state) {
    SchemaLexan lexan(corpus.scratch().string(), Kind::kFile);
    std::size_t parsed = 0;
    for (int token = lexan.lexan(); token == Kind::kKeyword;
         token = lexan.getCurrentToken()) {
      lexan.lexan();  // the "="
      typename Kind::Definition definition;
      parsed += static_cast<std::size_t>(definition.parse(&lexan));
    }
    if (parsed != definitions) {
      state.SkipWithError("the definitions do not parse");
      break;
    }
  }
  reportTime(&state, definitions);
}

template <class Kind>
void dump(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  const auto schema = readSchema(corpus.oldSchema());
  for (auto _ : state) {
    std::ofstream out(corpus.scratch() / "dump");
    for (const auto &[key, definition] : Kind::table(*schema)) {
      definition->dump(out);
    }
  }
  reportTime(&state, Kind::table(*schema).size());
}

// With an equal definition that was read by itself.
template <class Kind>
void equal(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  const auto schema = readSchema(corpus.oldSchema());
  const auto other = readSchema(corpus.oldSchema());
  for (auto _ : state) {
    auto namesake = Kind::table(*other).begin();
    int equal = 0;
    for (const auto &[key, definition] : Kind::table(*schema)) {
      equal += Kind::equal(definition, *namesake->second);
      ++namesake;
    }
    benchmark::DoNotOptimize(equal);
  }
  reportTime(&state, Kind::table(*schema).size());
}

BENCHMARK_TEMPLATE(parse, Types)->Apply(eachSize)->UseRealTime();
BENCHMARK_TEMPLATE(parse, Storage)->Apply(eachSize)->UseRealTime();
BENCHMARK_TEMPLATE(parse, Classes)->Apply(eachSize)->UseRealTime();
BENCHMARK_TEMPLATE(dump, Types)->Apply(eachSize)->UseRealTime();
BENCHMARK_TEMPLATE(dump, Storage)->Apply(eachSize)->UseRealTime();
BENCHMARK_TEMPLATE(dump, Classes)->Apply(eachSize)->UseRealTime();
BENCHMARK_TEMPLATE(equal, Types)->Apply(eachSize)->UseRealTime();
BENCHMARK_TEMPLATE(equal, Storage)->Apply(eachSize)->UseRealTime();
BENCHMARK_TEMPLATE(equal, Classes)->Apply(eachSize)->UseRealTime();

}  // namespace
