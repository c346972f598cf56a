// Code that must not run in the test's own process.
#ifndef TESTS_SUPPORT_CHILD_H_
#define TESTS_SUPPORT_CHILD_H_

#include <chrono>
#include <functional>
#include <ostream>
#include <string>

// Whether the program was built with a sanitizer, which needs memory and files
// for itself.
bool isSanitized();

// How a child process ended.
struct ChildResult {
  enum class End {
    kReturned,      // the code returned
    kStillRunning,  // it was stopped after the time that it was given
    kOutOfMemory,   // it ran into its limit of memory
    kKilled,        // it died from the signal `signal`
    kFailed,        // anything else: an exception, exit()
  };
  End end;
  int signal;         // kKilled only; 0 otherwise
  std::string error;  // what it wrote to standard error
};

std::ostream &operator<<(std::ostream &out, ChildResult::End end);

// Runs `code` in a child process, with `time` to run and 512 MiB of memory (no
// limit of memory under a sanitizer, which needs more than that for itself).
ChildResult runInChild(
    const std::function<void()> &code,
    std::chrono::milliseconds time = std::chrono::milliseconds(60000));

// Whether `code` does not end: it is still running after half a second, or has
// taken all memory by then.
bool neverEnds(const std::function<void()> &code);

#endif  // TESTS_SUPPORT_CHILD_H_
