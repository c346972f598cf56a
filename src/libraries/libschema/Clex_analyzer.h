// The interface of lexical analysers.
#ifndef LIBSCHEMA_CLEX_ANALYZER_H_
#define LIBSCHEMA_CLEX_ANALYZER_H_

#include <fstream>
#include <string>

// A scanner in the classic style: lexan() reads the next token, match() goes
// past the current one, and the text of a token lies in a symbol table under
// getTokenValIndex(). SchemaLexan.h says what each operation does.
//
// The interface deletes nothing: an analyser is deleted through its own class.
class Clex_analyzer {
 public:
  virtual int getLineNumber() = 0;
  virtual std::string getFileName() = 0;
  virtual std::string getWorkingDir() = 0;
  virtual bool isString(int index) = 0;
  virtual bool isCharacter(int index) = 0;
  virtual int getCurrentToken() = 0;
  virtual int getTokenValIndex() = 0;
  virtual int getStringValue(int index, std::string &out) = 0;
  virtual int getCharValue(int index, char &out) = 0;
  virtual int lookUp(int a, int b) = 0;
  virtual int lexan() = 0;
  virtual void match(int token) = 0;
  virtual int insertString(std::string s, int token) = 0;
  virtual int insertCharacter(char c, int token) = 0;
  virtual int clear() = 0;
  virtual void dumpTable(std::string name) = 0;
  virtual void dump(int indent, std::ofstream &out) = 0;
  virtual void skip(int n, std::ofstream &out) = 0;

 protected:
  ~Clex_analyzer() = default;
};

#endif  // LIBSCHEMA_CLEX_ANALYZER_H_
