#include "MergeChecks.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace schemacheck {

namespace {

class MergeChecks {
 public:
  MergeChecks(const SchemaDirectory &old, const SchemaDirectory &release,
              const std::set<std::string> &excludedOids)
      : m_statements(old.statements()),
        m_old(old.index()),
        m_release(release.index()),
        m_excludedOids(excludedOids) {}

  std::vector<Finding> run() {
    std::vector<const Statement *> carried;
    for (const Statement &statement : m_statements) {
      if (statement.isEntered() &&
          kSchemaFiles[statement.file->number].recorded) {
        m_files[statement.oid()].insert(statement.file->number);
      }
    }
    for (const Statement &statement : m_statements) {
      if (!isHeld(statement)) {
        continue;
      }
      if (isCarried(statement)) {
        carried.push_back(&statement);
      } else if (statement.definition->kind != Kind::kStorage) {
        ++m_removals[statement.oid()];
      }
    }
    for (const Statement *statement : carried) {
      if (statement->definition->kind != Kind::kStorage) {
        m_carriedByOid.try_emplace(statement->oid(), statement);
      }
    }
    for (const Statement *statement : carried) {
      check(*statement);
    }
    return std::move(m_findings);
  }

 private:
  bool isHeld(const Statement &statement) const {
    return statement.isEntered() && m_old.holder(statement.definition->kind,
                                                 statement.key()) == &statement;
  }

  // The definition of the release that the comparison and the merge match with
  // this one.
  const Statement *namesake(const Statement &statement) const {
    return m_release.holder(statement.definition->kind, statement.key());
  }

  bool isCarried(const Statement &statement) const {
    const Statement *same = namesake(statement);
    return m_excludedOids.count(statement.oid()) == 0 &&
           (same == nullptr || !isIdentical(statement, *same));
  }

  // Whether a file of the old installation still records the OID when the
  // comparison has removed it once for each attribute type and object class
  // that is not carried.
  bool canBeAdded(const Statement &statement) const {
    const auto files = m_files.find(statement.oid());
    const auto removals = m_removals.find(statement.oid());
    return files != m_files.end() && (removals == m_removals.end() ||
                                      removals->second < files->second.size());
  }

  void add(Code code, const Statement &at, bool atOid,
           const std::string &message) {
    const auto names = at.valuesOf("NAME");
    std::size_t offset = at.definition->span.begin;
    if (!atOid && !names.empty()) {
      offset = names.front()->span.begin;
    } else if (at.definition->oid) {
      offset = at.definition->oid->span.begin;
    }
    m_findings.push_back(findingAt(code, at.file->text, offset,
                                   message + "; the " +
                                       kindName(at.definition->kind) +
                                       " cannot be carried"));
  }

  void check(const Statement &statement) {
    const Statement *same = namesake(statement);
    if (same == nullptr && !canBeAdded(statement)) {
      const SchemaFile &file = kSchemaFiles[statement.file->number];
      add(Code::kNotMergeable, statement, false,
          "expected " + statement.inWords() + " in the release, found none; " +
              (file.recorded ? "its attribute type is not carried"
                             : std::string("nothing from ") + file.name +
                                   " can be added"));
    } else if (same != nullptr && same->oid() != statement.oid()) {
      add(Code::kNameOtherOid, statement, true,
          "expected the OID of the release, " + same->oid() + ", found " +
              statement.oid() + "; the release has the name at " +
              inWordsWithPlace(*same));
    } else if (same != nullptr && !kSchemaFiles[same->file->number].written) {
      add(Code::kInCopiedFile, statement, false,
          "expected the definition as the release has it in a file that is "
          "copied, " +
              inWordsWithPlace(*same) + ", found one that differs in " +
              differences(statement, *same));
    } else if (statement.definition->kind == Kind::kStorage) {
      checkStorage(statement);
    } else {
      checkOid(statement);
    }
  }

  void checkOid(const Statement &statement) {
    for (const Kind kind : {Kind::kAttributeType, Kind::kObjectClass}) {
      const Statement *rival = m_release.withOid(kind, statement.oid());
      if (rival != nullptr && (kind != statement.definition->kind ||
                               rival->key() != statement.key())) {
        addRival(statement, *rival);
        return;
      }
    }
    const Statement *first = m_carriedByOid.at(statement.oid());
    if (first != &statement) {
      add(Code::kOidOtherName, statement, true,
          "expected an OID that no other definition is carried with, found "
          "that of " +
              inWordsWithPlace(*first));
    }
  }

  void checkStorage(const Statement &statement) {
    const std::string &oid = statement.oid();
    const auto carried = m_carriedByOid.find(oid);
    if (m_release.withOid(Kind::kAttributeType, oid) == nullptr &&
        (carried == m_carriedByOid.end() ||
         carried->second->definition->kind != Kind::kAttributeType)) {
      add(Code::kStorageWithoutType, statement, true,
          "expected an attribute type with the OID " + oid +
              " in the release or to be carried, found none");
      return;
    }
    const Statement *rival = m_release.withOid(Kind::kObjectClass, oid);
    if (rival != nullptr) {
      addRival(statement, *rival);
    }
  }

  void addRival(const Statement &statement, const Statement &rival) {
    add(Code::kOidOtherName, statement, true,
        "expected an OID that the release does not have, found that of " +
            inWordsWithPlace(rival));
  }

  const std::vector<Statement> &m_statements;
  const DefinitionIndex &m_old;
  const DefinitionIndex &m_release;
  const std::set<std::string> &m_excludedOids;
  // The files that record an OID, and how many definitions the comparison
  // removes that have it.
  std::unordered_map<std::string, std::set<std::size_t>> m_files;
  std::unordered_map<std::string, std::size_t> m_removals;
  // The first attribute type or object class to be carried that has an OID.
  std::unordered_map<std::string, const Statement *> m_carriedByOid;
  std::vector<Finding> m_findings;
};

}  // namespace

std::vector<Finding> checkMerge(const SchemaDirectory &old,
                                const SchemaDirectory &release,
                                const std::set<std::string> &excludedOids) {
  return MergeChecks(old, release, excludedOids).run();
}

}  // namespace schemacheck
