#include "Disk.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "MigrateTesting.h"

namespace fs = std::filesystem;

namespace {

class DiskTest : public MigrateTest {
 protected:
  // What is said of a file that cannot be read.
  std::string unreadable(const fs::path &file) const {
    return relative(troubleOf([&file] { return textOf(file); }));
  }
};

TEST_F(DiskTest, TheTextOfAFileIsAllOfIt) {
  write("empty", "");
  EXPECT_EQ(textOf(path("empty")), "");
  const std::string text = std::string(200000, 'x') + '\0' + "\r\n";
  write("long", text);
  EXPECT_EQ(textOf(path("long")), text);
}

TEST_F(DiskTest, WhatCannotBeReadToItsEndIsNotRead) {
  EXPECT_EQ(unreadable(path("missing")),
            "missing: error: No such file or directory");
  EXPECT_EQ(unreadable(path("old")),
            "old: error: expected a regular file, found something else");
  EXPECT_EQ(unreadable("/proc/self/mem"),
            "/proc/self/mem: error: cannot read: Input/output error");
}

TEST_F(DiskTest, TellsWhatAPathIs) {
  write("file", "");
  fs::create_symlink("old", path("link"));
  fs::create_symlink("missing", path("dangling"));
  EXPECT_EQ(typeOf(path("file")), fs::file_type::regular);
  EXPECT_EQ(typeOf(path("old")), fs::file_type::directory);
  EXPECT_EQ(typeOf(path("link")), fs::file_type::symlink);
  EXPECT_EQ(typeOf(path("link"), Links::kFollow), fs::file_type::directory);
  EXPECT_EQ(typeOf(path("dangling"), Links::kFollow), fs::file_type::not_found);
  EXPECT_EQ(typeOf(path("file/below")), fs::file_type::not_found);
  EXPECT_FALSE(isThere(path("missing")));
  EXPECT_TRUE(isThere(path("dangling")));
}

// Not to be able to tell is not the same as that nothing is there.
TEST_F(DiskTest, SaysSoWhenItCannotTell) {
  fs::create_symlink("loop", path("loop"));
  const fs::path below = path("loop/file");
  EXPECT_EQ(relative(troubleOf([&below] { return isThere(below); })),
            "loop/file: error: cannot look at it: Too many levels of symbolic "
            "links");
}

}  // namespace
