// How long the checks of a schema directory take.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "DirectoryCheck.h"
#include "SchemaGenerator.h"
#include "SchemaManager.h"

namespace fs = std::filesystem;

namespace {

// A generated directory, for as long as a measurement needs it.
class GeneratedSchema {
 public:
  explicit GeneratedSchema(std::size_t definitions) {
    std::string path = (fs::temp_directory_path() / "bench-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) {
      throw std::runtime_error("cannot make a directory for the benchmark");
    }
    m_path = path;
    generateSchema(m_path, definitions);
  }
  ~GeneratedSchema() { fs::remove_all(m_path); }

  GeneratedSchema(const GeneratedSchema &) = delete;
  GeneratedSchema &operator=(const GeneratedSchema &) = delete;

  const fs::path &path() const { return m_path; }

 private:
  fs::path m_path;
};

void setRate(benchmark::State *state) {
  state->SetItemsProcessed(state->iterations() * state->range(0));
}

// From the files to the findings.
void checkDirectory(benchmark::State &state) {
  const GeneratedSchema schema(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    const schemacheck::SchemaDirectory directory(schema.path());
    benchmark::DoNotOptimize(schemacheck::checkDirectory(directory));
  }
  setRate(&state);
}

// The strict reading alone.
void readStrictly(benchmark::State &state) {
  const GeneratedSchema schema(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    const schemacheck::SchemaDirectory directory(schema.path());
    benchmark::DoNotOptimize(directory.statements().size());
  }
  setRate(&state);
}

// For comparison: the library's own reading, which checks nothing.
void readWithTheLibrary(benchmark::State &state) {
  const GeneratedSchema schema(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    SchemaManager manager(schema.path().string());
    manager.readFile("V3.user.at");
    manager.readFile("V3.user.oc");
    benchmark::DoNotOptimize(manager.attributeTypes().size());
  }
  setRate(&state);
}

BENCHMARK(checkDirectory)->Arg(2500)->Arg(25000)->Unit(benchmark::kMillisecond);
BENCHMARK(readStrictly)->Arg(2500)->Arg(25000)->Unit(benchmark::kMillisecond);
BENCHMARK(readWithTheLibrary)
    ->Arg(2500)
    ->Arg(25000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
