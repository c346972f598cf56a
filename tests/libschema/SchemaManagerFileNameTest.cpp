// The names of the files that are read and written, and where each file's OIDs
// are recorded; files that do not open.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "SchemaManager.h"
#include "libschema/SchemaManagerTesting.h"
#include "libschema/SchemaManagerTexts.h"
#include "support/Child.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace fs = std::filesystem;

namespace {

using Messages = std::vector<std::string>;

struct Name {
  const char *name;
  bool recorded;  // whether its OIDs are recorded, so that it can be written
};

const Name kNames[] = {
    {"V3.user.oc", true},        {"V3.user.at", true},
    {"V3.qor.oc", true},         {"V3.qor.at", true},
    {"V3.system.oc", true},      {"V3.system.at", true},
    {"V3.config.oc", false},     {"V3.config.at", false},
    {"V3.modifiedschema", true},
};

// Names that are none of the nine. A file can have each of them.
const std::string kOtherNames[] = {
    "V3.user",        "V3.user.",    "V3.user.a",         "V3.user.att",
    "V3.user.at ",    " V3.user.at", "V3.user.at\n",      "v3.user.at",
    "V3.USER.AT",     "V3.user.At",  "V3_user_at",        "V3.config",
    "V3.config.at.",  "V3.sys.at",   "V3.modifiedSchema", "V3.modifiedschema2",
    "modifiedschema", "%s%n%d",      "\xc3\xa4",
};

unsigned int readLeaking(SchemaManager *schema, const std::string &name) {
  return leaksAnalyser([&] { return schema->readFile(name); });
}

// Reading.

TEST(SchemaManagerFileNameTest, SetDependsOnTheNameAlone) {
  for (const Name &name : kNames) {
    SCOPED_TRACE(name.name);
    const auto schema =
        makeSchema({{name.name, typeLine("1.1", "a") + classLine("2.1", "k") +
                                    storageLine("1.1")}});
    const std::string set = std::string(name.name) + ": 1.1 2.1\n";
    EXPECT_EQ(stateOf(schema.get()),
              typeState("1.1", "a") + classState("2.1", "k") +
                  storageState("1.1") + (name.recorded ? set : ""));
  }
}

TEST(SchemaManagerFileNameTest, EachKindAloneIsRecorded) {
  const std::map<std::string, std::string> kinds = {
      {typeLine("1.1", "a"), typeState("1.1", "a")},
      {classLine("1.1", "k"), classState("1.1", "k")},
      {storageLine("1.1"), storageState("1.1")},
  };
  for (const char *name : kFilesWithOidSet) {
    for (const auto &[line, state] : kinds) {
      SCOPED_TRACE(name + (' ' + line));
      const auto schema = makeSchema({{name, line}});
      EXPECT_EQ(stateOf(schema.get()), state + name + ": 1.1\n");
    }
  }
}

TEST(SchemaManagerFileNameTest, NineFilesFillTheirSets) {
  std::vector<SchemaFile> files;
  OidsAndNames definitions;
  for (const Name &name : kNames) {
    const std::string oid = "1." + std::to_string(files.size());
    const std::string type = "a" + std::to_string(files.size());
    files.push_back({name.name, typeLine(oid, type)});
    definitions.emplace_back(oid, type);
  }
  const auto schema = makeSchema(files);
  EXPECT_EQ(stateOf(schema.get()),
            typesState(definitions) +
                "V3.user.oc: 1.0\nV3.user.at: 1.1\nV3.qor.oc: 1.2\n"
                "V3.qor.at: 1.3\nV3.system.oc: 1.4\nV3.system.at: 1.5\n"
                "V3.modifiedschema: 1.8\n");
}

TEST(SchemaManagerFileNameTest, SuccessNamesTheFile) {
  for (const Name &name : kNames) {
    SCOPED_TRACE(name.name);
    const TemporaryDirectory directory;
    directory.write(name.name, typeLine("1.1", "a"));
    SchemaManager schema(directory.string());
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(schema.readFile(name.name), 0U);
    EXPECT_EQ(recorder.messages(),
              Messages{"readFile: Successfully parsed the file, " +
                       std::string(name.name) + ".\n"});
  }
}

TEST(SchemaManagerFileNameTest, ErrorNamesTheFile) {
  for (const Name &name : kNames) {
    SCOPED_TRACE(name.name);
    const TemporaryDirectory directory;
    directory.write(name.name, "objectclasses(");
    SchemaManager schema(directory.string());
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(readLeaking(&schema, name.name), 1U);
    EXPECT_EQ(recorder.messages(),
              Messages{"readFile: There was an error parsing the file, " +
                       std::string(name.name) + ".\n"});
  }
}

TEST(SchemaManagerFileNameTest, FileOfAnotherNameIsNotRead) {
  for (const std::string &name : kOtherNames) {
    SCOPED_TRACE(name);
    const TemporaryDirectory directory;
    directory.write(name, typeLine("1.1", "a"));
    SchemaManager schema(directory.string());
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(readLeaking(&schema, name), 89U);
    EXPECT_EQ(recorder.messages(),
              Messages{"readFile: Unexpected file name given, " + name + "\n"});
    EXPECT_EQ(stateOf(&schema), "");
  }
}

// Paths to a file with the right name are other names too, and so is the empty
// one, which leads to the directory. A name is compared beyond a zero byte,
// where the path that is opened, and the message, end.
TEST(SchemaManagerFileNameTest, PathIsNoName) {
  const TemporaryDirectory directory;
  directory.write("V3.user.at", typeLine("1.1", "a"));
  fs::create_directory(directory.path() / "V3.config.at");
  for (const std::string &name :
       {std::string("./V3.user.at"), std::string("/V3.user.at"),
        std::string("V3.config.at/../V3.user.at"), std::string("V3.config.at/"),
        std::string("V3.user.at\0", 11), std::string("."), std::string()}) {
    SCOPED_TRACE(name);
    SchemaManager schema(directory.string());
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(readLeaking(&schema, name), 89U);
    EXPECT_EQ(recorder.messages(),
              Messages{"readFile: Unexpected file name given, " +
                       std::string(name.c_str()) + "\n"});
    EXPECT_EQ(stateOf(&schema), "");
  }
}

// It is opened before its name is looked at.
TEST(SchemaManagerFileNameTest, MissingFileIsNotOpenedWhateverItsName) {
  std::set<std::string> names(std::begin(kOtherNames), std::end(kOtherNames));
  for (const Name &name : kNames) {
    names.insert(name.name);
  }
  for (const std::string &name : names) {
    SCOPED_TRACE(name);
    const TemporaryDirectory directory;
    SchemaManager schema(directory.string());
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(readLeaking(&schema, name), 1U);
    EXPECT_EQ(recorder.messages(),
              Messages{"readFile: Could not open file to be parsed\n"});
    EXPECT_EQ(stateOf(&schema), "");
  }
}

TEST(SchemaManagerFileNameTest, PathThatDoesNotOpenGivesOne) {
  const TemporaryDirectory directory;
  const fs::path &path = directory.path();
  directory.write("file", "");
  fs::create_directory(path / "dangling");
  fs::create_symlink("nowhere", path / "dangling" / "V3.user.at");
  fs::create_directory(path / "loop");
  fs::create_symlink("V3.user.at", path / "loop" / "V3.user.at");
  for (const std::string &name :
       {std::string("missing"), std::string("file"), std::string("dangling"),
        std::string("loop"), std::string(5000, 'x')}) {
    SCOPED_TRACE(name);
    SchemaManager schema((path / name).string());
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(readLeaking(&schema, "V3.user.at"), 1U);
    EXPECT_EQ(recorder.messages(),
              Messages{"readFile: Could not open file to be parsed\n"});
    EXPECT_EQ(stateOf(&schema), "");
  }
}

// A directory opens and then cannot be read, and so does the memory of this
// process at the address 0. That is the end of the file.
TEST(SchemaManagerFileNameTest, ReadErrorEndsTheFile) {
  const TemporaryDirectory directory;
  fs::create_directory(directory.path() / "V3.user.at");
  fs::create_symlink("/proc/self/mem", directory.path() / "V3.user.oc");
  for (const std::string &name :
       {std::string("V3.user.at"), std::string("V3.user.oc")}) {
    SCOPED_TRACE(name);
    SchemaManager schema(directory.string());
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(schema.readFile(name), 0U);
    EXPECT_EQ(
        recorder.messages(),
        Messages{"readFile: Successfully parsed the file, " + name + ".\n"});
    EXPECT_EQ(stateOf(&schema), "");
  }
}

// Writing.

TEST(SchemaManagerFileNameTest, EachNameWritesItsOwnSet) {
  const FixedDate date;
  std::vector<SchemaFile> files;
  for (const Name &name : kNames) {
    const std::string number = std::to_string(files.size());
    files.push_back({name.name, typeLine("1." + number, "a" + number)});
  }
  const auto schema = makeSchema(files);
  for (std::size_t i = 0; i < files.size(); ++i) {
    SCOPED_TRACE(files[i].name);
    const TemporaryDirectory directory;
    if (kNames[i].recorded) {
      EXPECT_EQ(schema->writeFile(directory.string(), files[i].name), 0U);
      EXPECT_EQ(directory.read(files[i].name), kHeaderLine + files[i].text);
    } else {
      EXPECT_EQ(schema->writeFile(directory.string(), files[i].name), 89U);
      EXPECT_TRUE(fs::is_empty(directory.path()));
    }
  }
}

TEST(SchemaManagerFileNameTest, OtherNamesAreNotWritten) {
  std::vector<std::string> names(std::begin(kOtherNames),
                                 std::end(kOtherNames));
  names.insert(names.end(), {"V3.config.at", "V3.config.oc", "", "./V3.user.at",
                             "/V3.user.at", std::string(5000, 'x')});
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  for (const std::string &name : names) {
    SCOPED_TRACE(name);
    const TemporaryDirectory directory;
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(schema->writeFile(directory.string(), name), 89U);
    EXPECT_EQ(
        recorder.messages(),
        Messages{"writeFile: Unexpected file name given, " + name + "\n"});
    EXPECT_TRUE(fs::is_empty(directory.path()));
  }
}

TEST(SchemaManagerFileNameTest, FileOfAnotherNameIsLeftAsItIs) {
  const auto schema = makeSchema({{"V3.config.at", typeLine("1.1", "a")}});
  for (const char *name : {"V3.config.at", "V3.config.oc", "V3.user.AT"}) {
    SCOPED_TRACE(name);
    const TemporaryDirectory directory;
    directory.write(name, "kept");
    EXPECT_EQ(schema->writeFile(directory.string(), name), 89U);
    EXPECT_EQ(directory.read(name), "kept");
  }
}

TEST(SchemaManagerFileNameTest, DirectoryOfAWrittenFileMayEndInASlash) {
  const FixedDate date;
  const auto schema = makeSchema({{"V3.user.at", typeLine("1.1", "a")}});
  const TemporaryDirectory directory;
  EXPECT_EQ(schema->writeFile(directory.string() + '/', "V3.user.at"), 0U);
  EXPECT_EQ(directory.read("V3.user.at"), kHeaderLine + typeLine("1.1", "a"));
}

void printText(const ldtr_record &record, void * /*context*/) {
  std::fputs(record.text, stderr);
}

// The empty directory is the root. Nothing is written there: the child cannot
// open files.
TEST(SchemaManagerFileNameTest, SlashIsAddedToAnEmptyDirectory) {
  if (isSanitized()) {
    GTEST_SKIP() << "a sanitizer needs to open files for itself";
  }
  SchemaManager schema("");
  const ChildResult result = runInChild([&schema] {
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_NOFILE, &none);
    ldtr_set_sink(printText, nullptr);
    trcEvents = kTraceDebug;
    std::fprintf(stderr, "%u\n", schema.writeFile("", "V3.user.oc"));
  });
  EXPECT_EQ(result.end, ChildResult::End::kReturned);
  EXPECT_EQ(
      result.error,
      "writeSetToFile: Unable to open file for writing, /V3.user.oc.\n1\n");
}

}  // namespace
