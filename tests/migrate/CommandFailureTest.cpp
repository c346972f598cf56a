// What the command says when it fails. Each failure has status 2, prints
// nothing to standard output, and changes nothing.
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

using Arguments = std::vector<std::string>;

constexpr char kNotFree[] =
    ": error: expected nothing or an empty directory there, found something; "
    "the result goes to a new directory\n";
constexpr char kCollective[] =
    "COLLECTIVE is not supported in an attribute type\n";
constexpr char kEndOfFile[] =
    "expected another field behind a list of names, found the end of the "
    "file\n";

Arguments applying(const std::string &oldDirectory,
                   const std::string &newDirectory, const std::string &out) {
  return {"apply", "--old", oldDirectory, "--new", newDirectory, "--out", out};
}

class CommandFailureTest : public MigrateTest {
 protected:
  CommandFailureTest() {
    write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
    writeSmallRelease();
  }

  // Runs the command, which must fail and change nothing; its error.
  std::string failure(
      const Arguments &arguments = applying("old", "new", "out"),
      const std::function<void()> &prepare = [] {}) const {
    const auto before = snapshotOf(root());
    const CommandResult result = run(arguments, prepare);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(snapshotOf(root()), before);
    return result.error;
  }
};

TEST_F(CommandFailureTest, InputDirectories) {
  constexpr char kNone[] =
      "empty: error: expected schema files (V3.user.at and so on), found "
      "none\n";
  fs::create_directory(path("empty"));
  EXPECT_EQ(failure(applying("missing", "new", "out")),
            "missing: error: No such file or directory\n");
  EXPECT_EQ(failure(applying("old", "missing/", "out")),
            "missing/: error: No such file or directory\n");
  EXPECT_EQ(failure(applying("old/V3.user.at", "new", "out")),
            "old/V3.user.at: error: expected a directory\n");
  EXPECT_EQ(failure(applying("empty", "new", "out")), kNone);
  EXPECT_EQ(failure(applying("old", "empty", "out")), kNone);
}

TEST_F(CommandFailureTest, AnInputDirectoryThatIsALinkToItself) {
  fs::create_directory_symlink("loop", path("loop"));
  EXPECT_EQ(failure(applying("loop", "new", "out")),
            "loop: error: Too many levels of symbolic links\n");
  EXPECT_EQ(failure(applying("old", "loop", "out")),
            "loop: error: Too many levels of symbolic links\n");
}

TEST_F(CommandFailureTest, InputFiles) {
  fs::create_directory(path("new/V3.user.oc"));
  EXPECT_EQ(failure(),
            "new/V3.user.oc: error: expected a regular file, found something "
            "else\n");
  fs::remove(path("new/V3.user.oc"));
  fs::create_symlink("missing", path("old/V3.user.oc"));
  EXPECT_EQ(failure(), "old/V3.user.oc: error: No such file or directory\n");
  fs::remove(path("old/V3.user.oc"));
  write("old/V3.user.oc", "\nobjectclasses ( 2.1 NAME 'k' ABSTRACT )\n");
  EXPECT_EQ(failure(),
            "old/V3.user.oc:2: error: expected '=' or '{' behind the keyword "
            "of a section\n");
  write("old/V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT\n");
  EXPECT_EQ(failure(applying("./old/", "new/", "out")),
            "./old/V3.user.oc:1: error: cannot read this definition to its "
            "')'; look for a missing parenthesis, a quote too many or too few, "
            "or a character outside ASCII\n");
}

TEST_F(CommandFailureTest, ListOfExcludedOids) {
  Arguments arguments = applying("old", "new", "out");
  arguments.insert(arguments.end(), {"--excluded-oids", "excluded"});
  EXPECT_EQ(failure(arguments), "excluded: error: No such file or directory\n");
  fs::create_directory(path("excluded"));
  EXPECT_EQ(failure(arguments),
            "excluded: error: expected a regular file, found something else\n");
  fs::remove(path("excluded"));
  for (const char *last : {"1.1", "# a comment", "1.1 #", "1.1#"}) {
    write("excluded", std::string("1.2\n") + last);
    EXPECT_EQ(failure(arguments),
              "excluded:2: error: expected a newline at the end of the file, "
              "found none; the last word would be ignored\n");
  }
}

TEST_F(CommandFailureTest, Conflicts) {
  write("old/V3.user.oc",
        "objectclasses=( 2.1 NAME 'Top' ABSTRACT )\n"
        "objectclasses=( 2.2 NAME 'k' ABSTRACT )\n"
        "QORAttributetypes=( 2.2 LENGTH 4 )\n");
  EXPECT_EQ(failure(),
            "old/V3.user.oc:1: error: object class 'Top' (2.1) cannot be "
            "carried: the release has this name with another OID: "
            "new/V3.system.oc:1, object class 'top' (2.5.6.0)\n"
            "old/V3.user.oc:3: error: storage definition (2.2) cannot be "
            "carried: there is no attribute type with its OID\n"
            "nothing was written; to leave a definition of the old "
            "installation out, list its OID in the file of excluded OIDs\n");
}

TEST_F(CommandFailureTest, OutputInAnInput) {
  const std::string inOld =
      ": error: expected a directory outside old, found one inside\n";
  fs::create_directory_symlink("old", path("link"));
  fs::create_directory(path("old/empty"));
  for (const char *out :
       {"old", "old/", "old/out", "old/empty", "old/a/b/", "./old/../old/out",
        "new/../old/out", "missing/../old/out", "link", "link/out",
        "link/empty/"}) {
    EXPECT_EQ(failure(applying("old", "new", out)), out + inOld);
  }
  EXPECT_EQ(failure(applying("old", "new", path("old/out").string())),
            "old/out" + inOld);
  EXPECT_EQ(failure(applying("link", "new", "old/out")),
            "old/out: error: expected a directory outside link, found one "
            "inside\n");
  EXPECT_EQ(failure(applying("old", "link", "old/out")), "old/out" + inOld);
  EXPECT_EQ(failure(applying("old", "new", "new/out")),
            "new/out: error: expected a directory outside new, found one "
            "inside\n");
}

TEST_F(CommandFailureTest, OutputThatIsNotFree) {
  fs::create_directory(path("full"));
  write("full/file", "");
  fs::create_directory_symlink("full", path("link"));
  fs::create_symlink("missing", path("dangling"));
  write("file", "");
  EXPECT_EQ(failure(applying("old", "new", "full")),
            std::string("full") + kNotFree);
  EXPECT_EQ(failure(applying("old", "new", "full/")),
            std::string("full") + kNotFree);
  EXPECT_EQ(failure(applying("old", "new", "link")),
            std::string("full") + kNotFree);
  EXPECT_EQ(failure(applying("old", "new", "dangling")),
            std::string("dangling") + kNotFree);
  EXPECT_EQ(failure(applying("old", "new", "file")),
            std::string("file") + kNotFree);
  EXPECT_EQ(failure(applying("old", "new", "/")), std::string("/") + kNotFree);
}

TEST_F(CommandFailureTest, OutputWithoutAParent) {
  write("file", "");
  EXPECT_EQ(failure(applying("old", "new", "missing/out")),
            "missing: error: cannot read the directory: No such file or "
            "directory\n");
  EXPECT_EQ(failure(applying("old", "new", "file/out")),
            "file: error: cannot read the directory: Not a directory\n");
  EXPECT_EQ(failure(applying("old", "new", "/proc/out")),
            "/proc/out: error: cannot make a file beside it: No such file or "
            "directory\n");
}

// Input that the library would read for ever.
struct EndlessCase {
  const char *file;
  const char *text;
  std::string error;  // behind the file's name
};

void PrintTo(const EndlessCase &endlessCase, std::ostream *out) {
  *out << endlessCase.text;
}

class CommandEndlessTest : public CommandFailureTest,
                           public testing::WithParamInterface<EndlessCase> {};

TEST_P(CommandEndlessTest, IsRefusedInEitherDirectory) {
  for (const std::string directory : {"old/", "new/"}) {
    const std::string file = directory + GetParam().file;
    const bool existed = fs::exists(path(file));
    const std::string before = existed ? read(file) : "";
    write(file, GetParam().text);
    EXPECT_EQ(failure(), file + GetParam().error);
    if (existed) {
      write(file, before);
    } else {
      fs::remove(path(file));
    }
  }
}

std::string endless(int line, int begin, const std::string &reason) {
  return ":" + std::to_string(line) +
         ": error: cannot read the definition that begins on line " +
         std::to_string(begin) + ": " + reason;
}

const EndlessCase kEndless[] = {
    {"V3.user.at", "attributetypes=( 1.2 COLLECTIVE )\n",
     endless(1, 1, kCollective)},
    {"V3.qor.at", "\nattributetypes=( 1.2\n'COLLECTIVE' )\n",
     endless(3, 2, kCollective)},
    {"V3.system.at",
     "attributetypes=( 1.2 NAME 'a' SYNTAX 1.3 COLLECTIVE USAGE x )\n",
     endless(1, 1, kCollective)},
    {"V3.config.at", "attributetypes=( 1.2 NAME 'a' COLLECTIVE )\n",
     endless(1, 1, kCollective)},
    {"V3.modifiedschema", "attributetypes=( 1.2 NAME ( 'COLLECTIVE' 'a' ) )\n",
     endless(1, 1, kCollective)},
    {"V3.user.oc", "attributetypes=( 1.2 NAME DESC COLLECTIVE )\n",
     endless(1, 1, kCollective)},
    {"V3.qor.oc", "attributetypes=( 1.2 DESC COLLECTIVE COLLECTIVE )\n",
     endless(1, 1, kCollective)},
    {"V3.user.at", "attributetypes=( 1.2 NAME 'b' )\n",
     endless(2, 1, kEndOfFile)},
    {"V3.user.oc", "objectclasses=( 2.1\nNAME 'k' )",
     endless(2, 1, kEndOfFile)},
    {"V3.system.at", "QORAttributetypes=( 1.2 DBNAME ( 'A'\n",
     endless(2, 1, kEndOfFile)},
};

INSTANTIATE_TEST_SUITE_P(Endless, CommandEndlessTest,
                         testing::ValuesIn(kEndless));

TEST_F(CommandFailureTest, NotWhereCollectiveIsNoField) {
  write("old/V3.user.at",
        "# COLLECTIVE\n"
        "attributetypes=( 1.1 NAME 'a' DESC 'COLLECTIVE' ) COLLECTIVE\n"
        "objectclasses=( 2.1 NAME 'k' COLLECTIVE ABSTRACT )\n"
        "QORAttributetypes=( 1.1 COLLECTIVE LENGTH 4 )\n");
  const CommandResult result = run(applying("old", "new", "out"));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error, "");
}

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
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    return result.error;
  }
};

TEST_F(CommandPermissionTest, Files) {
  const Locked locked(path("old/V3.user.at"));
  EXPECT_EQ(refusal(applying("old", "new", "out")),
            "old/V3.user.at: error: cannot read: Permission denied\n");
}

TEST_F(CommandPermissionTest, InputDirectories) {
  {
    const Locked locked(path("new"));
    EXPECT_EQ(refusal(applying("old", "new", "out")),
              "new/V3.user.at: error: Permission denied\n");
  }
  EXPECT_EQ(namesIn(root()), (Arguments{"new", "old"}));
}

TEST_F(CommandPermissionTest, WhatHoldsAnInputDirectory) {
  fs::create_directory(path("locked"));
  fs::rename(path("old"), path("locked/old"));
  const Locked locked(path("locked"));
  EXPECT_EQ(refusal(applying("locked/old", "new", "out")),
            "locked/old: error: Permission denied\n");
}

TEST_F(CommandPermissionTest, WhatHoldsTheOutputDirectory) {
  fs::create_directories(path("locked/out"));
  const Locked locked(path("locked"),
                      fs::perms::owner_read | fs::perms::owner_exec);
  for (const char *out : {"locked/new", "locked/out"}) {
    EXPECT_EQ(failure(applying("old", "new", out), dropPrivileges),
              std::string(out) +
                  ": error: cannot make a file beside it: Permission denied\n");
  }
}

TEST_F(CommandPermissionTest, TheOutputDirectoryItself) {
  EXPECT_EQ(failure(applying("old", "new", "out"),
                    [] {
                      dropPrivileges();
                      umask(0200);
                    }),
            "out/V3.user.at: error: cannot open the file for writing\n");
}

// A disk without room: no file can grow beyond `size`.
std::function<void()> withFilesUpTo(rlim_t size, bool signalIgnored) {
  return [size, signalIgnored] {
    const rlimit limit = {size, size};
    setrlimit(RLIMIT_FSIZE, &limit);
    signal(SIGXFSZ, signalIgnored ? SIG_IGN : SIG_DFL);
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
  };
}

TEST_F(CommandFailureTest, NoRoomForADefinition) {
  const std::string lost =
      "old/V3.user.at:1: error: attribute type 'a' (1.1) is not in the result "
      "as it stands here\n"
      "new/V3.system.oc:1: error: object class 'top' (2.5.6.0) is not in the "
      "result as it stands here\n"
      "nothing was written; the files do not read back as they should; is "
      "there room on the disk?\n";
  const std::string unread =
      "nothing was written; the result would not read back\n";
  const std::string cutOff =
      "out/V3.user.at:2: error: cannot read this definition to its ')'; look "
      "for a missing parenthesis, a quote too many or too few, or a character "
      "outside ASCII\n";
  const struct {
    rlim_t size;
    std::string error;
  } kCases[] = {
      {0, lost},
      {10, lost},
      {70, lost},
      {100, "out/V3.user.at" + endless(2, 2, kEndOfFile) + unread},
      {120, cutOff + unread},
  };
  for (const bool emptyExists : {false, true}) {
    if (emptyExists) {
      fs::create_directory(path("out"));
    }
    for (const auto &[size, error] : kCases) {
      SCOPED_TRACE(size);
      EXPECT_EQ(
          failure(applying("old", "new", "out"), withFilesUpTo(size, true)),
          error);
    }
  }
}

TEST_F(CommandFailureTest, NoRoomForACopiedFile) {
  write("new/V3.config.at", std::string(4096, '#'));
  EXPECT_EQ(failure(applying("old", "new", "out"), withFilesUpTo(1024, true)),
            "out/V3.config.at: error: cannot write: File too large\n");
}

TEST_F(CommandFailureTest, NoRoomForTheReport) {
  const CommandResult result = run(applying("old", "new", "out"), [] {
    dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO);
  });
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error,
            "error: cannot write to standard output\n"
            "the result is complete in out\n");
  EXPECT_EQ(snapshotOf(path("out")).size(), 8U);
}

// A reader that has gone.
void withBrokenOutput() {
  int ends[2];
  if (pipe(ends) == 0) {
    close(ends[0]);
    dup2(ends[1], STDOUT_FILENO);
  }
  signal(SIGPIPE, SIG_DFL);
}

TEST_F(CommandFailureTest, NobodyReadsTheReport) {
  const CommandResult result =
      run(applying("old", "new", "out"), withBrokenOutput);
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error,
            "error: cannot write to standard output\n"
            "the result is complete in out\n");
  EXPECT_EQ(namesIn(path("out")).size(), 8U);
  EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));
}

TEST_F(CommandFailureTest, NobodyReadsTheOutput) {
  constexpr char kError[] = "error: cannot write to standard output\n";
  for (const Arguments &arguments :
       {Arguments{"--help"},
        Arguments{"compare", "--old", "old", "--new", "new"},
        Arguments{"collisions", "--old", "old", "--new", "new"},
        Arguments{"show", "--dir", "old", "a"},
        Arguments{"dump", "--dir", "old"}}) {
    SCOPED_TRACE(arguments[0]);
    const std::string error = failure(arguments, withBrokenOutput);
    EXPECT_EQ(error.substr(error.rfind("error: ")), kError);
  }
}

TEST_F(CommandFailureTest, NoRoomForTheHelp) {
  const CommandResult result =
      run({"--help"}, [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error, "error: cannot write to standard output\n");
}

// The signal that comes with it by default is no reason to leave things behind.
TEST_F(CommandFailureTest, NoRoomAndASignal) {
  EXPECT_NE(failure(applying("old", "new", "out"), withFilesUpTo(10, false)),
            "");
}

}  // namespace
