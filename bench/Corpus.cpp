#include "Corpus.h"

#include <stdlib.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

#include "SchemaGenerator.h"
#include "SchemaManager.h"

namespace fs = std::filesystem;

namespace {

// Each definition stands on a line of its own.
std::size_t linesIn(const fs::path &path) {
  std::ifstream in(path);
  return static_cast<std::size_t>(
      std::count(std::istreambuf_iterator<char>(in), {}, '\n'));
}

}  // namespace

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
  m_scratch = m_given = path;
  const char *corpora = std::getenv("BENCH_CORPORA");
  const fs::path given =
      fs::path(corpora == nullptr ? "" : corpora) / std::to_string(definitions);
  if (corpora != nullptr && fs::is_directory(given)) {
    m_given = given;
  } else {
    generateCorpus(m_given, definitions);
  }
  m_definitions =
      linesIn(oldSchema() / "V3.user.at") + linesIn(oldSchema() / "V3.user.oc");
}

Corpus::~Corpus() { fs::remove_all(m_scratch); }

std::unique_ptr<SchemaManager> readSchema(const fs::path &path) {
  auto schema = std::make_unique<SchemaManager>(path.string());
  if (schema->readFile("V3.user.at") != 0 ||
      schema->readFile("V3.user.oc") != 0) {
    throw std::runtime_error("cannot read what was generated");
  }
  return schema;
}

void reportTime(benchmark::State *state, std::size_t count) {
  state->counters["each"] =
      benchmark::Counter(static_cast<double>(count),
                         benchmark::Counter::kIsIterationInvariantRate |
                             benchmark::Counter::kInvert);
}

void reportTime(benchmark::State *state) {
  reportTime(state, Corpus::of(*state).definitions());
}

void eachSize(benchmark::internal::Benchmark *benchmark) {
  const char *sizes = std::getenv("BENCH_SIZES");
  std::istringstream in(sizes == nullptr ? "1000 10000 100000" : sizes);
  for (std::int64_t size = 0; in >> size;) {
    benchmark->Arg(size);
  }
  const char *iterations = std::getenv("BENCH_ITERATIONS");
  if (iterations != nullptr) {
    benchmark->Iterations(std::stoi(iterations));
  }
  benchmark->Unit(benchmark::kMillisecond);
}
