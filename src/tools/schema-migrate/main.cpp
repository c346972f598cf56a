// The command schema-migrate.

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdint>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Apply.h"
#include "Check.h"
#include "Collisions.h"
#include "Compare.h"
#include "Dump.h"
#include "Nearest.h"
#include "OutputDirectory.h"
#include "Report.h"
#include "Restore.h"
#include "SchemaDirectory.h"
#include "Show.h"
#include "TraceFile.h"
#include "Trouble.h"

namespace {

constexpr int kDone = 0;
constexpr int kFound = 1;
constexpr int kTrouble = 2;

// The end of a help text. `found` is what the status 1 says; null where there
// is no such status.
std::string exitStatus(const char *found) {
  return std::string("Exit status:\n  0 done") +
         (found == nullptr ? ""
                           : std::string(", and nothing found\n  1 ") + found) +
         "\n  2 trouble: wrong usage, bad input, a file that fails";
}

const char kCollisionsNote[] =
    "No collision does not mean that apply goes through: it also refuses a\n"
    "definition whose OID the release has under another name, which need not "
    "be\n"
    "a collision to the library.";

const char kCompareNote[] =
    "Lists of names, superiors and attributes are compared as sets, in any "
    "case\n"
    "and order. The library also counts values that repeat, so that apply may\n"
    "replace a definition that is identical here.";

struct Options {
  std::string oldDirectory;
  std::string newDirectory;
  std::string outDirectory;
  std::string directory;
  std::optional<std::string> excludedOids;
  std::optional<std::string> modifiedOids;
  std::optional<std::string> trace;
  unsigned int traceEvents = TraceFile::kAllEvents;
  std::string table;
  std::vector<std::string> keys;
  std::vector<std::string> directories;
  std::uintmax_t sizeLimit = schemacheck::SchemaDirectory::kDefaultLimit;
  bool strict = false;
  bool replace = false;
  std::optional<std::string> backup;
  bool list = false;
};

void flushOutput() {
  std::cout.flush();
  if (!std::cout) {
    throw Trouble("error: cannot write to standard output");
  }
}

// Reads both directories and the excluded OIDs, and warns of files that are not
// there and of what is ignored.
std::unique_ptr<Schemas> readSchemas(const Options &options) {
  auto schemas =
      std::make_unique<Schemas>(options.oldDirectory, options.newDirectory);
  if (options.excludedOids) {
    schemas->readExcludedOids(*options.excludedOids);
  }
  for (const Inventory *files : {&schemas->oldFiles(), &schemas->newFiles()}) {
    warn(files->missingFiles());
    warn(files->ignoredEntries());
  }
  return schemas;
}

int runApply(const Options &options) {
  const ApplyOptions what{
      options.oldDirectory,
      options.newDirectory,
      options.outDirectory,
      options.excludedOids,
      options.modifiedOids,
      options.replace ? Existing::kReplace : Existing::kRefuse};
  const ApplyResult result = apply(what);
  warn(result.warnings);
  printReport(what, result, &std::cout);
  return kDone;
}

int runRestore(const Options &options) {
  if (options.list) {
    return printBackups(options.outDirectory, &std::cout) ? kDone : kFound;
  }
  restore(options.outDirectory, options.backup, &std::cout);
  return kDone;
}

int runCheck(const Options &options) {
  const CheckOptions what{options.directories, options.excludedOids,
                          options.modifiedOids, options.sizeLimit,
                          options.strict};
  return printCheck(what, &std::cout) ? kDone : kFound;
}

int runCollisions(const Options &options) {
  const auto schemas = readSchemas(options);
  return printCollisions(schemas.get(), &std::cout) ? kFound : kDone;
}

int runCompare(const Options &options) {
  const auto schemas = readSchemas(options);
  return printComparison(schemas.get(), &std::cout) ? kDone : kFound;
}

int runShow(const Options &options) {
  return show(options.directory, options.keys) ? kDone : kFound;
}

int runDump(const Options &options) {
  dump(options.directory, options.excludedOids, options.table);
  return kDone;
}

// The command line: fills the options, and says what to run.
class CommandLine {
 public:
  CommandLine()
      : m_app("Carries a directory server's schema into a new release.",
              "schema-migrate") {
    m_app.set_version_flag("--version",
                           "schema-migrate " SCHEMA_MIGRATE_VERSION);
    m_app.require_subcommand(1);
    m_app.footer(exitStatus(
        "something found: findings, collisions, differences, an unknown "
        "name"));

    CLI::App *apply =
        add("apply",
            "Carry the schema of an old installation into a new release's and "
            "write the result to a new directory.",
            "schema-migrate apply --old /srv/old/schema --new /srv/new/schema "
            "--out /srv/merged",
            runApply);
    addBoth(apply);
    addDirectory(apply, "--out", &m_options.outDirectory,
                 "Directory for the result; must not exist or be empty");
    apply->add_flag("--replace", m_options.replace,
                    "Let the result take the place of a schema directory, "
                    "which becomes a backup beside it");
    addFile(apply, "--modified-oids", &m_options.modifiedOids,
            "List of OIDs whose definitions are withdrawn from the result's "
            "modified schema");

    CLI::App *restore =
        add("restore",
            "Put a backup that apply --replace has made in the place of the "
            "directory; what is there becomes a backup in turn.",
            "schema-migrate restore --out /srv/merged", runRestore,
            "no backup to list");
    addDirectory(restore, "--out", &m_options.outDirectory,
                 "Directory whose backup comes back");
    restore
        ->add_option("--backup", m_options.backup,
                     "Name of the backup; the newest if it is left out")
        ->type_name("NAME")
        ->check(expecting("a name"));
    restore->add_flag("--list", m_options.list,
                      "Only list the backups, the newest first");

    CLI::App *check =
        add("check",
            "Say what in schema directories the library would lose, change or "
            "choke on. Of several directories the last is the new release, and "
            "the others are checked against it, too.",
            "schema-migrate check /srv/old/schema /srv/new/schema", runCheck,
            "errors found, or warnings with --strict");
    check->add_option("directory", m_options.directories, "Schema directories")
        ->type_name("DIR")
        ->check(expecting("a name"))
        ->required();
    addFile(check, "--excluded-oids", &m_options.excludedOids,
            "List of OIDs that are not to be carried");
    addFile(check, "--modified-oids", &m_options.modifiedOids,
            "List of OIDs whose definitions are to be withdrawn");
    check
        ->add_option("--max-size", m_options.sizeLimit,
                     "The largest file to read, in bytes")
        ->type_name("BYTES")
        ->capture_default_str();
    check->add_flag("--strict", m_options.strict,
                    "Let warnings count as errors do");

    CLI::App *collisions =
        add("collisions",
            "Report the definitions of an old installation that collide "
            "with a new release.",
            "schema-migrate collisions --old /srv/old/schema --new "
            "/srv/new/schema",
            runCollisions, "collisions found");
    addBoth(collisions);
    addNote(collisions, kCollisionsNote);

    CLI::App *compare =
        add("compare",
            "Say what is identical in two schemas, what differs and in "
            "what fields, and what only one of them has.",
            "schema-migrate compare --old /srv/old/schema --new "
            "/srv/new/schema",
            runCompare, "differences found");
    addBoth(compare);
    addNote(compare, kCompareNote);

    CLI::App *show = add("show",
                         "Show definitions with their superiors, what they "
                         "inherit, and how they are stored.",
                         "schema-migrate show --dir /srv/schema person 2.5.4.3",
                         runShow, "a name or an OID that nothing has");
    addDirectory(show, "--dir", &m_options.directory, "Schema directory");
    show->add_option("name", m_options.keys, "Names, in any case, or OIDs")
        ->type_name("NAME-OR-OID")
        ->required();

    CLI::App *dump =
        add("dump", "Print the library's diagnostic dumps of a schema.",
            "schema-migrate dump --dir /srv/schema --table classes", runDump);
    addDirectory(dump, "--dir", &m_options.directory, "Schema directory");
    dump->add_option("--table", m_options.table,
                     "What to print; everything if it is left out")
        ->type_name("TABLE")
        ->check(CLI::IsMember(
            {"attributes", "classes", "storage", "files", "excluded"}));
    addFile(dump, "--excluded-oids", &m_options.excludedOids,
            "List of OIDs to show as excluded");
  }

  // Does what the arguments say, and returns the exit status.
  int run(int argc, char **argv) {
    if (argc > 1 && argv[1][0] != '-') {
      requireCommand(argv[1]);
    }
    try {
      m_app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
      const bool asked = m_app.exit(error) == 0;
      flushOutput();
      return asked ? kDone : kTrouble;
    }
    std::optional<TraceFile> trace;
    if (m_options.trace) {
      if (!m_options.outDirectory.empty()) {
        requireOutside(m_options.outDirectory, *m_options.trace, "a file");
      }
      trace.emplace(*m_options.trace, m_options.traceEvents);
    }
    const int status = m_run(m_options);
    try {
      if (trace) {
        trace->close();
      }
      flushOutput();
    } catch (const Trouble &trouble) {
      throw m_options.outDirectory.empty()
          ? trouble
          : Trouble(trouble.what() +
                    std::string("\nthe result is complete in ") +
                    m_options.outDirectory);
    }
    return status;
  }

 private:
  using Run = int (*)(const Options &);

  void requireCommand(const std::string &word) const {
    std::set<std::string> names;
    for (const CLI::App *command :
         m_app.get_subcommands([](const CLI::App *) { return true; })) {
      names.insert(command->get_name());
    }
    if (names.count(word) == 0) {
      throw Trouble("error: no command is called '" + word + "'" +
                    didYouMean(word, names) +
                    "\nRun with --help for more information.");
    }
  }

  void requireEvents() const {
    if ((m_options.traceEvents & TraceFile::kAllEvents) == 0) {
      throw CLI::ValidationError("--trace-events",
                                 "the mask has none of the bits 0x04033000, so "
                                 "that nothing would be traced");
    }
  }

  // Adds a paragraph to the help of a command.
  static void addNote(CLI::App *command, const std::string &note) {
    command->footer(note + "\n\n" + command->get_footer());
  }

  // Refuses the empty argument.
  static CLI::Validator expecting(const std::string &what) {
    return CLI::Validator(
        [what](const std::string &argument) {
          return argument.empty() ? "expected " + what + ", found nothing"
                                  : std::string();
        },
        "");
  }

  // `found`: what the exit status 1 says, for the help; null if the command
  // never has it.
  CLI::App *add(const std::string &name, const std::string &description,
                const std::string &example, Run action,
                const char *found = nullptr) {
    CLI::App *command = m_app.add_subcommand(name, description);
    command->footer("Example:\n  " + example + "\n\n" + exitStatus(found));
    command->callback([this, action] {
      requireEvents();
      m_run = action;
    });
    addFile(command, "--trace", &m_options.trace,
            "File for a trace of the library's operations");
    command
        ->add_option("--trace-events", m_options.traceEvents,
                     "What to trace, as a mask of event bits: 0x1000 and "
                     "0x10000 operations (0x2000 and 0x20000 their ends "
                     "alone), 0x4000000 messages")
        ->type_name("MASK")
        ->check(expecting("a number"))
        ->needs("--trace");
    return command;
  }

  static void addDirectory(CLI::App *command, const std::string &name,
                           std::string *value, const std::string &description) {
    command->add_option(name, *value, description)
        ->type_name("DIR")
        ->check(expecting("a name"))
        ->required();
  }

  static void addFile(CLI::App *command, const std::string &name,
                      std::optional<std::string> *value,
                      const std::string &description) {
    command->add_option(name, *value, description)
        ->type_name("FILE")
        ->check(expecting("a name"));
  }

  void addBoth(CLI::App *command) {
    addDirectory(command, "--old", &m_options.oldDirectory,
                 "Schema directory of the old installation");
    addDirectory(command, "--new", &m_options.newDirectory,
                 "Schema directory of the new release");
    addFile(command, "--excluded-oids", &m_options.excludedOids,
            "List of OIDs that are not to be carried");
  }

  CLI::App m_app;
  Options m_options;
  Run m_run = nullptr;
};

}  // namespace

int main(int argc, char **argv) {
  // A file that grows beyond its limit is an error to report, and not a reason
  // to die without tidying up; so is a reader of the output that has gone.
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return CommandLine().run(argc, argv);
  } catch (const Trouble &trouble) {
    std::cerr << trouble.what() << '\n';
  } catch (const std::exception &exception) {
    std::cerr << "error: " << exception.what() << '\n';
  }
  return kTrouble;
}
