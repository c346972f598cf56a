#include "QORAttribute.h"

#include <utility>

#include "SchemaLexan.h"
#include "internal/Definition.h"
#include "internal/Trace.h"

using libschema::appendField;
using libschema::appendText;
using libschema::Function;
using libschema::printField;
using libschema::readText;
using libschema::TraceScope;

namespace {

const char kNoLength[] = "0";

// Of the section keywords only "attributetypes" ends a storage definition.
bool endsDefinition(int token) {
  switch (token) {
    case ')':
    case '}':
    case TOK_DONE:
    case TOK_ATTRIBUTETYPES:
      return true;
    default:
      return false;
  }
}

bool endsColumns(int token) {
  switch (token) {
    case ')':
    case TOK_ACCESS_CLASS:
    case TOK_LENGTH:
    case TOK_EQUALITY:
    case TOK_APPROX:
    case TOK_SUBSTR:
    case TOK_ORDERING:
      return true;
    default:
      return false;
  }
}

// columns = "DBNAME" "(" *name ")"
// Reads from DBNAME on. Returns the token that ended the list, or the one
// behind it if that was ")". The token directly behind DBNAME is taken for the
// "(" and never for a name. The two section keywords are names here: attribute
// types of these names exist.
int parseColumns(SchemaLexan *lex, std::vector<std::string> *names) {
  lex->match(TOK_DBNAME);
  int token = TOK_DBNAME;
  while (!endsColumns(token)) {
    if (token == TOK_ID || token == TOK_OBJECTCLASSES ||
        token == TOK_ATTRIBUTETYPES) {
      appendText(lex, names);
    }
    token = lex->lexan();
  }
  return token == ')' ? lex->lexan() : token;
}

const char *yesOrNo(bool flag) { return flag ? "YES" : "NO"; }

}  // namespace

QORAttribute::QORAttribute()
    : m_length(kNoLength),
      m_equalityflag(false),
      m_orderingflag(false),
      m_substrflag(false),
      m_approxflag(false) {}

QORAttribute::~QORAttribute() = default;

int QORAttribute::parse(SchemaLexan *lex) {
  TraceScope trace(Function::kQORAttributeParse);
  int token = libschema::enterDefinition(lex);
  while (!endsDefinition(token)) {
    switch (token) {
      case TOK_NUMBER:
      case TOK_ID:
        readText(lex, &m_oid);
        break;
      case TOK_DBNAME:
        token = parseColumns(lex, &m_dbnames);
        continue;
      case TOK_ACCESS_CLASS:
        lex->lexan();
        readText(lex, &m_accessclass);
        break;
      case TOK_LENGTH:
        lex->lexan();
        readText(lex, &m_length);
        break;
      case TOK_EQUALITY:
        m_equalityflag = true;
        break;
      case TOK_ORDERING:
        m_orderingflag = true;
        break;
      case TOK_SUBSTR:
        m_substrflag = true;
        break;
      case TOK_APPROX:
        m_approxflag = true;
        break;
      default:
        break;
    }
    token = lex->lexan();
  }
  if (token == ')') {
    lex->lexan();
  }
  return trace.result(token == ')' || token == '}' ? 1 : 0);
}

void QORAttribute::dump(std::ofstream &out) {
  TraceScope trace(Function::kQORAttributeDumpToFile);
  std::string line = libschema::startLine("QORAttributetypes", m_oid);
  line += ' ';
  if (!m_dbnames.empty()) {
    line += "DBNAME ( ";
    libschema::appendQuoted(&line, m_dbnames);
    line += " ) ";
  }
  appendField(&line, "ACCESS-CLASS ", m_accessclass);
  if (m_length != kNoLength) {
    line.append("LENGTH ").append(m_length).append(" ");
  }
  line += m_equalityflag ? "EQUALITY " : "";
  line += m_orderingflag ? "ORDERING " : "";
  line += m_substrflag ? "SUBSTR " : "";
  line += m_approxflag ? "APPROX " : "";
  line += ')';
  libschema::writeLine(out, std::move(line));
}

void QORAttribute::dump() {
  TraceScope trace(Function::kQORAttributeDump);
  printField("oid --> ", m_oid);
  printField("accessClass --> ", m_accessclass);
  printField("length --> ", m_length);
  printField("equality --> ", yesOrNo(m_equalityflag));
  printField("ordering --> ", yesOrNo(m_orderingflag));
  printField("substr --> ", yesOrNo(m_substrflag));
  printField("approx --> ", yesOrNo(m_approxflag));
  printField("names--> ", m_dbnames);
}

int QORAttribute::qorAttrsEqual(const QORAttribute &other) {
  TraceScope trace(Function::kQORAttributeQorAttrsEqual);
  const bool equal =
      m_oid == other.m_oid && m_accessclass == other.m_accessclass &&
      m_equalityflag == other.m_equalityflag &&
      m_orderingflag == other.m_orderingflag &&
      m_substrflag == other.m_substrflag &&
      m_approxflag == other.m_approxflag && m_length == other.m_length &&
      libschema::listsMatch(m_dbnames, other.m_dbnames);
  return trace.result(equal ? 1 : 0);
}

std::string QORAttribute::convert(std::string s) {
  return libschema::lowerCase(std::move(s));
}

std::string QORAttribute::getOidAndName() {
  return libschema::oidAndName(m_oid, m_names);
}
