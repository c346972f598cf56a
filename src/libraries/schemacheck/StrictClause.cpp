#include "StrictClause.h"

#include <utility>

#include "StrictGrammar.h"

namespace schemacheck {

namespace {

Value::Form formOf(const Token &token) {
  switch (token.type) {
    case Token::Type::kQuoted:
      return Value::Form::kQuoted;
    case Token::Type::kDoubleQuoted:
      return Value::Form::kDoubleQuoted;
    case Token::Type::kNumber:
      return token.hasLength() ? Value::Form::kNumberWithLength
                               : Value::Form::kNumber;
    default:
      return Value::Form::kWord;
  }
}

std::string behind(std::string_view what) {
  return what.empty() ? "" : " behind " + std::string(what);
}

// The list that is read into the clause, in a fault's text.
std::string listInWords(const Clause &clause) {
  return "the list of " +
         (clause.keyword.empty() ? "values" : std::string(clause.keyword));
}

std::string inUpperCase(std::string_view word) {
  std::string text(word);
  for (char &c : text) {
    c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  return text;
}

}  // namespace

Clause ClauseReader::read() {
  m_lacksOpening = false;
  Clause clause;
  if (m_tokens.peek().type == Token::Type::kWord) {
    clause = readKeyword();
  } else {
    const std::size_t begin = m_tokens.peek().span.begin;
    clause.keywordSpan = {begin, begin};
    if (m_tokens.is('(')) {
      readList(Style::kAny, &clause);
    } else {
      takeValue(Style::kAny, clause);
    }
  }
  clause.values = m_store.values.take(&m_values);
  clause.span = {clause.keywordSpan.begin, m_tokens.end()};
  return clause;
}

Clause ClauseReader::readKeyword() {
  const Token word = m_tokens.take();
  Clause clause;
  clause.keyword = word.text;
  clause.keywordSpan = word.span;
  const auto form = clauseForm(m_kind, word.text);
  if (!form) {
    readUnknown(&clause);
    return clause;
  }
  clause.known = form->known;
  if (form->known && !form->exact) {
    clause.keyword = form->keyword.empty()
                         ? m_tokens.keep(inUpperCase(word.text))
                         : form->keyword;
    fault(FaultCode::kKeywordCase, word.span, std::string(clause.keyword),
          inWords(word));
  }
  readValues(form->takes, &clause);
  return clause;
}

void ClauseReader::readValues(Takes takes, Clause *clause) {
  switch (takes) {
    case Takes::kNothing:
      break;
    case Takes::kNames:
      readNames(clause);
      break;
    case Takes::kExtensions:
      readNames(clause);
      requireValue(*clause, "a quoted string");
      break;
    case Takes::kText:
      readText(clause);
      requireValue(*clause, "a quoted text");
      break;
    case Takes::kOids:
      readOids(clause);
      requireValue(*clause, "a name or an OID");
      break;
    case Takes::kOid:
    case Takes::kSyntax:
      readOne(takes, clause);
      requireValue(*clause, "a name or an OID");
      break;
    default:  // Takes::kNumber
      readOne(takes, clause);
      requireValue(*clause, "a number");
      break;
  }
}

// *qdescr / "(" *qdescr ")"
void ClauseReader::readNames(Clause *clause) {
  if (atList()) {
    readList(Style::kQuoted, clause);
    return;
  }
  if (atValue()) {
    takeValue(Style::kQuoted, *clause);
  }
  while (m_tokens.isQuoted()) {
    takeValue(Style::kQuoted, *clause);
  }
}

// qdstring
void ClauseReader::readText(Clause *clause) {
  if (m_tokens.isQuoted()) {
    takeValue(Style::kQuoted, *clause);
  } else if (atValue()) {
    takeWords(*clause);
  } else if (atList()) {
    fault(FaultCode::kListUnexpected, m_tokens.peek().span,
          "one quoted text" + behind(clause->keyword), "'('");
    readList(Style::kQuoted, clause);
  }
}

// oid / "(" oid *( "$" oid ) ")"
void ClauseReader::readOids(Clause *clause) {
  if (atList()) {
    readList(Style::kOids, clause);
    return;
  }
  if (!atValue()) {
    return;
  }
  takeValue(Style::kOids, *clause);
  while (m_tokens.is('$')) {
    const Token dollar = m_tokens.take();
    if (!m_lacksOpening) {
      fault(FaultCode::kListUnopened, dollar.span,
            "parentheses around " + listInWords(*clause), inWords(dollar));
    }
    m_lacksOpening = true;
    if (atValue()) {
      takeValue(Style::kOids, *clause);
    }
  }
}

void ClauseReader::readOne(Takes takes, Clause *clause) {
  if (atList()) {
    fault(FaultCode::kListUnexpected, m_tokens.peek().span,
          "one value" + behind(clause->keyword), "'('");
    readList(Style::kAny, clause);
    return;
  }
  if (!atValue()) {
    return;
  }
  const Token &token = m_tokens.peek();
  if (token.type == Token::Type::kWord && takes == Takes::kNumber) {
    fault(FaultCode::kNumberMissing, token.span,
          "a number" + behind(clause->keyword), inWords(token));
  }
  takeValue(takes == Takes::kSyntax ? Style::kSyntax : Style::kOids, *clause);
}

// A word that no definition has: whatever strings follow are its values.
void ClauseReader::readUnknown(Clause *clause) {
  if (atList()) {
    readList(Style::kAny, clause);
    return;
  }
  while (m_tokens.isQuoted()) {
    takeValue(Style::kAny, *clause);
  }
}

// "(" *( value / "$" ) ")"; "$" stands between the values if they are OIDs.
void ClauseReader::readList(Style style, Clause *clause) {
  const Span open = m_tokens.take().span;
  clause->parenthesised = true;
  std::size_t depth = 0;  // of further parentheses
  Last last = Last::kNothing;
  while (depth > 0 || !m_tokens.is(')')) {
    const Token &token = m_tokens.peek();
    if (endsDefinition() || m_tokens.beginsClause(m_kind)) {
      fault(FaultCode::kListUnclosed, open,
            "')' at the end of " + listInWords(*clause), inWords(token));
      return;
    }
    if (token.is('(')) {
      fault(FaultCode::kListNested, token.span,
            "no further parentheses in " + listInWords(*clause), "'('");
      m_tokens.take();
      ++depth;
    } else if (token.is(')')) {
      m_tokens.take();
      --depth;
    } else {
      last = readListItem(style, last, *clause);
    }
  }
  if (style == Style::kOids && last == Last::kDollar) {
    fault(FaultCode::kDollarUnexpected, m_tokens.peek().span,
          "a name or an OID behind '$'", "')'");
  }
  m_tokens.take();
}

ClauseReader::Last ClauseReader::readListItem(Style style, Last last,
                                              const Clause &clause) {
  const Token &token = m_tokens.peek();
  if (m_tokens.isWord() || m_tokens.isQuoted()) {
    if (style == Style::kOids && last == Last::kValue) {
      fault(FaultCode::kDollarMissing, token.span,
            "'$' behind '" + std::string(m_values.back().text) + "'",
            inWords(token));
    }
    takeValue(style, clause);
    return Last::kValue;
  }
  if (!token.is('$')) {
    skipStray("'$' or ')'");
    return Last::kStray;
  }
  if (style == Style::kQuoted) {
    fault(FaultCode::kDollarUnexpected, token.span,
          "a quoted string in " + listInWords(clause), "'$'");
  } else if (style == Style::kOids && last != Last::kValue) {
    fault(FaultCode::kDollarUnexpected, token.span,
          "a name or an OID in " + listInWords(clause), "'$'");
  }
  m_tokens.take();
  return Last::kDollar;
}

bool ClauseReader::atValue() {
  if (m_tokens.isQuoted()) {
    return true;
  }
  return m_tokens.isWord() && !m_tokens.isKeyword(m_kind) &&
         !m_tokens.beginsSection();
}

bool ClauseReader::atList() {
  return m_tokens.is('(') && !m_tokens.beginsNamedDefinition();
}

void ClauseReader::takeValue(Style style, const Clause &clause) {
  m_values.push_back(valueOf(m_tokens.take(), style, clause.keyword));
}

// A text without quotes, as far as it can be one.
void ClauseReader::takeWords(const Clause &clause) {
  takeValue(Style::kQuoted, clause);
  std::string text(m_values.back().text);
  std::size_t end = 0;
  while (m_tokens.isWord() && atValue() && !m_tokens.isQuoted(1) &&
         !m_tokens.is('(', 1)) {
    const Token word = m_tokens.take();
    text.append(" ").append(word.text);
    end = word.span.end;
  }
  if (end != 0) {
    Value &value = m_values.back();
    value.form = Value::Form::kWord;
    value.text = m_tokens.keep(std::move(text));
    value.span.end = end;
  }
}

Value ClauseReader::valueOf(const Token &token, Style style,
                            std::string_view before) {
  const Value::Form form = formOf(token);
  if (!token.intact && form == Value::Form::kQuoted) {
    fault(FaultCode::kQuoteUnclosed, token.span, "a closing quote",
          "the end of the line");
  } else if (!token.intact) {
    fault(FaultCode::kLengthMalformed, token.span, "a length such as {64}",
          inWords(token));
  }
  if (form == Value::Form::kDoubleQuoted) {
    fault(FaultCode::kDoubleQuotes, token.span,
          "single quotes" + behind(before), inWords(token));
  } else if (form == Value::Form::kQuoted &&
             (style == Style::kOids || style == Style::kSyntax)) {
    fault(FaultCode::kQuotesUnexpected, token.span,
          "a value without quotes" + behind(before), inWords(token));
  } else if (form == Value::Form::kNumberWithLength && token.intact &&
             style == Style::kOids) {
    fault(FaultCode::kLengthUnexpected, token.span,
          "a value without a length" + behind(before), inWords(token));
  } else if (form != Value::Form::kQuoted && style == Style::kQuoted) {
    fault(FaultCode::kQuotesMissing, token.span,
          "a quoted string" + behind(before), inWords(token));
  }
  return {form, token.text, token.span};
}

void ClauseReader::requireValue(const Clause &clause, const char *what) {
  if (m_values.empty()) {
    fault(FaultCode::kValueMissing, clause.keywordSpan,
          what + behind(clause.keyword), inWords(m_tokens.peek()));
  }
}

bool ClauseReader::endsDefinition() {
  return m_tokens.peek().type == Token::Type::kEnd || m_tokens.is('}') ||
         m_tokens.beginsSection() || m_tokens.beginsNamedDefinition();
}

// A length may follow what is no number.
void ClauseReader::skipStray(const char *expected) {
  const Token first = m_tokens.take();
  if (first.is('{') && m_tokens.isWord() && m_tokens.is('}', 1)) {
    m_tokens.take();
    m_tokens.take();
  }
  fault(FaultCode::kStray, {first.span.begin, m_tokens.end()}, expected,
        inWords(first));
  m_lacksOpening = false;
}

void ClauseReader::fault(FaultCode code, Span at, std::string expected,
                         std::string found) {
  m_faults.push_back({code, at, std::move(expected), std::move(found)});
  if (m_faults.size() >= kMostFaults) {
    m_tokens.stop();
  }
}

}  // namespace schemacheck
