// What the command says when it fails. Each failure has prints
// nothing to standard output, and changes nothing.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

#include "CommandFailureTesting.h"

namespace fs = std::filesystem;

namespace {

constexpr char kNotFree[] =
    ": error: expected nothing or an empty directory there, found something; "
    "the result goes to a new directory\n";

TEST_F(CommandFailureTest, InputDirectories) {
  constexpr char kNone[] =
      "empty: error: [NO-FILES] expected schema files (V3.user.at and so on), "
      "found none\n";
  fs::create_directory(path("empty"));
  EXPECT_EQ(failure(kFileError, applying("missing", "new", "out")),
            noDirectory("missing", "No such file or directory"));
  EXPECT_EQ(failure(kFileError, applying("old", "missing/", "out")),
            noDirectory("missing/", "No such file or directory"));
  EXPECT_EQ(failure(kFileError, applying("old/V3.user.at", "new", "out")),
            noDirectory("old/V3.user.at", "Not a directory"));
  EXPECT_EQ(failure(kBadInput, applying("empty", "new", "out")), kNone);
  EXPECT_EQ(failure(kBadInput, applying("old", "empty", "out")), kNone);
  EXPECT_EQ(failure(kFileError, applying("missing", "empty", "out")),
            noDirectory("missing", "No such file or directory") + kNone);
}

TEST_F(CommandFailureTest, AnInputDirectoryThatIsALinkToItself) {
  fs::create_directory_symlink("loop", path("loop"));
  const std::string error =
      noDirectory("loop", "Too many levels of symbolic links");
  EXPECT_EQ(failure(kFileError, applying("loop", "new", "out")), error);
  EXPECT_EQ(failure(kFileError, applying("old", "loop", "out")), error);
}

TEST_F(CommandFailureTest, InputFiles) {
  fs::create_directory(path("new/V3.user.oc"));
  EXPECT_EQ(failure(kFileError),
            "new/V3.user.oc: error: [NOT-A-FILE] expected a regular file, "
            "found a directory\n");
  fs::remove(path("new/V3.user.oc"));
  fs::create_symlink("missing", path("old/V3.user.oc"));
  EXPECT_EQ(failure(kFileError),
            "old/V3.user.oc: error: [NOT-A-FILE] expected a regular file, "
            "found a link that leads nowhere\n");
  fs::remove(path("old/V3.user.oc"));
  write("old/V3.user.oc", "\nobjectclasses ( 2.1 NAME 'k' ABSTRACT )\n");
  EXPECT_EQ(failure(kFindings), std::string(R"(
old/V3.user.oc:2:14: error: [SECTION-OPENER] expected '=' or '{' behind objectclasses, found '('; the library gives the file up here
objectclasses ( 2.1 NAME 'k' ABSTRACT )
             ^
)")
                                        .substr(1) +
                                    kAdvice);
  write("old/V3.user.oc", "objectclasses=( 2.1 NAME 'k' ABSTRACT\n");
  EXPECT_EQ(failure(kFindings, applying("./old/", "new/", "out")),
            std::string(R"(
./old/V3.user.oc:1:15: error: [UNCLOSED] expected ')' at the end of the definition, found the end of the file; the library gives the file up here
objectclasses=( 2.1 NAME 'k' ABSTRACT
              ^
)")
                    .substr(1) +
                kAdvice);
}

TEST_F(CommandFailureTest, ListOfExcludedOids) {
  Arguments arguments = applying("old", "new", "out");
  arguments.insert(arguments.end(), {"--excluded-oids", "excluded"});
  EXPECT_EQ(failure(kFileError, arguments),
            "excluded: error: [UNREADABLE-FILE] expected a file that can be "
            "read, found: No such file or directory\n");
  fs::create_directory(path("excluded"));
  EXPECT_EQ(failure(kFileError, arguments),
            "excluded: error: [NOT-A-FILE] expected a regular file, found a "
            "directory\n");
  fs::remove(path("excluded"));
  const struct {
    const char *last;
    const char *place;
    const char *expected;
    const char *end;  // of the message, and the caret
  } kCases[] = {
      {"1.1", "2:1", "behind '1.1'",
       "; the library ignores the word\n1.1\n^\n"},
      {"# a comment", "2:1", "at the end of the comment",
       "; the library would never come back\n# a comment\n^\n"},
      {"1.1 #", "2:5", "at the end of the comment", "\n1.1 #\n    ^\n"},
      {"1.1#", "2:1", "at the end of the comment", "\n1.1#\n^\n"},
  };
  for (const auto &[last, place, expected, end] : kCases) {
    SCOPED_TRACE(last);
    write("excluded", std::string("1.2\n") + last);
    EXPECT_EQ(failure(kBadInput, arguments),
              std::string("excluded:") + place +
                  ": error: [LIST-UNTERMINATED] expected a newline " +
                  expected + ", found the end of the file" + end);
  }
}

TEST_F(CommandFailureTest, WhatCannotBeCarried) {
  write("old/V3.user.oc",
        "objectclasses=( 2.1 NAME 'Top' ABSTRACT )\n"
        "objectclasses=( 2.2 NAME 'k' ABSTRACT )\n"
        "QORAttributetypes=( 2.2 LENGTH 4 )\n");
  EXPECT_EQ(failure(kFindings), std::string(R"(
old/V3.user.oc:1:17: error: [NAME-OTHER-OID] expected the OID of the release, 2.5.6.0, found 2.1; the release has the name at new/V3.system.oc:1, object class 'top' (2.5.6.0); the object class cannot be carried
objectclasses=( 2.1 NAME 'Top' ABSTRACT )
                ^
old/V3.user.oc:3:21: error: [STORAGE-WITHOUT-TYPE] expected an attribute type with the OID 2.2 in the release or to be carried, found none; the storage definition cannot be carried
QORAttributetypes=( 2.2 LENGTH 4 )
                    ^
)")
                                        .substr(1) +
                                    kAdvice);
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
    EXPECT_EQ(failure(kUsage, applying("old", "new", out)), out + inOld);
  }
  EXPECT_EQ(failure(kUsage, applying("old", "new", path("old/out").string())),
            "old/out" + inOld);
  EXPECT_EQ(failure(kUsage, applying("link", "new", "old/out")),
            "old/out: error: expected a directory outside link, found one "
            "inside\n");
  EXPECT_EQ(failure(kUsage, applying("old", "link", "old/out")),
            "old/out" + inOld);
  EXPECT_EQ(failure(kUsage, applying("old", "new", "new/out")),
            "new/out: error: expected a directory outside new, found one "
            "inside\n");
}

TEST_F(CommandFailureTest, OutputThatIsNotFree) {
  fs::create_directory(path("full"));
  write("full/file", "");
  fs::create_directory_symlink("full", path("link"));
  fs::create_symlink("missing", path("dangling"));
  write("file", "");
  EXPECT_EQ(failure(kFileError, applying("old", "new", "full")),
            std::string("full") + kNotFree);
  EXPECT_EQ(failure(kFileError, applying("old", "new", "full/")),
            std::string("full") + kNotFree);
  EXPECT_EQ(failure(kFileError, applying("old", "new", "link")),
            std::string("full") + kNotFree);
  EXPECT_EQ(failure(kFileError, applying("old", "new", "dangling")),
            std::string("dangling") + kNotFree);
  EXPECT_EQ(failure(kFileError, applying("old", "new", "file")),
            std::string("file") + kNotFree);
  EXPECT_EQ(failure(kFileError, applying("old", "new", "/")),
            std::string("/") + kNotFree);
}

TEST_F(CommandFailureTest, OutputWithoutAParent) {
  write("file", "");
  EXPECT_EQ(failure(kFileError, applying("old", "new", "missing/out")),
            "missing: error: cannot read the directory: No such file or "
            "directory\n");
  EXPECT_EQ(failure(kFileError, applying("old", "new", "file/out")),
            "file: error: cannot read the directory: Not a directory\n");
  EXPECT_EQ(failure(kFileError, applying("old", "new", "/proc/out")),
            "/proc/out: error: cannot make a file beside it: No such file or "
            "directory\n");
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
  const std::string end =
      "; nothing was written, since the files do not read back as they should; "
      "is there room on the disk?\n";
  const std::string lost =
      "new/V3.system.oc:1: error: object class 'top' (2.5.6.0) is not in the "
      "result as it stands here (and 1 more)" +
      end;
  const std::string cutType =
      "out/V3.user.at:2:16: error: [UNREADABLE] expected attribute type 'a' "
      "(1.1), found that the library does not read it as it stands";
  const struct {
    rlim_t size;
    std::string error;
  } kCases[] = {
      {0, lost},
      {10, lost},
      {70, lost},
      {74, "out/V3.system.oc: error: cannot read the file back" + end},
      {100, cutType + " (and 1 more)" + end},
      {120, cutType + end},
  };
  for (const bool emptyExists : {false, true}) {
    if (emptyExists) {
      fs::create_directory(path("out"));
    }
    for (const auto &[size, error] : kCases) {
      SCOPED_TRACE(size);
      EXPECT_EQ(failure(kFileError, applying("old", "new", "out"),
                        withFilesUpTo(size, true)),
                error);
    }
  }
}

TEST_F(CommandFailureTest, NoRoomForACopiedFile) {
  write("new/V3.config.at", std::string(4096, '#'));
  EXPECT_EQ(failure(kFileError, applying("old", "new", "out"),
                    withFilesUpTo(1024, true)),
            "out/V3.config.at: error: cannot write: File too large\n");
}

TEST_F(CommandFailureTest, NoRoomForTheReport) {
  const CommandResult result = run(applying("old", "new", "out"), [] {
    dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO);
  });
  EXPECT_EQ(result.status, kFileError);
  EXPECT_EQ(result.error,
            "error: cannot write to standard output; the result is complete in "
            "out\n");
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
  EXPECT_EQ(result.status, kFileError);
  EXPECT_EQ(result.error,
            "error: cannot write to standard output; the result is complete in "
            "out\n");
  EXPECT_EQ(namesIn(path("out")).size(), 8U);
  EXPECT_EQ(namesIn(root()), (Arguments{"new", "old", "out"}));
}

TEST_F(CommandFailureTest, NobodyReadsTheOutput) {
  constexpr char kError[] = "error: cannot write to standard output\n";
  fs::create_directory(path("out.backup-20000101-000000"));
  for (const Arguments &arguments :
       {Arguments{"--help"},
        Arguments{"compare", "--old", "old", "--new", "new"},
        Arguments{"collisions", "--old", "old", "--new", "new"},
        Arguments{"show", "--dir", "old", "a"},
        Arguments{"dump", "--dir", "old"},
        Arguments{"restore", "--out", "out", "--list"}}) {
    SCOPED_TRACE(arguments[0]);
    const std::string error = failure(kFileError, arguments, withBrokenOutput);
    EXPECT_EQ(error.substr(error.rfind("error: ")), kError);
  }
}

TEST_F(CommandFailureTest, NoRoomForTheHelp) {
  const CommandResult result =
      run({"--help"}, [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
  EXPECT_EQ(result.status, kFileError);
  EXPECT_EQ(result.error, "error: cannot write to standard output\n");
}

// The signal that comes with it by default is no reason to leave things behind.
TEST_F(CommandFailureTest, NoRoomAndASignal) {
  EXPECT_NE(failure(kFileError, applying("old", "new", "out"),
                    withFilesUpTo(10, false)),
            "");
}

}  // namespace
