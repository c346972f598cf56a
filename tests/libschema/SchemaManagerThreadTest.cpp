// Managers on different threads know nothing of each other. The thread
// sanitizer says more about these tests than their expectations do.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "ldtr.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"

namespace {

constexpr int kDefinitions = 20;
constexpr int kRounds = 10;

// The definitions of an installation or, with another text, of a release. A
// part of them is the same in all installations and releases.
std::vector<SchemaFile> files(const std::string &text, int first) {
  std::string types, classes, storage;
  for (int i = first; i < first + kDefinitions; ++i) {
    const std::string number = std::to_string(i);
    const std::string &said = i % 3 == 0 ? "same" : text;
    types += typeLine("1." + number, {"type-" + number, "t"}, said);
    classes += classLine("2." + number, {"class-" + number}, said);
    storage += storageLine("1." + number, said);
  }
  return {{"V3.user.at", types},
          {"V3.user.oc", classes},
          {"V3.qor.at", storage},
          {"V3.config.at", typeLine("3.1", {"unrecorded-" + text}, text)}};
}

class Migration {
 public:
  // What a migration from one schema to another does and gives, as one text.
  std::string run(const std::string &text) {
    read(&m_old, files(text, 0));
    read(&m_release, files("release", kDefinitions / 2));
    m_directory.write("excluded", "1.1 2.1\n");
    log(m_old.readExcludedOids(m_directory.string() + "/excluded"));
    log(m_old.compSchemas(&m_release));
    log(m_release.mergeSchemas(&m_old));  // stops at the unrecorded one
    log(m_release.mergeQORAttrs(&m_old));
    log(m_release.mergeObjClasses(&m_old));
    log(m_release.mergeSchemas(&m_old));
    m_log << tablesOf(m_old) << tablesOf(m_release);
    for (const char *file : kSearchedFiles) {
      log(m_release.writeFile(m_directory.string(), file));
      m_log << m_directory.read(file);
    }
    log(m_release.writeFile(m_directory.string(), "V3.config.at"));
    m_log << m_release.getAttr("TYPE-15").getOidAndName();
    m_log << m_release.getObjClass("2.15").getOidAndName();
    m_log << m_release.getQORAttr("1.15").getOidAndName();
    check();
    return m_log.str();
  }

 private:
  void log(unsigned int result) { m_log << result << '\n'; }

  // The old files once more, against the release with what was moved there.
  void check() {
    SchemaManager checked(m_directory.string());
    read(&checked, files("changed", 0));
    log(checked.checkCollisions(&m_release));
    m_log << checked.getOcTable() << checked.getAttrTable()
          << checked.getQORAttrTable();
    log(m_release.modifySchema(m_directory.string() + "/excluded"));
    m_log << tablesOf(checked) << tablesOf(m_release);
  }

  void read(SchemaManager *schema, const std::vector<SchemaFile> &content) {
    for (const SchemaFile &file : content) {
      m_directory.write(file.name, file.text);
      log(schema->readFile(file.name));
    }
    // There is none.
    log(leaksAnalyser([&] { return schema->readFile("V3.system.at"); }));
  }

  const TemporaryDirectory m_directory;
  SchemaManager m_old{m_directory.string()};
  SchemaManager m_release{m_directory.string()};
  std::ostringstream m_log;
};

using Texts = std::vector<std::string>;

// Runs migrations from each text, those of a text in turn on a thread of their
// own. Returns what they gave.
std::vector<Texts> migrateInThreads(const Texts &texts, int rounds) {
  std::vector<Texts> results(texts.size());
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    threads.emplace_back([rounds, &text = texts[i], &result = results[i]] {
      for (int round = 0; round < rounds; ++round) {
        result.push_back(Migration().run(text));
      }
    });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
  return results;
}

// The records of each thread, in their order.
class ThreadRecords {
 public:
  ThreadRecords() { ldtr_set_sink(&ThreadRecords::receive, this); }
  ~ThreadRecords() { ldtr_set_sink(nullptr, nullptr); }

  ThreadRecords(const ThreadRecords &) = delete;
  ThreadRecords &operator=(const ThreadRecords &) = delete;

  // Those of each thread as one text. They are ordered by text.
  std::multiset<std::string> texts() const {
    std::multiset<std::string> texts;
    for (const auto &[id, stream] : m_streams) {
      texts.insert(stream.str());
    }
    return texts;
  }

 private:
  static void receive(const ldtr_record &record, void *context) {
    auto *records = static_cast<ThreadRecords *>(context);
    records->m_streams[std::this_thread::get_id()]
        << static_cast<int>(record.type) << ' ' << record.id << ' '
        << record.kind << ' ' << record.event << ' ' << record.code << ' '
        << record.text << '\n';
  }

  std::map<std::thread::id, std::ostringstream> m_streams;
};

const Texts kTexts = {"one", "two", "three", "four"};

// What the migrations give one after the other, on one thread.
std::vector<Texts> migrateInTurn(std::size_t rounds) {
  std::vector<Texts> results;
  for (const std::string &text : kTexts) {
    results.push_back(Texts(rounds, Migration().run(text)));
  }
  return results;
}

TEST(SchemaManagerThreadTest, MigrationsDoNotDisturbEachOther) {
  const FixedDate date;
  const std::vector<Texts> expected = migrateInTurn(kRounds);
  EXPECT_NE(expected[0], expected[1]);
  EXPECT_EQ(migrateInThreads(kTexts, kRounds), expected);
}

TEST(SchemaManagerThreadTest, NorDoTheirTraceRecords) {
  const FixedDate date;
  const std::vector<Texts> expected = migrateInTurn(1);
  trcEvents = 0xFFFFFFFF;
  // One thread after the other, for the records of each.
  std::multiset<std::string> expectedRecords;
  for (const std::string &text : kTexts) {
    const ThreadRecords records;
    migrateInThreads({text}, 1);
    expectedRecords.merge(records.texts());
  }
  EXPECT_EQ(expectedRecords.size(), kTexts.size());
  for (int round = 0; round < kRounds; ++round) {
    const ThreadRecords records;
    EXPECT_EQ(migrateInThreads(kTexts, 1), expected);
    EXPECT_EQ(records.texts(), expectedRecords);
  }
  trcEvents = 0;
}

// What several threads print may be mixed, but all of it comes.
TEST(SchemaManagerThreadTest, NorDoTheirDumps) {
  std::vector<Schema> schemas;
  for (const std::string &text : kTexts) {
    schemas.push_back(makeSchema(files(text, 0)));
  }
  const auto dump = [](SchemaManager *schema) {
    schema->dumpAttrTable();
    schema->dumpQORAttrTable();
    schema->dumpOcTable();
    schema->dumpUserOc();
    schema->dumpUserAt();
    schema->dumpQorOc();
    schema->dumpQorAt();
    schema->dumpSysOc();
    schema->dumpSysAt();
    schema->dumpEOids();
  };
  const auto takeCharacters = [] {
    std::string printed = testing::internal::GetCapturedStdout();
    std::sort(printed.begin(), printed.end());
    return printed;
  };

  testing::internal::CaptureStdout();
  for (const Schema &schema : schemas) {
    dump(schema.get());
  }
  const std::string expected = takeCharacters();
  EXPECT_GT(expected.size(), 10000U);

  testing::internal::CaptureStdout();
  std::vector<std::thread> threads;
  for (const Schema &schema : schemas) {
    threads.emplace_back(dump, schema.get());
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
  EXPECT_EQ(takeCharacters(), expected);
}

}  // namespace
