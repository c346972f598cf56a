#include "ObjectClass.h"

#include <iostream>
#include <utility>

#include "SchemaLexan.h"
#include "internal/Definition.h"
#include "internal/Trace.h"

using libschema::appendText;
using libschema::Function;
using libschema::printField;
using libschema::readText;
using libschema::TraceScope;

namespace {

// Unlike the other kinds, an object class ends at the next "(", and of the
// section keywords only at its own.
bool endsDefinition(int token) {
  switch (token) {
    case ')':
    case '}':
    case '(':
    case TOK_DONE:
    case TOK_OBJECTCLASSES:
      return true;
    default:
      return false;
  }
}

bool endsNames(int token) {
  switch (token) {
    case TOK_DESC:
    case TOK_STRUCTURAL:
    case TOK_AUXILIARY:
    case TOK_ABSTRACT:
    case TOK_OBSOLETE:
    case TOK_SUP:
    case TOK_MUST:
    case TOK_MAY:
      return true;
    default:
      return false;
  }
}

// Whether `token` goes on with a list. The two section keywords are names here:
// attribute types of these names exist.
bool inList(int token) {
  return token == '$' || token == TOK_ID || token == TOK_OBJECTCLASSES ||
         token == TOK_ATTRIBUTETYPES;
}

// list = name *( "$" name ) [ ")" ]
// Reads the list that begins at the current token. Returns the current token
// behind it.
int parseList(SchemaLexan *lex, std::vector<std::string> *list) {
  int token = lex->getCurrentToken();
  while (inList(token)) {
    if (token != '$') {
      appendText(lex, list);
    }
    token = lex->lexan();
  }
  lex->match(')');
  return lex->getCurrentToken();
}

// superiors = "SUP" ( "(" list / name )
// Drops any other token. Returns the current token behind it.
int parseSuperiors(SchemaLexan *lex, std::vector<std::string> *superiors) {
  const int token = lex->lexan();
  if (token == '(') {
    lex->match('(');
    return parseList(lex, superiors);
  }
  if (token == TOK_ID) {
    appendText(lex, superiors);
  }
  return lex->lexan();
}

// attributes = ( "MUST" / "MAY" ) [ "(" ] list
// Returns the current token behind it.
int parseAttributes(SchemaLexan *lex, int keyword,
                    std::vector<std::string> *attributes) {
  lex->match(keyword);
  lex->match('(');
  return parseList(lex, attributes);
}

// Reads the names behind NAME. Returns the token that ended them.
int parseNames(SchemaLexan *lex, std::vector<std::string> *names) {
  lex->match(TOK_NAME);
  int token = TOK_NAME;
  while (!endsNames(token)) {
    if (lex->getCurrentToken() == TOK_ID) {
      appendText(lex, names);
    }
    token = lex->lexan();
  }
  return token;
}

const char *kindName(std::int32_t kind) {
  switch (kind) {
    case TOK_AUXILIARY:
      return "AUXILIARY";
    case TOK_ABSTRACT:
      return "ABSTRACT";
    default:
      return "STRUCTURAL";
  }
}

// Appends "KEYWORD ( a $ b ) "; nothing for an empty list.
void appendList(std::string *line, const char *keyword,
                const std::vector<std::string> &list) {
  if (!list.empty()) {
    *line += keyword;
    *line += " ( ";
    libschema::appendJoined(line, list, " $ ");
    *line += " ) ";
  }
}

}  // namespace

ObjectClass::ObjectClass() : m_structuraltype(TOK_STRUCTURAL) {}

ObjectClass::~ObjectClass() = default;

int ObjectClass::parse(SchemaLexan *lex) {
  TraceScope trace(Function::kObjectClassParse);
  int token = libschema::enterDefinition(lex);
  while (!endsDefinition(token)) {
    switch (token) {
      case TOK_NUMBER:
      case TOK_ID:
        readText(lex, &m_oid);
        break;
      case TOK_NUMBER_BAD:
        return trace.result(0);
      case TOK_NAME:
        token = parseNames(lex, &m_names);
        continue;
      case TOK_DESC:
        if (lex->lexan() == TOK_ID) {
          readText(lex, &m_description);
        }
        break;
      case TOK_STRUCTURAL:
      case TOK_ABSTRACT:
      case TOK_AUXILIARY:
        m_structuraltype = token;
        break;
      case TOK_OBSOLETE:
        m_obsolete = true;
        break;
      case TOK_SUP:
        token = parseSuperiors(lex, &m_superior);
        continue;
      case TOK_MUST:
        token = parseAttributes(lex, token, &m_reqattrs);
        continue;
      case TOK_MAY:
        token = parseAttributes(lex, token, &m_optattrs);
        continue;
      default:
        break;
    }
    token = lex->lexan();
  }
  if (token == ')') {
    lex->lexan();
  }
  return trace.result(token == ')' || token == '}' || token == '(' ? 1 : 0);
}

void ObjectClass::dump(std::ofstream &out) {
  TraceScope trace(Function::kObjectClassDumpToFile);
  std::string line = libschema::startLine("objectclasses", m_oid);
  line += " NAME ";
  libschema::appendQuoted(&line, m_names);
  if (!m_description.empty()) {
    line.append(" DESC '").append(m_description).append("' ");
  }
  if (m_obsolete) {
    line += "OBSOLETE ";
  }
  appendList(&line, "SUP", m_superior);
  line += kindName(m_structuraltype);
  line += ' ';
  appendList(&line, "MUST", m_reqattrs);
  appendList(&line, "MAY", m_optattrs);
  line += ')';
  libschema::writeLine(out, std::move(line));
}

void ObjectClass::dump() {
  TraceScope trace(Function::kObjectClassDump);
  std::cout << "\n\n";
  printField("oid --> ", m_oid);
  printField("names --> ", m_names);
  printField("description --> ", m_description);
  printField("superior --> ", m_superior);
  printField("structural type --> ", kindName(m_structuraltype));
  printField("Obsolete --> ", m_obsolete ? "YES" : "NO");
  printField("required Attrs --> ", m_reqattrs);
  printField("optional Attrs --> ", m_optattrs);
  std::cout << "\n\n";
}

int ObjectClass::objsEqual(const ObjectClass &other) {
  TraceScope trace(Function::kObjectClassObjsEqual);
  const bool equal = m_oid == other.m_oid &&
                     m_description == other.m_description &&
                     m_obsolete == other.m_obsolete &&
                     m_structuraltype == other.m_structuraltype &&
                     libschema::listsMatch(m_names, other.m_names) &&
                     libschema::listsMatch(m_optattrs, other.m_optattrs) &&
                     libschema::listsMatch(m_reqattrs, other.m_reqattrs) &&
                     libschema::listsMatch(m_superior, other.m_superior);
  return trace.result(equal ? 1 : 0);
}

std::string ObjectClass::getOid() { return m_oid; }

std::string ObjectClass::getDescription() { return m_description; }

std::vector<std::string> ObjectClass::getSuperior() { return m_superior; }

std::string ObjectClass::getFirstName() {
  return m_names.empty() ? std::string() : m_names.front();
}

std::vector<std::string> ObjectClass::getNames() { return m_names; }

std::string ObjectClass::getFirstNameLower() {
  return libschema::firstNameLower(m_names);
}

std::vector<std::string> ObjectClass::getReqAttrs() { return m_reqattrs; }

std::vector<std::string> ObjectClass::getOptAttrs() { return m_optattrs; }

std::string ObjectClass::convert(std::string s) {
  return libschema::lowerCase(std::move(s));
}

std::string ObjectClass::getOidAndName() {
  return libschema::oidAndName(m_oid, m_names);
}
