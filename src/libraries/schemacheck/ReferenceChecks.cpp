#include "ReferenceChecks.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "Cycles.h"
#include "StandardSchema.h"

namespace schemacheck {

namespace {

// A cycle is shown up to this many definitions.
constexpr std::size_t kLongestCycle = 5;

bool isNumber(const Value &value) {
  return value.form == Value::Form::kNumber ||
         value.form == Value::Form::kNumberWithLength ||
         isNumericOid(value.text);
}

// "1.2.3", "'cn'"
std::string inWords(const Value &value) {
  return isNumber(value) ? std::string(value.text) : inQuotes(value.text);
}

class ReferenceChecks {
 public:
  explicit ReferenceChecks(const SchemaDirectory &directory)
      : m_statements(directory.statements()), m_index(directory.index()) {}

  std::vector<Finding> run() {
    for (const Statement &statement : m_statements) {
      checkForms(statement);
      switch (statement.definition->kind) {
        case Kind::kAttributeType:
          checkReferences(statement, "SUP", Kind::kAttributeType);
          checkValues(statement);
          break;
        case Kind::kObjectClass:
          checkReferences(statement, "SUP", Kind::kObjectClass);
          checkReferences(statement, "MUST", Kind::kAttributeType);
          checkReferences(statement, "MAY", Kind::kAttributeType);
          checkOptional(statement);
          break;
        default:  // Kind::kStorage, which refers to nothing
          break;
      }
    }
    checkCycles();
    return std::move(m_findings);
  }

 private:
  void add(Code code, const Statement &at, const Value &value,
           std::string message) {
    m_findings.push_back(
        findingAt(code, at.file->text, value.span.begin, std::move(message)));
  }

  // The forms of the OID and the names.
  void checkForms(const Statement &statement) {
    const Definition &definition = *statement.definition;
    if (definition.oid && !isNumericOid(definition.oid->text)) {
      add(Code::kBadOid, statement, *definition.oid,
          "expected an OID of numbers and dots, found " +
              inQuotes(definition.oid->text));
    }
    statement.forValuesOf("NAME", [&](const Value &name) {
      if (!isKeyString(name.text)) {
        add(Code::kBadName, statement, name,
            "expected a letter and then letters, digits or hyphens, found " +
                inQuotes(name.text));
      }
    });
  }

  void checkReferences(const Statement &statement, const char *keyword,
                       Kind kind) {
    const bool isSuperior = std::string_view(keyword) == "SUP";
    statement.forValuesOf(keyword, [&](const Value &value) {
      if (m_index.target(kind, value.text) == nullptr) {
        add(isSuperior ? Code::kUndefinedSuperior : Code::kUndefinedAttribute,
            statement, value,
            "expected the " +
                std::string(isSuperior ? "superior " : "attribute ") +
                inWords(value) + " to be defined, found no " + kindName(kind) +
                " of this " + (isNumber(value) ? "OID" : "name"));
      }
    });
  }

  // Of an attribute type.
  void checkValues(const Statement &statement) {
    statement.forValuesOf("SYNTAX", [&](const Value &syntax) {
      if (!isStandardSyntax(syntax.text.substr(0, syntax.text.find('{')))) {
        add(Code::kUnknownSyntax, statement, syntax,
            "expected the OID of a standard syntax, found " + inWords(syntax));
      }
    });
    for (const char *keyword : {"EQUALITY", "ORDERING", "SUBSTR"}) {
      statement.forValuesOf(keyword, [&](const Value &rule) {
        if (isNumber(rule) && !isStandardMatchingRule(rule.text)) {
          add(Code::kUnknownRule, statement, rule,
              "expected the OID of a standard matching rule, found " +
                  std::string(rule.text));
        }
      });
    }
    statement.forValuesOf("USAGE", [&](const Value &usage) {
      if (!isUsage(usage.text)) {
        add(Code::kBadUsage, statement, usage,
            "expected userApplications, directoryOperation, "
            "distributedOperation or dSAOperation, found " +
                inQuotes(usage.text));
      }
    });
  }

  // The same for all names of an attribute type.
  std::string_view attributeOf(const Value &value) const {
    const Statement *type = m_index.target(Kind::kAttributeType, value.text);
    return type == nullptr ? value.text : type->key();
  }

  // Of an object class.
  void checkOptional(const Statement &statement) {
    StatementTable required;
    statement.forValuesOf("MUST", [&](const Value &value) {
      required.add(attributeOf(value), &statement);
    });
    statement.forValuesOf("MAY", [&](const Value &value) {
      if (required.find(attributeOf(value)) != nullptr) {
        add(Code::kRequiredAndOptional, statement, value,
            "expected an attribute that MUST does not hold, found " +
                inWords(value));
      }
    });
  }

  void checkCycles() {
    Graph superiors(m_statements.size());
    for (std::size_t i = 0; i < m_statements.size(); ++i) {
      const Statement &statement = m_statements[i];
      statement.forValuesOf("SUP", [&](const Value &value) {
        const Statement *superior =
            m_index.target(statement.definition->kind, value.text);
        if (superior != nullptr) {
          superiors[i].push_back(
              static_cast<std::size_t>(superior - m_statements.data()));
        }
      });
    }
    for (const std::vector<std::size_t> &cycle : findCycles(superiors)) {
      addCycle(cycle);
    }
  }

  void addCycle(const std::vector<std::size_t> &cycle) {
    const Statement &first = m_statements[cycle.front()];
    const Statement &second = m_statements[cycle[cycle.size() > 1 ? 1 : 0]];
    std::string way = "'" + first.firstName() + "'";
    for (std::size_t i = 1; i < cycle.size() && i < kLongestCycle; ++i) {
      way += " SUP '" + m_statements[cycle[i]].firstName() + "'";
    }
    way += cycle.size() > kLongestCycle ? " SUP ..." : "";
    const auto leadsOn = [&](const Value *value) {
      return m_index.target(first.definition->kind, value->text) == &second;
    };
    const std::vector<const Value *> superiors = first.valuesOf("SUP");
    add(Code::kSuperiorCycle, first,
        **std::find_if(superiors.begin(), superiors.end(), leadsOn),
        "expected a superior that does not lead back, found " + way + " SUP '" +
            first.firstName() + "'");
  }

  const std::vector<Statement> &m_statements;
  const DefinitionIndex &m_index;
  std::vector<Finding> m_findings;
};

}  // namespace

std::vector<Finding> checkReferences(const SchemaDirectory &directory) {
  return ReferenceChecks(directory).run();
}

}  // namespace schemacheck
