// The commands of schema-migrate.
#ifndef SCHEMA_MIGRATE_COMMANDS_H_
#define SCHEMA_MIGRATE_COMMANDS_H_

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "FindingCodes.h"
#include "Rules.h"
#include "SchemaDirectory.h"
#include "TraceFile.h"

// The exit statuses.
constexpr int kDone = 0;
constexpr int kFound = 1;
constexpr int kTrouble = 2;
constexpr int kInternal = 3;

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
int runApply(const Options &options);
int runCheck(const Options &options);
int runCollisions(const Options &options);
int runCompare(const Options &options);
int runDump(const Options &options);
int runPlan(const Options &options);
int runRestore(const Options &options);
int runShow(const Options &options);

#endif  // SCHEMA_MIGRATE_COMMANDS_H_
