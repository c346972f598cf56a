// How long a migration takes to plan.
#include <benchmark/benchmark.h>

#include <sstream>

#include "Corpus.h"
#include "Migration.h"
#include "PlanReport.h"

namespace {

// From the files of both sides to the printed plan.
void plan(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  for (auto _ : state) {
    const Migration migration({corpus.oldSchema(), corpus.newSchema()});
    std::ostringstream out;
    printPlan(migration, &out);
    benchmark::DoNotOptimize(out.str());
  }
  reportTime(&state);
}

// The plan alone, of what was read.
void decide(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  const schemacheck::SchemaDirectory old(corpus.oldSchema());
  const schemacheck::SchemaDirectory release(corpus.newSchema());
  const schemacheck::LibraryView oldView = checkFiles(old);
  const schemacheck::LibraryView releaseView = checkFiles(release);
  const schemaplan::Installation oldSide{old, oldView};
  const schemaplan::Installation releaseSide{release, releaseView};
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        schemaplan::makePlan(oldSide, releaseSide, nullptr, {}));
  }
  reportTime(&state);
}

BENCHMARK(plan)
    ->Arg(2500)
    ->Arg(25000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(decide)->Arg(2500)->Arg(25000)->Unit(benchmark::kMillisecond);

}  // namespace
