// The line of a definition in a schema file.
#ifndef SCHEMA_MIGRATE_SCHEMALINE_H_
#define SCHEMA_MIGRATE_SCHEMALINE_H_

#include <string>

#include "QORSchema.h"

// The definition as the library writes it, without the end of line. Throws
// Trouble when that fails.
std::string schemaLine(QORSchema *definition);

#endif  // SCHEMA_MIGRATE_SCHEMALINE_H_
