#include "SchemaLexan.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "internal/Character.h"
#include "internal/Keywords.h"
#include "internal/Trace.h"

using libschema::Function;
using libschema::TraceScope;

namespace {

// The spellings that are read as a keyword although the table does not hold
// them.
struct Alias {
  std::string_view spelling;
  const char *keyword;
};

constexpr Alias kAliases[] = {
    {"objectClasses", "objectclasses"},
    {"attributeTypes", "attributetypes"},
    {"QORattributeTypes", "QORAttributetypes"},
};

// What a character can be part of, as bits.
enum : unsigned char {
  kNumber = 1,     // goes on with a number
  kWordStart = 2,  // begins a word or a quoted string
  kWord = 4,       // goes on with a word
  kQuoted = 8,     // goes on with a quoted string
};

constexpr unsigned char rolesOf(char c) {
  using namespace libschema;
  unsigned char roles = 0;
  if (isDigit(c) || c == '.') {
    roles |= kNumber;
  }
  if (isLetter(c) || c == '\'' || c == '-') {
    roles |= kWordStart;
  }
  // The tab is kept on purpose: it goes on with an unquoted word.
  if (isLetter(c) || isDigit(c) || c == '_' || c == '-' || c == '\t') {
    roles |= kWord | kQuoted;
  }
  if (c == ' ' || (isPunctuation(c) && c != '\'')) {
    roles |= kQuoted;
  }
  return roles;
}

constexpr std::array<unsigned char, 256> kRoles = [] {
  std::array<unsigned char, 256> roles{};
  for (std::size_t byte = 0; byte < roles.size(); ++byte) {
    roles[byte] = rolesOf(static_cast<char>(byte));
  }
  return roles;
}();

bool is(unsigned char role, char c) {
  return (kRoles[static_cast<unsigned char>(c)] & role) != 0;
}

}  // namespace

inline std::streambuf *SchemaLexan::source() {
  return static_cast<std::ios &>(m_infile).rdbuf();
}

// Takes the character straight from the stream's buffer, and keeps the stream's
// state as an extraction through the stream would.
inline bool SchemaLexan::readCharacter(char &c) {
  using Traits = std::ifstream::traits_type;
  if (!m_infile.good()) {
    return false;
  }
  try {
    const Traits::int_type next = source()->sbumpc();
    if (!Traits::eq_int_type(next, Traits::eof())) {
      c = Traits::to_char_type(next);
      return true;
    }
    m_infile.setstate(std::ios::eofbit | std::ios::failbit);
  } catch (const std::ios::failure &) {  // the read failed
    m_infile.setstate(std::ios::badbit);
  }
  return false;
}

SchemaLexan::SchemaLexan(std::string workingDir, std::string fileName)
    : m_symtable(nullptr),
      m_tokenvalindex(-1),
      m_lookahead(-1),
      m_line_num(1),
      m_workingdir(std::move(workingDir)) {
  m_infile.open(m_workingdir + "/" + fileName);  // sets failbit if it fails
  m_infile.unsetf(std::ios::skipws);
  m_symtable = new SchemaSymbolTable;
  m_insertindex = m_symtable->getTableSize();
  m_filename = std::move(fileName);
}

SchemaLexan::~SchemaLexan() { delete m_symtable; }

int SchemaLexan::getLineNumber() {
  TraceScope trace(Function::kLexanGetLineNumber);
  return trace.result(m_line_num);
}

std::string SchemaLexan::getFileName() {
  TraceScope trace(Function::kLexanGetFileName);
  return m_filename;
}

std::string SchemaLexan::getWorkingDir() {
  TraceScope trace(Function::kLexanGetWorkingDir);
  return m_workingdir;
}

bool SchemaLexan::isString(int index) { return m_symtable->isString(index); }

bool SchemaLexan::isCharacter(int index) {
  return m_symtable->isCharacter(index);
}

int SchemaLexan::getCurrentToken() { return m_lookahead; }

int SchemaLexan::getTokenValIndex() { return m_tokenvalindex; }

int SchemaLexan::getStringValue(int index, std::string &out) {
  return m_symtable->getValue(index, out);
}

int SchemaLexan::getCharValue(int index, char &out) {
  return m_symtable->getValue(index, out);
}

int SchemaLexan::lookUp(int a, int b) {
  TraceScope trace(Function::kLexanLookUp);
  return trace.result(m_symtable->lookUp(a, b));
}

int SchemaLexan::lexan() {
  TraceScope trace(Function::kLexanLexan);
  char c = 0;
  if (!skipLayout(c)) {
    m_tokenvalindex = -1;
    return trace.result(TOK_DONE);
  }
  if (isValidCharacter(c) && libschema::isDigit(c)) {
    return trace.result(scanNumber(c));
  }
  if (isValidCharacter(c) && is(kWordStart, c)) {
    return trace.result(scanWord(c));
  }
  return trace.result(scanCharacter(c));
}

void SchemaLexan::match(int token) {
  TraceScope trace(Function::kLexanMatch);
  if (m_symtable == nullptr) {
    if (trace.debugging()) {
      trace.record().debug(libschema::kDebugLevel,
                           "match: No pointer to symbol table");
    }
    return;
  }
  if (m_lookahead == token) {
    m_lookahead = lexan();
  }
}

int SchemaLexan::insertString(std::string s, int token) {
  TraceScope trace(Function::kLexanInsertString);
  return trace.result(m_symtable->insertValue(std::move(s), token, false));
}

int SchemaLexan::insertCharacter(char c, int token) {
  TraceScope trace(Function::kLexanInsertCharacter);
  return trace.result(m_symtable->insertValue(c, token, false));
}

int SchemaLexan::clear() {
  m_entered = false;
  m_tokenvalindex = m_symtable->clear(m_tokenvalindex);
  return m_tokenvalindex;
}

void SchemaLexan::dumpTable(std::string name) {
  TraceScope trace(Function::kLexanDumpTable);
  m_symtable->tableDump(std::move(name));
}

// The numbers are decimal and without grouping, whatever the stream's format
// and locale.
void SchemaLexan::dump(int indent, std::ofstream &out) {
  TraceScope trace(Function::kLexanDump);
  skip(indent, out);
  out << "SchemaLexan\n";
  skip(indent, out);
  out << "{ \n";
  skip(indent, out);
  out << "  m_filename \"" << m_filename << "\"\n";
  skip(indent, out);
  out << "  m_tokenvalindex " << std::to_string(m_tokenvalindex) << '\n';
  skip(indent, out);
  out << "  m_line_num " << std::to_string(m_line_num) << '\n';
  skip(indent, out);
  out << "  m_lookahead " << std::to_string(m_lookahead) << '\n';
  skip(indent, out);
  out << "  m_symtable ";
  if (m_symtable != nullptr) {
    out << '\n';
    m_symtable->dump(indent + 1, out);
  } else {
    out << "EMPTY\n";
  }
  skip(indent, out);
  out << "}\n";
}

void SchemaLexan::skip(int n, std::ofstream &out) {
  for (int i = 0; i < n; ++i) {
    out << '\t';
  }
}

void SchemaLexan::closeFile() { m_infile.close(); }

void SchemaLexan::readFrom(std::streambuf *source) {
  static_cast<std::ios &>(m_infile).rdbuf(source);
}

std::streamoff SchemaLexan::position() {
  return source()->pubseekoff(0, std::ios::cur, std::ios::in);
}

void SchemaLexan::reposition(std::streamoff offset, int line) {
  m_infile.clear();
  source()->pubseekpos(offset, std::ios::in);
  m_line_num = line;
}

bool SchemaLexan::fileIsOpen() {
  TraceScope trace(Function::kLexanFileIsOpen);
  return trace.result(m_infile.good());
}

bool SchemaLexan::isValidCharacter(char c) {
  return static_cast<unsigned char>(c) < 128;
}

void SchemaLexan::putBack() {
  if (m_infile.good()) {
    source()->sungetc();
  }
}

bool SchemaLexan::skipLayout(char &c) {
  while (readCharacter(c)) {
    if (c == '#') {
      while (readCharacter(c) && c != '\n') {
      }
      ++m_line_num;  // also when the file ended
    } else if (c == '\n') {
      ++m_line_num;
    } else if (c != ' ' && c != '\t') {
      return true;
    }
  }
  return false;
}

// number = digit *( digit / "." ) *" " [ length ]
int SchemaLexan::scanNumber(char c) {
  m_word.clear();
  do {
    m_word += c;
  } while (readCharacter(c) && is(kNumber, c));
  while (c == ' ' && readCharacter(c)) {
  }
  const int token = c == '{' ? scanLength(c) : TOK_NUMBER;
  if (m_infile.eof()) {
    return TOK_DONE;
  }
  putBack();
  const int index = findWord();
  return index != -1 ? useEntry(index) : enterWord(token);
}

// length = "{" 1*digit "}"
int SchemaLexan::scanLength(char &c) {
  m_word += c;
  if (!readCharacter(c) || !libschema::isDigit(c)) {
    return TOK_NUMBER_BAD;
  }
  do {
    m_word += c;
  } while (readCharacter(c) && libschema::isDigit(c));
  if (c != '}') {
    return TOK_NUMBER_BAD;
  }
  m_word += c;
  readCharacter(c);
  return TOK_NUMBER_LEN;
}

// word = ( letter / "-" ) *wordchar / "'" *quotedchar closer
int SchemaLexan::scanWord(char c) {
  m_word.clear();
  if (c == '\'') {
    bool more = readCharacter(c);
    while (more && is(kQuoted, c)) {
      m_word += c;
      more = readCharacter(c);
    }
    readCharacter(c);  // in place of the closing quote, whatever it is
  } else {
    do {
      m_word += c;
    } while (readCharacter(c) && is(kWord, c));
  }
  if (m_infile.eof()) {
    return TOK_DONE;
  }
  putBack();

  const int index = findWord();
  if (index != -1) {
    return useEntry(index);
  }
  for (const Alias &alias : kAliases) {
    if (m_word == alias.spelling) {
      return useEntry(libschema::findKeyword(alias.keyword));
    }
  }
  return enterWord(TOK_ID);
}

int SchemaLexan::scanCharacter(char c) {
  m_tokenvalindex = -1;
  m_lookahead = static_cast<unsigned char>(c);
  return m_lookahead;
}

// Finds what the table's lookUpValue finds. Besides the keywords there is at
// most the entry for m_entry to compare with, unless somebody has inserted
// others.
int SchemaLexan::findWord() {
  const int keyword = libschema::findKeyword(m_word);
  if (keyword != -1) {
    return keyword;
  }
  const int keywords = static_cast<int>(libschema::kKeywords.size());
  const int size = m_symtable->getTableSize();
  if (size == keywords) {
    return -1;
  }
  if (m_entered && m_insertindex == keywords && size == keywords + 1) {
    return m_entry == m_word ? m_insertindex : -1;
  }
  return m_symtable->lookUpValue(m_word);
}

int SchemaLexan::useEntry(int index) {
  m_tokenvalindex = index;
  m_lookahead = m_symtable->getTokenValue(index);
  return m_lookahead;
}

int SchemaLexan::enterWord(int token) {
  m_symtable->removeValue(m_insertindex);
  m_insertindex = m_symtable->insertValue(m_word, token, false);
  m_entry.swap(m_word);
  m_entered = true;
  m_tokenvalindex = m_insertindex;
  m_lookahead = token;
  return token;
}
