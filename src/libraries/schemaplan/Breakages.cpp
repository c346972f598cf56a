#include "Breakages.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "Cycles.h"
#include "StatementTable.h"

namespace schemaplan {

using schemacheck::Code;
using schemacheck::DefinitionIndex;
using schemacheck::Finding;
using schemacheck::inWordsWithPlace;
using schemacheck::Kind;
using schemacheck::lowerCase;
using schemacheck::Statement;
using schemacheck::StatementTable;
using schemacheck::Value;

namespace {

// A cycle is shown up to this many definitions.
constexpr std::size_t kLongestCycle = 5;

// The definition of the directory that has the place of one of the result.
const Statement *sameIn(const Installation &side, const Statement &statement) {
  return side.directory.index().holder(statement.definition->kind,
                                       statement.key());
}

class Breakages {
 public:
  Breakages(const Installation &old, const Installation &release,
            const std::vector<SidedDefinition> &result,
            const std::vector<SidedDefinition> &resultByOid)
      : m_sides{&old, &release}, m_result(result), m_resultByOid(resultByOid) {}

  std::vector<Finding> find() {
    enter();
    auto shared = m_shared.begin();
    for (std::size_t i = 0; i < m_result.size(); ++i) {
      switch (m_result[i].statement->definition->kind) {
        case Kind::kAttributeType:
          checkReferences(i, "SUP", Kind::kAttributeType);
          break;
        case Kind::kObjectClass:
          checkReferences(i, "SUP", Kind::kObjectClass);
          checkReferences(i, "MUST", Kind::kAttributeType);
          checkReferences(i, "MAY", Kind::kAttributeType);
          break;
        default:  // Kind::kStorage
          break;
      }
      for (; shared != m_shared.end() && shared->by == i; ++shared) {
        checkShared(*shared);
      }
    }
    checkCycles();
    return std::move(m_findings);
  }

 private:
  // A name or a column that a definition of the kind before it has, too.
  struct Shared {
    std::size_t by;  // the number of a definition in the result
    const Value *value;
    const Statement *first;
  };

  struct Superior {
    std::size_t of;  // the number of a definition in the result
    const Statement *statement;
  };

  static const char *sharedField(Kind kind) {
    return kind == Kind::kStorage ? "DBNAME" : "NAME";
  }

  // The names are asked for while they are at hand. What only its OID leads to
  // comes last: no name leads to it if another definition has that, too.
  void enter() {
    for (std::size_t i = 0; i < m_result.size(); ++i) {
      const Statement &statement = *m_result[i].statement;
      const Kind kind = statement.definition->kind;
      m_index.add(statement);
      statement.forValuesOf(sharedField(kind), [&](const Value &value) {
        const Statement *first =
            kind == Kind::kStorage
                ? m_firstWithColumn.add(value.text, &statement)
                : m_index.withName(kind, value.text);
        if (first != &statement) {
          m_shared.push_back({i, &value, first});
        }
      });
    }
    for (const SidedDefinition &one : m_resultByOid) {
      m_index.add(*one.statement);
    }
  }

  void add(Code code, const Statement &at, const Value &value,
           const std::string &message) {
    m_findings.push_back(
        findingAt(code, at.file->text, value.span.begin, message));
  }

  // Whether one of the sides holds what this asks for by itself.
  template <class Question>
  bool isSoAlone(const Question &question) const {
    return std::any_of(
        std::begin(m_sides), std::end(m_sides),
        [&](const Installation *side) { return question(*side); });
  }

  // Whether a value of the field is this one in any case.
  bool has(const Statement &statement, std::string_view keyword,
           std::string_view text) {
    const auto [values, isNew] = m_values.try_emplace({&statement, keyword});
    if (isNew) {
      statement.forValuesOf(keyword, [&values = values](const Value &value) {
        values->second.insert(lowerCase(value.text));
      });
    }
    return values->second.count(lowerCase(text)) != 0;
  }

  // Of the definition of that number in the result.
  void checkReferences(std::size_t number, const char *keyword, Kind kind) {
    const SidedDefinition &one = m_result[number];
    const bool isSuperior = std::string_view(keyword) == "SUP";
    one.statement->forValuesOf(keyword, [&](const Value &value) {
      const Statement *target = m_index.target(kind, value.text);
      if (target == nullptr) {
        checkMissing(one, keyword, kind, value);
      } else if (isSuperior) {
        m_superiors.push_back({number, target});
      }
    });
  }

  // A reference that leads nowhere in the result.
  void checkMissing(const SidedDefinition &one, const char *keyword, Kind kind,
                    const Value &value) {
    const auto isMissing = [&](const Installation &side) {
      const Statement *same = sameIn(side, *one.statement);
      return same != nullptr && has(*same, keyword, value.text) &&
             side.directory.index().target(kind, value.text) == nullptr;
    };
    if (isSoAlone(isMissing)) {
      return;
    }
    const bool isSuperior = std::string_view(keyword) == "SUP";
    add(isSuperior ? Code::kUndefinedSuperior : Code::kUndefinedAttribute,
        *one.statement, value,
        std::string("expected the ") +
            (isSuperior ? "superior '" : "attribute '") +
            std::string(value.text) +
            "' in the result, found none; it would be that at " +
            inWordsWithPlace(
                *one.side->directory.index().target(kind, value.text)));
  }

  void checkShared(const Shared &shared) {
    const Statement &statement = *m_result[shared.by].statement;
    const Kind kind = statement.definition->kind;
    const Value &value = *shared.value;
    const auto isShared = [&](const Installation &side) {
      for (const Statement *one : {shared.first, &statement}) {
        const Statement *same = sameIn(side, *one);
        if (same == nullptr || !has(*same, sharedField(kind), value.text)) {
          return false;
        }
      }
      return true;
    };
    if (!isSoAlone(isShared)) {
      const bool isColumn = kind == Kind::kStorage;
      add(isColumn ? Code::kSharedColumn : Code::kNameTwice, statement, value,
          std::string("expected a ") + (isColumn ? "column" : "name") +
              " of its own in the result, found '" + std::string(value.text) +
              "', which " + inWordsWithPlace(*shared.first) + " has, too");
    }
  }

  // Only what has a superior itself can be passed on the way back.
  void checkCycles() {
    std::unordered_map<const Statement *, std::size_t> numbers;
    for (const Superior &superior : m_superiors) {
      numbers.emplace(m_result[superior.of].statement, superior.of);
    }
    schemacheck::Graph superiors(m_result.size());
    for (const Superior &superior : m_superiors) {
      const auto number = numbers.find(superior.statement);
      if (number != numbers.end()) {
        superiors[superior.of].push_back(number->second);
      }
    }
    for (const std::vector<std::size_t> &cycle :
         schemacheck::findCycles(superiors)) {
      checkCycle(cycle);
    }
  }

  void checkCycle(const std::vector<std::size_t> &cycle) {
    std::vector<const Statement *> way;
    way.reserve(cycle.size() + 1);
    for (const std::size_t number : cycle) {
      way.push_back(m_result[number].statement);
    }
    way.push_back(way.front());
    const auto isClosed = [&way](const Installation &side) {
      for (std::size_t i = 1; i < way.size(); ++i) {
        if (superiorTo(side.directory.index(), sameIn(side, *way[i - 1]),
                       *way[i]) == nullptr) {
          return false;
        }
      }
      return true;
    };
    if (isSoAlone(isClosed)) {
      return;
    }
    std::string names = "'" + way.front()->firstName() + "'";
    for (std::size_t i = 1; i + 1 < way.size() && i < kLongestCycle; ++i) {
      names += " SUP '" + way[i]->firstName() + "', " + way[i]->place();
    }
    names += way.size() > kLongestCycle + 1 ? " SUP ..." : "";
    add(Code::kSuperiorCycle, *way[0], *superiorTo(m_index, way[0], *way[1]),
        "expected a superior that does not lead back in the result, found " +
            names + " SUP '" + way.front()->firstName() + "'");
  }

  // The value of `statement` that leads to a definition with the key of
  // `superior`; null if there is none.
  static const Value *superiorTo(const DefinitionIndex &index,
                                 const Statement *statement,
                                 const Statement &superior) {
    if (statement == nullptr) {
      return nullptr;
    }
    for (const Value *value : statement->valuesOf("SUP")) {
      const Statement *target =
          index.target(statement->definition->kind, value->text);
      if (target != nullptr && target->key() == superior.key()) {
        return value;
      }
    }
    return nullptr;
  }

  const Installation *const m_sides[2];
  const std::vector<SidedDefinition> &m_result;
  const std::vector<SidedDefinition> &m_resultByOid;
  DefinitionIndex m_index;  // of the result
  StatementTable m_firstWithColumn;
  std::vector<Shared> m_shared;
  std::vector<Superior> m_superiors;
  // The values that were looked for in a field, in lower case.
  std::map<std::pair<const Statement *, std::string_view>,
           std::unordered_set<std::string>>
      m_values;
  std::vector<Finding> m_findings;
};

}  // namespace

std::vector<Finding> findBreakages(
    const Installation &old, const Installation &release,
    const std::vector<SidedDefinition> &result,
    const std::vector<SidedDefinition> &resultByOid) {
  return Breakages(old, release, result, resultByOid).find();
}

}  // namespace schemaplan
