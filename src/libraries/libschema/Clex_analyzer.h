/// @file
/// The interface of lexical analysers.
#ifndef LIBSCHEMA_CLEX_ANALYZER_H_
#define LIBSCHEMA_CLEX_ANALYZER_H_

#include <fstream>
#include <string>

/// A scanner in the classic style: lexan() reads the next token, match() goes
/// past the current one, and the text of a token lies in a symbol table under
/// getTokenValIndex(). SchemaLexan.h says what each operation does.
///
/// The interface deletes nothing: an analyser is deleted through its own class.
class Clex_analyzer {
 public:
  /// The number of the line that was reached.
  virtual int getLineNumber() = 0;
  /// The name of the file that is read.
  virtual std::string getFileName() = 0;
  /// The directory in which the file lies.
  virtual std::string getWorkingDir() = 0;
  /// Whether the symbol table holds a string at `index`.
  virtual bool isString(int index) = 0;
  /// Whether the symbol table holds a character at `index`.
  virtual bool isCharacter(int index) = 0;
  /// The code of the current token.
  virtual int getCurrentToken() = 0;
  /// Where the current token's text lies in the symbol table.
  virtual int getTokenValIndex() = 0;
  /// Fetches a string from the symbol table.
  virtual int getStringValue(int index, std::string &out) = 0;
  /// Fetches a character from the symbol table.
  virtual int getCharValue(int index, char &out) = 0;
  /// What the symbol table's lookUp gives for the two arguments.
  virtual int lookUp(int a, int b) = 0;
  /// Reads the next token and returns its code.
  virtual int lexan() = 0;
  /// Goes past the current token if it is `token`.
  virtual void match(int token) = 0;
  /// Adds a string to the symbol table.
  virtual int insertString(std::string s, int token) = 0;
  /// Adds a character to the symbol table.
  virtual int insertCharacter(char c, int token) = 0;
  /// Removes what is no keyword from the symbol table.
  virtual int clear() = 0;
  /// Prints the symbol table for diagnosis.
  virtual void dumpTable(std::string name) = 0;
  /// Writes the analyser for diagnosis.
  virtual void dump(int indent, std::ofstream &out) = 0;
  /// Writes an indent of `n` tab characters.
  virtual void skip(int n, std::ofstream &out) = 0;

 protected:
  ~Clex_analyzer() = default;
};

#endif  // LIBSCHEMA_CLEX_ANALYZER_H_
