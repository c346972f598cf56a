// What becomes of the manager's other operations when memory runs out: lists,
// lookups, collisions, writing and dumps.
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <set>
#include <string>

#include "AllocationSchemas.h"
#include "Attribute.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/AllocationTesting.h"
#include "support/ContractLeaks.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace allocation_schemas;

class SchemaManagerAllocationTest : public testing::Test {
 protected:
  // Two schemas that collide in the definitions 2 and not in the others.
  struct Pair {
    Schema schema;
    Schema other;
  };

  SchemaManagerAllocationTest() {
    std::string modified;
    for (const Kind &kind : kKinds) {
      m_mine.write(kind.file, line(kind, 1, 1, "mine") +
                                  line(kind, 2, 2, "mine") +
                                  line(kind, 3, 3, "mine"));
      m_theirs.write(kind.file, line(kind, 2, 2, "theirs"));
      modified += line(kind, 4, 4, "modified");
    }
    m_mine.write("V3.modifiedschema", modified);
    m_list =
        m_mine.write("list", oidOf(kKinds[0], 1) + ' ' + oidOf(kKinds[1], 4) +
                                 " #a-comment-of-a-certain-length\n" +
                                 oidOf(kKinds[2], 3) + " 9.9\n");
    // The first use of what is kept for ever.
    const std::unique_ptr<Pair> pair = make();
    m_theirContent = contentOf(pair->other.get());
  }

  std::unique_ptr<Pair> make() const {
    auto pair = std::make_unique<Pair>();
    pair->schema = std::make_unique<SchemaManager>(m_mine.string());
    pair->other = std::make_unique<SchemaManager>(m_theirs.string());
    for (const Kind &kind : kKinds) {
      EXPECT_EQ(pair->schema->readFile(kind.file), 0U);
      EXPECT_EQ(pair->other->readFile(kind.file), 0U);
    }
    EXPECT_EQ(pair->schema->readFile("V3.modifiedschema"), 0U);
    return pair;
  }

  // The result and all of the first schema, which takes what is recorded for
  // V3.modifiedschema out of it; the other one must be as it was.
  std::string outcome(const Pair &pair, unsigned int result) const {
    EXPECT_EQ(contentOf(pair.other.get()), m_theirContent);
    std::string text =
        std::to_string(result) + '\n' + contentOf(pair.schema.get());
    for (const Kind &kind : kKinds) {
      for (int number = 1; number < 5; ++number) {
        const std::string oid = oidOf(kind, number);
        text += oid;
        text += pair.schema->isExcluded(oid) != 0 ? " excluded" : "";
        text += pair.schema->delOidFromModSch(oid) == 0 ? " modified" : "";
        text += '\n';
      }
    }
    return text;
  }

  // Lets `operation`, which is given both schemas, fail. Returns how many
  // allocations it makes.
  template <class Operation>
  std::size_t failEach(const Operation &operation) const {
    return failEachAllocation([this] { return make(); }, operation,
                              [this](const Pair &pair, unsigned int result) {
                                return outcome(pair, result);
                              });
  }

  const TemporaryDirectory m_mine;
  const TemporaryDirectory m_theirs;
  std::string m_list;          // a file of OIDs
  std::string m_theirContent;  // of each second schema
};

TEST_F(SchemaManagerAllocationTest, Construction) {
  const std::string directory = m_mine.string();
  EXPECT_GT(failEachAllocation([] { return std::make_unique<int>(); },
                               [&directory](int & /*nothing*/) {
                                 SchemaManager schema(directory);
                                 return schema.isModFileEmpty();
                               }),
            0U);
}

TEST_F(SchemaManagerAllocationTest, LookUps) {
  const auto make = [this] { return this->make(); };
  const auto failEach = [&make](const auto &lookUp) {
    EXPECT_GT(failEachAllocation(make, lookUp,
                                 [](const Pair & /*pair*/, auto definition) {
                                   return writtenLine(&definition);
                                 }),
              0U);
  };
  const std::string name = nameOf(1);
  for (const std::string &key :
       {name, "A" + name.substr(1), oidOf(kKinds[0], 1)}) {
    failEach([&key](Pair &pair) { return pair.schema->getAttr(key); });
  }
  for (const std::string &key : {name, oidOf(kKinds[1], 1)}) {
    failEach([&key](Pair &pair) { return pair.schema->getObjClass(key); });
  }
  const std::string storage = oidOf(kKinds[2], 1);
  failEach([&storage](Pair &pair) { return pair.schema->getQORAttr(storage); });
  EXPECT_GT(
      failEachAllocation(
          make, [&name](Pair &pair) { return pair.schema->convert(name); }),
      0U);
}

TEST_F(SchemaManagerAllocationTest, Collisions) {
  for (const auto check :
       {&SchemaManager::checkCollisions, &SchemaManager::checkObjClasses,
        &SchemaManager::checkAttrs, &SchemaManager::checkQORAttrs}) {
    EXPECT_GT(failEach([check](Pair &pair) {
                return (pair.schema.get()->*check)(pair.other.get());
              }),
              0U);
  }
}

TEST_F(SchemaManagerAllocationTest, CollisionReports) {
  for (const bool checked : {false, true}) {
    for (const auto report :
         {&SchemaManager::getOcTable, &SchemaManager::getAttrTable,
          &SchemaManager::getQORAttrTable}) {
      const auto make = [&] {
        auto pair = this->make();
        if (checked) {  // nothing collides
          pair->schema->checkCollisions(emptySchema().get());
        }
        return pair;
      };
      EXPECT_GT(
          failEachAllocation(
              make, [&](Pair &pair) { return (pair.schema.get()->*report)(); }),
          0U);
    }
  }
}

TEST_F(SchemaManagerAllocationTest, ExcludedOids) {
  EXPECT_GT(failEach([this](Pair &pair) {
              return pair.schema->readExcludedOids(m_list);
            }),
            0U);
  EXPECT_GT(failEach([oid = oidOf(kKinds[0], 1)](Pair &pair) {
              return pair.schema->isExcluded(oid);
            }),
            0U);
}

// The second text is too long for the record's own buffer.
TEST_F(SchemaManagerAllocationTest, ListsThatAreMissing) {
  for (const std::size_t length : {20U, 400U}) {
    const std::string missing =
        m_mine.string() + '/' + std::string(length, 'm');
    EXPECT_GT(failEach([&missing](Pair &pair) {
                return pair.schema->readExcludedOids(missing);
              }),
              0U);
    EXPECT_GT(failEach([&missing](Pair &pair) {
                return pair.schema->modifySchema(missing);
              }),
              0U);
  }
}

TEST_F(SchemaManagerAllocationTest, ModifiedSchema) {
  EXPECT_GT(failEach([this](Pair &pair) {
              return pair.schema->modifySchema(m_list);
            }),
            0U);
  EXPECT_EQ(failEach([](Pair &pair) { return pair.schema->isModFileEmpty(); }),
            0U);
}

// Nothing is removed when there is an exception, so that it can be repeated.
TEST_F(SchemaManagerAllocationTest, SetsOfOids) {
  for (const std::string &oid :
       {oidOf(kKinds[1], 1), oidOf(kKinds[0], 4), std::string(400, '7')}) {
    EXPECT_GT(failEach([&oid](Pair &pair) {
                return pair.schema->delOidFromFileSet(oid);
              }),
              0U);
    EXPECT_GT(failEach([&oid](Pair &pair) {
                return pair.schema->delOidFromModSch(oid);
              }),
              0U);
    EXPECT_GT(
        failEach([&oid](Pair &pair) {
          const auto *set = pair.schema->findOidInSet(pair.other.get(), oid);
          return set == nullptr ? 0U : static_cast<unsigned int>(set->size());
        }),
        0U);
  }
}

// Reading once more what has been read leaves the second definitions and files
// of a key behind; the tables are as if it had been read once.
TEST_F(SchemaManagerAllocationTest, RepeatedReading) {
  const Schema expected = makeSchema({{"V3.user.at", fileText()}});
  const TemporaryDirectory directory;
  directory.write("V3.user.at", fileText());
  for (const bool lasting : {false, true}) {
    bool thrown = true;
    for (std::size_t n = 1; thrown && !HasFailure(); ++n) {
      SCOPED_TRACE(testing::Message() << lasting << ", n = " << n);
      SchemaManager schema(directory.string());
      failsAt(
          n, lasting, [&] { schema.readFile("V3.user.at"); }, &thrown);
      if (thrown) {
        EXPECT_EQ(
            leaksDefinitions([&] { return schema.readFile("V3.user.at"); }),
            0U);
      }
      EXPECT_EQ(contentOf(&schema), contentOf(expected.get()));
    }
  }
}

TEST_F(SchemaManagerAllocationTest, FilesThatAreNotRead) {
  for (const std::string &name :
       {std::string("list"), std::string("V3.user.oc.missing"),
        std::string(400, 'm')}) {
    SCOPED_TRACE(name);
    for (const bool lasting : {false, true}) {
      bool thrown = true;
      for (std::size_t n = 1; thrown && !HasFailure(); ++n) {
        SchemaManager schema(m_mine.string());
        const Calls calls(~0U);
        unsigned int result = 0;
        leaksAnalyser([&] {
          return failsAt(
              n, lasting, [&] { result = schema.readFile(name); }, &thrown);
        });
        EXPECT_TRUE(calls.balanced());
        EXPECT_EQ(result, thrown ? 0U : name == "list" ? 89U : 1U);
      }
    }
  }
}

TEST_F(SchemaManagerAllocationTest, Writing) {
  const FixedDate date;
  const TemporaryDirectory out;
  const std::string directory = out.string();
  const auto written = [&out](const Pair & /*pair*/, unsigned int result) {
    return std::to_string(result) + '\n' + out.read("V3.modifiedschema");
  };
  const auto make = [this] { return this->make(); };
  EXPECT_GT(failEachAllocation(
                make,
                [&directory](Pair &pair) {
                  return pair.schema->writeFile(directory, "V3.modifiedschema");
                },
                written),
            0U);
  EXPECT_GT(failEachAllocation(
                make,
                [&, oids = std::set<std::string>{oidOf(kKinds[0], 1), "9.9"}](
                    Pair &pair) {
                  return pair.schema->writeSetToFile(
                      oids, directory + "/V3.modifiedschema");
                },
                written),
            0U);
}

TEST_F(SchemaManagerAllocationTest, FilesThatAreNotWritten) {
  for (const std::size_t length : {20U, 400U}) {
    const std::string missing =
        m_mine.string() + '/' + std::string(length, 'm');
    EXPECT_GT(failEach([&missing](Pair &pair) {
                return pair.schema->writeFile(missing, "V3.user.at");
              }),
              0U);
    EXPECT_GT(failEach([&missing](Pair &pair) {
                return pair.schema->writeFile(".", missing);
              }),
              0U);
    EXPECT_GT(failEach([&missing](Pair &pair) {
                return pair.schema->writeSetToFile({}, missing + "/file");
              }),
              0U);
  }
}

// A dump takes no memory.
TEST_F(SchemaManagerAllocationTest, Dumps) {
  for (const auto dump :
       {&SchemaManager::dumpAttrTable, &SchemaManager::dumpQORAttrTable,
        &SchemaManager::dumpOcTable, &SchemaManager::dumpUserOc,
        &SchemaManager::dumpUserAt, &SchemaManager::dumpQorOc,
        &SchemaManager::dumpQorAt, &SchemaManager::dumpSysOc,
        &SchemaManager::dumpSysAt, &SchemaManager::dumpEOids}) {
    EXPECT_EQ(failEachAllocation([this] { return make(); },
                                 [dump](Pair &pair) {
                                   const CountedOutput output;
                                   (pair.schema.get()->*dump)();
                                   EXPECT_GT(output.size(), 0U);
                                   return output.size();
                                 }),
              0U);
  }
}

}  // namespace
