// How long the checks of a schema directory take.
#include <benchmark/benchmark.h>

#include "Corpus.h"
#include "DirectoryCheck.h"

namespace {

// From the files to the findings.
void checkDirectory(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  for (auto _ : state) {
    const schemacheck::SchemaDirectory directory(corpus.oldSchema());
    benchmark::DoNotOptimize(schemacheck::checkDirectory(directory));
  }
  reportTime(&state);
}

// The strict reading alone.
void readStrictly(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  for (auto _ : state) {
    const schemacheck::SchemaDirectory directory(corpus.oldSchema());
    benchmark::DoNotOptimize(directory.statements().size());
  }
  reportTime(&state);
}

BENCHMARK(checkDirectory)->Arg(2500)->Arg(25000)->Unit(benchmark::kMillisecond);
BENCHMARK(readStrictly)->Arg(2500)->Arg(25000)->Unit(benchmark::kMillisecond);

}  // namespace
