/// @file
/// The lexical analyser of schema files.
#ifndef LIBSCHEMA_SCHEMALEXAN_H_
#define LIBSCHEMA_SCHEMALEXAN_H_

#include <array>
#include <fstream>
#include <string>
#include <string_view>

#include "Clex_analyzer.h"
#include "SchemaSymbolTable.h"

/// Reads one schema file as a stream of tokens, once, from its start to its
/// end:
///
///     SchemaLexan lexan("/etc/directory/schema", "V3.user.at");
///     if (!lexan.fileIsOpen()) ...
///     while (lexan.lexan() != TOK_DONE) {
///       std::string text;
///       lexan.getStringValue(lexan.getTokenValIndex(), text);
///     }
///
/// Tokens (the codes stand in SchemaSymbolTable.h):
///  - Blanks, tabs, newlines and comments from "#" to the end of the line
///    separate tokens.
///  - A number is a digit and the digits and dots after it. Blanks and a length
///    such as {64} may follow; the blanks are dropped, the length becomes part
///    of the text.
///  - A word begins with a letter or "-" and goes on with letters, digits, "_",
///    "-" and, kept on purpose, tabs: NAME and a tab are a name, no keyword.
///  - A quoted string stands between single quotes, holds word characters,
///    blanks and punctuation, and cannot hold a quote. Whatever other character
///    ends it (a newline, a byte of 128 or more) is dropped like the closing
///    quote; a newline dropped in this way is not counted as a line.
///  - A word or a quoted string whose text is a keyword, case included, is that
///    keyword. "objectClasses", "attributeTypes" and "QORattributeTypes" are
///    keywords too. A word, string or number that repeats the one read before
///    it is returned with that one's code.
///  - Every other character is a token of its own.
///  - A word, string or number that the end of the file cuts off is lost, and
///    TOK_DONE comes in its place: a word with nothing behind it (tabs belong
///    to it), a string with nothing behind its closing quote, a number with
///    nothing but blanks behind it, one with a length with nothing behind that.
///
/// Letters, digits and punctuation are those of ASCII in every locale.
///
/// The symbol table holds the keywords and the one text read last that is no
/// keyword, so that a token's text is valid until the next such token is read.
///
/// The parsers read through the virtual operations, so that a derived class can
/// watch or stop a reading. An analyser belongs to one thread. Only allocation
/// failures are thrown.
class SchemaLexan : public Clex_analyzer {
 public:
  /// Opens `workingDir` + "/" + `fileName`; the slash is always added. A file
  /// that does not open is not reported here: fileIsOpen() is false then, and
  /// lexan() returns TOK_DONE.
  SchemaLexan(std::string workingDir, std::string fileName);

  SchemaLexan(const SchemaLexan &) = delete;
  SchemaLexan &operator=(const SchemaLexan &) = delete;

  /// The number of the line that was reached, counted from 1.
  int getLineNumber() override;

  /// A copy of the file name as given to the constructor.
  std::string getFileName() override;

  /// A copy of the directory as given to the constructor.
  std::string getWorkingDir() override;

  /// Whether the symbol table has an entry at `index` and it holds a string.
  /// Any index may be asked for.
  bool isString(int index) override;

  /// The same for a character. lexan() itself enters none.
  bool isCharacter(int index) override;

  /// The code of the current token; -1 before the first. lexan() leaves it
  /// alone when it returns TOK_DONE; match() does not.
  int getCurrentToken() override;

  /// The symbol-table index of the current token's text; -1 when it has none. A
  /// token that the end of the file cuts off leaves the index as it was.
  int getTokenValIndex() override;

  /// Stores the text at `index` of the symbol table in `out` and returns 0;
  /// that of a quoted string is without its quotes. Non-zero, and `out` is left
  /// alone, when there is no entry or it holds a character.
  int getStringValue(int index, std::string &out) override;

  /// The same with a character, where the entry holds one.
  int getCharValue(int index, char &out) override;

  /// What the symbol table's lookUp gives for the two arguments. Nothing here
  /// calls it.
  int lookUp(int a, int b) override;

  /// Reads the next token, makes it the current one and returns its code;
  /// TOK_DONE at the end of the file, and again for every further call. A read
  /// error passes for the end of the file, but for a token that it cuts off,
  /// which is returned as far as it was read.
  int lexan() override;

  /// Reads the next token if the current one is `token`, and makes it the
  /// current one, TOK_DONE too; does nothing otherwise.
  void match(int token) override;

  /// Adds an entry to the symbol table and returns its index. The current token
  /// is not changed. Words that equal the entry get its code from then on. An
  /// entry added before the first word was read gives way to that.
  int insertString(std::string s, int token) override;

  /// The same with a character. No token ever equals such an entry.
  int insertCharacter(char c, int token) override;

  /// Removes from the symbol table what is no keyword and leaves the current
  /// token without a text. Returns the new getTokenValIndex(), -1.
  int clear() override;

  /// Prints the symbol table to standard output below a line with `name`.
  void dumpTable(std::string name) override;

  /// Writes the analyser and its symbol table to `out` for diagnosis, each line
  /// behind `indent` tab characters.
  void dump(int indent, std::ofstream &out) override;

  /// Writes `n` tab characters; none when `n` is not positive.
  void skip(int n, std::ofstream &out) override;

  /// Closes the file and releases the symbol table.
  virtual ~SchemaLexan();

  /// True while every operation on the file has succeeded and its end was not
  /// reached: right after construction, whether the file could be opened.
  bool fileIsOpen();

  /// Closes the file ahead of the destructor; there are no tokens any more
  /// then.
  void closeFile();

 protected:
  /// Takes the characters from `source`, which is not owned, from now on. This
  /// and the next two are for derived classes that read what is no file, tell
  /// where something stands, or go on behind something that could not be read.
  /// The current token stays what it is.
  void readFrom(std::streambuf *source);

  /// How many bytes the tokens so far have used up; -1 when there is no file.
  /// Of a file it asks the system.
  std::streamoff position();

  /// Makes the byte at `offset` the next to be read and `line` its line. The
  /// current token stays what it is.
  void reposition(std::streamoff offset, int line);

 private:
  // Where the characters come from: the file, or what readFrom() was given.
  std::streambuf *source();

  // Whether `c` is an ASCII character.
  bool isValidCharacter(char c);

  // Fetches the next piece of the file when all of the last one is read; the
  // only function that reads from the stream. Returns false when there is
  // nothing more: at the end of the file, which sets the stream's end-of-file
  // flag, and at a read error, which does not.
  bool fetch();

  // Whether there is a character to read, which is *m_next then.
  bool hasNext() { return m_next != m_end || fetch(); }

  // Skips what separates tokens. Returns false at the end of the file;
  // otherwise the next character begins a token.
  bool skipLayout();

  // Reads the characters that play `role` (see the source), up to the first one
  // that does not or the end. The text is valid until the next piece is
  // fetched, or the next run is read.
  std::string_view readRun(unsigned char role);

  // The three kinds of tokens. Each begins at the next character, reads the
  // token, and returns what lexan() is to return.
  int scanNumber();
  int scanWord();
  int scanCharacter();

  // Reads the length suffix behind a number, from its opening brace on, into
  // m_word. Returns the number's code.
  int scanLength();

  // The index of the symbol table's entry for `word`, or -1.
  int findWord(std::string_view word);

  // Makes the entry at `index` the current token and returns its code.
  int useEntry(int index);

  // Makes `word` the one scanned entry, with the code `token`, and that entry
  // the current token. Returns the code.
  int enterWord(std::string_view word, int token);

  // The symbol table, with the scanned entry in it.
  SchemaSymbolTable *table();

  SchemaSymbolTable *m_symtable;  // owned; the keywords and one scanned entry
  std::string m_filename;         // as given to the constructor
  int m_tokenvalindex;            // the current token's entry, or -1
  std::ifstream m_infile;         // does not skip white space
  int m_lookahead;                // the current token's code
  int m_line_num;                 // the line reached, from 1
  int m_insertindex;              // where the scanned entry is, or will be
  std::string m_workingdir;       // as given to the constructor

  // The piece of the file that is being read, and what of it is not read yet.
  static constexpr std::streamsize kPieceSize = 1024;
  std::array<char, kPieceSize> m_piece;
  const char *m_next = m_piece.data();
  const char *m_end = m_next;

  std::string m_word;  // a run or number that is not in one piece

  // The scanned entry, while only its text is asked for: it need not be in the
  // symbol table then. From the first call of table() on it is there, like all
  // that follow, and these are not used any more.
  std::string m_entry;
  int m_entrytoken = -1;  // its code; -1: there is none
  bool m_tableinuse = false;
};

#endif  // LIBSCHEMA_SCHEMALEXAN_H_
