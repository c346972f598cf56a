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
      takeValue(Style::kAny, &clause);
    }
  }
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
  if (clause.known) {
    clause.keyword = form->keyword;
    if (clause.keyword != word.text) {
      fault(FaultCode::kKeywordCase, word.span, clause.keyword, inWords(word));
    }
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
    case Takes::kNumber:
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
    takeValue(Style::kQuoted, clause);
  }
  while (m_tokens.isQuoted()) {
    takeValue(Style::kQuoted, clause);
  }
}

// qdstring
void ClauseReader::readText(Clause *clause) {
  if (m_tokens.isQuoted()) {
    takeValue(Style::kQuoted, clause);
  } else if (atValue()) {
    takeWords(clause);
  } else if (atList()) {
    fault(FaultCode::kListUnexpected, m_tokens.peek().span,
          "one quoted text behind " + clause->keyword, "'('");
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
  takeValue(Style::kOids, clause);
  while (m_tokens.is('$')) {
    const Token dollar = m_tokens.take();
    if (!m_lacksOpening) {
      fault(FaultCode::kListUnopened, dollar.span,
            "parentheses around the list of " + clause->keyword,
            inWords(dollar));
    }
    m_lacksOpening = true;
    if (atValue()) {
      takeValue(Style::kOids, clause);
    }
  }
}

void ClauseReader::readOne(Takes takes, Clause *clause) {
  if (atList()) {
    fault(FaultCode::kListUnexpected, m_tokens.peek().span,
          "one value behind " + clause->keyword, "'('");
    readList(Style::kAny, clause);
    return;
  }
  if (!atValue()) {
    return;
  }
  const Token &token = m_tokens.peek();
  if (token.type == Token::Type::kWord && takes == Takes::kNumber) {
    fault(FaultCode::kNumberMissing, token.span,
          "a number behind " + clause->keyword, inWords(token));
  }
  takeValue(takes == Takes::kSyntax ? Style::kSyntax : Style::kOids, clause);
}

// A word that no definition has: whatever strings follow are its values.
void ClauseReader::readUnknown(Clause *clause) {
  if (atList()) {
    readList(Style::kAny, clause);
    return;
  }
  while (m_tokens.isQuoted()) {
    takeValue(Style::kAny, clause);
  }
}

// "(" *( value / "$" ) ")"; "$" stands between the values if they are OIDs.
void ClauseReader::readList(Style style, Clause *clause) {
  const Span open = m_tokens.take().span;
  const std::string owner =
      "the list of " + (clause->keyword.empty() ? "values" : clause->keyword);
  clause->parenthesised = true;
  std::size_t depth = 0;  // of further parentheses
  Last last = Last::kNothing;
  while (depth > 0 || !m_tokens.is(')')) {
    const Token &token = m_tokens.peek();
    if (endsDefinition() || m_tokens.beginsClause(m_kind)) {
      fault(FaultCode::kListUnclosed, open, "')' at the end of " + owner,
            inWords(token));
      return;
    }
    if (token.is('(')) {
      fault(FaultCode::kListNested, token.span,
            "no further parentheses in " + owner, "'('");
      m_tokens.take();
      ++depth;
    } else if (token.is(')')) {
      m_tokens.take();
      --depth;
    } else {
      last = readListItem(style, last, owner, clause);
    }
  }
  if (style == Style::kOids && last == Last::kDollar) {
    fault(FaultCode::kDollarUnexpected, m_tokens.peek().span,
          "a name or an OID behind '$'", "')'");
  }
  m_tokens.take();
}

ClauseReader::Last ClauseReader::readListItem(Style style, Last last,
                                              const std::string &owner,
                                              Clause *clause) {
  const Token &token = m_tokens.peek();
  if (m_tokens.isWord() || m_tokens.isQuoted()) {
    if (style == Style::kOids && last == Last::kValue) {
      fault(FaultCode::kDollarMissing, token.span,
            "'$' behind '" + clause->values.back().text + "'", inWords(token));
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
          "a quoted string in " + owner, "'$'");
  } else if (style == Style::kOids && last != Last::kValue) {
    fault(FaultCode::kDollarUnexpected, token.span,
          "a name or an OID in " + owner, "'$'");
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

void ClauseReader::takeValue(Style style, Clause *clause) {
  const std::string place =
      clause->keyword.empty() ? "" : " behind " + clause->keyword;
  clause->values.push_back(valueOf(m_tokens.take(), style, place));
}

// A text without quotes, as far as it can be one.
void ClauseReader::takeWords(Clause *clause) {
  takeValue(Style::kQuoted, clause);
  Value &text = clause->values.back();
  while (m_tokens.isWord() && atValue() && !m_tokens.beginsClause(m_kind) &&
         !m_tokens.isQuoted(1) && !m_tokens.is('(', 1)) {
    const Token word = m_tokens.take();
    text.form = Value::Form::kWord;
    text.text += " " + word.text;
    text.span.end = word.span.end;
  }
}

Value ClauseReader::valueOf(Token token, Style style,
                            const std::string &place) {
  const Value::Form form = formOf(token);
  if (!token.intact && form == Value::Form::kQuoted) {
    fault(FaultCode::kQuoteUnclosed, token.span, "a closing quote",
          "the end of the line");
  } else if (!token.intact) {
    fault(FaultCode::kLengthMalformed, token.span, "a length such as {64}",
          inWords(token));
  }
  if (form == Value::Form::kDoubleQuoted) {
    fault(FaultCode::kDoubleQuotes, token.span, "single quotes" + place,
          inWords(token));
  } else if (form == Value::Form::kQuoted &&
             (style == Style::kOids || style == Style::kSyntax)) {
    fault(FaultCode::kQuotesUnexpected, token.span,
          "a value without quotes" + place, inWords(token));
  } else if (form == Value::Form::kNumberWithLength && token.intact &&
             style == Style::kOids) {
    fault(FaultCode::kLengthUnexpected, token.span,
          "a value without a length" + place, inWords(token));
  } else if (form != Value::Form::kQuoted && style == Style::kQuoted) {
    fault(FaultCode::kQuotesMissing, token.span, "a quoted string" + place,
          inWords(token));
  }
  return {form, std::move(token.text), token.span};
}

void ClauseReader::requireValue(const Clause &clause, const char *what) {
  if (clause.values.empty()) {
    fault(FaultCode::kValueMissing, clause.keywordSpan,
          std::string(what) + " behind " + clause.keyword,
          inWords(m_tokens.peek()));
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
