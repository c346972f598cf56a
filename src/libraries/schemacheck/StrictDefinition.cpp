#include "StrictDefinition.h"

namespace schemacheck {

namespace {

Span firstOf(Span span) { return {span.begin, span.begin + 1}; }

}  // namespace

// definition = "(" oid *clause ")"
Definition DefinitionReader::read() {
  Definition definition;
  definition.kind = m_kind;
  definition.span.begin = m_tokens.peek().span.begin;
  if (m_tokens.is('(')) {
    m_tokens.take();
  } else {
    m_clauses.fault(FaultCode::kUnopened, m_tokens.peek().span,
                    "'(' at the start of the definition",
                    inWords(m_tokens.peek()));
  }
  readOid(&definition);
  while (!atEnd()) {
    if (m_tokens.isWord() || m_tokens.isQuoted() || m_tokens.is('(')) {
      definition.clauses.push_back(m_clauses.read());
    } else {
      m_clauses.skipStray("a keyword or ')'");
    }
  }
  definition.closed = m_tokens.is(')');
  if (definition.closed) {
    m_tokens.take();
  } else {
    m_clauses.fault(FaultCode::kUnclosed, firstOf(definition.span),
                    "')' at the end of the definition",
                    inWords(m_tokens.peek()));
  }
  definition.span.end = m_tokens.end();
  return definition;
}

void DefinitionReader::readOid(Definition *definition) {
  if (m_clauses.atValue() && !m_tokens.beginsClause(m_kind)) {
    definition->oid = m_clauses.valueOf(
        m_tokens.take(), ClauseReader::Style::kOids, " behind '('");
  } else {
    m_clauses.fault(FaultCode::kOidMissing, firstOf(definition->span),
                    "an OID behind '('", inWords(m_tokens.peek()));
  }
}

// A ")" before another clause is one too many, and so is one that belongs to a
// list without "(".
bool DefinitionReader::atEnd() {
  if (!m_tokens.is(')')) {
    return m_clauses.endsDefinition() || m_tokens.beginsDefinition(m_kind) ||
           (m_inBlock && m_tokens.is('(') &&
            m_tokens.peek(1).type == Token::Type::kNumber);
  }
  return !(m_tokens.isKeyword(m_kind, 1) && m_tokens.beginsClause(m_kind, 1)) &&
         !(m_clauses.lacksOpening() && m_tokens.is(')', 1));
}

}  // namespace schemacheck
