// One definition and everything around it, for the user.
#ifndef SCHEMA_MIGRATE_SHOW_H_
#define SCHEMA_MIGRATE_SHOW_H_

#include <filesystem>
#include <string>
#include <vector>

// Prints to standard output, for each of `keys`, the definitions of the
// directory that have it for a name, in any case, or an OID: the place, the
// fields, the line of a schema file, the superiors up to the top, for an object
// class the inherited attributes, for an attribute type its storage definition.
// A key that nothing has is reported on standard error, with the nearest names.
// Returns whether each key was found. Throws Trouble when the directory cannot
// be read.
bool show(const std::filesystem::path &directory,
          const std::vector<std::string> &keys);

#endif  // SCHEMA_MIGRATE_SHOW_H_
