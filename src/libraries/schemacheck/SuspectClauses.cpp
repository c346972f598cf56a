#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "Finding.h"
#include "Suspects.h"

namespace schemacheck {

namespace {

bool isOneOf(std::string_view word,
             std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

bool isNumber(const Value &value) {
  return value.form == Value::Form::kNumber ||
         value.form == Value::Form::kNumberWithLength;
}

// At least as many as a definition of any kind has.
constexpr std::size_t kFields = 16;

class Clauses {
 public:
  explicit Clauses(const Definition &definition) : m_definition(definition) {}

  SuspectList run() {
    m_seen.reserve(kFields);
    for (std::size_t i = 0; i < m_definition.clauses.size(); ++i) {
      const Clause &clause = m_definition.clauses[i];
      m_next = i + 1 < m_definition.clauses.size()
                   ? &m_definition.clauses[i + 1]
                   : nullptr;
      if (!clause.known || clause.keyword.rfind("X-", 0) == 0) {
        suspectUnknown(clause);
        continue;
      }
      if (std::find(m_seen.begin(), m_seen.end(), fieldOf(clause)) ==
          m_seen.end()) {
        m_seen.push_back(fieldOf(clause));
      } else {
        suspectRepeated(clause);
      }
      suspectNames(clause);
      switch (m_definition.kind) {
        case Kind::kAttributeType:
          suspectOfType(clause);
          break;
        case Kind::kObjectClass:
          suspectOfClass(clause);
          break;
        default:  // Kind::kStorage
          if (clause.keyword == "REVERSE") {
            addAlways(Code::kReverse, clause,
                      "expected no REVERSE, found it; the library drops it");
          }
          break;
      }
    }
    return std::move(m_suspects);
  }

 private:
  void add(Code code, std::size_t offset, std::string message,
           std::string_view field = {},
           std::optional<Code> harmless = std::nullopt) {
    m_suspects.add({code, offset, std::move(message), field, harmless});
  }

  void add(Code code, const Clause &clause, std::string message,
           std::string_view field = {},
           std::optional<Code> harmless = std::nullopt) {
    add(code, clause.span.begin, std::move(message), field, harmless);
  }

  void addAlways(Code code, const Clause &clause, std::string message) {
    m_suspects.add(
        {code, clause.span.begin, std::move(message), {}, std::nullopt, true});
  }

  // The three kinds of an object class are one field.
  static std::string_view fieldOf(const Clause &clause) {
    return isOneOf(clause.keyword, {"ABSTRACT", "STRUCTURAL", "AUXILIARY"})
               ? "the kind of the object class"
               : clause.keyword;
  }

  // X- extensions, words that are no field, values that no field takes.
  void suspectUnknown(const Clause &clause) {
    const std::string_view what = !clause.keyword.empty() ? clause.keyword
                                  : clause.values.empty()
                                      ? ""
                                      : clause.values.front().text;
    add(Code::kUnknownField, clause,
        std::string("expected a field of ") +
            (m_definition.kind == Kind::kStorage ? "a " : "an ") +
            kindName(m_definition.kind) + ", found " + inQuotes(what),
        {}, Code::kIgnoredField);
  }

  void suspectRepeated(const Clause &clause) {
    const bool isSuperior =
        m_definition.kind == Kind::kAttributeType && clause.keyword == "SUP";
    if (isSuperior) {
      addAlways(
          Code::kSecondSuperior, clause,
          "expected one superior, found another; written, it takes the place "
          "of the OID");
    } else {
      addAlways(
          Code::kRepeatedField, clause,
          "expected " + std::string(fieldOf(clause)) + " once, found it again");
    }
  }

  // The library reads names up to a field that it knows to follow.
  void suspectNames(const Clause &clause) {
    if ((clause.keyword == "NAME" || clause.keyword == "DBNAME") &&
        clause.values.empty() && !clause.parenthesised) {
      add(Code::kMissingValue, clause,
          "expected a name behind " + std::string(clause.keyword) + ", found " +
              nextInWords());
    }
    if (clause.keyword == "NAME" && !endsNames()) {
      add(Code::kNamesLast, clause,
          "expected another field behind the names, found " + nextInWords());
    }
    // Without parentheses it passes over the first name, too.
    if (clause.keyword == "DBNAME" && !clause.parenthesised) {
      if (endsColumns()) {
        add(Code::kBadValue, clause,
            "expected parentheses around the column names, found none",
            "DBNAME");
      } else {
        add(Code::kColumnsLast, clause,
            "expected parentheses around the column names, or another field "
            "behind them, found " +
                nextInWords());
      }
    }
  }

  bool endsNames() const {
    if (m_next == nullptr) {
      return false;
    }
    const std::string_view word = m_next->keyword;
    return m_definition.kind == Kind::kObjectClass
               ? isOneOf(word, {"DESC", "STRUCTURAL", "AUXILIARY", "ABSTRACT",
                                "OBSOLETE", "SUP", "MUST", "MAY"})
               : isOneOf(word,
                         {"DESC", "SYNTAX", "OBSOLETE", "SUP", "USAGE",
                          "NO-USER-MODIFICATION", "COLLECTIVE", "SINGLE-VALUE",
                          "SUBSTR", "ORDERING", "EQUALITY"});
  }

  bool endsColumns() const {
    return m_next != nullptr &&
           isOneOf(m_next->keyword, {"ACCESS-CLASS", "LENGTH", "EQUALITY",
                                     "APPROX", "SUBSTR", "ORDERING"});
  }

  std::string nextInWords() const {
    return m_next == nullptr ? "')'" : inQuotes(m_next->keyword);
  }

  void suspectOfType(const Clause &clause) {
    if (clause.keyword == "COLLECTIVE") {
      add(Code::kCollective, clause,
          "expected no COLLECTIVE in an attribute type, found it");
    } else if (clause.keyword == "SUP" && clause.parenthesised) {
      add(Code::kSuperiorList, clause,
          "expected one superior without parentheses, found a list");
    } else if (isOneOf(clause.keyword,
                       {"SUP", "EQUALITY", "ORDERING", "SUBSTR"}) &&
               !clause.values.empty() &&
               clause.values.front().form == Value::Form::kWord) {
      const bool isSuperior = clause.keyword == "SUP";
      add(isSuperior ? Code::kSuperiorByName : Code::kRuleByName,
          clause.values.front().span.begin,
          std::string("expected the OID of a ") +
              (isSuperior ? "superior" : "matching rule") +
              ", found the name " + inQuotes(clause.values.front().text),
          clause.keyword);
    }
  }

  void suspectOfClass(const Clause &clause) {
    if (!isOneOf(clause.keyword, {"SUP", "MUST", "MAY"})) {
      return;
    }
    const bool isBareSuperior =
        clause.keyword == "SUP" && !clause.parenthesised;
    for (const Value &value : clause.values) {
      if (isNumber(value) && isBareSuperior) {
        add(Code::kSuperiorByNumber, value.span.begin,
            "expected the name of an object class, found the OID " +
                std::string(value.text),
            "SUP");
      } else if (isNumber(value)) {
        add(Code::kOidInList, value.span.begin,
            "expected a name, found the OID " + std::string(value.text));
      }
    }
    if (!clause.parenthesised && !clause.values.empty() && !isBareSuperior &&
        m_next == nullptr) {
      add(Code::kBareListLast, clause,
          "expected parentheses around the last list of an object class, "
          "found none");
    }
  }

  const Definition &m_definition;
  const Clause *m_next = nullptr;        // the clause behind the one looked at
  std::vector<std::string_view> m_seen;  // the fields, each once
  SuspectList m_suspects;
};

// The keyword of the clause in which a fault lies; empty if it is in none.
std::string_view clauseOf(const Definition &definition, const Fault &fault) {
  for (const Clause &clause : definition.clauses) {
    if (clause.span.begin <= fault.at.begin &&
        fault.at.begin <= clause.span.end) {
      return clause.keyword;
    }
  }
  return {};
}

Suspect suspectOf(const Fault &fault, const Definition &definition) {
  Suspect suspect{Code::kBadValue, fault.at.begin,
                  "expected " + fault.expected + ", found " + fault.found};
  switch (fault.code) {
    case FaultCode::kUnclosed:
    case FaultCode::kUnopened:
      suspect.code = Code::kUnclosed;
      suspect.always = true;
      break;
    case FaultCode::kListUnclosed:
      suspect.code = Code::kUnclosed;
      suspect.harmless = Code::kListForm;
      break;
    case FaultCode::kQuoteUnclosed:
      suspect.code = Code::kQuoteUnclosed;
      suspect.always = true;
      break;
    case FaultCode::kStray:
      suspect.code = Code::kOddCharacter;
      suspect.harmless = Code::kStrayText;
      break;
    case FaultCode::kKeywordCase:
      suspect.code = Code::kKeywordSpelling;
      break;
    case FaultCode::kDoubleQuotes:
      suspect.code = Code::kDoubleQuotes;
      suspect.harmless = Code::kQuotes;
      break;
    case FaultCode::kValueMissing:
      suspect.code = Code::kMissingValue;
      suspect.harmless = Code::kListForm;
      break;
    case FaultCode::kQuotesMissing:
      suspect.harmless = Code::kQuotes;
      break;
    case FaultCode::kQuotesUnexpected:
      suspect.field = clauseOf(definition, fault);
      suspect.harmless = Code::kQuotes;
      break;
    case FaultCode::kLengthUnexpected:
    case FaultCode::kLengthMalformed:
    case FaultCode::kNumberMissing:
      suspect.code = Code::kBadLength;
      suspect.harmless = Code::kBadForm;
      break;
    default:
      suspect.harmless = Code::kListForm;
      break;
  }
  return suspect;
}

}  // namespace

std::vector<Suspect> suspectClauses(const StrictFile &file,
                                    const Definition &definition) {
  SuspectList suspects = Clauses(definition).run();
  const std::vector<Fault> &faults = file.reading.faults;
  auto fault =
      std::lower_bound(faults.begin(), faults.end(), definition.span.begin,
                       [](const Fault &one, std::size_t offset) {
                         return one.at.begin < offset;
                       });
  for (; fault != faults.end() && fault->at.begin < definition.span.end;
       ++fault) {
    if (fault->code !=
        FaultCode::kOidMissing) {  // the definition's own finding
      suspects.add(suspectOf(*fault, definition));
    }
  }
  return suspects.take();
}

}  // namespace schemacheck
