// Random sequences of operations on two or three schemas, checked against a
// model. Names and OIDs come from so small an alphabet that they collide in
// every way.
//
// Scenario i of a run has the seed RANDOM_TEST_SEED + i, so that a failing one
// is repeated alone by its seed with RANDOM_TEST_RUNS=1.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <deque>
#include <initializer_list>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "SchemaModel.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"

namespace {

using model::Definition;
using model::kAllKinds;
using model::kClass;
using model::kStorage;
using model::kType;

const std::initializer_list<const char *> kOids = {"1", "a", "A", "b", ""};
const std::initializer_list<const char *> kNames = {"a", "A", "b", "c"};
const std::initializer_list<const char *> kFiles = {
    "V3.user.oc",   "V3.user.at",   "V3.qor.oc",
    "V3.system.at", "V3.config.at", "V3.modifiedschema"};

struct Step {
  enum What { kRead, kExclude, kCompare, kMerge, kRemoveOid, kDestroy };

  What what;
  std::size_t schema;
  std::size_t other;
  std::size_t kind;  // of compare and merge
  std::string word;  // the file read, the OID excluded or removed
  std::vector<Definition *> definitions;
};

std::ostream &operator<<(std::ostream &out, const Step &step) {
  static const char *const kWhat[] = {"reads",  "excludes",    "compares",
                                      "merges", "removes OID", "is destroyed"};
  static const char *const kKindNames[] = {"types", "classes", "storage",
                                           "all"};
  out << step.schema << ' ' << kWhat[step.what] << ' ' << step.word;
  if (step.what == Step::kCompare || step.what == Step::kMerge) {
    out << kKindNames[step.kind] << " of " << step.other;
  }
  out << '\n';
  for (const Definition *definition : step.definitions) {
    out << "  " << definition->source();
  }
  return out;
}

struct Scenario {
  std::size_t schemas;
  std::deque<Definition> definitions;
  std::vector<Step> steps;
  std::vector<std::size_t> destruction;  // the order of it
};

class Generator {
 public:
  explicit Generator(unsigned int seed) : m_random(seed) {}

  Scenario scenario() {
    Scenario scenario;
    scenario.schemas = 2 + below(2);
    const std::size_t steps = scenario.schemas + 2 + below(10);
    for (std::size_t i = 0; i < steps; ++i) {
      Step step = nextStep(scenario.schemas);
      if (i < scenario.schemas) {
        step.what = Step::kRead;
        step.schema = i;
      }
      complete(&step, &scenario.definitions);
      scenario.steps.push_back(step);
    }
    for (std::size_t i = 0; i < scenario.schemas; ++i) {
      const auto place = scenario.destruction.begin() +
                         static_cast<std::ptrdiff_t>(below(i + 1));
      scenario.destruction.insert(place, i);
    }
    return scenario;
  }

 private:
  std::size_t below(std::size_t limit) { return m_random() % limit; }

  std::string oneOf(std::initializer_list<const char *> words) {
    return words.begin()[below(words.size())];
  }

  Step nextStep(std::size_t schemas) {
    const Step::What kChoices[] = {
        Step::kRead,
        Step::kRead,
        Step::kExclude,
        Step::kCompare,
        Step::kMerge,
        Step::kMerge,
        Step::kMerge,
        Step::kRemoveOid,
        below(3) == 0 ? Step::kDestroy : Step::kMerge};
    return {kChoices[below(std::size(kChoices))],
            below(schemas),
            below(schemas),
            below(4),
            "",
            {}};
  }

  void complete(Step *step, std::deque<Definition> *definitions) {
    if (step->what == Step::kExclude) {
      step->word = oneOf({"1", "a", "A", "b"});  // a file cannot hold ""
    } else if (step->what == Step::kRemoveOid) {
      step->word = oneOf(kOids);
    } else if (step->what == Step::kRead) {
      step->word = oneOf(kFiles);
      for (std::size_t count = 1 + below(6); count > 0; --count) {
        const Definition made = definition();
        // Few that find their key taken: the leaks of such are not checked.
        if (m_read[step->schema].insert({made.kind, made.key()}).second ||
            below(16) == 0) {
          definitions->push_back(made);
          step->definitions.push_back(&definitions->back());
        }
      }
    } else if (step->what == Step::kDestroy) {
      m_read[step->schema].clear();
    }
  }

  Definition definition() {
    Definition made{below(3), oneOf(kOids), {}, oneOf({"x", "y"})};
    const std::size_t count = made.kind == kStorage ? 0 : below(8);
    for (std::size_t i = 0; i < std::min<std::size_t>(count, 1 + count / 6);
         ++i) {
      made.names.push_back(oneOf(kNames));
    }
    return made;
  }

  std::mt19937 m_random;
  // The keys of what each schema has read.
  std::map<std::size_t, std::set<std::pair<std::size_t, std::string>>> m_read;
};

// Runs a scenario on the model, and on the library as well.
class Runner {
 public:
  explicit Runner(const Scenario &scenario)
      : m_scenario(scenario), m_models(scenario.schemas) {}

  // The model alone: this finds the definitions that are leaked.
  void rehearse() {
    for (const Step &step : m_scenario.steps) {
      runModel(step);
    }
  }

  void run() {
    for (std::size_t i = 0; i < m_models.size(); ++i) {
      m_schemas.push_back(
          std::make_unique<SchemaManager>(m_directory.string()));
    }
    std::ostringstream steps;
    for (const Step &step : m_scenario.steps) {
      steps << step;
      const testing::ScopedTrace trace(__FILE__, __LINE__, steps.str());
      EXPECT_EQ(runLibrary(step), runModel(step));
      check();
      if (testing::Test::HasFailure()) {
        return;
      }
    }
    const testing::ScopedTrace trace(__FILE__, __LINE__, steps.str());
    checkWritten();
    for (const std::size_t destroyed : m_scenario.destruction) {
      m_schemas[destroyed].reset();
      m_models[destroyed] = model::Schema();
      check();
    }
  }

 private:
  unsigned int runModel(const Step &step) {
    model::Schema &mine = m_models[step.schema];
    model::Schema &other = m_models[step.other];
    unsigned int result = 1;
    switch (step.what) {
      case Step::kRead:
        mine.read(step.word, step.definitions);
        return 0;
      case Step::kExclude:
        mine.excluded.insert(step.word);
        return 0;
      case Step::kCompare:
        for (const std::size_t kind : kinds(step)) {
          mine.compare(kind, other);
        }
        return 1;
      case Step::kMerge:
        for (const std::size_t kind : kinds(step)) {
          result = result == 0 ? 0 : mine.merge(kind, &other);
        }
        return result;
      case Step::kRemoveOid:
        return mine.removeFromFiles(step.word);
      case Step::kDestroy:
        mine = model::Schema();
        return 0;
    }
    return 0;
  }

  unsigned int runLibrary(const Step &step) {
    Schema &schema = m_schemas[step.schema];
    SchemaManager *other = m_schemas[step.other].get();
    switch (step.what) {
      case Step::kRead:
        return read(schema.get(), step);
      case Step::kExclude:
        return schema->readExcludedOids(
            m_directory.write("excluded", step.word + '\n'));
      case Step::kCompare:
        return step.kind == kAllKinds
                   ? schema->compSchemas(other)
                   : (schema.get()->*kKinds[step.kind].compare)(other);
      case Step::kMerge:
        return step.kind == kAllKinds
                   ? schema->mergeSchemas(other)
                   : (schema.get()->*kKinds[step.kind].merge)(other);
      case Step::kRemoveOid:
        return schema->delOidFromFileSet(step.word);
      case Step::kDestroy:
        schema = std::make_unique<SchemaManager>(m_directory.string());
        return 0;
    }
    return 0;
  }

  // The kinds in the order in which they are done.
  static std::vector<std::size_t> kinds(const Step &step) {
    return step.kind == kAllKinds
               ? std::vector<std::size_t>{kType, kStorage, kClass}
               : std::vector<std::size_t>{step.kind};
  }

  unsigned int read(SchemaManager *schema, const Step &step) const {
    std::string text;
    bool leaks = false;
    for (const Definition *definition : step.definitions) {
      text += definition->source();
      leaks = leaks || definition->leaked;
    }
    m_directory.write(step.word, text);
    const auto readIt = [&] { return schema->readFile(step.word); };
    return leaks ? leaksDefinitions(readIt) : readIt();
  }

  // Compares all tables and sets.
  void check() {
    m_present.clear();
    for (std::size_t i = 0; i < m_schemas.size(); ++i) {
      if (SchemaManager *schema = m_schemas[i].get()) {
        checkTable(schema->attributeTypes(), m_models[i].owning[kType]);
        checkTable(schema->objectClasses(), m_models[i].owning[kClass]);
        checkTable(schema->storageDefinitions(), m_models[i].owning[kStorage]);
        checkTable(schema->attributeTypesByOid(), m_models[i].byOid[kType]);
        checkTable(schema->objectClassesByOid(), m_models[i].byOid[kClass]);
        checkSets(schema, &m_models[i]);
      }
    }
    m_known = m_present;
  }

  template <class Class>
  void checkTable(const std::map<std::string, Class *> &table,
                  const model::Table &expected) {
    const auto show = [](const std::string &key, const std::string &oid,
                         const Names &names) {
      return "[" + key + "] " + oid + testing::PrintToString(names) + '\n';
    };
    std::string actualText, expectedText;
    for (const auto &[key, definition] : expected) {
      expectedText += show(key, definition->oid, definition->names);
    }
    for (const auto &[key, object] : table) {
      actualText += show(key, object->oid(), object->names());
      if (Definition *definition = model::find(expected, key)) {
        checkObject(object, definition);
      }
    }
    EXPECT_EQ(actualText, expectedText);
  }

  // A definition is one object as long as it is in a table.
  void checkObject(QORSchema *object, Definition *definition) {
    EXPECT_EQ(object->getDescription(),
              definition->kind == kStorage ? "" : definition->text);
    EXPECT_EQ(m_present.emplace(definition, object).first->second, object);
    const auto known = m_known.find(definition);
    EXPECT_TRUE(known == m_known.end() || known->second == object);
  }

  void checkSets(SchemaManager *schema, model::Schema *expected) {
    for (const char *file : kSearchedFiles) {
      EXPECT_EQ(*schema->recordedOids(file), expected->files[file]) << file;
    }
    for (const char *oid : kOids) {
      EXPECT_EQ(schema->isExcluded(oid), expected->excluded.count(oid)) << oid;
    }
  }

  void checkWritten() {
    const std::set<std::string> oids(kOids.begin(), kOids.end());
    for (std::size_t i = 0; i < m_schemas.size(); ++i) {
      m_schemas[i]->writeSetToFile(oids, m_directory.string() + "/all");
      EXPECT_EQ(m_directory.read("all"), m_models[i].written(oids));
      m_schemas[i]->writeFile(m_directory.string(), "V3.modifiedschema");
      EXPECT_EQ(m_directory.read("V3.modifiedschema"),
                m_models[i].written(m_models[i].files["V3.modifiedschema"]));
      checkLookUps(m_schemas[i].get(), m_models[i]);
    }
  }

  static void checkLookUps(SchemaManager *schema,
                           const model::Schema &expected) {
    for (const std::string key : {"", "1", "a", "A", "b", "B", "c"}) {
      if (const Definition *type = expected.lookUp(kType, key)) {
        EXPECT_EQ(schema->getAttr(key).getOidAndName(), report(*type));
      }
      if (const Definition *objectClass = expected.lookUp(kClass, key)) {
        EXPECT_EQ(schema->getObjClass(key).getOidAndName(),
                  report(*objectClass));
      }
      if (const Definition *storage = expected.lookUp(kStorage, key)) {
        EXPECT_EQ(schema->getQORAttr(key).getOidAndName(), report(*storage));
      }
    }
  }

  static std::string report(const Definition &definition) {
    std::string text = "OID --> " + definition.oid + "\nName --> ";
    for (std::size_t i = 0; i < definition.names.size(); ++i) {
      text += (i == 0 ? "" : ", ") + definition.names[i];
    }
    return text + "\n\n";
  }

  const Scenario &m_scenario;
  const TemporaryDirectory m_directory;
  std::vector<model::Schema> m_models;
  std::vector<Schema> m_schemas;
  // The objects of the definitions in the tables, at the last check and now.
  std::map<const Definition *, const QORSchema *> m_known;
  std::map<const Definition *, const QORSchema *> m_present;
};

unsigned int setting(const char *name, unsigned int fallback) {
  const char *value = std::getenv(name);
  return value == nullptr ? fallback
                          : static_cast<unsigned int>(std::stoul(value));
}

TEST(SchemaManagerRandomTest, SchemasAreAsTheModelSays) {
  const unsigned int seed = setting("RANDOM_TEST_SEED", std::random_device()());
  const unsigned int runs = setting("RANDOM_TEST_RUNS", 250);
  std::cout << "RANDOM_TEST_SEED=" << seed << " RANDOM_TEST_RUNS=" << runs
            << std::endl;
  const FixedDate date;
  for (unsigned int i = 0; i < runs && !HasFailure(); ++i) {
    SCOPED_TRACE("RANDOM_TEST_SEED=" + std::to_string(seed + i));
    const Scenario scenario = Generator(seed + i).scenario();
    Runner(scenario).rehearse();
    Runner(scenario).run();
  }
}

}  // namespace
