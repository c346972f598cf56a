// A whole migration: what the old installation has and the new release lacks or
// has otherwise is carried into the new release, and the result is written.
//
//   migrate OLD NEW EXCLUDED-OIDS OUT
//
// The library does not return from some malformed files, and merges what it
// cannot write: a program whose input may be anything checks it first, or runs
// schema-migrate, which does.
#include <iostream>
#include <string>

#include "SchemaManager.h"

namespace {

const char *const kFiles[] = {
    "V3.user.at",   "V3.user.oc",   "V3.qor.at",
    "V3.qor.oc",    "V3.system.at", "V3.system.oc",
    "V3.config.at", "V3.config.oc", "V3.modifiedschema"};

int fail(const std::string &what) {
  std::cerr << "migrate: " << what << '\n';
  return 1;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc != 5) {
    return fail("expected OLD NEW EXCLUDED-OIDS OUT");
  }
  SchemaManager oldSchema(argv[1]);
  SchemaManager newSchema(argv[2]);
  for (const char *file : kFiles) {
    if (oldSchema.readFile(file) != 0 || newSchema.readFile(file) != 0) {
      return fail(std::string("cannot read ") + file);
    }
  }
  if (oldSchema.readExcludedOids(argv[3]) != 0) {
    return fail(std::string("cannot read ") + argv[3]);
  }
  oldSchema.compSchemas(&newSchema);  // leaves what has to be carried
  std::cout << "carried: " << oldSchema.eachAttributeType().size()
            << " attribute types, " << oldSchema.eachObjectClass().size()
            << " object classes\n";
  if (newSchema.mergeSchemas(&oldSchema) == 0) {
    return fail("the old schema has a definition that is in no file");
  }
  for (const char *file : kFiles) {
    const auto *oids = newSchema.recordedOids(file);  // null: cannot be written
    if (oids != nullptr && newSchema.writeFile(argv[4], file) != 0) {
      return fail(std::string("cannot write ") + file);
    }
    std::cout << file << ": "
              << (oids ? std::to_string(oids->size()) + " OIDs" : "not written")
              << '\n';
  }
}
