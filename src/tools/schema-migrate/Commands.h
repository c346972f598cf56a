// The commands of schema-migrate.
#ifndef SCHEMA_MIGRATE_COMMANDS_H_
#define SCHEMA_MIGRATE_COMMANDS_H_

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ExitStatus.h"
#include "FindingCodes.h"
#include "Rules.h"
#include "SchemaDirectory.h"
#include "TraceFile.h"

// What the options say. Which of them a command has is the command line's
// matter.
struct Options {
  std::string oldDirectory;
  std::string newDirectory;
  std::string outDirectory;
  std::string directory;
  std::optional<std::string> excludedOids;
  std::optional<std::string> modifiedOids;
  std::optional<std::string> baseDirectory;
  std::optional<std::string> decisions;
  schemaplan::Preference preference = schemaplan::Preference::kOld;
  bool leaveOut = false;
  std::set<schemacheck::Code> accepted;
  std::optional<std::string> trace;
  unsigned int traceEvents = TraceFile::kAllEvents;
  std::string table;
  bool json = false;  // the form of the output
  bool all = false;
  bool replace = false;
  std::optional<std::string> backup;
  bool list = false;
  std::vector<std::string> keys;
  std::vector<std::string> directories;
  std::uintmax_t sizeLimit = schemacheck::SchemaDirectory::kDefaultLimit;
  bool strict = false;
};

// Each does what the options say, prints the result on standard output and what
// else is to be said on standard error, and returns the exit status. Throws
// Trouble when something is wrong with the input or the file system; nothing
// is printed on standard output then.
ExitStatus runApply(const Options &options);
ExitStatus runCheck(const Options &options);
ExitStatus runCollisions(const Options &options);
ExitStatus runCompare(const Options &options);
ExitStatus runDump(const Options &options);
ExitStatus runPlan(const Options &options);
ExitStatus runRestore(const Options &options);
ExitStatus runShow(const Options &options);

#endif  // SCHEMA_MIGRATE_COMMANDS_H_
