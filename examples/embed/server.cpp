// A server with a trace facility and a symbol table of its own. It defines what
// ldtr.h and CSymbolTable.h declare; the library calls these definitions, and
// those that come with it are not used.
//
//   server DIRECTORY FILE WORD
//
// Whoever replaces a header's functions replaces all of them. The classes stay
// as the headers declare them; a server with headers of its own builds the
// library from its sources (LIBSCHEMA_PLATFORM_TARGET in CMakeLists.txt).
#include <cstdarg>
#include <cstdio>
#include <iostream>
#include <string>

#include "CSymbolTable.h"
#include "SchemaLexan.h"
#include "SchemaManager.h"
#include "ldtr.h"

// The trace facility: nested calls are indented, and sinks are not called.

unsigned int trcEvents = 0;

namespace {

int depth = 0;

void trace(const std::string &text) {
  std::cout << std::string(2 * static_cast<std::size_t>(depth), ' ') << text
            << '\n';
}

std::string hexadecimal(unsigned int number) {
  char text[16];
  std::snprintf(text, sizeof text, "%08x", number);
  return text;
}

}  // namespace

void ldtr_write(unsigned int, unsigned int id, void *) {
  trace(hexadecimal(id) + " {");
  ++depth;
}

void ldtr_exit_errcode(unsigned int, int, unsigned int, long code, void *) {
  --depth;
  trace("} " + std::to_string(code));
}

ldtr_formater_local::ldtr_formater_local(unsigned int id, unsigned int kind,
                                         void *data)
    : m_id(id), m_kind(kind), m_data(data) {}

void ldtr_formater_local::debug(unsigned int, const char *format, ...) {
  char text[256];
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  std::string line = length < 0 ? "" : text;
  line.erase(line.find_last_not_of('\n') + 1);
  trace(hexadecimal(m_id) + ' ' + hexadecimal(m_kind) +
        (m_data == nullptr ? ": " : " with data: ") + line);
}

void ldtr_set_sink(ldtr_sink, void *) {}

// The symbol table, which counts how often a text was looked for.

namespace {

int searches = 0;

}  // namespace

CSymbolTable::CSymbolTable() = default;
CSymbolTable::~CSymbolTable() = default;

int CSymbolTable::insertValue(std::string value, int token, bool keyword) {
  m_entries.push_back({true, value, '\0', token, keyword});
  return getTableSize() - 1;
}

int CSymbolTable::insertValue(char value, int token, bool keyword) {
  m_entries.push_back({false, "", value, token, keyword});
  return getTableSize() - 1;
}

int CSymbolTable::lookUpValue(std::string value) {
  ++searches;
  for (int index = 0; index < getTableSize(); ++index) {
    if (isString(index) && find(index)->string == value) {
      return index;
    }
  }
  return -1;
}

const CSymbolTable::Entry *CSymbolTable::find(int index) const {
  const auto place = static_cast<std::size_t>(index);
  return place < m_entries.size() ? &m_entries[place] : nullptr;
}

int CSymbolTable::getTokenValue(int index) {
  return find(index) == nullptr ? -1 : find(index)->token;
}

int CSymbolTable::getValue(int index, std::string &value) {
  if (!isString(index)) {
    return 1;
  }
  value = find(index)->string;
  return 0;
}

int CSymbolTable::getValue(int index, char &value) {
  if (!isCharacter(index)) {
    return 1;
  }
  value = find(index)->character;
  return 0;
}

bool CSymbolTable::isString(int index) {
  return find(index) != nullptr && find(index)->isString;
}

bool CSymbolTable::isCharacter(int index) {
  return find(index) != nullptr && !find(index)->isString;
}

void CSymbolTable::removeValue(int index) {
  if (find(index) != nullptr) {
    m_entries.erase(m_entries.begin() + index);
  }
}

int CSymbolTable::getTableSize() { return static_cast<int>(m_entries.size()); }

int CSymbolTable::lookUp(int token, int from) {
  for (int index = from < 0 ? 0 : from; index < getTableSize(); ++index) {
    if (getTokenValue(index) == token) {
      return index;
    }
  }
  return -1;
}

int CSymbolTable::clear(int) {
  for (int index = getTableSize() - 1; index >= 0; --index) {
    if (!find(index)->keyword) {
      removeValue(index);
    }
  }
  return -1;
}

void CSymbolTable::dump(int, std::ofstream &out) {
  out << getTableSize() << " entries\n";
}

void CSymbolTable::tableDump(std::string name) {
  std::cout << name << ": " << getTableSize() << " entries\n";
}

int main(int argc, char **argv) {
  if (argc != 4) {
    std::cerr << "server: expected DIRECTORY FILE WORD\n";
    return 1;
  }
  // The word becomes a keyword of the server's own.
  constexpr int kWord = 5000;
  int count = 0;
  SchemaLexan lexan(argv[1], argv[2]);
  int token = lexan.lexan();
  while (token != TOK_NUMBER && token != TOK_DONE) {
    token = lexan.lexan();
  }
  lexan.insertString(argv[3], kWord);  // behind the first text: to stay there
  lexan.dumpTable("symbols");
  for (; token != TOK_DONE; token = lexan.lexan()) {
    count += token == kWord ? 1 : 0;
  }
  std::cout << argv[3] << " stands in " << argv[2] << ' ' << count << " times; "
            << (searches > 0 ? "the table was searched\n" : "no search\n");

  trcEvents = 0x04033000;  // entries, exits and debug records
  SchemaManager schema(argv[1]);
  schema.readExcludedOids("no-such-file");
  schema.compSchemas(&schema);
}
