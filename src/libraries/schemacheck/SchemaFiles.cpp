#include "SchemaFiles.h"

namespace schemacheck {

const char *kindName(Kind kind, bool plural) {
  switch (kind) {
    case Kind::kAttributeType:
      return plural ? "attribute types" : "attribute type";
    case Kind::kObjectClass:
      return plural ? "object classes" : "object class";
    case Kind::kStorage:
      break;
  }
  return plural ? "storage definitions" : "storage definition";
}

}  // namespace schemacheck
