// Runs in which system calls fail. Whatever fails, the inputs are untouched,
// the output directory is the whole former or the whole new one, the status and
// the message say which, and the next run tidies up and succeeds.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "Backups.h"
#include "Disk.h"
#include "FaultMessages.h"
#include "FaultTesting.h"

namespace fs = std::filesystem;

namespace {

const Arguments kCreate = {"apply", "--old", "old", "--new",
                           "new",   "--out", "out"};
const Arguments kReplace = {"apply", "--old", "old", "--new",
                            "new",   "--out", "out", "--replace"};

class ApplyFaultTest : public FaultTest {
 protected:
  ApplyFaultTest() {
    makeFormer();
    m_former = contentsOf(path("out"));
    EXPECT_EQ(run(kReplace).status, 0);
    m_made = contentsOf(path("out"));
  }

  // Runs the command once with the fault, "write:error=EIO:when=3" for
  // instance. It may be silent when the message cannot be written either.
  void runOnce(const std::string &fault, bool mayBeSilent) {
    SCOPED_TRACE(fault);
    makeFormer();
    const auto old = snapshotOf(path("old"));
    const auto release = snapshotOf(path("new"));
    const auto former = snapshotOf(path("out"));
    const CommandResult result = runWithFault(fault, kReplace);
    EXPECT_EQ(snapshotOf(path("old")), old);
    EXPECT_EQ(snapshotOf(path("new")), release);

    const bool isReplaced = contentsOf(path("out")) == m_made;
    EXPECT_TRUE(isReplaced || snapshotOf(path("out")) == former);
    switch (result.status) {
      case kDone:
        // What is not needed may fail, and what is nobody's to tell.
        EXPECT_TRUE(isReplaced);
        EXPECT_EQ(result.error, "");
        EXPECT_NE(result.out, "");
        break;
      case kFileError:
        if (!result.error.empty() || !mayBeSilent) {
          expectMessage(fault, result.error, isReplaced);
        }
        break;
      default:
        ADD_FAILURE() << "status " << result.status << ": " << result.error;
    }

    if (!isNewState()) {
      return;
    }
    EXPECT_EQ(run(kReplace).status, 0);
    EXPECT_EQ(contentsOf(path("out")), m_made);
    EXPECT_EQ(plainNames(), (Arguments{"new", "old", "out"}));
    EXPECT_EQ(backups(), isReplaced ? std::vector<Contents>({m_former, m_made})
                                    : std::vector<Contents>{m_former});
  }

  // A message is one of those for the call, and says when the directory was
  // replaced all the same.
  void expectMessage(const std::string &fault, const std::string &error,
                     bool isReplaced) {
    EXPECT_EQ(error.find("is complete in out") != std::string::npos ||
                  error.find("out is replaced; ") != std::string::npos,
              isReplaced)
        << error;
    const std::string call = fault.substr(0, fault.find(':'));
    m_messages.insert(kindOfMessage(
        replaceAll(error, fs::canonical(root()).string(), "ROOT")));
    EXPECT_THAT(messagesOf(call), testing::IsSupersetOf(m_messages));
  }

  // Makes each single one of a call fail, or that and some more behind it.
  void sweep(const std::string &call, const std::string &error, int more = 0) {
    if (isSanitized() && call == "write") {
      return;  // a sanitizer asks by writing whether memory can be read
    }
    makeFormer();
    m_messages.clear();
    forEach(numbersOf(call, kReplace), [&](int n) {
      runOnce(call + ":error=" + error + ":when=" + std::to_string(n) + ".." +
                  std::to_string(n + more),
              more > 0);
    });
  }

  Contents m_former;
  Contents m_made;
  std::set<std::string> m_messages;  // of the runs of a sweep so far
};

class ApplyFaultCallTest : public ApplyFaultTest,
                           public testing::WithParamInterface<const char *> {};

TEST_P(ApplyFaultCallTest, InputOrOutputFails) {
  const std::string call = GetParam();
  sweep(call, "EIO");
  if (isWholeFormer() && !isSanitized()) {
    EXPECT_EQ(m_messages, messagesOf(call));
  }
}

INSTANTIATE_TEST_SUITE_P(WritingCalls, ApplyFaultCallTest,
                         testing::ValuesIn(kWritingCalls), callName);

INSTANTIATE_TEST_SUITE_P(SettlingCalls, ApplyFaultCallTest,
                         testing::ValuesIn(kSettlingCalls), callName);

INSTANTIATE_TEST_SUITE_P(ReadingCalls, ApplyFaultCallTest,
                         testing::Values("fstat", "getdents64", "lseek",
                                         "newfstatat", "read", "readlink",
                                         "statx"),
                         callName);

// The order in which things reach the disk, which no fault of a running system
// shows.
TEST_F(ApplyFaultTest, EverythingIsOnDiskBeforeItGetsItsNameAndTheNameBehind) {
  const auto calls = [this](const Arguments &arguments) {
    std::string made = callsMade("fsync,rename,renameat2", arguments);
    for (char number = '3'; number <= '9'; ++number) {
      made = replaceAll(made, std::string("fsync(") + number, "fsync(FILE");
    }
    const std::string inode = "complete-" + inodeOf(path("out"));
    return replaceAll(replaceAll(made, inode, "complete-INODE"),
                      fs::canonical(root()).string(), "ROOT");
  };
  const std::string files =
      "fsync(FILE<.out.partial-new/V3.config.at>) = 0\n"
      "fsync(FILE<.out.partial-new/V3.modifiedschema>) = 0\n"
      "fsync(FILE<.out.partial-new/V3.qor.at>) = 0\n"
      "fsync(FILE<.out.partial-new/V3.qor.oc>) = 0\n"
      "fsync(FILE<.out.partial-new/V3.system.at>) = 0\n"
      "fsync(FILE<.out.partial-new/V3.system.oc>) = 0\n"
      "fsync(FILE<.out.partial-new/V3.user.at>) = 0\n"
      "fsync(FILE<.out.partial-new/V3.user.oc>) = 0\n";
  const std::string others =
      "fsync(FILE<.out.partial-new/more>) = 0\n"
      "fsync(FILE<.out.partial-new/notes>) = 0\n";
  const std::string manifest =
      "fsync(FILE<.out.partial-new/schema-migrate.manifest>) = 0\n"
      "fsync(FILE<.out.partial-new>) = 0\n";
  const std::string parent = "fsync(FILE<ROOT>) = 0\n";
  const std::string rename = "renameat2(AT_FDCWD<ROOT>, \".out.partial-";

  // Each file when it is written, and again when it has its attributes.
  std::string written;
  for (const char *name :
       {"V3.user.at", "V3.user.oc", "V3.qor.at", "V3.qor.oc", "V3.system.at",
        "V3.system.oc", "V3.modifiedschema", "V3.config.at"}) {
    written += "fsync(FILE<.out.partial-new/" + std::string(name) + ">) = 0\n";
  }
  const std::string notes = "fsync(FILE<.out.partial-new/notes>) = 0\n";
  const std::string manifestWritten =
      "fsync(FILE<.out.partial-new/schema-migrate.manifest>) = 0\n";

  removeOutAndBackups();
  EXPECT_EQ(calls(kCreate),
            written + manifestWritten + files + manifest + rename +
                "new\", AT_FDCWD<ROOT>, \"out\", RENAME_NOREPLACE) = 0\n" +
                parent);
  makeFormer();
  const std::string made = calls(kReplace);
  const Arguments backups = backupsOf(path("out"));
  ASSERT_EQ(backups.size(), 1U);
  EXPECT_EQ(made, written + notes + manifestWritten + files + others +
                      manifest + rename +
                      "new\", AT_FDCWD<ROOT>, \".out.partial-complete-INODE\", "
                      "RENAME_NOREPLACE) = 0\n" +
                      parent + rename +
                      "complete-INODE\", AT_FDCWD<ROOT>, \"out\", "
                      "RENAME_EXCHANGE) = 0\n" +
                      rename + "complete-INODE\", AT_FDCWD<ROOT>, \"" +
                      backups[0] + "\", RENAME_NOREPLACE) = 0\n" + parent);
}

// Each file that is written is closed and synced, and no error of that is lost.
TEST_F(ApplyFaultTest, NothingIsWrittenOrClosedUnnoticed) {
  removeOutAndBackups();
  for (const char *file :
       {"V3.user.at", "V3.system.oc", "V3.config.at", kManifestName}) {
    const std::string made = path(".out.partial-new").string() + '/' + file;
    for (const std::string fault :
         {"write:error=ENOSPC", "write:error=EIO", "write:error=EDQUOT",
          "fsync:error=EIO", "fsync:error=EDQUOT", "close:error=EIO",
          "close:error=ENOSPC", "close:error=EDQUOT"}) {
      SCOPED_TRACE(std::string(file) + ' ' + fault);
      const CommandResult result = run(kCreate, [&] {
        execTracer({"-f", "-o", "/dev/null", "-P", made, "-e",
                    "trace=" + fault.substr(0, fault.find(':')), "-e",
                    "inject=" + fault + ":when=1"},
                   kCreate);
      });
      EXPECT_EQ(result.status, kFileError);
      EXPECT_EQ(result.error.rfind("out/" + std::string(file) + ": error: ", 0),
                0U)
          << result.error;
      EXPECT_EQ(namesIn(root()), (Arguments{"new", "old"}));
    }
  }
}

// As on file systems that know no more than rename().
TEST_F(ApplyFaultTest, WithoutAnExchangeNothingIsReplaced) {
  for (const std::string error : {"EINVAL", "ENOSYS"}) {
    const std::string fault = "renameat2:error=" + error + ":when=1+";
    makeFormer();
    const auto former = snapshotOf(path("out"));
    CommandResult result = runWithFault(fault, kReplace);
    EXPECT_EQ(result.status, kFileError);
    EXPECT_EQ(result.error,
              "out: error: cannot replace the directory: its file system "
              "cannot exchange two directories in one step\n");
    EXPECT_EQ(snapshotOf(path("out")), former);
    EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));

    removeOutAndBackups();
    result = runWithFault(fault, kCreate);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(namesIn(path("out")).size(), 9U);
    EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));
  }
}

// The second time that a stream tries to write what it holds fails, too.
TEST_F(ApplyFaultTest, NoRoom) {
  for (const char *call : {"fsync", "mkdir", "rename", "renameat2"}) {
    sweep(call, "ENOSPC");
  }
  sweep("write", "ENOSPC", 1);
  sweep("writev", "ENOSPC", 1);
}

TEST_F(ApplyFaultTest, NoQuota) {
  for (const char *call : {"fsync", "mkdir", "rename", "renameat2"}) {
    sweep(call, "EDQUOT");
  }
  sweep("write", "EDQUOT", 1);
  sweep("writev", "EDQUOT", 1);
}

// One run waits before it has made anything whole, and others come.
TEST_F(ApplyFaultTest, OfTwoRunsAtOnceOneIsRefused) {
  makeFormer();
  CommandResult first{};
  std::thread thread([&] {
    first = runWithFault("fsync:delay_enter=2000000:when=1", kReplace);
  });
  while (!fs::exists(path(".out.partial-new"))) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  for (const Arguments &arguments :
       {kReplace, kCreate, Arguments{"restore", "--out", "out"}}) {
    const CommandResult second = run(arguments);
    EXPECT_EQ(second.status, kFileError);
    EXPECT_EQ(second.out, "");
    EXPECT_EQ(second.error,
              "out: error: another run of schema-migrate is writing this "
              "directory\n");
  }
  thread.join();
  EXPECT_EQ(first.status, 0);
  EXPECT_EQ(first.error, "");
  EXPECT_EQ(contentsOf(path("out")), m_made);
  EXPECT_EQ(backups().size(), 1U);
  EXPECT_EQ(plainNames(), (Arguments{"new", "old", "out"}));
}

}  // namespace
