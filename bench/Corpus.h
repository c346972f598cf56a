// What the benchmarks read, and how they report.
#ifndef BENCH_CORPUS_H_
#define BENCH_CORPUS_H_

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>

class SchemaManager;

// Generated files: an old schema, a new one, and the old one's definitions as
// RFC 4512 has them.
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

  const std::filesystem::path &path() const { return m_path; }
  std::filesystem::path oldSchema() const { return m_path / "old"; }
  std::filesystem::path newSchema() const { return m_path / "new"; }

 private:
  std::filesystem::path m_path;
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

// Reports the time for one of `definitions` definitions, the number of which is
// the benchmark's first argument unless it is given.
void reportTime(benchmark::State *state, std::size_t definitions);
void reportTime(benchmark::State *state);

// Runs a benchmark with 1,000, 10,000 and 100,000 definitions.
void eachSize(benchmark::internal::Benchmark *benchmark);

#endif  // BENCH_CORPUS_H_
