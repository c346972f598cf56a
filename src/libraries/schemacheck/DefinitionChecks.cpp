#include "DefinitionChecks.h"

#include <array>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace schemacheck {

namespace {

std::size_t atStart(const Statement &statement) {
  return statement.definition->span.begin;
}

std::size_t atOid(const Statement &statement) {
  return statement.definition->oid ? statement.definition->oid->span.begin
                                   : atStart(statement);
}

// Where the key is that a manager files the definition under.
std::size_t atKey(const Statement &statement) {
  if (statement.definition->kind == Kind::kStorage) {
    return atOid(statement);
  }
  const auto names = statement.valuesOf("NAME");
  return names.empty() ? atStart(statement) : names.front()->span.begin;
}

class DefinitionChecks {
 public:
  explicit DefinitionChecks(const SchemaDirectory &directory)
      : m_directory(directory), m_index(directory.index()) {
    for (const Statement &statement : directory.statements()) {
      m_hasStorage =
          m_hasStorage || statement.definition->kind == Kind::kStorage;
    }
  }

  std::vector<Finding> run() {
    for (const Statement &statement : m_directory.statements()) {
      checkFile(statement);
      checkPresence(statement);
      if (!statement.isEntered()) {
        continue;
      }
      if (!statement.isHeld()) {
        addRepeated(statement);
        continue;
      }
      checkOid(statement);
      checkNames(statement);
      if (statement.definition->kind == Kind::kStorage) {
        checkType(statement);
        checkColumns(statement);
      } else if (statement.definition->kind == Kind::kAttributeType) {
        checkStorage(statement);
      }
    }
    return std::move(m_findings);
  }

 private:
  void add(Code code, const Statement &at, std::size_t offset,
           std::string message) {
    m_findings.push_back(
        findingAt(code, at.file->text, offset, std::move(message)));
  }

  void checkFile(const Statement &statement) {
    const std::string_view file = kSchemaFiles[statement.file->number].name;
    const bool isClass = statement.definition->kind == Kind::kObjectClass;
    const std::size_t ending = file.size() - 2;
    if (file.substr(ending) != (isClass ? "at" : "oc")) {
      return;
    }
    const std::string right =
        std::string(file.substr(0, ending)) + (isClass ? "oc" : "at");
    add(Code::kWrongFile, statement, atStart(statement),
        "expected the " + std::string(kindName(statement.definition->kind)) +
            " in a file such as " + right + ", found it in " +
            std::string(file));
  }

  void checkPresence(const Statement &statement) {
    if (statement.oid().empty()) {
      add(Code::kNoOid, statement, atStart(statement),
          std::string("expected an OID behind '(', found none; the library ") +
              (statement.isEntered() ? "files the definition under no OID"
                                     : "drops the definition"));
    }
    const Kind kind = statement.definition->kind;
    if (kind == Kind::kStorage || !statement.firstName().empty()) {
      return;
    }
    if (kind == Kind::kObjectClass) {
      add(Code::kNamelessClass, statement, atStart(statement),
          "expected a name of the object class, found none; the library "
          "writes it in a form that cannot be read");
    } else {
      add(Code::kNoName, statement, atStart(statement),
          "expected a name of the attribute type, found none");
    }
  }

  void addRepeated(const Statement &statement) {
    m_findings.push_back(repetition(
        statement,
        *m_index.holder(statement.definition->kind, statement.key())));
  }

  void checkOid(const Statement &statement) {
    const Kind kind = statement.definition->kind;
    const std::string &oid = statement.oid();
    if (kind == Kind::kStorage || oid.empty()) {
      return;
    }
    const Statement *first = m_index.withOid(kind, oid);
    if (first != &statement) {
      add(Code::kOidTwice, statement, atOid(statement),
          "expected an OID of its own, found that of " +
              inWordsWithPlace(*first) + "; the library never writes this one");
      return;
    }
    const Statement *other = m_index.withOid(
        kind == Kind::kObjectClass ? Kind::kAttributeType : Kind::kObjectClass,
        oid);
    // Both lie in one vector, in the order of reading.
    if (other != nullptr && other < &statement) {
      add(Code::kOidOfTwoKinds, statement, atOid(statement),
          "expected an OID of its own, found that of " +
              inWordsWithPlace(*other) +
              "; the library writes the object class only");
    }
  }

  void checkNames(const Statement &statement) {
    StatementTable &firstWithName =
        m_firstWithName[static_cast<std::size_t>(statement.definition->kind)];
    statement.forValuesOf("NAME", [&](const Value &name) {
      const Statement *first = firstWithName.add(name.text, &statement);
      if (first != &statement) {
        add(Code::kNameTwice, statement, name.span.begin,
            "expected a name of its own, found " + inQuotes(name.text) +
                ", which " + inWordsWithPlace(*first) + " has, too");
      }
    });
  }

  // Of a storage definition.
  void checkType(const Statement &statement) {
    const std::string &oid = statement.oid();
    const Statement *type = m_index.withOid(Kind::kAttributeType, oid);
    if (type == nullptr) {
      add(Code::kStorageWithoutType, statement, atOid(statement),
          "expected an attribute type with the OID " + oid +
              ", found none; the library never writes the storage definition");
    } else if (!hasType(*statement.file, oid)) {
      const bool areWritten = kSchemaFiles[statement.file->number].written &&
                              kSchemaFiles[type->file->number].written;
      add(Code::kStorageApart, statement, atOid(statement),
          "expected the storage definition in the file of its attribute type, "
          "found that at " +
              inWordsWithPlace(*type) +
              (areWritten ? "; the library writes both into each of the files"
                          : ""));
    }
  }

  // Whether an attribute type with the OID, be it the first or another, is in
  // the file.
  bool hasType(const StrictFile &file, const std::string &oid) {
    if (m_index.withOid(Kind::kAttributeType, oid)->file == &file) {
      return true;
    }
    if (m_typeFiles.empty()) {
      for (const Statement &statement : m_directory.statements()) {
        if (statement.definition->kind == Kind::kAttributeType) {
          m_typeFiles.emplace(statement.oid(), statement.file->number);
        }
      }
    }
    return m_typeFiles.count({oid, file.number}) != 0;
  }

  void checkColumns(const Statement &statement) {
    std::set<std::string> seen;
    statement.forValuesOf("DBNAME", [&](const Value &column) {
      const Statement *first = m_firstWithColumn.add(column.text, &statement);
      if (first != &statement && seen.insert(lowerCase(column.text)).second) {
        add(Code::kSharedColumn, statement, column.span.begin,
            "expected a column of its own, found " + inQuotes(column.text) +
                ", which " + inWordsWithPlace(*first) + " has, too");
      }
    });
  }

  // Of an attribute type.
  void checkStorage(const Statement &statement) {
    const std::string &oid = statement.oid();
    if (m_hasStorage && !oid.empty() &&
        m_index.holder(Kind::kStorage, oid) == nullptr) {
      add(Code::kNoStorage, statement, atOid(statement),
          "expected a storage definition with the OID " + oid + ", found none");
    }
  }

  const SchemaDirectory &m_directory;
  const DefinitionIndex &m_index;
  // The OID and the file of each attribute type, once somebody has asked.
  std::set<std::pair<std::string_view, std::size_t>> m_typeFiles;
  bool m_hasStorage = false;
  // Of what has been looked at so far, and is held.
  std::array<StatementTable, kKinds> m_firstWithName;
  StatementTable m_firstWithColumn;
  std::vector<Finding> m_findings;
};

}  // namespace

Finding repetition(const Statement &statement, const Statement &first) {
  if (isIdentical(statement, first)) {
    return findingAt(Code::kRepeatedDefinition, statement.file->text,
                     atKey(statement),
                     "expected the definition once, found it again; the first "
                     "is at " +
                         inWordsWithPlace(first));
  }
  const bool isStorage = statement.definition->kind == Kind::kStorage;
  return findingAt(
      Code::kShadowed, statement.file->text, atKey(statement),
      std::string("expected ") + (isStorage ? "an OID" : "a first name") +
          " of its own, found that of " + inWordsWithPlace(first) +
          "; the library holds that one instead of this, which differs in " +
          differences(statement, first));
}

std::vector<Finding> checkDefinitions(const SchemaDirectory &directory) {
  return DefinitionChecks(directory).run();
}

}  // namespace schemacheck
