#include "Corpus.h"

#include <stdlib.h>

#include <map>
#include <stdexcept>
#include <string>

#include "SchemaGenerator.h"
#include "SchemaManager.h"

namespace fs = std::filesystem;

const Corpus &Corpus::of(std::size_t definitions) {
  static std::map<std::size_t, Corpus> corpora;
  return corpora.try_emplace(definitions, definitions).first->second;
}

const Corpus &Corpus::of(const benchmark::State &state) {
  return of(static_cast<std::size_t>(state.range(0)));
}

Corpus::Corpus(std::size_t definitions) {
  std::string path = (fs::temp_directory_path() / "bench-XXXXXX").string();
  if (mkdtemp(path.data()) == nullptr) {
    throw std::runtime_error("cannot make a directory for the benchmarks");
  }
  m_path = path;
  fs::create_directory(oldSchema());
  fs::create_directory(newSchema());
  generateSchema(oldSchema(), definitions, Age::kOld);
  generateSchema(newSchema(), definitions, Age::kNew);
  generateRfc4512(m_path, definitions);
}

Corpus::~Corpus() { fs::remove_all(m_path); }

std::unique_ptr<SchemaManager> readSchema(const fs::path &path) {
  auto schema = std::make_unique<SchemaManager>(path.string());
  if (schema->readFile("V3.user.at") != 0 ||
      schema->readFile("V3.user.oc") != 0) {
    throw std::runtime_error("cannot read what was generated");
  }
  return schema;
}

void reportTime(benchmark::State *state, std::size_t definitions) {
  state->counters["each"] =
      benchmark::Counter(static_cast<double>(definitions),
                         benchmark::Counter::kIsIterationInvariantRate |
                             benchmark::Counter::kInvert);
}

void reportTime(benchmark::State *state) {
  reportTime(state, static_cast<std::size_t>(state->range(0)));
}

void eachSize(benchmark::internal::Benchmark *benchmark) {
  benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}
