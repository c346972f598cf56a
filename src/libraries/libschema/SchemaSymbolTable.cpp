#include "SchemaSymbolTable.h"

#include "internal/Keywords.h"

SchemaSymbolTable::SchemaSymbolTable() {
  for (const libschema::Keyword &keyword : libschema::kKeywords) {
    insertValue(std::string(keyword.text), keyword.token, true);
  }
}

SchemaSymbolTable::~SchemaSymbolTable() = default;
