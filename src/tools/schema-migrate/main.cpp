// The command schema-migrate.

#include <csignal>
#include <exception>
#include <iostream>
#include <new>
#include <system_error>

#include "CommandLine.h"
#include "FindingsText.h"
#include "Refusal.h"
#include "Trouble.h"

int main(int argc, char **argv) {
  // A file that grows beyond its limit is an error to report, and not a reason
  // to die without tidying up; so is a reader of the output that has gone.
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return CommandLine().run(argc, argv);
  } catch (const Refusal &refusal) {
    printFindings(refusal.findings(), &std::cerr);
    std::cerr << refusal.advice();
    return refusal.status();
  } catch (const Trouble &trouble) {
    std::cerr << trouble.what() << '\n';
    return trouble.status();
  } catch (const std::bad_alloc &) {
    std::cerr << "error: not enough memory\n";
    return kFileError;
  } catch (const std::system_error &error) {
    std::cerr << "error: " << error.what() << '\n';
    return kFileError;
  } catch (const InternalError &error) {
    std::cerr << "internal error: " << error.what()
              << "\nnothing was written; please report this with the input\n";
    return kInternal;
  } catch (const std::exception &error) {
    std::cerr << "internal error: " << error.what()
              << "\nplease report this with the input\n";
    return kInternal;
  }
}
