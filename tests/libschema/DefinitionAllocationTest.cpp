// What becomes of the definitions' operations when memory runs out.
#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "Attribute.h"
#include "DefinitionTesting.h"
#include "ObjectClass.h"
#include "QORAttribute.h"
#include "QORSchema.h"
#include "SchemaLexan.h"
#include "support/AllocationTesting.h"
#include "support/TemporaryDirectory.h"

namespace {

using definitions::compare;
using definitions::written;

// A definition of each class with a value in every field, none of which a
// string holds without an allocation.
template <class Definition>
const char *text();

template <>
const char *text<Attribute>() {
  return "attributetypes=( 1.3.6.1.4.1.42424.1.1\n"
         " NAME ( 'a-name-of-a-certain-length' 'another-name-of-that-length' "
         ")\n"
         " DESC 'a description of a certain length' OBSOLETE\n"
         " SUP 1.3.6.1.4.1.42424.1.2 EQUALITY 1.3.6.1.4.1.42424.1.3\n"
         " ORDERING 1.3.6.1.4.1.42424.1.4 SUBSTR 1.3.6.1.4.1.42424.1.5\n"
         " SYNTAX 1.3.6.1.4.1.42424.1.6{64} SINGLE-VALUE\n"
         " NO-USER-MODIFICATION USAGE directoryOperation )\n#\n";
}

template <>
const char *text<ObjectClass>() {
  return "objectclasses=( 1.3.6.1.4.1.42424.2.1\n"
         " NAME ( 'a-name-of-a-certain-length' 'another-name-of-that-length' "
         ")\n"
         " DESC 'a description of a certain length' OBSOLETE\n"
         " SUP ( a-superior-of-a-certain-length $ another-superior-of-it )\n"
         " AUXILIARY MUST ( a-first-attribute-to-be-had $ a-second-one-of-them "
         ")\n"
         " MAY ( a-first-attribute-that-may-be-had ) )\n#\n";
}

template <>
const char *text<QORAttribute>() {
  return "QORAttributetypes=( 1.3.6.1.4.1.42424.3.1\n"
         " DBNAME ( 'a-column-of-a-certain-length' 'another-of-that-length' )\n"
         " ACCESS-CLASS an-access-class-of-a-certain-length\n"
         " LENGTH 12345678901234567890 EQUALITY ORDERING SUBSTR APPROX )\n#\n";
}

template <class Definition>
class DefinitionAllocationTest : public testing::Test {
 protected:
  DefinitionAllocationTest() {
    m_directory.write(kFile, text<Definition>());
    Definition definition;
    parse(&definition);
    m_written = written(definition);
  }

  // The analyser is part of what fails.
  int parse(Definition *definition) const {
    SchemaLexan lexan(m_directory.string(), kFile);
    lexan.lexan();
    lexan.lexan();
    return definition->parse(&lexan);
  }

  std::unique_ptr<Definition> make() const {
    auto definition = std::make_unique<Definition>();
    EXPECT_EQ(parse(definition.get()), 1);
    return definition;
  }

  // Lets the operation on a definition fail, which leaves it as it was. Returns
  // how many allocations it makes.
  template <class Operation>
  std::size_t failEach(const Operation &operation) const {
    return failEachAllocation(
        [this] { return make(); }, operation,
        [this](Definition &definition, const auto &result) {
          EXPECT_EQ(written(definition), m_written);
          return result;
        });
  }

  static constexpr char kFile[] = "V3.user.at";

  const TemporaryDirectory m_directory;
  std::string m_written;  // what a definition writes
};

using Classes = testing::Types<Attribute, ObjectClass, QORAttribute>;
TYPED_TEST_SUITE(DefinitionAllocationTest, Classes, );

TYPED_TEST(DefinitionAllocationTest, Construction) {
  failEachAllocation([] { return std::make_unique<int>(); },
                     [](int & /*nothing*/) {
                       TypeParam definition;
                       return definition.oid().size();
                     });
}

TYPED_TEST(DefinitionAllocationTest, Copy) {
  EXPECT_GT(this->failEach([](TypeParam &definition) {
    TypeParam copy(definition);
    return compare(copy, definition);
  }),
            0U);
}

// What is left of an assignment that fails can be assigned to again.
TYPED_TEST(DefinitionAllocationTest, Assignment) {
  const std::unique_ptr<TypeParam> other = this->make();
  EXPECT_GT(failEachAllocation([] { return std::make_unique<TypeParam>(); },
                               [&other](TypeParam &definition) {
                                 definition = *other;
                                 return 0;
                               },
                               [](TypeParam &definition, int /*result*/) {
                                 return written(definition);
                               }),
            0U);
}

// A definition that was read in part can be written, and assigned to again.
TYPED_TEST(DefinitionAllocationTest, Parse) {
  EXPECT_GT(failEachAllocation([] { return std::make_unique<TypeParam>(); },
                               [this](TypeParam &definition) {
                                 definition = TypeParam();
                                 return this->parse(&definition);
                               },
                               [](TypeParam &definition, int result) {
                                 return std::to_string(result) +
                                        written(definition);
                               }),
            0U);
  for (std::size_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    TypeParam definition;
    bool thrown = false;
    failsAt(
        n, false, [&] { this->parse(&definition); }, &thrown);
    if (!thrown) {
      EXPECT_EQ(written(definition), this->m_written);
      break;
    }
    EXPECT_NE(written(definition), "");
    EXPECT_EQ(compare(definition, definition), 1);
    definition = TypeParam();
    EXPECT_EQ(this->parse(&definition), 1);
    EXPECT_EQ(written(definition), this->m_written);
  }
}

TYPED_TEST(DefinitionAllocationTest, DumpToAFile) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("line", "");
  EXPECT_GT(failEachAllocation([this] { return this->make(); },
                               [&path](TypeParam &definition) {
                                 std::ofstream out(path);
                                 definition.dump(out);
                                 return out.good();
                               },
                               [&](const TypeParam & /*unused*/, bool good) {
                                 return std::to_string(good) +
                                        directory.read("line");
                               }),
            0U);
}

TYPED_TEST(DefinitionAllocationTest, DumpTakesNoMemory) {
  EXPECT_EQ(this->failEach([](TypeParam &definition) {
    const CountedOutput output;
    definition.dump();
    EXPECT_GT(output.size(), 0U);
    return output.size();
  }),
            0U);
}

TYPED_TEST(DefinitionAllocationTest, EqualityOfShortListsTakesNoMemory) {
  const std::unique_ptr<TypeParam> other = this->make();
  EXPECT_EQ(this->failEach([&other](TypeParam &definition) {
    return compare(definition, *other);
  }),
            0U);
}

TYPED_TEST(DefinitionAllocationTest, Getters) {
  const auto failText = [this](std::string (TypeParam::*get)()) {
    return this->failEach(
        [get](TypeParam &definition) { return (definition.*get)(); });
  };
  EXPECT_GT(failText(&TypeParam::getOid), 0U);
  EXPECT_GT(failText(&TypeParam::getOidAndName), 0U);
  failText(&TypeParam::getDescription);
  failText(&TypeParam::getFirstName);
  failText(&TypeParam::getFirstNameLower);
  this->failEach([](TypeParam &definition) { return definition.getNames(); });
  this->failEach(
      [](TypeParam &definition) { return definition.getSuperior(); });
  EXPECT_GT(this->failEach([s = std::string(40, 'S')](TypeParam &definition) {
    return definition.convert(s);
  }),
            0U);
}

TEST(ObjectClassAllocationTest, AttributeLists) {
  const auto make = [] {
    return std::make_unique<ObjectClass>(
        definitions::parsed<ObjectClass>(text<ObjectClass>()));
  };
  EXPECT_GT(failEachAllocation(make,
                               [](ObjectClass &definition) {
                                 return definition.getReqAttrs();
                               }),
            0U);
  EXPECT_GT(failEachAllocation(make,
                               [](ObjectClass &definition) {
                                 return definition.getOptAttrs();
                               }),
            0U);
}

// Long lists are sorted in a copy.
TEST(ObjectClassAllocationTest, EqualityOfLongLists) {
  std::string list = "objectclasses=( 1.1 NAME 'c' MUST ( a";
  for (int i = 0; i < 20; ++i) {
    list += " $ an-attribute-of-a-certain-length-" + std::to_string(i);
  }
  const std::string closed = list + " ) )\n#\n";
  auto other = definitions::parsed<ObjectClass>(closed);
  EXPECT_GT(failEachAllocation(
                [&closed] {
                  return std::make_unique<ObjectClass>(
                      definitions::parsed<ObjectClass>(closed));
                },
                [&other](ObjectClass &definition) {
                  return definition.objsEqual(other);
                }),
            20U);
}

}  // namespace
