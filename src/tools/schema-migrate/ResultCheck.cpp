#include "ResultCheck.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

#include "DirectoryCheck.h"
#include "Inventory.h"
#include "SchemaManager.h"
#include "Trouble.h"
#include "Untraced.h"

using schemacheck::DefinitionIndex;
using schemacheck::FieldView;
using schemacheck::SchemaDirectory;
using schemacheck::Statement;
using schemaplan::SidedDefinition;

namespace {

bool areSame(const std::vector<FieldView> &a, const std::vector<FieldView> &b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    schemacheck::isSame);
}

class Check {
 public:
  Check(const SchemaDirectory &written, const Migration &migration)
      : m_written(written),
        m_view(checkFiles(written)),
        m_readBack(written.path().string()),
        m_release(migration.newDirectory()),
        m_plan(migration.plan()) {
    for (const Statement &statement : m_release.statements()) {
      if (statement.isEntered() && !statement.isHeld()) {
        keysOf(m_repeated, statement.definition->kind).insert(statement.key());
      }
    }
  }

  Losses run() {
    // The library is not let loose on files that it might not come back from,
    // or would give up.
    if (!m_view.lost.empty()) {
      reportUnreadable();
    } else if (!reportGivenUp()) {
      readBack();
    }
    if (!m_losses.errors.empty()) {
      return std::move(m_losses);
    }
    const schemaplan::Installation written{m_written, m_view};
    for (const SidedDefinition &expected : m_plan.result) {
      const Statement &statement = *expected.statement;
      keysOf(m_expected, statement.definition->kind).insert(statement.key());
      const Statement *found =
          m_written.index().holder(statement.definition->kind, statement.key());
      expected.viewFields(&m_expectedFields);
      if (found != nullptr) {
        written.viewFields(*found, &m_fields);
      }
      if (found == nullptr || !areSame(m_fields, m_expectedFields) ||
          !isReadBack(statement)) {
        report(expected, found != nullptr);
      }
    }
    for (const SidedDefinition &expected : m_plan.resultByOid) {
      expected.viewFields(&m_expectedFields);
      if (!isReadBackByOid(*expected.statement)) {
        report(expected, false);
      }
    }
    for (const Statement &statement : m_written.statements()) {
      checkExpected(statement);
    }
    return std::move(m_losses);
  }

 private:
  using Keys = std::array<std::set<std::string>, kKinds>;

  static std::set<std::string> &keysOf(Keys &keys, Kind kind) {
    return keys[static_cast<std::size_t>(kind)];
  }

  // Whether the library has the definition with the fields expected.
  bool isReadBack(const Statement &statement) {
    switch (statement.definition->kind) {
      case Kind::kAttributeType:
        return holds(m_readBack.attributeTypes(), statement.key());
      case Kind::kObjectClass:
        return holds(m_readBack.objectClasses(), statement.key());
      case Kind::kStorage:
        break;
    }
    return holds(m_readBack.storageDefinitions(), statement.key());
  }

  // The same by its OID.
  bool isReadBackByOid(const Statement &statement) {
    return statement.definition->kind == Kind::kAttributeType
               ? holds(m_readBack.attributeTypesByOid(), statement.oid())
               : holds(m_readBack.objectClassesByOid(), statement.oid());
  }

  template <class Definition>
  bool holds(const std::map<std::string, Definition *> &table,
             const std::string &key) {
    const auto found = table.find(key);
    if (found == table.end()) {
      return false;
    }
    viewFields(*found->second, &m_fields);
    return areSame(m_fields, m_expectedFields);
  }

  void readBack() {
    for (const schemacheck::StrictFile &file : m_written.files()) {
      if (m_readBack.readFile(kSchemaFiles[file.number].name) != 0) {
        reportNotReadBack(file.text.name());
      }
    }
  }

  // Whether there is any.
  bool reportGivenUp() {
    std::set<std::string> files;
    for (const schemacheck::Finding &finding : m_view.findings) {
      if (finding.severity() == schemacheck::Severity::kError &&
          !canBeAccepted(finding.code)) {
        files.insert(finding.file);
      }
    }
    for (const std::string &file : files) {
      reportNotReadBack(file);
    }
    return !files.empty();
  }

  void reportNotReadBack(const std::string &file) {
    m_losses.errors.push_back(errorAt(file, 0, "cannot read the file back"));
  }

  void reportUnreadable() {
    for (const Statement &statement : m_written.statements()) {
      if (m_view.lost.count(statement.definition) != 0) {
        std::string text = toText(schemaplan::notRead(statement));
        text.pop_back();
        m_losses.errors.push_back(std::move(text));
      }
    }
  }

  // `displaced`: the result has another definition under its key.
  void report(const SidedDefinition &expected, bool displaced) {
    const Statement &statement = *expected.statement;
    const bool isKnown = &expected.side->directory == &m_release &&
                         lostAnyway(statement, displaced);
    (isKnown ? m_losses.warnings : m_losses.errors)
        .push_back(statement.place() + (isKnown ? ": warning: " : ": error: ") +
                   statement.inWords() +
                   " is not in the result as it stands here");
  }

  // Whether a definition of the release would be lost without a migration, too:
  // files are written in the order of the OIDs, so that another definition may
  // come to be the first of its name; from the first definition of each OID;
  // and a storage definition with its attribute type only.
  bool lostAnyway(const Statement &statement, bool displaced) {
    const Kind kind = statement.definition->kind;
    if (keysOf(m_repeated, kind).count(statement.key()) != 0 && displaced) {
      return true;
    }
    const DefinitionIndex &index = m_release.index();
    const std::string oid = statement.oid();
    const bool attribute = index.withOid(Kind::kAttributeType, oid) != nullptr;
    const bool objectClass = index.withOid(Kind::kObjectClass, oid) != nullptr;
    switch (kind) {
      case Kind::kStorage:
        return !attribute || objectClass;
      case Kind::kAttributeType:
        return objectClass || index.withOid(kind, oid) != &statement;
      case Kind::kObjectClass:
        break;
    }
    return index.withOid(kind, oid) != &statement;
  }

  // The release's definitions that only their OID leads to are written, too.
  void checkExpected(const Statement &statement) {
    const Kind kind = statement.definition->kind;
    const std::string key = statement.key();
    if (keysOf(m_expected, kind).count(key) == 0 &&
        keysOf(m_repeated, kind).count(key) == 0) {
      m_losses.errors.push_back(statement.place() +
                                ": error: " + statement.inWords() +
                                " is in the result and was not planned");
    }
  }

  const SchemaDirectory &m_written;
  const schemacheck::LibraryView m_view;
  SchemaManager m_readBack;
  const SchemaDirectory &m_release;
  const schemaplan::Plan &m_plan;
  Keys m_repeated;  // in the release
  Keys m_expected;
  // For one comparison at a time.
  std::vector<FieldView> m_expectedFields;
  std::vector<FieldView> m_fields;
  Losses m_losses;
};

}  // namespace

Losses findLosses(const SchemaDirectory &written, const Migration &migration) {
  const Untraced untraced;
  return Check(written, migration).run();
}
