// A strict reading as one text, to be compared as a whole.
#ifndef TESTS_SCHEMACHECK_STRICTTESTING_H_
#define TESTS_SCHEMACHECK_STRICTTESTING_H_

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <string_view>

#include "SourceText.h"
#include "StrictReader.h"

namespace schemacheck {

// On one line.
inline std::string shown(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '\n':
        result += "\\n";
        break;
      case '\r':
        result += "\\r";
        break;
      case '\t':
        result += "\\t";
        break;
      default:
        result += c;
    }
  }
  return result;
}

// `text`, and behind it in angle brackets what the span holds if that is
// something else.
inline std::string withSpan(std::string_view text, Span span,
                            const std::string &bytes) {
  const std::string held = bytes.substr(span.begin, span.end - span.begin);
  return shown(text) + (held == text ? "" : "<" + shown(held) + ">");
}

inline const char *codeName(FaultCode code) {
  static const std::map<FaultCode, const char *> kNames = {
      {FaultCode::kStray, "stray"},
      {FaultCode::kDefinitionOutside, "definition outside"},
      {FaultCode::kSectionOpener, "section opener"},
      {FaultCode::kSectionUnclosed, "section unclosed"},
      {FaultCode::kDefinitionMissing, "definition missing"},
      {FaultCode::kUnopened, "unopened"},
      {FaultCode::kUnclosed, "unclosed"},
      {FaultCode::kOidMissing, "OID missing"},
      {FaultCode::kKeywordCase, "keyword case"},
      {FaultCode::kValueMissing, "value missing"},
      {FaultCode::kNumberMissing, "number missing"},
      {FaultCode::kLengthUnexpected, "length unexpected"},
      {FaultCode::kLengthMalformed, "length malformed"},
      {FaultCode::kQuotesMissing, "quotes missing"},
      {FaultCode::kQuotesUnexpected, "quotes unexpected"},
      {FaultCode::kDoubleQuotes, "double quotes"},
      {FaultCode::kQuoteUnclosed, "quote unclosed"},
      {FaultCode::kDollarMissing, "dollar missing"},
      {FaultCode::kDollarUnexpected, "dollar unexpected"},
      {FaultCode::kListUnclosed, "list unclosed"},
      {FaultCode::kListUnexpected, "list unexpected"},
      {FaultCode::kListUnopened, "list unopened"},
      {FaultCode::kListNested, "list nested"},
  };
  return kNames.at(code);
}

// 'quoted', "quoted", word, #number
inline std::string dumpOf(const Value &value, const std::string &bytes) {
  std::string text(value.text);
  switch (value.form) {
    case Value::Form::kWord:
      break;
    case Value::Form::kQuoted:
      text = "'" + text + "'";
      break;
    case Value::Form::kDoubleQuoted:
      text = "\"" + text + "\"";
      break;
    case Value::Form::kNumber:
      return "#" + withSpan(text, value.span, bytes);
    case Value::Form::kNumberWithLength:
      return "##" + withSpan(text, value.span, bytes);
  }
  return withSpan(text, value.span, bytes);
}

// "NAME ( 'cn' 'sn' )"; a question mark in front of what is not known. The
// span, where it holds something else than the keyword and the values.
inline std::string dumpOf(const Clause &clause, const std::string &bytes) {
  std::string line = clause.known ? "    " : "  ? ";
  line += withSpan(clause.keyword, clause.keywordSpan, bytes);
  line += clause.parenthesised ? " (" : "";
  std::string plain =
      std::string(clause.keyword) + (clause.parenthesised ? " (" : "");
  for (const Value &value : clause.values) {
    line += " " + dumpOf(value, bytes);
    plain += (plain.empty() ? "" : " ") +
             bytes.substr(value.span.begin, value.span.end - value.span.begin);
  }
  line += clause.parenthesised ? " )" : "";
  plain += clause.parenthesised ? " )" : "";
  return line +
         withSpan(plain, clause.span, bytes).substr(shown(plain).size()) + "\n";
}

inline std::string dumpOf(const Definition &definition,
                          const std::string &bytes) {
  std::string text = definition.closed ? "  " : "  unclosed ";
  text += withSpan("", definition.span, bytes) + "\n";
  text += "    oid " +
          (definition.oid ? dumpOf(*definition.oid, bytes) : "(none)") + "\n";
  for (const Clause &clause : definition.clauses) {
    text += dumpOf(clause, bytes);
  }
  return text;
}

inline std::string dumpOf(const Section &section, const std::string &bytes) {
  std::string text = kindName(section.kind, true);
  text += ": " + withSpan(section.spelling, section.keyword, bytes) + " ";
  text +=
      section.opener == 0 ? "without opener" : std::string(1, section.opener);
  text += section.closed ? "\n" : " unclosed\n";
  for (const Definition &definition : section.definitions) {
    text += dumpOf(definition, bytes);
  }
  return text;
}

inline std::string dumpOf(const Fault &fault, const std::string &bytes) {
  return std::string("! ") + codeName(fault.code) + " " +
         withSpan("", fault.at, bytes) + ": expected " + fault.expected +
         ", found " + fault.found + "\n";
}

inline std::string faultsOf(const std::string &bytes) {
  std::string text;
  for (const Fault &fault : readStrictly(SourceText("file", bytes)).faults) {
    text += dumpOf(fault, bytes);
  }
  return text;
}

inline std::string readingOf(const std::string &bytes) {
  std::string text;
  for (const Section &section :
       readStrictly(SourceText("file", bytes)).sections) {
    text += dumpOf(section, bytes);
  }
  return text + faultsOf(bytes);
}

struct ClauseCase {
  const char *clauses;
  const char *reading;  // of the clauses alone, and the faults
};

inline void PrintTo(const ClauseCase &clauseCase, std::ostream *out) {
  *out << clauseCase.clauses;
}

// Reads the clauses in a definition that is sound but for them. `kind` is as a
// reading shows it, `keyword` that of the section.
inline void expectClauses(const std::string &kind, const std::string &keyword,
                          const ClauseCase &clauseCase) {
  const std::string definition =
      "( 1.2 " + std::string(clauseCase.clauses) + " )";
  EXPECT_EQ(readingOf(keyword + "=" + definition + "\n"),
            kind + ": " + keyword + " =\n  <" + shown(definition) +
                ">\n    oid #1.2\n" + clauseCase.reading);
}

}  // namespace schemacheck

#endif  // TESTS_SCHEMACHECK_STRICTTESTING_H_
