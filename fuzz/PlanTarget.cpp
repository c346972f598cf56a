#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "DirectoryCheck.h"
#include "Input.h"
#include "Plan.h"
#include "SchemaManager.h"
#include "Support.h"
#include "Targets.h"
#include "model/Schema.h"
#include "schemacheck/Agreement.h"

using schemacheck::Field;
using schemacheck::Finding;
using schemacheck::SchemaDirectory;

namespace {

using Files = std::map<std::string, std::string>;

bool hasError(const std::vector<Finding> &findings) {
  return std::any_of(
      findings.begin(), findings.end(), [](const Finding &finding) {
        return finding.severity() == schemacheck::Severity::kError;
      });
}

// One side: its files, what is read of them, and whether there is an error.
struct Side {
  Side(const Files &texts, const std::string &name) : files(texts) {
    const Scratch scratch(name);
    scratch.write(texts);
    path = scratch.path();
    directory = std::make_unique<SchemaDirectory>(path);
    view = checkFiles(*directory);
    isClean = !hasError(checkDirectory(*directory, view));
  }

  // By the library.
  std::unique_ptr<SchemaManager> read(Readings *readings) const {
    auto schema = std::make_unique<SchemaManager>(path);
    model::Trace untraced;
    model::Schema model(&untraced);
    for (const schemacheck::SchemaFile &file : schemacheck::kSchemaFiles) {
      if (files.count(file.name) != 0) {
        model.leaks = false;
        model.readFile(files, file.name);
        expect(readings->read(schema.get(), file.name, model.leaks) == 0,
               "a file that the library reads");
      }
    }
    return schema;
  }

  const Files &files;
  std::string path;
  std::unique_ptr<SchemaDirectory> directory;
  schemacheck::LibraryView view;
  bool isClean = false;
};

std::string textOf(const std::vector<Field> &fields) {
  std::string text;
  for (const Field &field : fields) {
    text += std::string(field.name) + ' ' + field.text() + '\n';
  }
  return text;
}

void expectResult(const schemaplan::Plan &plan, const SchemaManager &schema) {
  for (const schemaplan::SidedDefinition &planned : plan.result) {
    std::vector<schemacheck::FieldView> views;
    planned.viewFields(&views);
    std::vector<Field> fields;
    for (const schemacheck::FieldView &view : views) {
      fields.push_back(toField(view));
    }
    expectEqual(textOf(agreement::held(schema, *planned.statement)),
                textOf(fields), "a definition of the result");
  }
  expect(schema.attributeTypes().size() + schema.objectClasses().size() +
                 schema.storageDefinitions().size() ==
             plan.result.size(),
         "as many definitions in the result as planned");
}

}  // namespace

void fuzzPlan(std::string_view text) {
  const Input input(text);
  const Side old(input.oldFiles, "old");
  const Side release(input.newFiles, "new");
  const schemaplan::Installation oldInstallation{*old.directory, old.view};
  const schemaplan::Installation newInstallation{*release.directory,
                                                 release.view};
  schemaplan::Rules rules;
  rules.preference = input.options.find('1') != std::string::npos
                         ? schemaplan::Preference::kNew
                         : schemaplan::Preference::kOld;
  rules.leaveOut = input.options.find('2') != std::string::npos;
  const schemaplan::Plan plan =
      makePlan(oldInstallation, newInstallation, nullptr, rules);

  expect(plan.definitions.size() == old.directory->statements().size(),
         "a verdict for each definition");
  std::size_t counted = 0;
  for (const auto &kind : plan.counts()) {
    for (const std::size_t count : kind) {
      counted += count;
    }
  }
  expect(counted == plan.definitions.size(), "each verdict to be counted");
  if (!old.isClean || !release.isClean || !plan.stoppers().empty()) {
    return;
  }

  Readings readings;
  const auto oldSchema = old.read(&readings);
  const auto newSchema = release.read(&readings);
  const Scratch lists("plan-lists");
  std::string excluded;
  for (const std::string &oid : plan.excludedOids) {
    excluded += oid + '\n';
  }
  lists.write("excluded", excluded);
  expect(oldSchema->readExcludedOids(lists.path("excluded")) == 0, "a list");
  expect(oldSchema->compSchemas(newSchema.get()) == 1, "a comparison");
  expect(newSchema->mergeSchemas(oldSchema.get()) == 1, "a merge");
  expectResult(plan, *newSchema);
}
