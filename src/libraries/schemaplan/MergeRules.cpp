#include "MergeRules.h"

namespace schemaplan {

using schemacheck::Code;
using schemacheck::Finding;
using schemacheck::inWordsWithPlace;
using schemacheck::Kind;
using schemacheck::kindName;
using schemacheck::kSchemaFiles;
using schemacheck::SchemaFile;
using schemacheck::Statement;

namespace {

enum class At { kOid, kName };

Finding obstacle(Code code, const Statement &statement, At at,
                 const std::string &message) {
  const auto names = statement.valuesOf("NAME");
  std::size_t offset = statement.definition->span.begin;
  if (at == At::kName && !names.empty()) {
    offset = names.front()->span.begin;
  } else if (statement.definition->oid) {
    offset = statement.definition->oid->span.begin;
  }
  return findingAt(code, statement.file->text, offset,
                   message + "; the " + kindName(statement.definition->kind) +
                       " cannot be carried");
}

bool isStorage(const Statement &statement) {
  return statement.definition->kind == Kind::kStorage;
}

unsigned int bitOf(const Statement &statement) {
  return 1U << statement.file->number;
}

unsigned int numberOfBits(unsigned int bits) {
  unsigned int number = 0;
  for (; bits != 0; bits &= bits - 1) {
    ++number;
  }
  return number;
}

}  // namespace

MergeRules::MergeRules(const Installation &old, const Installation &release)
    : m_old(old), m_release(release) {
  for (const Statement &statement : release.directory.statements()) {
    if (statement.isEntered() && !statement.isHeld() &&
        namesake(statement)->oid() != statement.oid()) {
      m_shadowed.try_emplace(
          {statement.definition->kind, std::string_view(statement.key())},
          &statement);
    }
  }
}

void MergeRules::add(const Statement &statement, Fate fate) {
  const auto watched = m_records.find(statement.oid());
  if (watched == m_records.end()) {
    return;
  }
  Record &record = watched->second;
  if (isRecorded(statement)) {
    record.files |= bitOf(statement);
  }
  if (isStorage(statement)) {
    return;
  }
  if (fate == Fate::kRemoved) {
    ++record.removals;
  } else if (fate == Fate::kCarried && record.carried == nullptr) {
    record.carried = &statement;
  }
}

const MergeRules::Record &MergeRules::recordOf(
    const Statement &statement) const {
  return m_records.at(statement.oid());
}

// The comparison removes an OID from one file for each attribute type and
// object class that is not carried.
bool MergeRules::canBeAdded(const Statement &statement) const {
  const Record &record = recordOf(statement);
  return record.removals < numberOfBits(record.files);
}

const Statement *MergeRules::namesake(const Statement &statement) const {
  return m_release.directory.index().holder(statement.definition->kind,
                                            statement.key());
}

// A definition of the release that has the OID and is neither the namesake nor
// the other half of an attribute type and its storage.
const Statement *MergeRules::rival(const Statement &statement) const {
  const Kind own = statement.definition->kind;
  for (const Kind kind : {Kind::kAttributeType, Kind::kObjectClass}) {
    const Statement *other =
        m_release.directory.index().withOid(kind, statement.oid());
    if (other != nullptr &&
        !(own == Kind::kStorage && kind == Kind::kAttributeType) &&
        (kind != own || other->key() != statement.key())) {
      return other;
    }
  }
  return nullptr;
}

const Statement *MergeRules::counterpart(const Statement &statement) const {
  const Statement *same = namesake(statement);
  return same != nullptr ? same : rival(statement);
}

std::optional<Finding> MergeRules::obstacleTo(
    const Statement &statement) const {
  if (statement.oid().empty()) {
    return obstacle(Code::kNoOid, statement, At::kOid,
                    "expected an OID behind '(', found none");
  }
  if (statement.definition->kind == Kind::kObjectClass &&
      statement.firstName().empty()) {
    return obstacle(Code::kNamelessClass, statement, At::kOid,
                    "expected a name of the object class, found none");
  }
  std::optional<Finding> found = obstacleToName(statement);
  return found ? found : obstacleToOid(statement);
}

std::string MergeRules::differencesFrom(const Statement &statement,
                                        const Statement &release) const {
  std::vector<schemacheck::FieldView> mine;
  std::vector<schemacheck::FieldView> theirs;
  m_old.viewFields(statement, &mine);
  m_release.viewFields(release, &theirs);
  return differences(mine, theirs);
}

std::optional<Finding> MergeRules::obstacleToName(
    const Statement &statement) const {
  const Statement *same = namesake(statement);
  if (same == nullptr) {
    if (canBeAdded(statement)) {
      return std::nullopt;
    }
    const SchemaFile &file = kSchemaFiles[statement.file->number];
    return obstacle(
        Code::kNotMergeable, statement, At::kName,
        "expected " + statement.inWords() + " in the release, found none; " +
            (file.recorded
                 ? "its attribute type is not carried"
                 : std::string("nothing from ") + file.name + " can be added"));
  }
  if (same->oid() != statement.oid()) {
    return obstacle(Code::kNameOtherOid, statement, At::kOid,
                    "expected the OID of the release, " + same->oid() +
                        ", found " + statement.oid() +
                        "; the release has the name at " +
                        inWordsWithPlace(*same));
  }
  if (!kSchemaFiles[same->file->number].written) {
    return obstacle(
        Code::kInCopiedFile, statement, At::kName,
        "expected the definition as the release has it in a file that is "
        "copied, " +
            inWordsWithPlace(*same) + ", found one that differs in " +
            differencesFrom(statement, *same));
  }
  const auto shadowed =
      m_shadowed.find({statement.definition->kind, statement.key()});
  if (shadowed != m_shadowed.end()) {
    return obstacle(
        Code::kNameOtherOid, statement, At::kName,
        "expected one definition of the name in the release, found " +
            inWordsWithPlace(*same) + ", and " +
            inWordsWithPlace(*shadowed->second) +
            ", which may come before this one in the result");
  }
  return std::nullopt;
}

std::optional<Finding> MergeRules::obstacleToOid(
    const Statement &statement) const {
  const Statement *carried = recordOf(statement).carried;
  const Statement *other = rival(statement);
  if (isStorage(statement) &&
      m_release.directory.index().withOid(Kind::kAttributeType,
                                          statement.oid()) == nullptr &&
      (carried == nullptr ||
       carried->definition->kind != Kind::kAttributeType)) {
    return obstacle(Code::kStorageWithoutType, statement, At::kOid,
                    "expected an attribute type with the OID " +
                        statement.oid() +
                        " in the release or to be carried, found none");
  }
  if (other != nullptr) {
    return obstacle(Code::kOidOtherName, statement, At::kOid,
                    "expected an OID that the release does not have, found "
                    "that of " +
                        inWordsWithPlace(*other));
  }
  if (!isStorage(statement) && carried != &statement) {
    return obstacle(Code::kOidOtherName, statement, At::kOid,
                    "expected an OID that no other definition is carried "
                    "with, found that of " +
                        inWordsWithPlace(*carried));
  }
  return std::nullopt;
}

}  // namespace schemaplan
