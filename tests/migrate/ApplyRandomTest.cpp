// Migrations of random directories, in which names and OIDs collide in every
// way, against a simple model of what the result should hold.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Apply.h"
#include "MigrateTesting.h"
#include "SchemaManager.h"
#include "support/ContractLeaks.h"

namespace fs = std::filesystem;

using schemacheck::Code;

namespace {

constexpr const char *kNames[] = {"a", "b", "c", "d", "e", "f"};
constexpr const char *kOids[] = {"1.1", "1.2", "1.3", "1.4", "1.5", "1.6"};
constexpr const char *kFiles[] = {"V3.user.at",   "V3.user.oc",
                                  "V3.system.at", "V3.qor.oc",
                                  "V3.config.at", "V3.modifiedschema"};
constexpr const char *kDescriptions[] = {"x", "y"};
constexpr const char *kLengths[] = {"4", "5"};

const std::vector<std::string> kInputs = {"excluded", "new", "old"};

struct Definition {
  Kind kind;
  std::string oid;
  std::string name;   // empty for storage definitions
  std::string value;  // the description, or the length
  std::string key() const { return kind == Kind::kStorage ? oid : name; }
};

// Of each kind, what is held under each key.
using Model = std::map<std::pair<Kind, std::string>, Definition>;

std::string textOf(const Definition &definition) {
  switch (definition.kind) {
    case Kind::kAttributeType:
      return "attributetypes=( " + definition.oid + " NAME '" +
             definition.name + "' DESC '" + definition.value + "' )\n";
    case Kind::kObjectClass:
      return "objectclasses=( " + definition.oid + " NAME '" + definition.name +
             "' DESC '" + definition.value + "' )\n";
    default:
      return "QORAttributetypes=( " + definition.oid + " LENGTH " +
             definition.value + " )\n";
  }
}

// As "attribute type 'a' (1.1)".
std::string nameOf(const Definition &definition) {
  return kindName(definition.kind) +
         (definition.name.empty() ? "" : " '" + definition.name + "'") + " (" +
         definition.oid + ")";
}

Definition randomDefinition(Random *random) {
  Definition definition{Kind::kAttributeType, random->oneOf(kOids), "", ""};
  // Mostly a name goes with an OID.
  const std::string usual = kNames[definition.oid.back() - '1'];
  definition.name = random->once(8) ? random->oneOf(kNames) : usual;
  definition.value = random->oneOf(kDescriptions);
  switch (random->below(5)) {
    case 0:
    case 1:
      break;
    case 2:
      definition.kind = Kind::kObjectClass;
      // Mostly the OIDs of object classes are others.
      definition.oid += random->once(8) ? "" : ".1";
      break;
    default:
      definition.kind = Kind::kStorage;
      definition.name = "";
      definition.value = random->oneOf(kLengths);
      break;
  }
  return definition;
}

// Whether the release has the attribute types of all storage definitions of the
// old installation, so that none of these needs to be left out.
bool haveTypes(const Model &old, const Model &release) {
  for (const auto &[key, definition] : old) {
    const std::string &oid = definition.oid;
    const auto isType = [&oid](const Model::value_type &entry) {
      return entry.first.first == Kind::kAttributeType &&
             entry.second.oid == oid;
    };
    if (key.first == Kind::kStorage &&
        std::none_of(release.begin(), release.end(), isType)) {
      return false;
    }
  }
  return true;
}

class ApplyRandomTest : public MigrateTest {
 protected:
  // Writes random files below `directory`; what a manager holds of them.
  Model writeDirectory(const std::string &directory, Random *random) {
    std::map<std::string, std::vector<Definition>> files;
    files["V3.user.at"];
    for (std::size_t i = random->below(7); i > 0; --i) {
      const std::string file =
          random->once(2) ? random->oneOf(kFiles) : "V3.user.at";
      files[file].push_back(randomDefinition(random));
    }
    Model model;
    for (const SchemaFile &file : kSchemaFiles) {
      const auto found = files.find(file.name);
      if (found == files.end()) {
        continue;
      }
      std::string text;
      for (const Definition &definition : found->second) {
        text += textOf(definition);
        model.emplace(std::pair(definition.kind, definition.key()), definition);
      }
      write(directory + '/' + file.name, text);
      m_trace += directory + '/' + file.name + ":\n" + text;
    }
    return model;
  }

  std::set<std::string> writeExcluded(Random *random) {
    std::set<std::string> oids;
    for (const char *oid : kOids) {
      if (random->once(10)) {
        oids.insert(oid);
      }
    }
    std::string text;
    for (const std::string &oid : oids) {
      text += oid + '\n';
    }
    write("excluded", text);
    m_trace += "excluded:\n" + text;
    return oids;
  }

  // What a directory holds, by kind and key, as text.
  static std::map<std::string, std::string> contentOf(const Model &model) {
    std::map<std::string, std::string> content;
    for (const auto &[key, definition] : model) {
      content[kindName(key.first) + (' ' + key.second)] = textOf(definition);
    }
    return content;
  }

  std::map<std::string, std::string> contentOf(const std::string &name) const {
    SchemaManager schema(path(name).string());
    leaksDefinitions([this, &schema, &name] {
      for (const SchemaFile &file : kSchemaFiles) {
        if (fs::exists(path(name) / file.name)) {
          EXPECT_EQ(schema.readFile(file.name), 0U);
        }
      }
      return 0;
    });
    Model model;
    const auto add = [&model](Kind kind, const std::string &key, auto *found,
                              const std::string &value) {
      model[{kind, key}] = {kind, found->getOid(), found->getFirstName(),
                            value};
    };
    for (const auto &[key, found] : schema.attributeTypes()) {
      add(Kind::kAttributeType, key, found, found->getDescription());
    }
    for (const auto &[key, found] : schema.objectClasses()) {
      add(Kind::kObjectClass, key, found, found->getDescription());
    }
    for (const auto &[key, found] : schema.storageDefinitions()) {
      const std::string line = lineOf(found);
      const std::size_t at = line.find("LENGTH ");
      add(Kind::kStorage, key, found, line.substr(at + 7, 1));
    }
    return contentOf(model);
  }

  std::string m_trace;

 private:
  static std::string lineOf(QORAttribute *definition) {
    const TemporaryDirectory directory;
    std::ofstream out(directory.path() / "line");
    definition->dump(out);
    return directory.read("line");
  }
};

TEST_F(ApplyRandomTest, TheResultIsTheReleaseWithWhatIsCarriedOrNothing) {
  Random random;
  SCOPED_TRACE(random.seed());
  int done = 0;
  for (int round = 0; round < 120 && !HasFailure(); ++round) {
    for (const char *name : {"old", "new", "out"}) {
      fs::remove_all(path(name));
    }
    fs::create_directory(path("old"));
    fs::create_directory(path("new"));
    m_trace.clear();
    const Model oldModel = writeDirectory("old", &random);
    const Model newModel = writeDirectory("new", &random);
    const std::set<std::string> excluded = writeExcluded(&random);
    SCOPED_TRACE(m_trace);

    Model expected = newModel;
    for (const auto &[key, definition] : oldModel) {
      if (excluded.count(definition.oid) == 0) {
        expected[key] = definition;
      }
    }
    ApplyOptions accepting = options();
    accepting.migration.accepted = {Code::kShadowed, Code::kOidTwice,
                                    Code::kOidOfTwoKinds};
    if (haveTypes(oldModel, newModel)) {
      accepting.migration.accepted.insert(Code::kStorageWithoutType);
    }
    ApplyResult result;
    try {
      result = leaksDefinitions([&accepting] { return apply(accepting); });
    } catch (const Trouble &trouble) {
      const std::string text = trouble.what();
      EXPECT_TRUE(text.find(" cannot be carried\n") != std::string::npos ||
                  text.find("[STORAGE-WITHOUT-TYPE]") != std::string::npos ||
                  text.find(" is not in the result ") != std::string::npos)
          << text;
      EXPECT_EQ(namesIn(root()), kInputs);
      continue;
    }
    ++done;
    auto found = contentOf("out");
    // What the release loses by itself has a warning.
    for (const auto &[key, definition] : newModel) {
      const std::string name = kindName(key.first) + (' ' + key.second);
      const std::string lost =
          nameOf(definition) + " is not in the result as it stands here";
      for (const std::string &warning : result.warnings) {
        if (warning.find(lost) != std::string::npos) {
          found[name] = textOf(definition);
        }
      }
    }
    EXPECT_EQ(found, contentOf(expected));
  }
  EXPECT_GT(done, 20);
}

}  // namespace
