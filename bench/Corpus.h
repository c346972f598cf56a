// What the benchmarks read, and how they report.
#ifndef BENCH_CORPUS_H_
#define BENCH_CORPUS_H_

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>

class SchemaManager;

// The files of a directory: an old schema, a new one, and the old one's
// definitions as RFC 4512 has them. They are generated, or taken from
// elsewhere: when BENCH_CORPORA is in the environment and names a directory
// that has one of the name N, that is the corpus of N definitions. N may be 0
// there, for a corpus that is not generated.
class Corpus {
 public:
  // The corpus with `definitions` definitions in the old schema. Made when it
  // is first asked for; there until the program ends.
  static const Corpus &of(std::size_t definitions);
  // The same with the benchmark's first argument.
  static const Corpus &of(const benchmark::State &state);

  explicit Corpus(std::size_t definitions);
  ~Corpus();

  Corpus(const Corpus &) = delete;
  Corpus &operator=(const Corpus &) = delete;

  std::filesystem::path oldSchema() const { return m_given / "old"; }
  std::filesystem::path newSchema() const { return m_given / "new"; }
  // Where the definitions as RFC 4512 has them are.
  const std::filesystem::path &rfc4512() const { return m_given; }
  // A directory for what a benchmark writes.
  const std::filesystem::path &scratch() const { return m_scratch; }

  // How many definitions the old schema has.
  std::size_t definitions() const { return m_definitions; }

 private:
  std::filesystem::path m_scratch;  // removed with the corpus
  std::filesystem::path m_given;
  std::size_t m_definitions;
};

// A schema with all that the directory holds.
std::unique_ptr<SchemaManager> readSchema(const std::filesystem::path &path);

// Takes the time from its construction to stop() as that of
// an iteration of a benchmark with UseManualTime().
class IterationTime {
 public:
  explicit IterationTime(benchmark::State *state)
      : m_state(state), m_start(std::chrono::steady_clock::now()) {}

  void stop() {
    const std::chrono::duration<double> time =
        std::chrono::steady_clock::now() - m_start;
    m_state->SetIterationTime(time.count());
  }

 private:
  benchmark::State *const m_state;
  const std::chrono::steady_clock::time_point m_start;
};

// Reports the time for one of `count` definitions, or bytes.
void reportTime(benchmark::State *state, std::size_t count);
// The same for the definitions of the benchmark's corpus.
void reportTime(benchmark::State *state);

// Runs a benchmark with 1,000, 10,000 and 100,000 definitions, or with the
// numbers in BENCH_SIZES if that is in the environment; as many times as
// BENCH_ITERATIONS says, or else as Google Benchmark finds best.
void eachSize(benchmark::internal::Benchmark *benchmark);

#endif  // BENCH_CORPUS_H_
