// The example directories, read as a whole.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "SchemaManager.h"

namespace {

struct Example {
  const char *directory;
  std::size_t attributeTypes;
  std::size_t objectClasses;
  std::size_t storageDefinitions;
};

class SchemaManagerExamplesTest : public testing::TestWithParam<Example> {};

TEST_P(SchemaManagerExamplesTest, EveryDefinitionHasItsKeys) {
  const Example &example = GetParam();
  SchemaManager schema(SCHEMA_EXAMPLES_DIR + std::string("/") +
                       example.directory);
  for (const char *file :
       {"V3.user.at", "V3.user.oc", "V3.qor.at", "V3.qor.oc", "V3.system.at",
        "V3.system.oc", "V3.config.at", "V3.config.oc", "V3.modifiedschema"}) {
    EXPECT_EQ(schema.readFile(file), 0U) << file;
  }
  EXPECT_EQ(schema.attributeTypes().size(), example.attributeTypes);
  EXPECT_EQ(schema.attributeTypesByOid().size(), example.attributeTypes);
  EXPECT_EQ(schema.objectClasses().size(), example.objectClasses);
  EXPECT_EQ(schema.objectClassesByOid().size(), example.objectClasses);
  EXPECT_EQ(schema.storageDefinitions().size(), example.storageDefinitions);
  for (const auto &[oid, storage] : schema.storageDefinitions()) {
    EXPECT_EQ(schema.attributeTypesByOid().count(oid), 1U) << oid;
  }
}

constexpr Example kExamples[] = {{"old-installation", 123, 41, 123},
                                 {"new-release", 111, 36, 111}};

std::string exampleName(const testing::TestParamInfo<Example> &example) {
  return std::string(example.param.directory, 3);
}

INSTANTIATE_TEST_SUITE_P(Examples, SchemaManagerExamplesTest,
                         testing::ValuesIn(kExamples), exampleName);

}  // namespace
