#include "SchemaLexan.h"

#include <algorithm>
#include <cstddef>
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

// Takes what is in the stream's buffer, and keeps the stream's state as an
// extraction through the stream would.
bool SchemaLexan::fetch() {
  if (!m_infile.good()) {
    return false;
  }
  try {
    using Traits = std::ifstream::traits_type;
    if (!Traits::eq_int_type(source()->sgetc(), Traits::eof())) {
      const auto size =
          std::clamp<std::streamsize>(source()->in_avail(), 1, kPieceSize);
      m_next = m_piece.data();
      m_end = m_next + source()->sgetn(m_piece.data(), size);
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

bool SchemaLexan::isString(int index) { return table()->isString(index); }

bool SchemaLexan::isCharacter(int index) { return table()->isCharacter(index); }

int SchemaLexan::getCurrentToken() { return m_lookahead; }

int SchemaLexan::getTokenValIndex() { return m_tokenvalindex; }

int SchemaLexan::getStringValue(int index, std::string &out) {
  if (!m_tableinuse && m_entrytoken != -1 && index == m_insertindex) {
    out = m_entry;
    return 0;
  }
  return m_symtable->getValue(index, out);
}

int SchemaLexan::getCharValue(int index, char &out) {
  return table()->getValue(index, out);
}

int SchemaLexan::lookUp(int a, int b) {
  TraceScope trace(Function::kLexanLookUp);
  return trace.result(table()->lookUp(a, b));
}

int SchemaLexan::lexan() {
  TraceScope trace(Function::kLexanLexan);
  if (!skipLayout()) {
    m_tokenvalindex = -1;
    return trace.result(TOK_DONE);
  }
  const char c = *m_next;
  if (isValidCharacter(c) && libschema::isDigit(c)) {
    return trace.result(scanNumber());
  }
  if (isValidCharacter(c) && is(kWordStart, c)) {
    return trace.result(scanWord());
  }
  return trace.result(scanCharacter());
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
  return trace.result(table()->insertValue(std::move(s), token, false));
}

int SchemaLexan::insertCharacter(char c, int token) {
  TraceScope trace(Function::kLexanInsertCharacter);
  return trace.result(table()->insertValue(c, token, false));
}

int SchemaLexan::clear() {
  m_tokenvalindex = table()->clear(m_tokenvalindex);
  return m_tokenvalindex;
}

void SchemaLexan::dumpTable(std::string name) {
  TraceScope trace(Function::kLexanDumpTable);
  table()->tableDump(std::move(name));
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
    table()->dump(indent + 1, out);
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

void SchemaLexan::closeFile() {
  m_next = m_end;
  m_infile.close();
}

void SchemaLexan::readFrom(std::streambuf *source) {
  m_next = m_end;
  static_cast<std::ios &>(m_infile).rdbuf(source);
}

std::streamoff SchemaLexan::position() {
  const std::streamoff fetched =
      source()->pubseekoff(0, std::ios::cur, std::ios::in);
  return fetched == -1 ? -1 : fetched - (m_end - m_next);
}

void SchemaLexan::reposition(std::streamoff offset, int line) {
  m_infile.clear();
  m_next = m_end;
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

bool SchemaLexan::skipLayout() {
  while (hasNext()) {
    const char c = *m_next;
    if (c == '#') {
      while (hasNext() && *m_next != '\n') {
        ++m_next;
      }
      if (m_next == m_end) {
        ++m_line_num;  // as if a newline had ended the comment
      }
      continue;
    }
    if (c == '\n') {
      ++m_line_num;
    } else if (c != ' ' && c != '\t') {
      return true;
    }
    ++m_next;
  }
  return false;
}

std::string_view SchemaLexan::readRun(unsigned char role) {
  const auto readPiece = [this, role] {
    const char *const start = m_next;
    m_next =
        std::find_if_not(start, m_end, [role](char c) { return is(role, c); });
    return std::string_view(start, static_cast<std::size_t>(m_next - start));
  };
  const std::string_view run = readPiece();
  if (m_next != m_end) {
    return run;
  }
  m_word = run;
  while (m_next == m_end && fetch()) {
    m_word += readPiece();
  }
  return m_word;
}

// number = digit *( digit / "." ) *" " [ length ]
int SchemaLexan::scanNumber() {
  m_word = readRun(kNumber);
  while (hasNext() && *m_next == ' ') {
    ++m_next;
  }
  const int token = hasNext() && *m_next == '{' ? scanLength() : TOK_NUMBER;
  if (!hasNext() && m_infile.eof()) {
    return TOK_DONE;
  }
  const int index = findWord(m_word);
  return index != -1 ? useEntry(index) : enterWord(m_word, token);
}

// length = "{" 1*digit "}"
int SchemaLexan::scanLength() {
  m_word += *m_next++;
  if (!hasNext() || !libschema::isDigit(*m_next)) {
    return TOK_NUMBER_BAD;
  }
  do {
    m_word += *m_next++;
  } while (hasNext() && libschema::isDigit(*m_next));
  if (!hasNext() || *m_next != '}') {
    return TOK_NUMBER_BAD;
  }
  m_word += *m_next++;
  return TOK_NUMBER_LEN;
}

// word = ( letter / "-" ) *wordchar / "'" *quotedchar closer
int SchemaLexan::scanWord() {
  std::string_view word;
  if (*m_next == '\'') {
    ++m_next;
    word = readRun(kQuoted);
    if (hasNext()) {
      ++m_next;  // the closing quote, or whatever is in its place
    }
    if (m_next == m_end) {
      m_word = word;
      word = m_word;
    }
  } else {
    word = readRun(kWord);
  }
  if (!hasNext() && m_infile.eof()) {
    return TOK_DONE;
  }

  const int index = findWord(word);
  if (index != -1) {
    return useEntry(index);
  }
  for (const Alias &alias : kAliases) {
    if (word == alias.spelling) {
      return useEntry(libschema::findKeyword(alias.keyword));
    }
  }
  return enterWord(word, TOK_ID);
}

int SchemaLexan::scanCharacter() {
  m_tokenvalindex = -1;
  m_lookahead = static_cast<unsigned char>(*m_next++);
  return m_lookahead;
}

// Finds what the table's lookUpValue finds.
int SchemaLexan::findWord(std::string_view word) {
  const int keyword = libschema::findKeyword(word);
  if (keyword != -1) {
    return keyword;
  }
  if (m_tableinuse) {
    return m_symtable->lookUpValue(std::string(word));
  }
  return m_entrytoken != -1 && m_entry == word ? m_insertindex : -1;
}

int SchemaLexan::useEntry(int index) {
  m_tokenvalindex = index;
  m_lookahead = !m_tableinuse && index == m_insertindex
                    ? m_entrytoken
                    : m_symtable->getTokenValue(index);
  return m_lookahead;
}

int SchemaLexan::enterWord(std::string_view word, int token) {
  if (m_tableinuse) {
    m_symtable->removeValue(m_insertindex);
    m_insertindex = m_symtable->insertValue(std::string(word), token, false);
  } else {
    m_entry = word;
    m_entrytoken = token;
  }
  m_tokenvalindex = m_insertindex;
  m_lookahead = token;
  return token;
}

SchemaSymbolTable *SchemaLexan::table() {
  if (!m_tableinuse) {
    if (m_entrytoken != -1) {
      m_symtable->insertValue(m_entry, m_entrytoken, false);
    }
    m_tableinuse = true;
  }
  return m_symtable;
}
