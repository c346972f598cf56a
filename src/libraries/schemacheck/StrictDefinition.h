// Reads one definition by the grammar.
#ifndef SCHEMACHECK_STRICTDEFINITION_H_
#define SCHEMACHECK_STRICTDEFINITION_H_

#include <vector>

#include "StrictClause.h"
#include "StrictReader.h"
#include "StrictTokens.h"

namespace schemacheck {

class DefinitionReader {
 public:
  // What is read goes into the store and the faults of `reading`. Neither is
  // owned.
  DefinitionReader(StrictTokens *tokens, Reading *reading)
      : m_tokens(*tokens), m_store(reading->store), m_reader(tokens, reading) {}

  // Reads the definition that the next token begins; its "(" may be missing. In
  // a block, the next definition may begin where this one should have ended.
  Definition read(Kind kind, bool inBlock);

 private:
  void readOid(Definition *definition);
  bool atEnd(Kind kind, bool inBlock);

  StrictTokens &m_tokens;
  ReadingStore &m_store;
  ClauseReader m_reader;
  std::vector<Clause> m_clauses;  // of the definition that is being read
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_STRICTDEFINITION_H_
