#include "CSymbolTable.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <utility>

CSymbolTable::CSymbolTable() = default;

CSymbolTable::~CSymbolTable() = default;

const CSymbolTable::Entry *CSymbolTable::find(int index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= m_entries.size()) {
    return nullptr;
  }
  return &m_entries[static_cast<std::size_t>(index)];
}

int CSymbolTable::insertValue(std::string value, int token, bool keyword) {
  m_entries.push_back({true, std::move(value), '\0', token, keyword});
  return getTableSize() - 1;
}

int CSymbolTable::insertValue(char value, int token, bool keyword) {
  m_entries.push_back({false, std::string(), value, token, keyword});
  return getTableSize() - 1;
}

int CSymbolTable::lookUpValue(std::string value) {
  const auto found = std::find_if(
      m_entries.begin(), m_entries.end(), [&value](const Entry &entry) {
        return entry.isString && entry.string == value;
      });
  return found == m_entries.end() ? -1
                                  : static_cast<int>(found - m_entries.begin());
}

int CSymbolTable::getTokenValue(int index) {
  const Entry *entry = find(index);
  return entry == nullptr ? -1 : entry->token;
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
  const Entry *entry = find(index);
  return entry != nullptr && entry->isString;
}

bool CSymbolTable::isCharacter(int index) {
  const Entry *entry = find(index);
  return entry != nullptr && !entry->isString;
}

void CSymbolTable::removeValue(int index) {
  if (find(index) != nullptr) {
    m_entries.erase(m_entries.begin() + index);
  }
}

int CSymbolTable::getTableSize() { return static_cast<int>(m_entries.size()); }

int CSymbolTable::lookUp(int token, int from) {
  for (int index = std::max(from, 0); index < getTableSize(); ++index) {
    if (find(index)->token == token) {
      return index;
    }
  }
  return -1;
}

int CSymbolTable::clear(int /*index*/) {
  m_entries.erase(
      std::remove_if(m_entries.begin(), m_entries.end(),
                     [](const Entry &entry) { return !entry.keyword; }),
      m_entries.end());
  return -1;
}

void CSymbolTable::dump(int indent, std::ofstream &out) {
  write(out, std::string(static_cast<std::size_t>(std::max(indent, 0)), '\t'));
}

void CSymbolTable::tableDump(std::string name) {
  std::cout << name << '\n';
  write(std::cout, "");
  std::cout.flush();
}

void CSymbolTable::write(std::ostream &out, const std::string &margin) const {
  int index = 0;
  for (const Entry &entry : m_entries) {
    out << margin << std::to_string(index++) << ' '
        << std::to_string(entry.token) << " \"";
    if (entry.isString) {
      out << entry.string;
    } else {
      out << entry.character;
    }
    out << (entry.keyword ? "\" keyword\n" : "\"\n");
  }
}
