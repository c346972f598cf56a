#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "DirectoryCheck.h"
#include "Input.h"
#include "SchemaManager.h"
#include "Support.h"
#include "Targets.h"
#include "model/Ending.h"
#include "model/Schema.h"
#include "schemacheck/Agreement.h"

using schemacheck::Finding;
using schemacheck::SchemaDirectory;

namespace {

// Places lie in the file, and the texts can be made.
void expectWellFormed(const Finding &finding) {
  expect(!finding.message.empty() && finding.message.back() != '\n',
         "a message");
  expect(finding.caret <= finding.sourceLine.size(), "a caret in the line");
  expect((finding.line == 0) == (finding.column == 0), "a place or none");
  const std::string text = toText(finding);
  expect(!text.empty() && text.back() == '\n', "a text of whole lines");
}

bool hasError(const std::vector<Finding> &findings) {
  return std::any_of(
      findings.begin(), findings.end(), [](const Finding &finding) {
        return finding.severity() == schemacheck::Severity::kError;
      });
}

}  // namespace

void fuzzCheck(std::string_view text) {
  fixDate();
  const Input input(text);
  const Scratch scratch("check");
  scratch.write(input.oldFiles);
  const SchemaDirectory directory(scratch.path());
  const std::vector<Finding> findings = checkDirectory(directory);
  std::for_each(findings.begin(), findings.end(), expectWellFormed);
  if (hasError(findings)) {
    return;
  }

  // The library then reads all, and holds what the files say.
  model::Trace untraced;
  model::Schema model(&untraced);
  Readings readings;
  auto schema = std::make_unique<SchemaManager>(scratch.path());
  for (const schemacheck::SchemaFile &file : schemacheck::kSchemaFiles) {
    const auto found = input.oldFiles.find(file.name);
    if (found != input.oldFiles.end()) {
      expect(model::fileEnds(found->second), "a reading that ends");
      model.leaks = false;
      expect(model.readFile(input.oldFiles, file.name) == 0, "a good file");
      expect(readings.read(schema.get(), file.name, model.leaks) == 0,
             "a file that the library reads");
    }
  }
  expectEqual(disagreement(directory, findings, *schema), "", "reading");

  // And it reads back what it writes.
  const Scratch out("check-out");
  std::map<std::string, std::string> written;
  for (const schemacheck::SchemaFile &file : schemacheck::kSchemaFiles) {
    if (file.written) {
      schema->writeFile(out.path(), file.name);
      written[file.name] = out.read(file.name);
      expect(model::fileEnds(written[file.name]), "a written file that ends");
    }
  }
  auto again = std::make_unique<SchemaManager>(out.path());
  model::Schema modelAgain(&untraced);
  for (const auto &[name, file] : written) {
    modelAgain.leaks = false;
    expect(modelAgain.readFile(written, name) == 0, "a good written file");
    expect(readings.read(again.get(), name, modelAgain.leaks) == 0,
           "a written file that the library reads");
    again->writeFile(scratch.path(), name);
    expectEqual(scratch.read(name), written[name], "a file written twice");
  }
}
