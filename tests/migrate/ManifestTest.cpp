#include "Manifest.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "MigrateTesting.h"
#include "Sha256.h"

namespace fs = std::filesystem;

namespace {

// The sums of "", "abc", and a million times "a", from FIPS 180.
constexpr char kSumOfNothing[] =
    "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
constexpr char kSumOfAbc[] =
    "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
constexpr char kSumOfMillion[] =
    "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0";

using ManifestTest = MigrateTest;

const std::string kHead =
    "# schema-migrate " SCHEMA_MIGRATE_VERSION
    ", manifest 1\n"
    "# check the files below with: sha256sum -c schema-migrate.manifest\n#\n";

TEST_F(ManifestTest, SumsAreThoseOfSha256) {
  write("file", "");
  EXPECT_EQ(sha256Of(path("file")), kSumOfNothing);
  write("file", "abc");
  EXPECT_EQ(sha256Of(path("file")), kSumOfAbc);
  write("file", std::string(1000000, 'a'));
  EXPECT_EQ(sha256Of(path("file")), kSumOfMillion);
  EXPECT_EQ(relative(troubleOf([this] { sha256Of(path("missing")); })),
            "missing: error: cannot open: No such file or directory");
  EXPECT_EQ(relative(troubleOf([this] { sha256Of(root() / "old"); })),
            "old: error: cannot read: Is a directory");
}

TEST_F(ManifestTest, SaysWhatWasReadAndWhatWasWritten) {
  write("old/V3.user.oc", "abc");
  write("old/V3.user.at", "");
  write("old/other", "");
  write("new/V3.modifiedschema", "abc");
  write("excluded", "abc");
  fs::create_directories(path("out/b/c"));
  write("out/b/c/file", "abc");
  write("out/b/file", "");
  write("out/a", "");
  write("out/schema-migrate.manifest", "another");
  fs::create_symlink("a", path("out/link"));
  Manifest manifest;
  manifest.addDirectory("old installation", path("old"));
  manifest.addDirectory("new release", path("new"));
  manifest.addFile("excluded OIDs", path("excluded"));
  manifest.addFile("modified OIDs", path("missing"));
  const std::string inputs = replaceAll(
      kHead + "# old installation: ROOT/old\n#   " + kSumOfNothing +
          "  V3.user.at\n#   " + kSumOfAbc +
          "  V3.user.oc\n# new release: ROOT/new\n#   " + kSumOfAbc +
          "  V3.modifiedschema\n# excluded OIDs: ROOT/excluded\n#   " +
          kSumOfAbc + "  excluded\n# modified OIDs: ROOT/missing\n",
      "ROOT", root().string());
  const std::string outputs = std::string(kSumOfNothing) + "  a\n" + kSumOfAbc +
                              "  b/c/file\n" + kSumOfNothing + "  b/file\n";
  EXPECT_EQ(manifest.text("", path("out")), inputs + outputs);
  EXPECT_EQ(manifest.text("one\n\ntwo", path("out")),
            inputs + "#\n# plan:\n#   one\n#\n#   two\n" + outputs);
}

TEST_F(ManifestTest, EscapesNamesAsSha256sumDoes) {
  fs::create_directory(path("out"));
  write("out/a\\b\nc\rd", "abc");
  EXPECT_EQ(Manifest().text("", path("out")),
            kHead + "\\" + kSumOfAbc + "  a\\\\b\\nc\\rd\n");
  Manifest manifest;
  manifest.addFile("excluded OIDs", "/no/such\nfile");
  EXPECT_EQ(manifest.text("", path("old")),
            kHead + "# excluded OIDs: /no/such?file\n");
}

TEST_F(ManifestTest, KnowsWhenAnInputWasChanged) {
  const std::string changed =
      ": error: was changed while the migration ran; run it again when nothing "
      "changes the file";
  write("old/V3.user.at", "one");
  write("excluded", "one");
  Manifest manifest;
  manifest.addDirectory("old installation", path("old"));
  manifest.addFile("excluded OIDs", path("excluded"));
  const auto trouble = [&] {
    return relative(troubleOf([&] { manifest.requireUnchanged(); }));
  };
  manifest.requireUnchanged();
  write("old/V3.user.at", "two");
  EXPECT_EQ(trouble(), "old/V3.user.at" + changed);
  fs::remove(path("old/V3.user.at"));
  EXPECT_EQ(trouble(),
            "old/V3.user.at: error: cannot open: No such file or directory");
  write("old/V3.user.at", "one");
  manifest.requireUnchanged();
  write("old/V3.user.oc", "");
  EXPECT_EQ(trouble(), "old/V3.user.oc" + changed);
  fs::remove(path("old/V3.user.oc"));
  write("excluded", "one more");
  EXPECT_EQ(trouble(), "excluded" + changed);
}

// What cannot be read is for others to report, and a pipe must not be waited
// for.
TEST_F(ManifestTest, PassesOverWhatIsNoFile) {
  fs::create_directory(path("old/V3.user.at"));
  ASSERT_EQ(mkfifo(path("old/V3.user.oc").c_str(), 0600), 0);
  Manifest manifest;
  manifest.addDirectory("old installation", path("old"));
  manifest.requireUnchanged();
  EXPECT_EQ(manifest.text("", path("new")),
            kHead + "# old installation: " + path("old").string() + "\n");
}

// The command's manifest, read by the program that is named in it.
TEST_F(ManifestTest, IsReadBySha256sum) {
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  writeSmallRelease();
  ASSERT_EQ(
      run({"apply", "--old", "old", "--new", "new", "--out", "out"}).status, 0);
  const std::string check = "cd " + path("out").string() +
                            " && sha256sum --strict --quiet -c "
                            "schema-migrate.manifest >/dev/null 2>&1";
  EXPECT_EQ(std::system(check.c_str()), 0);
  write("out/V3.user.at", "# changed\n");
  EXPECT_NE(std::system(check.c_str()), 0);
}

TEST_F(ManifestTest, IsTheSameForTheSameInput) {
  const FixedDate date;
  write("old/V3.user.at", "attributetypes=( 1.1 NAME 'a' DESC 'x' )\n");
  writeSmallRelease();
  runApply();
  const std::string first = read("out/schema-migrate.manifest");
  fs::remove_all(path("out"));
  runApply();
  EXPECT_EQ(read("out/schema-migrate.manifest"), first);
}

}  // namespace
