#include "Dump.h"

#include "Inventory.h"
#include "OidList.h"
#include "SchemaManager.h"
#include "Schemas.h"
#include "Trouble.h"

void dump(const std::filesystem::path &directory,
          const std::optional<std::filesystem::path> &excludedOids,
          const std::string &table) {
  const Inventory files(directory);
  SchemaManager schema(directory.string());
  readFiles(files, &schema);
  warn(files.missingFiles());
  warn(files.ignoredEntries());
  if (excludedOids) {
    readExcludedOids(*excludedOids, &schema);
  }
  const bool all = table.empty();
  if (all || table == "attributes") {
    schema.dumpAttrTable();
  }
  if (all || table == "classes") {
    schema.dumpOcTable();
  }
  if (all || table == "storage") {
    schema.dumpQORAttrTable();
  }
  if (all || table == "files") {
    schema.dumpUserOc();
    schema.dumpUserAt();
    schema.dumpQorOc();
    schema.dumpQorAt();
    schema.dumpSysOc();
    schema.dumpSysAt();
  }
  if (all || table == "excluded") {
    schema.dumpEOids();
  }
}
