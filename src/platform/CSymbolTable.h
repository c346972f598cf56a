/// @file
/// The symbol table of the server's parse library, as far as the schema library
/// uses it. A server that has its own links that one in place of this module.
#ifndef PLATFORM_CSYMBOLTABLE_H_
#define PLATFORM_CSYMBOLTABLE_H_

#include <fstream>
#include <string>
#include <vector>

/// A list of entries, each a string or a single character with a token code and
/// a flag that marks keywords. An entry's index is its position in the order of
/// insertion, counted from 0; -1 means that there is no entry. Every operation
/// accepts an index without an entry. One table belongs to one thread.
class CSymbolTable {
 public:
  /// An empty table.
  CSymbolTable();
  virtual ~CSymbolTable();

  CSymbolTable(const CSymbolTable &) = delete;
  CSymbolTable &operator=(const CSymbolTable &) = delete;

  /// Appends an entry and returns its index, the size of the table before. A
  /// value that is there already is appended all the same.
  int insertValue(std::string value, int token, bool keyword);
  /// The same with a character.
  int insertValue(char value, int token, bool keyword);

  /// The index of the first entry that holds exactly this string, or -1.
  int lookUpValue(std::string value);

  /// The entry's token code; -1 when there is no entry.
  int getTokenValue(int index);

  /// Stores the entry's string in `value` and returns 0. Returns 1 and leaves
  /// `value` alone when there is no entry or it holds a character.
  int getValue(int index, std::string &value);
  /// The same with a character, where the entry holds one.
  int getValue(int index, char &value);

  /// Whether there is an entry and it holds a string.
  bool isString(int index);
  /// Whether there is an entry and it holds a character.
  bool isCharacter(int index);

  /// Removes the entry; later ones move up by one. No entry: nothing happens.
  void removeValue(int index);

  /// The number of entries.
  int getTableSize();

  /// The index of the first entry at or after `from` whose token code is
  /// `token`, or -1.
  int lookUp(int token, int from);

  /// Removes every entry that is not a keyword. Returns -1, the index that its
  /// caller is to take for current, whatever `index` was current before.
  int clear(int index);

  /// Writes the table to `out` for diagnosis, a line an entry, each line behind
  /// `indent` tab characters (none when `indent` is not positive).
  void dump(int indent, std::ofstream &out);

  /// Writes the same lines to standard output below a line with `name`.
  void tableDump(std::string name);

 private:
  struct Entry {
    bool isString;
    std::string string;  // the value, or empty
    char character;      // the value, or 0
    int token;
    bool keyword;
  };

  // The entry at `index`, or null. Valid until the table changes.
  const Entry *find(int index) const;
  // Writes the entries to `out`, each line behind `margin`.
  void write(std::ostream &out, const std::string &margin) const;

  std::vector<Entry> m_entries;  // in order of insertion
};

#endif  // PLATFORM_CSYMBOLTABLE_H_
