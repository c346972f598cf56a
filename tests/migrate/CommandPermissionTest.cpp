// Files and directories that may not be read or written.
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <utility>

#include "CommandFailureTesting.h"

namespace fs = std::filesystem;

namespace {

// The superuser of a container may read and write everything; the command is to
// run without that.
void dropPrivileges() {
  prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
  prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
}

bool canDropPrivileges() {
  return geteuid() != 0 || prctl(PR_CAPBSET_READ, CAP_SETPCAP) == 1;
}

class CommandPermissionTest : public CommandFailureTest {
 protected:
  void SetUp() override {
    if (!canDropPrivileges()) {
      GTEST_SKIP() << "the superuser's privileges cannot be dropped";
    }
  }

  // Permissions that a test takes away, for as long as it runs.
  class Locked {
   public:
    explicit Locked(fs::path path, fs::perms permissions = fs::perms::none)
        : m_path(std::move(path)), m_before(fs::status(m_path).permissions()) {
      fs::permissions(m_path, permissions);
    }
    ~Locked() { fs::permissions(m_path, m_before); }

    Locked(const Locked &) = delete;
    Locked &operator=(const Locked &) = delete;

   private:
    const fs::path m_path;
    const fs::perms m_before;
  };

  // As failure(), but what is changed is not looked at.
  std::string refusal(const Arguments &arguments) const {
    const CommandResult result = run(arguments, dropPrivileges);
    EXPECT_EQ(result.status, kFileError);
    EXPECT_EQ(result.out, "");
    return result.error;
  }
};

TEST_F(CommandPermissionTest, Files) {
  const Locked locked(path("old/V3.user.at"));
  EXPECT_EQ(
      refusal(applying("old", "new", "out")),
      "old/V3.user.at: error: [UNREADABLE-FILE] expected a file that can be "
      "read, found: Permission denied\n");
}

TEST_F(CommandPermissionTest, InputDirectories) {
  {
    const Locked locked(path("new"));
    EXPECT_EQ(refusal(applying("old", "new", "out")),
              noDirectory("new", "Permission denied"));
  }
  EXPECT_EQ(namesIn(root()), (Arguments{"new", "old"}));
}

TEST_F(CommandPermissionTest, WhatHoldsAnInputDirectory) {
  fs::create_directory(path("locked"));
  fs::rename(path("old"), path("locked/old"));
  const Locked locked(path("locked"));
  EXPECT_EQ(refusal(applying("locked/old", "new", "out")),
            noDirectory("locked/old", "Permission denied"));
}

TEST_F(CommandPermissionTest, WhatHoldsTheOutputDirectory) {
  fs::create_directories(path("locked/out"));
  const Locked locked(path("locked"),
                      fs::perms::owner_read | fs::perms::owner_exec);
  for (const char *out : {"locked/new", "locked/out"}) {
    EXPECT_EQ(failure(kFileError, applying("old", "new", out), dropPrivileges),
              std::string(out) +
                  ": error: cannot make a file beside it: Permission denied\n");
  }
}

TEST_F(CommandPermissionTest, TheOutputDirectoryItself) {
  EXPECT_EQ(failure(kFileError, applying("old", "new", "out"),
                    [] {
                      dropPrivileges();
                      umask(0200);
                    }),
            ".out.partial-new/schema-migrate.tmp: error: cannot create the "
            "directory: Permission denied\n");
}

}  // namespace
