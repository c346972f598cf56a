// How long the operations on two schemas take, and what is done with the
// result.
#include <benchmark/benchmark.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "Corpus.h"
#include "SchemaManager.h"

namespace {

struct Schemas {
  explicit Schemas(const Corpus &corpus)
      : old(readSchema(corpus.oldSchema())),
        release(readSchema(corpus.newSchema())) {}

  std::unique_ptr<SchemaManager> old;
  std::unique_ptr<SchemaManager> release;
};

// Measures `operation` with two schemas that were just read and that `prepare`
// has had before.
template <class Prepare, class Operation>
void measure(benchmark::State &state, const Prepare &prepare,
             const Operation &operation) {
  const Corpus &corpus = Corpus::of(state);
  for (auto _ : state) {
    Schemas schemas(corpus);
    prepare(&schemas);
    IterationTime time(&state);
    operation(&schemas);
    time.stop();
  }
  reportTime(&state);
}

void nothing(Schemas * /*schemas*/) {}

void compare(Schemas *schemas) {
  schemas->old->compSchemas(schemas->release.get());
}

void compSchemas(benchmark::State &state) { measure(state, nothing, compare); }

// As many OIDs are excluded as there are definitions; none of them is there.
void compSchemasExcluding(benchmark::State &state) {
  const std::string path = (Corpus::of(state).scratch() / "excluded").string();
  std::ofstream list(path);
  for (std::int64_t number = 0; number < state.range(0); ++number) {
    list << "1.3.6.1.4.1.99999.1." << number << ".1\n";
  }
  list.close();
  measure(
      state,
      [&path](Schemas *schemas) { schemas->old->readExcludedOids(path); },
      compare);
}

// As a migration does it: what the comparison has left.
void mergeSchemas(benchmark::State &state) {
  measure(state, compare, [](Schemas *schemas) {
    schemas->release->mergeSchemas(schemas->old.get());
  });
}

// Everything in the old schema.
void mergeSchemasWhole(benchmark::State &state) {
  measure(state, nothing, [](Schemas *schemas) {
    schemas->release->mergeSchemas(schemas->old.get());
  });
}

void checkCollisions(benchmark::State &state) {
  measure(state, nothing, [](Schemas *schemas) {
    schemas->old->checkCollisions(schemas->release.get());
  });
}

void writeFile(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  const auto schema = readSchema(corpus.oldSchema());
  const std::string directory = corpus.scratch().string();
  for (auto _ : state) {
    schema->writeFile(directory, "V3.user.at");
    schema->writeFile(directory, "V3.user.oc");
  }
  reportTime(&state);
}

// The floor of writing: the same lines, each of them flushed.
void writeLines(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  std::vector<std::string> lines;
  for (const char *name : {"V3.user.at", "V3.user.oc"}) {
    readSchema(corpus.oldSchema())->writeFile(corpus.scratch().string(), name);
    std::ifstream file(corpus.scratch() / name);
    for (std::string line; std::getline(file, line);) {
      lines.push_back(line);
    }
  }
  for (auto _ : state) {
    std::ofstream file(corpus.scratch() / "lines");
    for (const std::string &line : lines) {
      file << line << std::endl;
    }
  }
  reportTime(&state);
}

BENCHMARK(compSchemas)->Apply(eachSize)->UseManualTime();
BENCHMARK(compSchemasExcluding)->Apply(eachSize)->UseManualTime();
BENCHMARK(mergeSchemas)->Apply(eachSize)->UseManualTime();
BENCHMARK(mergeSchemasWhole)->Apply(eachSize)->UseManualTime();
BENCHMARK(checkCollisions)->Apply(eachSize)->UseManualTime();
BENCHMARK(writeFile)->Apply(eachSize)->UseRealTime();
BENCHMARK(writeLines)->Apply(eachSize)->UseRealTime();

}  // namespace
