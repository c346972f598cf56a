// What `schema-migrate plan` prints.
#ifndef SCHEMA_MIGRATE_PLANREPORT_H_
#define SCHEMA_MIGRATE_PLANREPORT_H_

#include <iosfwd>
#include <string>

#include "Migration.h"

// Prints each definition of the old installation under its verdict, what the
// result would break, what keeps the plan from being carried out, and a line
// with the numbers. Throws InternalError when these do not add up.
void printPlan(const Migration &migration, std::ostream *out);

// Throws InternalError unless the plan has one verdict for each definition that
// the files of the directory state.
void requireComplete(const schemaplan::Plan &plan,
                     const schemacheck::SchemaDirectory &directory);

// "3 definitions: 2 attribute types (1 identical, 1 added), ..."
std::string summaryOf(const schemaplan::Plan &plan);

#endif  // SCHEMA_MIGRATE_PLANREPORT_H_
