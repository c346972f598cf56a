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
  // `tokens` and `faults` are not owned. In a block, the next definition may
  // begin where this one should have ended.
  DefinitionReader(Kind kind, bool inBlock, StrictTokens *tokens,
                   std::vector<Fault> *faults)
      : m_kind(kind),
        m_inBlock(inBlock),
        m_tokens(*tokens),
        m_clauses(kind, tokens, faults) {}

  // Reads the definition that the next token begins; its "(" may be missing.
  Definition read();

 private:
  void readOid(Definition *definition);
  bool atEnd();

  const Kind m_kind;
  const bool m_inBlock;
  StrictTokens &m_tokens;
  ClauseReader m_clauses;
};

}  // namespace schemacheck

#endif  // SCHEMACHECK_STRICTDEFINITION_H_
