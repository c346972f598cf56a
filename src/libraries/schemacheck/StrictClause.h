// Reads the clauses of a definition by the grammar.
#ifndef SCHEMACHECK_STRICTCLAUSE_H_
#define SCHEMACHECK_STRICTCLAUSE_H_

#include <string>
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

  // `tokens` and `faults` are not owned.
  ClauseReader(Kind kind, StrictTokens *tokens, std::vector<Fault> *faults)
      : m_kind(kind), m_tokens(*tokens), m_faults(*faults) {}

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

  // The value that the token is; adds the faults that it has in `place`, such
  // as " behind NAME".
  Value valueOf(Token token, Style style, const std::string &place);

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
  Last readListItem(Style style, Last last, const std::string &owner,
                    Clause *clause);

  bool atList();
  void takeValue(Style style, Clause *clause);
  void takeWords(Clause *clause);
  void requireValue(const Clause &clause, const char *what);

  const Kind m_kind;
  StrictTokens &m_tokens;
  std::vector<Fault> &m_faults;
  bool m_lacksOpening = false;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_STRICTCLAUSE_H_
