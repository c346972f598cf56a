// The migration of the examples, against what their definitions say.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Apply.h"
#include "MigrateTesting.h"
#include "Migration.h"
#include "SchemaManager.h"

namespace fs = std::filesystem;

using schemaplan::Verdict;

namespace {

using Names = std::vector<std::string>;

const fs::path kExamples = SCHEMA_EXAMPLES_DIR;
const fs::path kOld = kExamples / "old-installation";
const fs::path kNew = kExamples / "new-release";
const fs::path kExcluded = kExamples / "excluded-oids.txt";

// The warnings of the listed OIDs that a result has no definition for.
const Names kNotInResult = {
    "excluded-oids.txt:7:1: warning: [LIST-UNKNOWN] expected the OID of a "
    "definition, found 1.3.6.1.4.1.32473.1.12, which no definition has",
    "excluded-oids.txt:7:24: warning: [LIST-UNKNOWN] expected the OID of a "
    "definition, found 1.3.6.1.4.1.32473.2.5, which no definition has",
    "excluded-oids.txt:12:1: warning: [LIST-UNKNOWN] expected the OID of a "
    "definition, found 2.5.4.2, which no definition has",
};

// Key to definition, as it is written.
using Table = std::map<std::string, std::string>;

template <class Definition>
Table tableOf(const std::map<std::string, Definition *> &definitions) {
  const TemporaryDirectory directory;
  const fs::path path = directory.path() / "lines";
  Table table;
  for (const auto &[key, definition] : definitions) {
    std::ofstream out(path);
    definition->dump(out);
    out.close();
    table[key] = readText(path);
  }
  return table;
}

void readAll(SchemaManager *schema) {
  for (const SchemaFile &file : kSchemaFiles) {
    EXPECT_EQ(schema->readFile(file.name), 0U) << file.name;
  }
}

// The words outside comments.
std::set<std::string> excludedOids() {
  std::set<std::string> oids;
  std::istringstream list(readText(kExcluded));
  for (std::string line; std::getline(list, line);) {
    std::istringstream words(line.substr(0, line.find('#')));
    for (std::string word; words >> word;) {
      oids.insert(word);
    }
  }
  return oids;
}

// The release's definitions, and in their place or besides them those of the
// old installation that are not excluded and differ.
template <class Definition, class Equal>
Table expectedTable(const std::map<std::string, Definition *> &oldTable,
                    const std::map<std::string, Definition *> &newTable,
                    const Equal &equal) {
  const std::set<std::string> excluded = excludedOids();
  const Table oldLines = tableOf(oldTable);
  Table expected = tableOf(newTable);
  for (const auto &[key, definition] : oldTable) {
    const auto other = newTable.find(key);
    if (excluded.count(definition->getOid()) == 0 &&
        (other == newTable.end() || !equal(definition, other->second))) {
      expected[key] = oldLines.at(key);
    }
  }
  return expected;
}

// The kind and OID of each definition in a written file, in order.
Names writtenIn(const std::string &text) {
  Names definitions;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t oid = line.find("=( ");
    if (oid != std::string::npos) {
      definitions.push_back(line.substr(0, line.find(' ', oid + 3)));
    }
  }
  return definitions;
}

const char *keywordOf(Kind kind) {
  switch (kind) {
    case Kind::kAttributeType:
      return "attributetypes";
    case Kind::kObjectClass:
      return "objectclasses";
    default:
      return "QORAttributetypes";
  }
}

class ApplyExamplesTest : public MigrateTest {
 protected:
  // `unknown`: the warnings of listed OIDs that no definition has.
  ApplyResult migrate(const fs::path &oldDirectory,
                      const fs::path &newDirectory, const std::string &out,
                      const Names &unknown = {}) const {
    const ApplyResult result = apply(
        {{oldDirectory, newDirectory, std::nullopt, kExcluded}, path(out)});
    Names warnings;
    for (const std::string &warning : result.warnings) {
      warnings.push_back(replaceAll(warning.substr(0, warning.find('\n')),
                                    kExamples.string() + '/', ""));
    }
    EXPECT_EQ(warnings, unknown);
    return result;
  }

  void expectSameFiles(const std::string &one, const std::string &other) const {
    for (const SchemaFile &file : kSchemaFiles) {
      EXPECT_EQ(read(one + '/' + file.name), read(other + '/' + file.name))
          << file.name;
    }
    EXPECT_EQ(namesIn(path(one)), namesIn(path(other)));
  }

 private:
  const FixedDate m_date;
};

// The definitions of the old installation that meet a verdict, by kind.
Names withVerdict(const Migration &migration, Verdict verdict, Kind kind) {
  Names names;
  for (const schemaplan::PlannedDefinition &planned :
       migration.plan().definitions) {
    const schemacheck::Statement &statement = *planned.statement;
    if (planned.verdict == verdict && statement.definition->kind == kind) {
      names.push_back(kind == Kind::kStorage ? statement.oid()
                                             : statement.firstName());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::size_t sumOf(const Counts &counts) {
  std::size_t sum = 0;
  for (const auto &row : counts) {
    for (const std::size_t number : row) {
      sum += number;
    }
  }
  return sum;
}

std::size_t sumOf(const ApplyResult &result, Verdict verdict) {
  return sumOf(result.verdicts[static_cast<std::size_t>(verdict)]);
}

TEST_F(ApplyExamplesTest, TheResultHoldsTheReleaseAndWhatIsCarried) {
  migrate(kOld, kNew, "out");
  SchemaManager oldSchema(kOld.string());
  SchemaManager newSchema(kNew.string());
  SchemaManager result(path("out").string());
  readAll(&oldSchema);
  readAll(&newSchema);
  readAll(&result);
  EXPECT_EQ(
      tableOf(result.attributeTypes()),
      expectedTable(oldSchema.attributeTypes(), newSchema.attributeTypes(),
                    [](Attribute *a, const Attribute *b) {
                      return a->attrsEqual(*b) != 0;
                    }));
  EXPECT_EQ(tableOf(result.objectClasses()),
            expectedTable(oldSchema.objectClasses(), newSchema.objectClasses(),
                          [](ObjectClass *a, const ObjectClass *b) {
                            return a->objsEqual(*b) != 0;
                          }));
  EXPECT_EQ(tableOf(result.storageDefinitions()),
            expectedTable(oldSchema.storageDefinitions(),
                          newSchema.storageDefinitions(),
                          [](QORAttribute *a, const QORAttribute *b) {
                            return a->qorAttrsEqual(*b) != 0;
                          }));
  EXPECT_EQ(result.attributeTypes().size(), 126U);
  EXPECT_EQ(result.objectClasses().size(), 42U);
  EXPECT_EQ(result.storageDefinitions().size(), 126U);
}

// What is added goes to the file that it came from; what is replaced stays in
// the release's file.
TEST_F(ApplyExamplesTest, EachFileHoldsItsDefinitionsInTheOrderOfTheirOids) {
  migrate(kOld, kNew, "out");
  const Inventory oldFiles(kOld);
  const Inventory newFiles(kNew);
  const std::set<std::string> excluded = excludedOids();
  for (std::size_t file = 0; file < kSchemaFiles.size(); ++file) {
    const std::string name = kSchemaFiles[file].name;
    SCOPED_TRACE(name);
    const std::string text = read("out/" + name);
    if (!kSchemaFiles[file].written) {
      EXPECT_EQ(text, readText(kNew / name));
      continue;
    }
    // By OID: an attribute type comes before its storage definition.
    std::set<std::pair<std::string, Kind>> expected;
    for (const Entry &entry : newFiles.entries()) {
      if (entry.file == file) {
        expected.emplace(entry.oid, entry.kind);
      }
    }
    for (const Entry &entry : oldFiles.entries()) {
      if (entry.file == file && excluded.count(entry.oid) == 0 &&
          newFiles.holder(entry.kind, entry.key) == nullptr) {
        expected.emplace(entry.oid, entry.kind);
      }
    }
    Names definitions;
    for (const auto &[oid, kind] : expected) {
      definitions.push_back(std::string(keywordOf(kind)) + "=( " + oid);
    }
    EXPECT_EQ(writtenIn(text), definitions);
    EXPECT_EQ(text.substr(0, text.find('\n') + 1), kHeaderLine);
  }
}

TEST_F(ApplyExamplesTest, ASmallFileOfTheResultInFull) {
  migrate(kOld, kNew, "out");
  EXPECT_EQ(
      read("out/V3.user.oc"),
      std::string(kHeaderLine) +
          R"(objectclasses=( 1.3.6.1.4.1.250.3.15 NAME 'labeledUriObject'  DESC 'Object with a web page' SUP ( top ) AUXILIARY MAY ( labeledUri $ description ) )
objectclasses=( 1.3.6.1.4.1.32473.2.1 NAME 'exampleEmployee'  DESC 'Employee of the site' SUP ( top ) AUXILIARY MUST ( exampleBadgeNumber ) MAY ( exampleCostCentre $ exampleHireDate $ exampleDeskCode $ exampleEmergencyContact $ exampleParkingPermit $ exampleLeaveDays $ exampleNickname ) )
objectclasses=( 1.3.6.1.4.1.32473.2.2 NAME 'exampleContractor'  DESC 'Person who works at the site for another company' SUP ( exampleEmployee ) AUXILIARY MAY ( o $ manager ) )
objectclasses=( 1.3.6.1.4.1.32473.2.3 NAME 'exampleAsset'  DESC 'Device that the site has in its inventory' SUP ( device ) STRUCTURAL MUST ( exampleAssetTag ) MAY ( exampleCostCentre $ exampleWarrantyEnd $ manager ) )
objectclasses=( 1.3.6.1.4.1.32473.2.4 NAME 'exampleProject'  DESC 'Project, with its members' SUP ( groupOfNames ) STRUCTURAL MAY ( exampleProjectLead $ exampleCostCentre $ labeledUri ) )
objectclasses=( 2.16.840.1.113730.3.2.2 NAME 'inetOrgPerson'  DESC 'Person of today on the Internet' SUP ( organizationalPerson ) STRUCTURAL MAY ( audio $ businessCategory $ carLicense $ departmentNumber $ displayName $ employeeNumber $ employeeType $ givenName $ homePhone $ homePostalAddress $ initials $ jpegPhoto $ labeledURI $ mail $ manager $ mobile $ o $ pager $ photo $ roomNumber $ secretary $ uid $ userCertificate $ x500UniqueIdentifier $ preferredLanguage $ userSMIMECertificate $ userPKCS12 ) )
)");
}

TEST_F(ApplyExamplesTest, EachDefinitionMeetsTheVerdictThatItIsThereFor) {
  const Migration migration({kOld, kNew, std::nullopt, kExcluded});
  EXPECT_EQ(
      withVerdict(migration, Verdict::kAdded, Kind::kAttributeType),
      (Names{"dmdName", "exampleAssetTag", "exampleBadgeNumber",
             "exampleCostCentre", "exampleDeskCode", "exampleEmergencyContact",
             "exampleHireDate", "exampleLeaveDays", "exampleNickname",
             "exampleParkingPermit", "exampleProjectLead", "exampleWarrantyEnd",
             "presentationAddress", "protocolInformation",
             "supportedApplicationContext"}));
  EXPECT_EQ(withVerdict(migration, Verdict::kAdded, Kind::kObjectClass),
            (Names{"applicationEntity", "dmd", "exampleAsset",
                   "exampleContractor", "exampleEmployee", "exampleProject"}));
  EXPECT_EQ(withVerdict(migration, Verdict::kAdded, Kind::kStorage).size(),
            15U);
  EXPECT_EQ(withVerdict(migration, Verdict::kReplaces, Kind::kAttributeType),
            (Names{"altServer", "description", "labeledUri", "personalTitle",
                   "telephoneNumber", "title"}));
  EXPECT_EQ(withVerdict(migration, Verdict::kReplaces, Kind::kObjectClass),
            (Names{"device", "extensibleObject", "groupOfUniqueNames",
                   "labeledUriObject", "rFC822LocalPart"}));
  EXPECT_EQ(withVerdict(migration, Verdict::kReplaces, Kind::kStorage),
            (Names{"0.9.2342.19200300.100.1.3", "1.3.6.1.4.1.250.1.57",
                   "2.5.4.13", "2.5.4.20", "2.5.4.3"}));
  EXPECT_EQ(
      withVerdict(migration, Verdict::kExcluded, Kind::kAttributeType),
      (Names{"exampleFaxGateway", "knowledgeInformation", "userPassword"}));
  EXPECT_EQ(withVerdict(migration, Verdict::kExcluded, Kind::kObjectClass),
            Names{"exampleFaxUser"});
  EXPECT_EQ(withVerdict(migration, Verdict::kExcluded, Kind::kStorage),
            (Names{"1.3.6.1.4.1.32473.1.12", "2.5.4.2", "2.5.4.35"}));
}

TEST_F(ApplyExamplesTest, TwoMigrationsAtOneDateGiveTheSameBytes) {
  migrate(kOld, kNew, "out");
  migrate(kOld, kNew, "again");
  expectSameFiles("out", "again");
}

TEST_F(ApplyExamplesTest, AResultMigratesIntoTheReleaseAsItself) {
  migrate(kOld, kNew, "out");
  const ApplyResult result = migrate(path("out"), kNew, "again", kNotInResult);
  expectSameFiles("out", "again");
  EXPECT_EQ(sumOf(result, Verdict::kAdded), 36U);
  EXPECT_EQ(sumOf(result, Verdict::kReplaces), 16U);
  EXPECT_EQ(sumOf(result, Verdict::kExcluded), 2U);
  EXPECT_EQ(sumOf(result, Verdict::kIdentical), 240U);
}

TEST_F(ApplyExamplesTest, TheOldInstallationFindsItselfInTheResult) {
  migrate(kOld, kNew, "out");
  const ApplyResult result = migrate(kOld, path("out"), "again");
  expectSameFiles("out", "again");
  EXPECT_EQ(sumOf(result, Verdict::kAdded), 0U);
  EXPECT_EQ(sumOf(result, Verdict::kReplaces), 0U);
  EXPECT_EQ(sumOf(result, Verdict::kExcluded), 7U);
  EXPECT_EQ(sumOf(result, Verdict::kIdentical), 280U);
}

TEST_F(ApplyExamplesTest, AResultMigratesIntoItselfUnchanged) {
  migrate(kOld, kNew, "out");
  const ApplyResult result =
      migrate(path("out"), path("out"), "again", kNotInResult);
  expectSameFiles("out", "again");
  EXPECT_EQ(
      sumOf(result, Verdict::kIdentical) + sumOf(result, Verdict::kExcluded),
      294U);
  EXPECT_EQ(sumOf(result.oldRead), 294U);
  EXPECT_EQ(sumOf(result.written), 294U);
}

}  // namespace
