#include <algorithm>
#include <string>

#include "ListChecks.h"
#include "SchemaDirectory.h"
#include "SchemaManager.h"
#include "Support.h"
#include "Targets.h"
#include "model/Ending.h"
#include "model/Rendering.h"
#include "model/Schema.h"

namespace {

// OIDs and names that the lists name, and that can be mistaken for each other.
constexpr char kSchema[] =
    "attributetypes=( 1.1 NAME '1.2' DESC 'x' )\n"
    "attributetypes=( 1.2 NAME 'A' DESC 'x' )\n"
    "attributetypes=( a NAME ( 'b' ) DESC 'x' )\n"
    "objectclasses=( 1.2 NAME '1.3' MUST ( a ) )\n"
    "objectclasses=( 1.3 NAME 'b' MUST ( a ) )\n"
    "objectclasses=( b NAME '1.1' MUST ( a ) )\n"
    "QORAttributetypes=( 1.1 LENGTH 1 )\n"
    "QORAttributetypes=( 1.4 LENGTH 1 )\n";

std::string shownSet(const model::OidSet &oids) {
  std::string text;
  for (const std::string &oid : oids) {
    text += ' ' + shown(oid);
  }
  return text;
}

// Whether the check has refused to read the list.
bool isBinary(const schemacheck::OidList &list) {
  return std::any_of(list.findings.begin(), list.findings.end(),
                     [](const auto &finding) {
                       return finding.code == schemacheck::Code::kBinaryFile;
                     });
}

}  // namespace

void fuzzLists(std::string_view input) {
  const Scratch directory("lists");
  const std::string text(input);
  const std::string path = directory.path("list");
  directory.write("list", text);

  // The check of a list ends where the library does not.
  const schemacheck::OidList checked = schemacheck::checkOidList(path, {});
  model::Trace untraced;
  model::Schema model(&untraced);
  if (!model::listEnds(text)) {
    expect(!checked.findings.empty(), "a finding on a list without an end");
    return;
  }
  expect(model.readExcludedOids(&text, path) == 0, "a list that can be read");
  if (!isBinary(checked)) {
    expectEqual(shownSet(checked.oids), shownSet(model.excluded),
                "OIDs of the check");
  }

  model::Directory files = {{"V3.modifiedschema", kSchema}};
  directory.write(files);
  Readings readings;
  SchemaManager schema(directory.path());
  expect(readings.read(&schema, "V3.modifiedschema", false) == 0 &&
             model.readFile(files, "V3.modifiedschema") == 0 && !model.leaks,
         "a schema");
  expect(schema.readExcludedOids(path) == 0, "a list that can be read");
  for (const std::string &oid : model.excluded) {
    expect(schema.isExcluded(oid) == 1, "an excluded OID");
  }
  expect(schema.isExcluded("") == 0, "no empty OID");

  expect(schema.modifySchema(path) == 0 && model.modifySchema(&text, path) == 0,
         "a list that can be read");
  expectEqual(tablesOf(schema), tablesOf(model), "tables");
  for (const char *oid : {"1.1", "1.2", "1.3", "1.4", "a", "b", "c"}) {
    expect(schema.isExcluded(oid) ==
               static_cast<unsigned int>(model.isExcluded(oid)),
           "the OIDs that are excluded");
    expect(schema.delOidFromModSch(oid) ==
               static_cast<unsigned int>(model.delOidFromModSch(oid)),
           "the OIDs that are left in the modified schema");
  }
}
