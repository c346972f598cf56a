// Random operations on a schema with random files and lists against the model:
// results, tables, written files and trace records.
//
// The environment variables RANDOM_TEST_SEED and RANDOM_TEST_RUNS set which
// cases there are.
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/SchemaManagerTesting.h"
#include "model/Ending.h"
#include "model/ModelTesting.h"
#include "model/RandomTexts.h"
#include "model/Rendering.h"
#include "model/Schema.h"
#include "support/Child.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

constexpr unsigned int kMasks[] = {0,
                                   0,
                                   0,
                                   kTraceExit | kTraceWalkExit,
                                   kTraceEntry | kTraceDebug,
                                   kTraceEntry | kTraceWalkEntry | kTraceDebug,
                                   kTraceWalkEntry | kTraceDebug};

struct Counts {
  std::size_t files = 0;
  std::size_t endless = 0;
  std::size_t stillRunning = 0;
};

// One case: a directory of random files, a schema and its model.
class Case {
 public:
  Case(unsigned int seed, Counts *counts)
      : m_texts(seed),
        m_mask(kMasks[m_texts.below(std::size(kMasks))]),
        m_counts(counts),
        m_model(&m_trace),
        m_schema(m_directory.string()) {
    std::filesystem::create_directory(m_directory.path() / "out");
    for (std::size_t count = 1 + m_texts.below(4); count > 0; --count) {
      const std::string name = fileName();
      m_files[name] = endingFile(m_texts.file());
      m_directory.write(name, m_files[name]);
    }
  }

  void run() {
    for (const auto &[name, text] : m_files) {
      readFile(name);
    }
    for (std::size_t count = m_texts.below(8); count > 0; --count) {
      step();
      if (testing::Test::HasFailure()) {
        return;
      }
    }
    for (const char *name : kFilesWithOidSet) {
      writeFile(name);
    }
    writeFile("V3.modifiedschema");
    removeAllModified();
  }

 private:
  std::string fileName() {
    return m_texts.once(12)
               ? "other"
               : m_texts.oneOf({"V3.user.oc", "V3.user.at", "V3.qor.oc",
                                "V3.qor.at", "V3.system.oc", "V3.system.at",
                                "V3.config.at", "V3.config.oc",
                                "V3.modifiedschema", "V3.modifiedschema"});
  }

  // A text whose reading ends, made of any text.
  std::string endingFile(const std::string &text) {
    ++m_counts->files;
    const std::string ending = model::endingFile(text);
    EXPECT_TRUE(model::fileEnds(ending)) << testing::PrintToString(text);
    if (ending != text) {
      ++m_counts->endless;
      if (m_counts->stillRunning < 2) {
        ++m_counts->stillRunning;
        expectNoEnd(text);
      }
    }
    return ending;
  }

  static void expectNoEnd(const std::string &text) {
    const TemporaryDirectory directory;
    directory.write("V3.user.at", text);
    EXPECT_TRUE(neverEnds([&] {
      SchemaManager(directory.string()).readFile("V3.user.at");
    })) << testing::PrintToString(text);
  }

  void step() {
    const std::string word = m_texts.word();
    switch (m_texts.below(8)) {
      case 0:
        return readFile(m_texts.once(6) ? "absent" : fileName());
      case 1:
        return writeFile(fileName());
      case 2:
        return applyList(&SchemaManager::readExcludedOids,
                         &model::Schema::readExcludedOids);
      case 3:
      case 4:
        return applyList(&SchemaManager::modifySchema,
                         &model::Schema::modifySchema);
      case 5:
        return compare([&] { return m_model.delOidFromFileSet(word); },
                       [&] { return m_schema.delOidFromFileSet(word); });
      case 6:
        return compare([&] { return m_model.isExcluded(word); },
                       [&] { return m_schema.isExcluded(word); });
      default:
        return compare([&] { return m_model.isModFileEmpty(); },
                       [&] { return m_schema.isModFileEmpty(); });
    }
  }

  void readFile(const std::string &name) {
    compare([&] { return m_model.readFile(m_files, name); },
            [&] { return m_schema.readFile(name); });
  }

  void writeFile(const std::string &name) {
    const std::filesystem::path path = m_directory.path() / "out" / name;
    std::filesystem::remove(path);
    int result = 0;
    std::string text;
    compare(
        [&] {
          result = m_model.writeFile(name, "2001-09-09T01:46:40+00:00", &text);
          return result;
        },
        [&] {
          return m_schema.writeFile(m_directory.string() + "/out", name);
        });
    EXPECT_EQ(std::filesystem::exists(path), result == 0) << name;
    if (result == 0) {
      EXPECT_EQ(readText(path), text) << name;
    }
  }

  template <class Operation, class ModelOperation>
  void applyList(Operation operation, ModelOperation modelOperation) {
    const std::string path = m_directory.string() + "/list";
    std::string list = m_texts.list();
    if (!model::listEnds(list)) {
      ++m_counts->endless;
      list += '\n';
    }
    std::filesystem::remove(path);
    const bool there = !m_texts.once(8);
    if (there) {
      m_directory.write("list", list);
    }
    compare(
        [&] {
          return (m_model.*modelOperation)(there ? &list : nullptr, path);
        },
        [&] { return (m_schema.*operation)(path); });
  }

  // Runs an operation on both, and compares all that it leaves behind.
  template <class ModelOperation, class Operation>
  void compare(const ModelOperation &modelOperation,
               const Operation &operation) {
    m_model.leaks = false;
    m_trace = {m_mask, {}};
    const int expected = modelOperation();
    {
      const TraceRecorder recorder(m_mask);
      EXPECT_EQ(m_model.leaks ? leaksDefinitions(operation) : operation(),
                static_cast<unsigned int>(expected));
      EXPECT_EQ(recorder.records(), m_trace.records);
    }
    EXPECT_EQ(tablesOf(m_schema), tablesOf(m_model));
    for (const char *name : kFilesWithOidSet) {
      EXPECT_EQ(fileSet(&m_schema, name), m_model.files[name]) << name;
    }
  }

  void removeAllModified() {
    const model::OidSet oids = m_model.files["V3.modifiedschema"];
    for (const std::string &oid : oids) {
      compare([&] { return m_model.delOidFromModSch(oid); },
              [&] { return m_schema.delOidFromModSch(oid); });
    }
    const std::string word = m_texts.word();
    compare([&] { return m_model.delOidFromModSch(word); },
            [&] { return m_schema.delOidFromModSch(word); });
    compare([&] { return m_model.isModFileEmpty(); },
            [&] { return m_schema.isModFileEmpty(); });
  }

  RandomTexts m_texts;
  const unsigned int m_mask;
  Counts *const m_counts;
  const TemporaryDirectory m_directory;
  model::Directory m_files;
  model::Trace m_trace;
  model::Schema m_model;
  SchemaManager m_schema;
};

TEST(SchemaModelTest, SchemasAreAsTheModelSays) {
  const RandomCases cases;
  const FixedDate date;
  Counts counts;
  for (unsigned int i = 0; i < cases.runs && !HasFailure(); ++i) {
    const std::string seed = std::to_string(cases.seed + i);
    SCOPED_TRACE("RANDOM_TEST_SEED=" + seed);
    Case(cases.seed + i, &counts).run();
  }
  std::cout << counts.files << " files, " << counts.endless << " endless\n";
}

}  // namespace
