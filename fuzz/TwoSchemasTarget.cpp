#include <algorithm>
#include <cstddef>
#include <map>
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

// More operations than these lead to nothing new.
constexpr std::size_t kMostOperations = 16;

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

void mergeAll(SchemaManager *release, SchemaManager *old) {
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

// Whether the schema holds one of the definitions under its OID, but not under
// its name: nobody owns a definition that another one of its name has kept from
// the table of names.
template <class Definition>
bool holdsByOidOnly(const std::map<std::string, Definition *> &byOid,
                    const std::map<std::string, Definition *> &owning,
                    const std::set<const QORSchema *> &definitions) {
  return std::any_of(byOid.begin(), byOid.end(), [&](const auto &entry) {
    const auto named = owning.find(entry.second->getFirstNameLower());
    return definitions.count(entry.second) != 0 &&
           (named == owning.end() || named->second != entry.second);
  });
}

class Round {
 public:
  explicit Round(const Input &input)
      : m_input(input),
        m_old(read(input.oldFiles, "old", &m_readings)),
        m_new(read(input.newFiles, "new", &m_readings)),
        m_directory("two-schemas") {
    m_old->readExcludedOids(list(input.excludedOids));
  }

  void run() {
    bool newFirst = false;
    for (const char option : m_input.options.substr(0, kMostOperations)) {
      newFirst = newFirst || option == '9';
      operate(option);
    }
    for (SchemaManager *schema : {m_old.get(), m_new.get()}) {
      for (const char *name : {"V3.user.at", "V3.user.oc"}) {
        expect(schema->writeFile(m_directory.path(), name) == 0,
               "a written file");
      }
    }
    (newFirst ? m_new : m_old).reset();
    // What the other one leads to is still there.
    SchemaManager *left = newFirst ? m_old.get() : m_new.get();
    expectEqual(tablesOf(*left), tablesOf(*left), "tables");
  }

 private:
  void operate(char option) {
    switch (option) {
      case '0':
        return compare(m_old.get(), m_new.get());
      case '1':
        return compare(m_new.get(), m_old.get());
      case '2':
        return merge(m_new.get(), m_old.get(), mergeAll);
      case '3':
        return merge(m_old.get(), m_new.get(), mergeAll);
      case '4':
        m_new->modifySchema(list(m_input.modifiedOids));
        return;
      case '5':
        m_old->modifySchema(list(m_input.modifiedOids));
        return;
      case '6':
        return checkCollisions(m_old.get(), m_new.get());
      case '7':
        return merge(m_new.get(), m_old.get(), [](auto *target, auto *source) {
          target->mergeAttrs(source);
        });
      case '8':
        merge(m_new.get(), m_old.get(), [](auto *target, auto *source) {
          target->mergeObjClasses(source);
        });
        m_old->mergeQORAttrs(m_new.get());
        return;
      default:
        return;
    }
  }

  template <class Merge>
  void merge(SchemaManager *target, SchemaManager *source, const Merge &run) {
    std::set<const QORSchema *> moved;
    for (const auto &[key, type] : source->attributeTypes()) {
      moved.insert(type);
    }
    for (const auto &[key, objectClass] : source->objectClasses()) {
      moved.insert(objectClass);
    }
    run(target, source);
    if (holdsByOidOnly(target->attributeTypesByOid(), target->attributeTypes(),
                       moved) ||
        holdsByOidOnly(target->objectClassesByOid(), target->objectClasses(),
                       moved)) {
      m_readings.allowLeaks();
    }
  }

  // The path of a list whose reading ends.
  std::string list(const std::string &oids) const {
    m_directory.write("list", model::listEnds(oids) ? oids : oids + '\n');
    return m_directory.path("list");
  }

  const Input &m_input;
  Readings m_readings;
  Schema m_old;
  Schema m_new;
  Scratch m_directory;
};

}  // namespace

void fuzzTwoSchemas(std::string_view text) {
  const Input input(text);
  Round(input).run();
}
