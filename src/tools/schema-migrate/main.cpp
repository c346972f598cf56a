// The command schema-migrate.

#include <csignal>
#include <exception>
#include <iostream>

#include "CommandLine.h"
#include "Commands.h"
#include "Trouble.h"

int main(int argc, char **argv) {
  // A file that grows beyond its limit is an error to report, and not a reason
  // to die without tidying up; so is a reader of the output that has gone.
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return CommandLine().run(argc, argv);
  } catch (const Trouble &trouble) {
    std::cerr << trouble.what() << '\n';
  } catch (const InternalError &error) {
    std::cerr << "internal error: " << error.what()
              << "\nnothing was written; please report this with the input\n";
    return kInternal;
  } catch (const std::exception &exception) {
    std::cerr << "error: " << exception.what() << '\n';
  }
  return kTrouble;
}
