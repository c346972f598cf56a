// How long a schema takes to read and to destroy, and how much memory it takes.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <map>
#include <memory>
#include <set>
#include <string>

#include "Corpus.h"
#include "SchemaManager.h"

namespace {

void readFile(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  for (auto _ : state) {
    IterationTime time(&state);
    const auto schema = readSchema(corpus.oldSchema());
    time.stop();
  }
  reportTime(&state);
}

void destroy(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  for (auto _ : state) {
    auto schema = readSchema(corpus.oldSchema());
    IterationTime time(&state);
    schema.reset();
    time.stop();
  }
  reportTime(&state);
}

// The tables of a schema, filled with what another one holds in the order of
// the OIDs, as they are by reading a file.
class Containers {
 public:
  explicit Containers(const SchemaManager &schema) {
    for (const auto &[oid, type] : schema.attributeTypesByOid()) {
      enterByOid(enter(type->getFirstNameLower(), *type, &m_types),
                 &m_typesByOid);
    }
    for (const auto &[oid, objectClass] : schema.objectClassesByOid()) {
      enterByOid(
          enter(objectClass->getFirstNameLower(), *objectClass, &m_classes),
          &m_classesByOid);
    }
    for (const auto &[oid, storage] : schema.storageDefinitions()) {
      enter(oid, *storage, &m_storage);
    }
  }

 private:
  template <class Definition>
  using Table = std::map<std::string, std::unique_ptr<Definition>>;
  template <class Definition>
  using View = std::map<std::string, Definition *>;

  template <class Definition>
  static Definition *enter(const std::string &key, const Definition &definition,
                           Table<Definition> *table) {
    const auto entry =
        table->emplace(key, std::make_unique<Definition>(definition));
    return entry.first->second.get();
  }

  template <class Definition>
  void enterByOid(Definition *definition, View<Definition> *view) {
    view->emplace(definition->oid(), definition);
    m_oids.insert(definition->oid());
  }

  Table<Attribute> m_types;
  Table<ObjectClass> m_classes;
  Table<QORAttribute> m_storage;
  View<Attribute> m_typesByOid;
  View<ObjectClass> m_classesByOid;
  std::set<std::string> m_oids;
};

// The floor of reading: the containers are filled without parsing.
void fillContainers(benchmark::State &state) {
  const auto schema = readSchema(Corpus::of(state).oldSchema());
  for (auto _ : state) {
    IterationTime time(&state);
    const Containers containers(*schema);
    time.stop();
  }
  reportTime(&state);
}

// Reports the memory for one definition in place of the time.
template <class Make>
void measureMemory(benchmark::State &state, const Make &make) {
  std::size_t bytes = 0;
  for (auto _ : state) {
    const std::size_t before = mallinfo2().uordblks;
    const auto made = make();
    bytes = mallinfo2().uordblks - before;
  }
  state.counters["bytes"] =
      static_cast<double>(bytes) /
      static_cast<double>(Corpus::of(state).definitions());
}

void memoryOfSchema(benchmark::State &state) {
  const Corpus &corpus = Corpus::of(state);
  measureMemory(state, [&corpus] { return readSchema(corpus.oldSchema()); });
}

void memoryOfContainers(benchmark::State &state) {
  const auto schema = readSchema(Corpus::of(state).oldSchema());
  measureMemory(state,
                [&schema] { return std::make_unique<Containers>(*schema); });
}

BENCHMARK(readFile)->Apply(eachSize)->UseManualTime();
BENCHMARK(fillContainers)->Apply(eachSize)->UseManualTime();
BENCHMARK(destroy)->Apply(eachSize)->UseManualTime();
BENCHMARK(memoryOfSchema)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(memoryOfContainers)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
