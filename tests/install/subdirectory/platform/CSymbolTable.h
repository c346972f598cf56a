// A symbol table that is not laid out as the one of src/platform, and is
// inline.
#ifndef SERVER_CSYMBOLTABLE_H_
#define SERVER_CSYMBOLTABLE_H_

#include <cstddef>
#include <deque>
#include <fstream>
#include <iostream>
#include <string>

class CSymbolTable {
 public:
  CSymbolTable() { ++tables; }
  virtual ~CSymbolTable() { tables -= m_seal == kSeal ? 1 : 0; }

  CSymbolTable(const CSymbolTable &) = delete;
  CSymbolTable &operator=(const CSymbolTable &) = delete;

  int insertValue(std::string value, int token, bool keyword) {
    m_entries.push_back({token, keyword, '\0', true, value});
    return getTableSize() - 1;
  }
  int insertValue(char value, int token, bool keyword) {
    m_entries.push_back({token, keyword, value, false, ""});
    return getTableSize() - 1;
  }

  int lookUpValue(std::string value) {
    ++searches;
    int index = 0;
    while (has(index) && !(isString(index) && at(index).string == value)) {
      ++index;
    }
    return has(index) ? index : -1;
  }
  int lookUp(int token, int from) {
    int index = from < 0 ? 0 : from;
    while (has(index) && at(index).token != token) {
      ++index;
    }
    return has(index) ? index : -1;
  }

  int getTokenValue(int index) { return has(index) ? at(index).token : -1; }
  int getValue(int index, std::string &value) {
    if (isString(index)) {
      value = at(index).string;
    }
    return isString(index) ? 0 : 1;
  }
  int getValue(int index, char &value) {
    if (isCharacter(index)) {
      value = at(index).character;
    }
    return isCharacter(index) ? 0 : 1;
  }
  bool isString(int index) { return has(index) && at(index).isString; }
  bool isCharacter(int index) { return has(index) && !at(index).isString; }
  int getTableSize() { return static_cast<int>(m_entries.size()); }

  void removeValue(int index) {
    if (has(index)) {
      m_entries.erase(m_entries.begin() + index);
    }
  }
  int clear(int) {
    for (int index = getTableSize() - 1; index >= 0; --index) {
      if (!at(index).keyword) {
        removeValue(index);
      }
    }
    return -1;
  }

  void dump(int, std::ofstream &out) { out << getTableSize() << '\n'; }
  void tableDump(std::string name) {
    std::cout << name << ": " << getTableSize() << '\n';
  }

  inline static int tables = 0;    // that there are
  inline static int searches = 0;  // for a text

 private:
  static constexpr unsigned long kSeal = 0x5ea15ea15ea15ea1;

  struct Entry {
    int token;
    bool keyword;
    char character;
    bool isString;
    std::string string;
  };

  bool has(int index) { return index >= 0 && index < getTableSize(); }
  Entry &at(int index) { return m_entries[static_cast<std::size_t>(index)]; }

  std::deque<Entry> m_entries;
  unsigned long m_seal = kSeal;  // the last member: who made it knew this class
};

#endif  // SERVER_CSYMBOLTABLE_H_
