// The command schema-migrate.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>

#include "Apply.h"
#include "Report.h"
#include "Trouble.h"

namespace {

constexpr int kFailure = 1;
constexpr int kUsage = 2;

int runApply(const ApplyOptions &options) {
  const ApplyResult result = apply(options);
  for (const std::string &warning : result.warnings) {
    std::cerr << warning << '\n';
  }
  printReport(options, result, &std::cout);
  return 0;
}

int run(int argc, char **argv) {
  CLI::App app("Carries a directory server's schema into a new release.",
               "schema-migrate");
  app.set_version_flag("--version", "schema-migrate " SCHEMA_MIGRATE_VERSION);
  app.require_subcommand(1);
  app.footer(
      "Exit status: 0 done, 1 failed and nothing changed, 2 wrong usage.");

  ApplyOptions options;
  std::string excludedOids;
  CLI::App *apply = app.add_subcommand(
      "apply",
      "Carry the schema of an old installation into a new release's and write "
      "the result to a new directory.");
  apply
      ->add_option("--old", options.oldDirectory,
                   "Schema directory of the old installation")
      ->type_name("DIR")
      ->required();
  apply
      ->add_option("--new", options.newDirectory,
                   "Schema directory of the new release")
      ->type_name("DIR")
      ->required();
  apply
      ->add_option("--out", options.outDirectory,
                   "Directory for the result; must not exist or be empty")
      ->type_name("DIR")
      ->required();
  apply
      ->add_option("--excluded-oids", excludedOids,
                   "List of OIDs that the old installation's schema keeps to "
                   "itself")
      ->type_name("FILE");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return app.exit(error) == 0 ? 0 : kUsage;
  }
  if (!excludedOids.empty()) {
    options.excludedOids = excludedOids;
  }
  return runApply(options);
}

}  // namespace

int main(int argc, char **argv) {
  try {
    return run(argc, argv);
  } catch (const Trouble &trouble) {
    std::cerr << trouble.what() << '\n';
  } catch (const std::exception &exception) {
    std::cerr << "schema-migrate: error: " << exception.what() << '\n';
  }
  return kFailure;
}
