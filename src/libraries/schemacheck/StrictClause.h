// Reads the clauses of a definition by the grammar.
#ifndef SCHEMACHECK_STRICTCLAUSE_H_
#define SCHEMACHECK_STRICTCLAUSE_H_

#include <string>
#include <string_view>
#include <vector>

#include "StrictGrammar.h"
#include "StrictReader.h"
#include "StrictTokens.h"

namespace schemacheck {

class ClauseReader {
 public:
  // How values are to be written: in quotes; without them, as names and numbers
  // that only a syntax may have a length behind; in any of these ways.
  enum class Style { kQuoted, kOids, kSyntax, kAny };

  // What is read goes into the store and the faults of `reading`. Neither is
  // owned.
  ClauseReader(StrictTokens *tokens, Reading *reading)
      : m_tokens(*tokens), m_store(reading->store), m_faults(reading->faults) {}

  // What is read from now on belongs to a definition of this kind.
  void begin(Kind kind) {
    m_kind = kind;
    m_lacksOpening = false;
  }

  // Reads what the next token, a word, a string or a "(", begins.
  Clause read();

  // Passes over a character that begins nothing, in the place of `expected`.
  void skipStray(const char *expected);

  // Whether the clause read last is a list that has no "(".
  bool lacksOpening() const { return m_lacksOpening; }

  // Whether the next token ends a definition, wherever in it it comes.
  bool endsDefinition();

  // Whether the next token can be a value outside of a list.
  bool atValue();

  // The value that the token is; adds the faults that it has behind `before`,
  // such as "NAME"; empty, if nothing need be said of that.
  Value valueOf(const Token &token, Style style, std::string_view before);

  void fault(FaultCode code, Span at, std::string expected, std::string found);

 private:
  // What was read last in a list.
  enum class Last { kNothing, kValue, kDollar, kStray };

  Clause readKeyword();
  void readValues(Takes takes, Clause *clause);
  void readNames(Clause *clause);
  void readText(Clause *clause);
  void readOids(Clause *clause);
  void readOne(Takes takes, Clause *clause);
  void readUnknown(Clause *clause);
  void readList(Style style, Clause *clause);
  Last readListItem(Style style, Last last, const Clause &clause);

  bool atList();
  void takeValue(Style style, const Clause &clause);
  void takeWords(const Clause &clause);
  void requireValue(const Clause &clause, const char *what);

  Kind m_kind = Kind::kAttributeType;
  StrictTokens &m_tokens;
  ReadingStore &m_store;
  std::vector<Fault> &m_faults;
  std::vector<Value> m_values;  // of the clause that is being read
  bool m_lacksOpening = false;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_STRICTCLAUSE_H_
