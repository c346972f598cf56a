#include "SchemaFiles.h"

#include <cstddef>

namespace schemacheck {

const char *kindName(Kind kind, bool plural) {
  static constexpr const char *kNames[kKinds][2] = {
      {"attribute type", "attribute types"},
      {"object class", "object classes"},
      {"storage definition", "storage definitions"}};
  return kNames[static_cast<std::size_t>(kind)][plural ? 1 : 0];
}

}  // namespace schemacheck
