// The files of a schema directory and the kinds of definitions.
#ifndef SCHEMACHECK_SCHEMAFILES_H_
#define SCHEMACHECK_SCHEMAFILES_H_

#include <array>
#include <cstddef>

namespace schemacheck {

struct SchemaFile {
  const char *name;
  bool recorded;  // whether the merge can add definitions that it holds
  bool written;   // by SchemaManager::writeFile(); the others are copied
};

// In the order in which a directory is read.
constexpr std::array<SchemaFile, 9> kSchemaFiles = {{
    {"V3.user.at", true, true},
    {"V3.user.oc", true, true},
    {"V3.qor.at", true, true},
    {"V3.qor.oc", true, true},
    {"V3.system.at", true, true},
    {"V3.system.oc", true, true},
    {"V3.config.at", false, false},
    {"V3.config.oc", false, false},
    {"V3.modifiedschema", false, true},
}};

// The file of the modified schema, as an index of kSchemaFiles.
constexpr std::size_t kModifiedSchema = kSchemaFiles.size() - 1;

enum class Kind { kAttributeType, kObjectClass, kStorage };

constexpr std::size_t kKinds = 3;

// "attribute type", "object class" or "storage definition"; `plural` adds the
// ending.
const char *kindName(Kind kind, bool plural = false);

}  // namespace schemacheck

#endif  // SCHEMACHECK_SCHEMAFILES_H_
