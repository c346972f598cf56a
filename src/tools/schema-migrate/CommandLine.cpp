#include "CommandLine.h"

#include <iostream>
#include <map>
#include <set>
#include <vector>

#include "Migration.h"
#include "Nearest.h"
#include "OutputDirectory.h"
#include "TraceFile.h"
#include "Trouble.h"
#include "UnknownWords.h"

namespace {

// The end of a help text. `found`: the lines of the statuses 1 and 2.
std::string exitStatus(const std::string &found) {
  return "Exit status:\n  0 done\n" + found +
         "  3 bad input: a file whose content cannot be used\n"
         "  4 a file, a directory, an output or the memory fails or is in the "
         "way\n"
         "  5 wrong usage\n"
         "  6 a fault of the command itself";
}

const char kCollisionsNote[] =
    "No collision does not mean that apply goes through: it also refuses a\n"
    "definition whose OID the release has under another name, which need not "
    "be\n"
    "a collision to the library; --all shows those.";

const char kCompareNote[] =
    "Lists of names, superiors and attributes are compared as sets, in any "
    "case\n"
    "and order. The library also counts values that repeat, so that apply may\n"
    "replace a definition that is identical here.";

// Refuses the empty argument.
CLI::Validator expecting(const std::string &what) {
  return CLI::Validator(
      [what](const std::string &argument) {
        return argument.empty() ? "expected " + what + ", found nothing"
                                : std::string();
      },
      "");
}

// Adds a paragraph to the help of a command.
void addNote(CLI::App *command, const std::string &note) {
  command->footer(note + "\n\n" + command->get_footer());
}

void addDirectory(CLI::App *command, const std::string &name,
                  std::string *value, const std::string &description) {
  command->add_option(name, *value, description)
      ->type_name("DIR")
      ->check(expecting("a name"))
      ->required();
}

void addFile(CLI::App *command, const std::string &name,
             std::optional<std::string> *value,
             const std::string &description) {
  command->add_option(name, *value, description)
      ->type_name("FILE")
      ->check(expecting("a name"));
}

schemaplan::Preference preferenceOf(const std::string &side) {
  if (side == "new") {
    return schemaplan::Preference::kNew;
  }
  return side == "changed" ? schemaplan::Preference::kChanged
                           : schemaplan::Preference::kOld;
}

std::set<schemacheck::Code> codesOf(const std::vector<std::string> &names) {
  std::set<schemacheck::Code> codes;
  for (const std::string &name : names) {
    std::set<std::string> errors;
    bool isKnown = false;
    for (const schemacheck::CodeDescription &code : schemacheck::allCodes()) {
      if (code.severity == schemacheck::Severity::kError &&
          canBeAccepted(code.code)) {
        errors.insert(code.name);
        isKnown = isKnown || code.name == name;
      }
    }
    if (!isKnown) {
      throw CLI::ValidationError(
          "--accept", "no error that can be accepted has the code '" + name +
                          "'" + didYouMean(name, errors));
    }
    for (const schemacheck::CodeDescription &code : schemacheck::allCodes()) {
      if (code.name == name) {
        codes.insert(code.code);
      }
    }
  }
  return codes;
}

void flushOutput() {
  std::cout.flush();
  if (!std::cout) {
    throw Trouble(kFileError, "error: cannot write to standard output");
  }
}

}  // namespace

CommandLine::CommandLine()
    : m_app("Carries a directory server's schema into a new release.",
            "schema-migrate") {
  m_app.set_version_flag("--version", "schema-migrate " SCHEMA_MIGRATE_VERSION);
  m_app.require_subcommand(1);
  m_app.footer(
      "Example:\n"
      "  schema-migrate plan --old /srv/old/schema --new /srv/new/schema\n"
      "  schema-migrate plan --help\n\n" +
      exitStatus("  1 differences, or changes to be made\n"
                 "  2 findings: errors, collisions, what apply refuses, an "
                 "unknown name\n"));
  addPlan();
  addApply();
  addRestore();
  addCheck();
  addCollisions();
  addCompare();
  addShow();
  addDump();
}

void CommandLine::addPlan() {
  CLI::App *plan = add(
      "plan",
      "Say what apply would do with each definition of an old "
      "installation, and what would break. Writes nothing.",
      "schema-migrate plan --old /srv/old/schema --new /srv/new/schema",
      runPlan, "  1 changes to be made\n  2 something that apply refuses\n");
  addFormat(plan);
  addBoth(plan);
  addPlanning(plan);
}

void CommandLine::addApply() {
  CLI::App *apply =
      add("apply",
          "Carry the schema of an old installation into a new release's as "
          "plan says, and write the result to a new directory.",
          "schema-migrate apply --old /srv/old/schema --new /srv/new/schema "
          "--out /srv/merged",
          runApply, "  2 refused; plan says the same\n");
  addTrace(apply);
  addFormat(apply);
  addBoth(apply);
  addDirectory(apply, "--out", &m_options.outDirectory,
               "Directory for the result; must not exist or be empty, "
               "unless it is to be replaced");
  apply->add_flag("--replace", m_options.replace,
                  "Let the result take the place of a schema directory, which "
                  "becomes a backup beside it");
  addPlanning(apply);
}

void CommandLine::addRestore() {
  CLI::App *restore =
      add("restore",
          "Put a backup that apply --replace has made in the place of the "
          "directory; what is there becomes a backup in turn.",
          "schema-migrate restore --out /srv/merged", runRestore);
  addDirectory(restore, "--out", &m_options.outDirectory,
               "Directory whose backup comes back");
  CLI::Option *backup =
      restore
          ->add_option("--backup", m_options.backup,
                       "Name of the backup; the newest if it is left out")
          ->type_name("NAME")
          ->check(expecting("a name"));
  restore
      ->add_flag("--list", m_options.list,
                 "Only list the backups, the newest first")
      ->excludes(backup);
}

void CommandLine::addCheck() {
  CLI::App *check =
      add("check",
          "Say what in schema directories the library would lose, change or "
          "choke on. Of several directories the last is the new release, and "
          "the others are checked against it, too.",
          "schema-migrate check /srv/old/schema /srv/new/schema", runCheck,
          "  2 errors found, or warnings with --strict\n");
  addTrace(check);
  addFormat(check);
  check->add_option("directory", m_options.directories, "Schema directories")
      ->type_name("DIR")
      ->check(expecting("a name"))
      ->required();
  addFile(check, "--excluded-oids", &m_options.excludedOids,
          "List of OIDs that are not to be carried");
  addFile(check, "--modified-oids", &m_options.modifiedOids,
          "List of OIDs whose definitions are to be withdrawn");
  addSizeLimit(check);
  check->add_flag("--strict", m_options.strict,
                  "Let warnings count as errors do");
}

void CommandLine::addCollisions() {
  CLI::App *collisions =
      add("collisions",
          "Report the definitions of an old installation that collide "
          "with a new release.",
          "schema-migrate collisions --old /srv/old/schema --new "
          "/srv/new/schema",
          runCollisions, "  2 collisions found\n");
  addTrace(collisions);
  addFormat(collisions);
  addBoth(collisions);
  collisions->add_flag(
      "--all", m_options.all,
      "Also list every two definitions that share a name or an OID");
  addNote(collisions, kCollisionsNote);
}

void CommandLine::addCompare() {
  CLI::App *compare =
      add("compare",
          "Say what is identical in two schemas, what differs and in "
          "what fields, and what only one of them has.",
          "schema-migrate compare --old /srv/old/schema --new "
          "/srv/new/schema",
          runCompare, "  1 differences found\n");
  addTrace(compare);
  addFormat(compare);
  addBoth(compare);
  addNote(compare, kCompareNote);
}

void CommandLine::addShow() {
  CLI::App *show = add("show",
                       "Show definitions with their superiors, what they "
                       "inherit, and how they are stored.",
                       "schema-migrate show --dir /srv/schema person 2.5.4.3",
                       runShow, "  2 a name or an OID that nothing has\n");
  addTrace(show);
  addFormat(show);
  addDirectory(show, "--dir", &m_options.directory, "Schema directory");
  show->add_option("name", m_options.keys, "Names, in any case, or OIDs")
      ->type_name("NAME-OR-OID")
      ->required();
}

void CommandLine::addDump() {
  CLI::App *dump =
      add("dump", "Print the library's diagnostic dumps of a schema.",
          "schema-migrate dump --dir /srv/schema --table classes", runDump);
  addTrace(dump);
  addDirectory(dump, "--dir", &m_options.directory, "Schema directory");
  dump->add_option("--table", m_options.table,
                   "What to print; everything if it is left out")
      ->type_name("TABLE")
      ->check(CLI::IsMember(
          {"attributes", "classes", "storage", "files", "excluded"}));
  addFile(dump, "--excluded-oids", &m_options.excludedOids,
          "List of OIDs to show as excluded");
}

CLI::App *CommandLine::add(const std::string &name,
                           const std::string &description,
                           const std::string &example, Run action,
                           const char *found) {
  CLI::App *command = m_app.add_subcommand(name, description);
  command->footer("Example:\n  " + example + "\n\n" + exitStatus(found));
  command->callback([this, action] {
    requireSense();
    m_run = action;
  });
  return command;
}

void CommandLine::addTrace(CLI::App *command) {
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
}

void CommandLine::addBoth(CLI::App *command) {
  addDirectory(command, "--old", &m_options.oldDirectory,
               "Schema directory of the old installation");
  addDirectory(command, "--new", &m_options.newDirectory,
               "Schema directory of the new release");
  addFile(command, "--excluded-oids", &m_options.excludedOids,
          "List of OIDs that are not to be carried");
}

void CommandLine::addPlanning(CLI::App *command) {
  addFile(command, "--modified-oids", &m_options.modifiedOids,
          "List of OIDs whose definitions are withdrawn from the result's "
          "modified schema");
  command
      ->add_option("--base", m_options.baseDirectory,
                   "Schema directory as the old release was shipped with it; "
                   "tells who has changed what")
      ->type_name("DIR")
      ->check(expecting("a name"));
  command
      ->add_option_function<std::string>(
          "--prefer",
          [this](const std::string &side) {
            m_options.preference = preferenceOf(side);
          },
          "Whose definition to take where the two sides differ: old (the "
          "default), new, or changed: that of the side which has changed it; "
          "needs --base")
      ->type_name("SIDE")
      ->check(CLI::IsMember({"old", "new", "changed"}));
  addFile(command, "--decisions", &m_options.decisions,
          "Lines of an OID and old or new, which go before --prefer");
  command->add_flag("--leave-out", m_options.leaveOut,
                    "Leave out the definitions of V3.config.at, V3.config.oc "
                    "and V3.modifiedschema that cannot be added");
  command
      ->add_option_function<std::vector<std::string>>(
          "--accept",
          [this](const std::vector<std::string> &names) {
            m_options.accepted = codesOf(names);
          },
          "Codes of errors that are not to stop the migration, separated by "
          "commas; what cannot be carried for such a reason is left out")
      ->type_name("CODE,...")
      ->delimiter(',');
  addSizeLimit(command);
}

void CommandLine::addSizeLimit(CLI::App *command) {
  command
      ->add_option("--max-size", m_options.sizeLimit,
                   "The largest file to read, in bytes")
      ->type_name("BYTES")
      ->capture_default_str();
}

void CommandLine::addFormat(CLI::App *command) {
  command
      ->add_option_function<std::string>(
          "--format",
          [this](const std::string &format) {
            m_options.json = format == "json";
          },
          "How to print the result: text (the default), or json: one document "
          "in the form that a schema in share/doc/schema-migrate/json states")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"text", "json"}));
}

void CommandLine::requireSense() const {
  if ((m_options.traceEvents & TraceFile::kAllEvents) == 0) {
    throw CLI::ValidationError("--trace-events",
                               "the mask has none of the bits 0x04033000, so "
                               "that nothing would be traced");
  }
  if (m_options.preference == schemaplan::Preference::kChanged &&
      !m_options.baseDirectory) {
    throw CLI::ValidationError(
        "--prefer", "changed needs --base, which tells who has changed what");
  }
}

ExitStatus CommandLine::run(int argc, char **argv) {
  const bool startsWithOption = argc > 1 && argv[1][0] == '-';
  if (argc > 1 && !startsWithOption) {
    requireCommand(m_app, argv[1]);
  }
  try {
    m_app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    if (error.get_exit_code() != 0) {  // whatever else is wrong
      if (startsWithOption) {
        requireOptionsOf(m_app);
      }
      requireOptionsOfCommand(m_app);
    }
    const bool asked = m_app.exit(error) == 0;
    flushOutput();
    return asked ? kDone : kUsage;
  }
  return runTraced();
}

ExitStatus CommandLine::runTraced() {
  std::optional<TraceFile> trace;
  if (m_options.trace) {
    if (!m_options.outDirectory.empty()) {
      requireOutside(m_options.outDirectory, *m_options.trace, "a file");
    }
    trace.emplace(*m_options.trace, m_options.traceEvents);
  }
  const ExitStatus status = m_run(m_options);
  try {
    if (trace) {
      trace->close();
    }
    flushOutput();
  } catch (const Trouble &trouble) {
    throw m_options.outDirectory.empty() || m_options.list
        ? trouble
        : Trouble(trouble.status(),
                  trouble.what() + std::string("; the result is complete in ") +
                      m_options.outDirectory);
  }
  return status;
}
