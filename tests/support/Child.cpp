#include "support/Child.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <new>
#include <stdexcept>

namespace {

constexpr int kOutOfMemoryStatus = 71;
constexpr int kFailedStatus = 72;

constexpr bool kSanitized =
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    true;
#else
    false;
#endif
#else
    false;
#endif

[[noreturn]] void runAsChild(const std::function<void()> &code, int error) {
  dup2(error, STDERR_FILENO);
  const rlimit noCore = {0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  if (!kSanitized) {
    const rlimit memory = {512U << 20U, 512U << 20U};
    setrlimit(RLIMIT_AS, &memory);
  }
  int status = 0;
  try {
    code();
  } catch (const std::bad_alloc &) {
    status = kOutOfMemoryStatus;
  } catch (...) {
    status = kFailedStatus;
  }
  std::cout.flush();
  _exit(status);
}

// Reads what comes through `pipe` until it is closed or the time is over.
// False in the latter case.
bool readUntilClosed(int pipe, std::chrono::milliseconds time,
                     std::string *text) {
  const auto end = std::chrono::steady_clock::now() + time;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        end - std::chrono::steady_clock::now());
    pollfd event = {pipe, POLLIN, 0};
    if (left.count() <= 0 ||
        poll(&event, 1, static_cast<int>(left.count())) == 0) {
      return false;
    }
    char buffer[4096];
    const ssize_t length = read(pipe, buffer, sizeof buffer);
    if (length <= 0) {
      return true;
    }
    text->append(buffer, static_cast<std::size_t>(length));
  }
}

}  // namespace

bool isSanitized() { return kSanitized; }

std::ostream &operator<<(std::ostream &out, ChildResult::End end) {
  const char *const names[] = {"returned", "still running", "out of memory",
                               "killed", "failed"};
  return out << names[static_cast<int>(end)];
}

ChildResult runInChild(const std::function<void()> &code,
                       std::chrono::milliseconds time) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  std::cout.flush();
  const pid_t child = fork();
  if (child == -1) {
    throw std::runtime_error("no child process");
  }
  if (child == 0) {
    close(ends[0]);
    runAsChild(code, ends[1]);
  }
  close(ends[1]);

  ChildResult result = {ChildResult::End::kFailed, 0, ""};
  const bool closed = readUntilClosed(ends[0], time, &result.error);
  close(ends[0]);
  if (!closed) {
    kill(child, SIGKILL);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (!closed) {
    result.end = ChildResult::End::kStillRunning;
  } else if (WIFSIGNALED(status)) {
    result.end = ChildResult::End::kKilled;
    result.signal = WTERMSIG(status);
  } else if (WEXITSTATUS(status) == 0) {
    result.end = ChildResult::End::kReturned;
  } else if (WEXITSTATUS(status) == kOutOfMemoryStatus) {
    result.end = ChildResult::End::kOutOfMemory;
  }
  return result;
}

bool neverEnds(const std::function<void()> &code) {
  const ChildResult result = runInChild(code, std::chrono::milliseconds(500));
  return result.end == ChildResult::End::kStillRunning ||
         result.end == ChildResult::End::kOutOfMemory;
}
