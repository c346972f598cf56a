// The inventory against the library, on real and on random files.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "Inventory.h"
#include "MigrateTesting.h"
#include "SchemaManager.h"
#include "Schemas.h"
#include "support/Child.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"

namespace fs = std::filesystem;

namespace {

// Key or OID to the OID and the first name of a definition.
using Table = std::map<std::string, std::string>;

template <class Definition>
Table tableOf(const std::map<std::string, Definition *> &definitions) {
  Table table;
  for (const auto &[key, definition] : definitions) {
    table[key] = definition->getOid() + ' ' + definition->getFirstName();
  }
  return table;
}

Table heldIn(const Inventory &files, Kind kind) {
  Table table;
  for (const Entry &entry : files.entries()) {
    if (entry.held() && entry.kind == kind) {
      table[entry.key] = entry.oid + ' ' + entry.name;
      EXPECT_EQ(files.holder(kind, entry.key), &entry);
    }
  }
  return table;
}

Table firstByOid(const Inventory &files, Kind kind) {
  Table table;
  for (const Entry &entry : files.entries()) {
    if (entry.kind == kind && !entry.dropped) {
      const Entry *first = files.firstWithOid(kind, entry.oid);
      table[entry.oid] = first->oid + ' ' + first->name;
    }
  }
  return table;
}

void expectAgreement(const fs::path &directory) {
  const Inventory files(directory);
  SchemaManager schema(directory.string());
  leaksDefinitions([&files, &schema] {
    readFiles(files, &schema);
    return 0;
  });
  EXPECT_EQ(heldIn(files, Kind::kAttributeType),
            tableOf(schema.attributeTypes()));
  EXPECT_EQ(heldIn(files, Kind::kObjectClass), tableOf(schema.objectClasses()));
  EXPECT_EQ(heldIn(files, Kind::kStorage),
            tableOf(schema.storageDefinitions()));
  EXPECT_EQ(firstByOid(files, Kind::kAttributeType),
            tableOf(schema.attributeTypesByOid()));
  EXPECT_EQ(firstByOid(files, Kind::kObjectClass),
            tableOf(schema.objectClassesByOid()));
  EXPECT_EQ(firstByOid(files, Kind::kStorage),
            tableOf(schema.storageDefinitions()));
}

TEST(InventoryAgreementTest, HoldsWhatAManagerHoldsOfTheExamples) {
  const fs::path examples = SCHEMA_EXAMPLES_DIR;
  expectAgreement(examples / "old-installation");
  expectAgreement(examples / "new-release");
}

constexpr const char *kKeywords[] = {"attributetypes", "objectclasses",
                                     "QORAttributetypes"};

// A definition in parentheses that any of the three kinds can read.
std::string randomDefinition(Random *random) {
  constexpr const char *kOids[] = {"", "1.1", "1.2", "1.3", "'1.2'", "x"};
  constexpr const char *kNames[] = {"",        "NAME 'a'",         "NAME 'A'",
                                    "NAME b",  "NAME ( 'b' 'a' )", "NAME ( )",
                                    "NAME 'c'"};
  constexpr const char *kRests[] = {"", "LENGTH 4", "DESC '( }'", "SUP 1.1"};
  return "( " + random->oneOf(kOids) + ' ' + random->oneOf(kNames) +
         " OBSOLETE DESC 'x' " + random->oneOf(kRests) + " )\n";
}

std::string randomFile(Random *random) {
  std::string text;
  for (std::size_t sections = random->below(5); sections > 0; --sections) {
    text += random->oneOf(kKeywords);
    if (random->once(2)) {
      text += '=' + randomDefinition(random);
    } else {
      text += " {\n";
      for (std::size_t i = random->below(4) + 1; i > 0; --i) {
        text += randomDefinition(random);
      }
      text += "}\n";
    }
  }
  return text;
}

TEST(InventoryAgreementTest, HoldsWhatAManagerHoldsOfRandomFiles) {
  Random random;
  SCOPED_TRACE(random.seed());
  for (int round = 0; round < 200 && !testing::Test::HasFailure(); ++round) {
    const TemporaryDirectory directory;
    std::string trace;
    for (const char *name :
         {"V3.system.oc", "V3.modifiedschema", "V3.user.at", "V3.config.at"}) {
      const std::string text = randomFile(&random);
      directory.write(name, text);
      trace += std::string(name) + ":\n" + text;
    }
    SCOPED_TRACE(trace);
    expectAgreement(directory.path());
  }
}

// A file of tokens in which anything may follow anything.
std::string randomTokens(Random *random) {
  constexpr const char *kTokens[] = {"(",
                                     ")",
                                     ")",
                                     "}",
                                     "{",
                                     "=",
                                     "$",
                                     "1.2",
                                     "1.3{4}",
                                     "1.4{x",
                                     "a",
                                     "'b c'",
                                     "NAME",
                                     "NAME",
                                     "NAME",
                                     "DESC",
                                     "SUP",
                                     "SYNTAX",
                                     "USAGE",
                                     "EQUALITY",
                                     "ORDERING",
                                     "SUBSTR",
                                     "APPROX",
                                     "OBSOLETE",
                                     "SINGLE-VALUE",
                                     "MUST",
                                     "MAY",
                                     "DBNAME",
                                     "LENGTH",
                                     "ACCESS-CLASS",
                                     "ABSTRACT",
                                     "# c\n",
                                     "\n",
                                     "'DESC'",
                                     "NO-USER-MODIFICATION",
                                     "STRUCTURAL",
                                     "COLLECTIVE",
                                     "COLLECTIVE",
                                     "COLLECTIVE",
                                     "'COLLECTIVE'"};
  std::string text;
  for (std::size_t sections = random->below(3) + 1; sections > 0; --sections) {
    text += random->oneOf(kKeywords);
    text += random->once(3) ? " {" : "=";
    for (std::size_t i = random->below(12); i > 0; --i) {
      text += ' ' + random->oneOf(kTokens);
    }
    text += random->once(2) ? " OBSOLETE ABSTRACT LENGTH 4 )\n" : " )\n";
    text += random->once(2) ? "}\n" : "";
  }
  return text + (random->once(4) ? "tail" : "\n");
}

// Runs `read` on each directory in one child process and gives the characters
// that it returned; fails where it has not returned.
template <class Read>
std::string readAll(const std::vector<fs::path> &directories,
                    const Read &read) {
  const ChildResult result = runInChild(
      [&directories, &read] {
        for (const fs::path &directory : directories) {
          std::cerr << read(directory) << std::flush;
        }
      },
      std::chrono::milliseconds(20000));
  if (result.error.size() < directories.size()) {
    ADD_FAILURE() << result.end << ":\n"
                  << readText(directories[result.error.size()] / "V3.user.at");
  }
  return result.error;
}

constexpr char kRead = '0';
constexpr char kNotRead = '1';
constexpr char kEndless = 'e';

char guardedReading(const fs::path &directory) {
  try {
    const Inventory files(directory);
    return kRead;
  } catch (const Trouble &trouble) {
    const std::string text = trouble.what();
    return text.find("cannot read the definition that begins on line") ==
                   std::string::npos
               ? kNotRead
               : kEndless;
  }
}

char libraryReading(const fs::path &directory) {
  SchemaManager schema(directory.string());
  return schema.readFile("V3.user.at") == 0 ? kRead : kNotRead;
}

bool libraryReadingEnds(const fs::path &directory) {
  const ChildResult result =
      runInChild([&directory] { libraryReading(directory); },
                 std::chrono::milliseconds(30));
  return result.end == ChildResult::End::kReturned;
}

TEST(InventoryAgreementTest, FindsEndlessExactlyWhatTheLibraryDoesNotEnd) {
  Random random;
  SCOPED_TRACE(random.seed());
  const TemporaryDirectory root;
  std::vector<fs::path> all;
  for (int i = 0; i < 600; ++i) {
    all.push_back(root.path() / std::to_string(i));
    fs::create_directory(all.back());
    root.write(std::to_string(i) + "/V3.user.at", randomTokens(&random));
  }
  const std::string guarded = readAll(all, guardedReading);
  ASSERT_EQ(guarded.size(), all.size());

  std::vector<fs::path> ending;
  std::string expected;
  std::vector<fs::path> endless;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (guarded[i] == kEndless) {
      endless.push_back(all[i]);
    } else {
      ending.push_back(all[i]);
      expected += guarded[i];
    }
  }
  EXPECT_GT(std::count(expected.begin(), expected.end(), kRead), 50);
  EXPECT_GT(std::count(expected.begin(), expected.end(), kNotRead), 50);
  ASSERT_GT(endless.size(), 30U);
  EXPECT_EQ(readAll(ending, libraryReading), expected);
  endless.resize(30);
  for (const fs::path &directory : endless) {
    EXPECT_FALSE(libraryReadingEnds(directory))
        << readText(directory / "V3.user.at");
  }
}

}  // namespace
