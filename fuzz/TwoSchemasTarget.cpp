#include <memory>
#include <set>
#include <string>

#include "Input.h"
#include "SchemaManager.h"
#include "Support.h"
#include "Targets.h"
#include "model/Ending.h"
#include "model/Rendering.h"
#include "model/Schema.h"

namespace {

// The bits of the options.
enum : unsigned int {
  kCompare = 1,
  kCollisions = 2,
  kMerge = 4,
  kMergeBack = 8,
  kWithdraw = 16,
  kMergeFirst = 32,  // before the comparison
  kOneKind = 64,     // the merge is one of a single kind
  kNewFirst = 128,   // the new schema is destroyed first
};

using Schema = std::unique_ptr<SchemaManager>;

// The keys of the owning tables.
std::set<std::string> keysOf(const SchemaManager &schema) {
  std::set<std::string> keys;
  for (const auto &[key, type] : schema.attributeTypes()) {
    keys.insert("type " + key);
  }
  for (const auto &[key, objectClass] : schema.objectClasses()) {
    keys.insert("class " + key);
  }
  for (const auto &[key, storage] : schema.storageDefinitions()) {
    keys.insert("storage " + key);
  }
  return keys;
}

Schema read(std::map<std::string, std::string> files, const std::string &name,
            Readings *readings) {
  for (auto &[file, text] : files) {
    text = model::endingFile(text);
  }
  const Scratch directory(name);
  directory.write(files);
  auto schema = std::make_unique<SchemaManager>(directory.path());
  model::Trace untraced;
  model::Schema model(&untraced);
  for (const auto &[file, text] : files) {
    model.leaks = false;
    model.readFile(files, file);
    readings->read(schema.get(), file, model.leaks);
  }
  return schema;
}

void compare(SchemaManager *old, SchemaManager *release) {
  const std::string before = tablesOf(*release);
  expect(old->compSchemas(release) == 1, "a comparison");
  expectEqual(tablesOf(*release), before, "the schema that is only read");
  const std::string once = tablesOf(*old);
  expect(old->compSchemas(release) == 1, "a comparison");
  expectEqual(tablesOf(*old), once, "the tables after a second comparison");
}

void checkCollisions(SchemaManager *old, SchemaManager *release) {
  const std::string before = tablesOf(*release);
  expect(old->checkCollisions(release) == 1, "a check");
  expectEqual(tablesOf(*release), before, "the schema that is only read");
  const std::string once =
      old->getOcTable() + old->getAttrTable() + old->getQORAttrTable();
  expect(old->checkCollisions(release) == 1, "a check");
  expectEqual(old->getOcTable() + old->getAttrTable() + old->getQORAttrTable(),
              once, "the reports of a second check");
}

void merge(SchemaManager *release, SchemaManager *old, bool oneKind) {
  if (oneKind) {
    release->mergeAttrs(old);
    return;
  }
  std::set<std::string> keys = keysOf(*release);
  keys.merge(keysOf(*old));
  if (release->mergeSchemas(old) != 1) {
    return;
  }
  expect(keysOf(*old).empty(), "nothing in the owning tables after a merge");
  for (const std::string &key : keysOf(*release)) {
    expect(keys.count(key) != 0, "no key that neither schema had");
  }
}

}  // namespace

void fuzzTwoSchemas(std::string_view text) {
  const Input input(text);
  const unsigned int options = input.options;
  Readings readings;
  Schema old = read(input.oldFiles, "old", &readings);
  Schema release = read(input.newFiles, "new", &readings);
  const Scratch lists("lists-of-two");
  const auto list = [&](const std::string &oids) {
    lists.write("list", model::listEnds(oids) ? oids : oids + '\n');
    return lists.path("list");
  };
  old->readExcludedOids(list(input.excludedOids));
  if ((options & kMergeFirst) != 0) {
    merge(release.get(), old.get(), (options & kOneKind) != 0);
  }
  if ((options & kCompare) != 0) {
    compare(old.get(), release.get());
  }
  if ((options & kMerge) != 0) {
    merge(release.get(), old.get(), (options & kOneKind) != 0);
  }
  if ((options & kWithdraw) != 0) {
    release->modifySchema(list(input.modifiedOids));
  }
  if ((options & kMergeBack) != 0) {
    merge(old.get(), release.get(), false);
  }
  if ((options & kCollisions) != 0) {
    checkCollisions(old.get(), release.get());
  }
  for (const char *name : {"V3.user.at", "V3.user.oc", "V3.modifiedschema"}) {
    expect(release->writeFile(lists.path(), name) == 0, "a written file");
  }
  ((options & kNewFirst) != 0 ? release : old).reset();
  for (Schema *left : {&old, &release}) {
    if (*left != nullptr) {
      expect(tablesOf(**left).size() != 1, "tables that can be read");
    }
  }
}
