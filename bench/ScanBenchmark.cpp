// How long the scanner takes for a byte.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "Corpus.h"
#include "SchemaLexan.h"

namespace {

constexpr char kFile[] = "V3.user.at";

void reportBytes(benchmark::State *state, const Corpus &corpus) {
  reportTime(state, std::filesystem::file_size(corpus.oldSchema() / kFile));
}

// The floor: the characters are read and nothing is made of them.
void sbumpcLoop(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  for (auto _ : state) {
    std::ifstream file(corpus.oldSchema() / kFile);
    std::streambuf *buffer = file.rdbuf();
    unsigned int sum = 0;
    for (int c = buffer->sbumpc(); c != EOF; c = buffer->sbumpc()) {
      sum += static_cast<unsigned int>(c);
    }
    benchmark::DoNotOptimize(sum);
  }
  reportBytes(&state, corpus);
}

void lexan(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  for (auto _ : state) {
    SchemaLexan scanner(corpus.oldSchema().string(), kFile);
    while (scanner.lexan() != TOK_DONE) {
    }
  }
  reportBytes(&state, corpus);
}

BENCHMARK(sbumpcLoop)->Apply(eachSize)->UseRealTime();
BENCHMARK(lexan)->Apply(eachSize)->UseRealTime();

}  // namespace
