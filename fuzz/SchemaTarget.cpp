#include <cstddef>
#include <cstdlib>
#include <map>
#include <string>

#include "Input.h"
#include "SchemaManager.h"
#include "Support.h"
#include "Targets.h"
#include "model/Ending.h"
#include "model/Rendering.h"
#include "model/Schema.h"

namespace {

constexpr const char *kWrittenFiles[] = {
    "V3.user.at",   "V3.user.oc",   "V3.qor.at",        "V3.qor.oc",
    "V3.system.at", "V3.system.oc", "V3.modifiedschema"};

using Files = std::map<std::string, std::string>;

void expectResult(unsigned int actual, int expected, const char *what) {
  expectEqual(std::to_string(actual), std::to_string(expected), what);
}

// A schema and its model.
class Pair {
 public:
  Pair(const Scratch &directory, Readings *readings)
      : m_readings(readings),
        m_schema(directory.path()),
        m_model(&m_untraced) {}

  void read(const Files &files) {
    for (const auto &[name, text] : files) {
      m_model.leaks = false;
      const int expected = m_model.readFile(files, name);
      expectResult(m_readings->read(&m_schema, name, m_model.leaks), expected,
                   "result of a reading");
    }
    expectEqual(tablesOf(m_schema), tablesOf(m_model), "tables");
  }

  void exclude(const Scratch &directory, const std::string &list) {
    directory.write("list", list);
    expectResult(m_schema.readExcludedOids(directory.path("list")),
                 m_model.readExcludedOids(&list, ""), "excluded OIDs");
    for (const auto &[oid, type] : m_model.typesByOid) {
      expectResult(m_schema.isExcluded(oid), m_model.isExcluded(oid),
                   "excluded OID");
    }
  }

  void withdraw(const Scratch &directory, const std::string &list) {
    directory.write("list", list);
    expectResult(m_schema.modifySchema(directory.path("list")),
                 m_model.modifySchema(&list, ""), "modified schema");
    expectEqual(tablesOf(m_schema), tablesOf(m_model), "tables then");
    expectResult(m_schema.isModFileEmpty(), m_model.isModFileEmpty(),
                 "modified schema, empty or not");
  }

  // Writes all files, and returns them.
  Files write(const Scratch &directory) {
    Files files;
    for (const char *name : kWrittenFiles) {
      std::string expected;
      expectResult(m_schema.writeFile(directory.path(), name),
                   m_model.writeFile(name, kTimeStamp, &expected),
                   "result of a writing");
      files[name] = directory.read(name);
      expectEqual(files[name], expected, name);
    }
    return files;
  }

 private:
  Readings *const m_readings;
  model::Trace m_untraced;
  SchemaManager m_schema;
  model::Schema m_model;
};

}  // namespace

void fuzzSchema(std::string_view text) {
  fixDate();
  Input input(text);
  const std::size_t ahead = std::strtoul(input.options.c_str(), nullptr, 10);
  for (auto &[name, file] : input.oldFiles) {
    file = model::endingFile(acrossTheBuffer(file, ahead));
  }
  if (!model::listEnds(input.excludedOids)) {
    input.excludedOids += '\n';
  }
  if (!model::listEnds(input.modifiedOids)) {
    input.modifiedOids += '\n';
  }
  const Scratch directory("schema");
  directory.write(input.oldFiles);
  const Scratch out("out");
  Files written;
  {
    Readings readings;
    Pair pair(directory, &readings);
    pair.read(input.oldFiles);
    pair.exclude(directory, input.excludedOids);
    pair.withdraw(directory, input.modifiedOids);
    written = pair.write(out);
  }

  // What was written may be anything but endless: it is read if it ends.
  for (const auto &[name, file] : written) {
    if (!model::fileEnds(file)) {
      return;
    }
  }
  Readings readings;
  Pair pair(out, &readings);
  pair.read(written);
  pair.write(out);
}
