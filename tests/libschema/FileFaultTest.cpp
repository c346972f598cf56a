// What the library makes of files that fail while it reads or writes them. This
// program has system calls of its own, which fail when a test says so.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <stdio.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "SchemaManager.h"
#include "SchemaManagerMergeTesting.h"
#include "SchemaManagerTesting.h"
#include "support/ContractLeaks.h"
#include "support/TemporaryDirectory.h"
#include "support/TraceRecorder.h"

namespace {

// What happens to the calls of one kind while a test lets them fail.
struct Fault {
  std::size_t left = 0;      // calls until the one that fails; 0: none does
  bool lasting = false;      // all after that one fail, too
  int error = 0;             // what errno becomes
  std::size_t atMost = 0;    // bytes that a call takes; 0: all
  std::function<void()> at;  // called instead of failing
  bool reached = false;

  bool failsNow() {
    if (left == 0 || --left > 0) {
      return false;
    }
    left = lasting ? 1 : 0;
    reached = true;
    if (at) {
      at();
      return false;
    }
    errno = error;
    return true;
  }

  std::size_t limit(std::size_t size) const {
    return atMost == 0 ? size : std::min(size, atMost);
  }
};

Fault opening;
Fault reading;
Fault writing;
Fault closing;

template <class Function>
Function *next(const char *name) {
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

FILE *fopen64(const char *path, const char *mode) {
  static const auto real = next<FILE *(const char *, const char *)>("fopen64");
  return opening.failsNow() ? nullptr : real(path, mode);
}

int fclose(FILE *file) {
  static const auto real = next<int(FILE *)>("fclose");
  const int result = real(file);
  return closing.failsNow() ? EOF : result;
}

ssize_t read(int file, void *buffer, size_t size) {
  static const auto real = next<ssize_t(int, void *, size_t)>("read");
  return reading.failsNow() ? -1 : real(file, buffer, reading.limit(size));
}

ssize_t write(int file, const void *buffer, size_t size) {
  static const auto real = next<ssize_t(int, const void *, size_t)>("write");
  return writing.failsNow() ? -1 : real(file, buffer, writing.limit(size));
}

ssize_t writev(int file, const iovec *parts, int count) {
  static const auto real = next<ssize_t(int, const iovec *, int)>("writev");
  if (writing.atMost != 0) {
    return write(file, parts[0].iov_base, parts[0].iov_len);
  }
  return writing.failsNow() ? -1 : real(file, parts, count);
}

}  // extern "C"

namespace {

namespace fs = std::filesystem;

using Messages = std::vector<std::string>;

// In bytes, with the newline; the buffer of a stream, which holds 8191, ends in
// the comment of a line then.
constexpr std::size_t kLine = 128;
constexpr std::size_t kLines = 140;  // more than the buffer holds

constexpr std::size_t kFew = 6;

// A line with a definition at its start and a comment to its end.
std::string lineWith(const std::string &definition) {
  std::string line = definition.substr(0, definition.size() - 1) + " #";
  line.resize(kLine - 1, '.');
  return line + '\n';
}

std::string textOfLines(std::size_t lines) {
  std::string text;
  for (std::size_t i = 0; i < lines; ++i) {
    const std::string number = std::to_string(i);
    text += lineWith(typeLine("1.2." + number, {"a" + number}, "x"));
  }
  return text;
}

class FileFaultTest : public testing::Test {
 protected:
  ~FileFaultTest() override { opening = reading = writing = closing = {}; }

  // What the manager holds that has read the file while `fault` was there.
  std::string readWith(const Fault &fault) const {
    SchemaManager schema(m_directory.string());
    reading = fault;
    const unsigned int result = schema.readFile("V3.user.at");
    m_reached = reading.reached;
    reading = {};
    EXPECT_EQ(result, 0U);
    m_read = schema.attributeTypes().size();
    return stateOf(&schema);
  }

  // The result, and what it holds, where the file may end in a definition.
  std::string readBroken(const TemporaryDirectory &directory,
                         const Fault &fault) const {
    SchemaManager schema(directory.string());
    reading = fault;
    const unsigned int result = leaksDefinitions([&] {
      return leaksAnalyser([&] { return schema.readFile("V3.user.at"); });
    });
    m_reached = reading.reached;
    reading = {};
    return std::to_string(result) + stateOf(&schema);
  }

  // What a manager holds that has read a file with the text.
  static std::string stateWith(const std::string &text) {
    return stateOf(makeSchema({{"V3.user.at", text}}).get());
  }

  const TemporaryDirectory m_directory;
  mutable bool m_reached = false;  // whether the fault has come about
  mutable std::size_t m_read = 0;  // definitions
};

// Kept on purpose: nobody is told. What was read before counts.
TEST_F(FileFaultTest, AReadErrorIsTakenForTheEndOfTheFile) {
  m_directory.write("V3.user.at", textOfLines(kFew));
  for (const bool lasting : {false, true}) {
    for (std::size_t n = 1; n <= kFew + 1; ++n) {
      SCOPED_TRACE(n);
      EXPECT_EQ(readWith({n, lasting, EIO, kLine, {}}),
                stateWith(textOfLines(n - 1)));
      EXPECT_TRUE(m_reached);
    }
  }
  EXPECT_EQ(readWith({kFew + 3, false, EIO, kLine, {}}),
            stateWith(textOfLines(kFew)));
  EXPECT_FALSE(m_reached);
}

// The stream's own reads: each but the last fills its buffer.
TEST_F(FileFaultTest, AReadErrorBehindAFullBuffer) {
  const std::string text = textOfLines(kLines);
  m_directory.write("V3.user.at", text);
  readWith({});
  const std::size_t whole = m_read;
  ASSERT_EQ(whole, kLines);
  std::size_t before = 0;
  std::size_t n = 1;
  for (; n == 1 || m_reached; ++n) {
    SCOPED_TRACE(n);
    const std::string state = readWith({n, false, EIO, 0, {}});
    EXPECT_EQ(state, stateWith(textOfLines(m_read)));
    EXPECT_GE(m_read, before);
    EXPECT_LE(m_read, before + 8192 / kLine + 1);
    before = m_read;
  }
  EXPECT_EQ(before, kLines);
  EXPECT_GT(n, text.size() / 8192);
}

// A definition and a comment that are longer than the buffer: the file ends at
// each refill of it in turn, in the midst of a token too.
TEST_F(FileFaultTest, AReadErrorInALineLongerThanTheBuffer) {
  constexpr std::size_t kBuffer = 8191;
  const std::string text = typeLine("1.2.1", {"a"}, "x") +
                           typeLine("1.2.2", {"b"}, std::string(20000, 'y')) +
                           "# " + std::string(20000, 'z') + '\n' +
                           typeLine("1.2.3", {"c"}, "x") +
                           typeLine("1.2.4", {"d"}, std::string(9000, 'y'));
  m_directory.write("V3.user.at", text);
  for (const bool lasting : {false, true}) {
    std::string results;
    for (std::size_t n = 1; (n - 1) * kBuffer < text.size(); ++n) {
      SCOPED_TRACE(n);
      const TemporaryDirectory cut;
      cut.write("V3.user.at", text.substr(0, (n - 1) * kBuffer));
      const std::string expected = readBroken(cut, {});
      EXPECT_EQ(readBroken(m_directory, {n, lasting, EIO, 0, {}}), expected);
      EXPECT_TRUE(m_reached);
      results += expected[0];
    }
    EXPECT_EQ(results, "0110011");
  }
  EXPECT_EQ(readWith({}), stateWith(text));
  EXPECT_EQ(m_read, 4U);
}

TEST_F(FileFaultTest, ShortReadsChangeNothing) {
  const std::string text = textOfLines(kFew);
  m_directory.write("V3.user.at", text);
  for (const std::size_t size : {1U, 7U, 99U, 4095U}) {
    EXPECT_EQ(readWith({0, false, 0, size, {}}), stateWith(text));
  }
}

TEST_F(FileFaultTest, AnInterruptedReadIsRepeated) {
  const std::string text = textOfLines(kFew);
  m_directory.write("V3.user.at", text);
  for (std::size_t n = 1; n <= kFew; ++n) {
    EXPECT_EQ(readWith({n, false, EINTR, kLine, {}}), stateWith(text));
    EXPECT_TRUE(m_reached);
  }
}

TEST_F(FileFaultTest, AFileThatShrinksEndsWhereItIsShort) {
  for (std::size_t n = 1; n <= kFew; ++n) {
    m_directory.write("V3.user.at", textOfLines(kFew));
    const auto shrink = [this] {
      fs::resize_file(m_directory.path() / "V3.user.at", 0);
    };
    EXPECT_EQ(readWith({n, false, 0, kLine, shrink}),
              stateWith(textOfLines(n - 1)));
  }
}

TEST_F(FileFaultTest, AFifoIsReadAsAFileIs) {
  const std::string text = textOfLines(kLines);
  const std::string path = m_directory.string() + "/V3.user.at";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  std::thread writer([&] {
    FILE *file = fopen(path.c_str(), "w");
    fwrite(text.data(), 1, text.size(), file);
    fclose(file);
  });
  EXPECT_EQ(readWith({}), stateWith(text));
  writer.join();
}

TEST_F(FileFaultTest, ADirectoryIsAnEmptyFile) {
  fs::create_directory(m_directory.path() / "V3.user.at");
  EXPECT_EQ(readWith({}), stateWith(""));
}

// No permission, too many open files, and so on: every operation on a file says
// so and changes nothing.
TEST_F(FileFaultTest, AFileThatDoesNotOpen) {
  const std::string text = textOfLines(3);
  m_directory.write("V3.user.at", text);
  m_directory.write("list", "1.2.1\n");
  const auto schema = makeSchema({{"V3.user.at", text}});
  SchemaManager other(m_directory.string());
  const std::string before = stateOf(schema.get());
  const std::string list = m_directory.string() + "/list";
  for (const int error : {EACCES, EMFILE, ENFILE, ENOMEM, EIO, ELOOP}) {
    SCOPED_TRACE(error);
    const auto failing = [error](const auto &operation) {
      opening = {1, false, error, 0, {}};
      const unsigned int result = operation();
      EXPECT_TRUE(opening.reached);
      return result;
    };
    const TraceRecorder recorder(kTraceDebug);
    EXPECT_EQ(leaksAnalyser([&] {
                return failing([&] { return other.readFile("V3.user.at"); });
              }),
              1U);
    EXPECT_EQ(failing([&] { return schema->writeSetToFile({"1.2.1"}, list); }),
              1U);
    EXPECT_EQ(failing([&] { return schema->readExcludedOids(list); }), 1U);
    EXPECT_EQ(failing([&] { return schema->modifySchema(list); }), 1U);
    EXPECT_EQ(recorder.messages(),
              (Messages{"readFile: Could not open file to be parsed\n",
                        "writeSetToFile: Unable to open file for writing, " +
                            list + ".\n",
                        "readExcludedOids: Unable to open file for reading, " +
                            list + ".\n",
                        "modifySchema: Unable to open file, " + list +
                            ", for reading.\n"}));
  }
  EXPECT_EQ(stateOf(schema.get()), before);
  EXPECT_EQ(stateOf(&other), stateOf(emptySchema().get()));
  EXPECT_EQ(m_directory.read("list"), "1.2.1\n");
}

TEST_F(FileFaultTest, AReadErrorEndsAListOfOids) {
  const std::string list = m_directory.write("list", "1.2.0 #\n1.2.1 #\n");
  for (std::size_t n = 1; n <= 3; ++n) {
    SCOPED_TRACE(n);
    const auto excluding = emptySchema();
    const auto modifying = makeSchema({{"V3.modifiedschema", textOfLines(3)}});
    reading = {n, true, EIO, 8, {}};
    EXPECT_EQ(excluding->readExcludedOids(list), 0U);
    reading = {n, true, EIO, 8, {}};
    EXPECT_EQ(modifying->modifySchema(list), 0U);
    reading = {};
    for (std::size_t i = 0; i < 2; ++i) {
      const std::string oid = "1.2." + std::to_string(i);
      EXPECT_EQ(excluding->isExcluded(oid), i + 1 < n ? 1U : 0U) << oid;
      EXPECT_EQ(modifying->attributeTypesByOid().count(oid), 1U);
    }
    m_directory.write("rest", "");
    EXPECT_EQ(modifying->writeFile(m_directory.string(), "V3.modifiedschema"),
              0U);
    EXPECT_EQ(writtenOids(m_directory.read("V3.modifiedschema")).size(),
              3 - std::min<std::size_t>(n - 1, 2));
  }
}

// At each refill of the buffer. The OIDs, which end their line, are those
// before it.
TEST_F(FileFaultTest, AReadErrorEndsALongListOfOids) {
  constexpr std::size_t kBuffer = 8191;
  constexpr std::size_t kOids = 3000;
  std::string text;
  std::vector<std::size_t> ends;
  for (std::size_t i = 0; i < kOids; ++i) {
    text += "1.2." + std::to_string(i) + '\n';
    ends.push_back(text.size());
  }
  const std::string list = m_directory.write("list", text);
  for (std::size_t n = 1; (n - 1) * kBuffer < text.size(); ++n) {
    SCOPED_TRACE(n);
    const auto schema = emptySchema();
    reading = {n, true, EIO, 0, {}};
    EXPECT_EQ(schema->readExcludedOids(list), 0U);
    EXPECT_TRUE(reading.reached);
    reading = {};
    std::size_t excluded = 0;
    std::size_t expected = 0;
    for (std::size_t i = 0; i < kOids; ++i) {
      excluded += schema->isExcluded("1.2." + std::to_string(i)) != 0 ? 1U : 0U;
      expected += ends[i] <= (n - 1) * kBuffer ? 1U : 0U;
    }
    EXPECT_EQ(excluded, expected);
  }
}

class FileWriteFaultTest : public FileFaultTest {
 protected:
  // The lines of the file that the schema writes while `fault` is there. The
  // result is 0 whatever happens.
  std::size_t linesWrittenWith(const Fault &fault) const {
    m_directory.write("V3.user.at", "former\n");
    writing = fault;
    EXPECT_EQ(m_schema->writeFile(m_directory.string(), "V3.user.at"), 0U);
    m_reached = writing.reached;
    writing = {};
    const std::string text = m_directory.read("V3.user.at");
    EXPECT_EQ(m_text.substr(0, text.size()), text);
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  }

  static std::string written(SchemaManager *schema) {
    const TemporaryDirectory directory;
    EXPECT_EQ(schema->writeFile(directory.string(), "V3.user.at"), 0U);
    return directory.read("V3.user.at");
  }

  static constexpr std::size_t kWritten = kFew + 1;  // lines, with the header

  const FixedDate m_date;
  const Schema m_schema = makeSchema({{"V3.user.at", textOfLines(kFew)}});
  const std::string m_text = written(m_schema.get());
};

// Kept on purpose: the result is 0. Who must know reads the file back. (The
// first write has the header and a definition, each other one has one more;
// what one could not write is tried once more when the file is closed.)
TEST_F(FileWriteFaultTest, AWriteErrorEndsTheFileThere) {
  for (const int error : {ENOSPC, EIO, EDQUOT, EFBIG}) {
    for (std::size_t n = 1; n <= kFew; ++n) {
      SCOPED_TRACE(n);
      EXPECT_EQ(linesWrittenWith({n, false, error, 0, {}}), n + 1);
      EXPECT_TRUE(m_reached);
      EXPECT_EQ(linesWrittenWith({n, true, error, 0, {}}), n == 1 ? 0 : n);
      EXPECT_TRUE(m_reached);
    }
  }
  EXPECT_EQ(linesWrittenWith({kFew + 1, false, EIO, 0, {}}), kWritten);
  EXPECT_FALSE(m_reached);
}

TEST_F(FileWriteFaultTest, ShortAndInterruptedWritesChangeNothing) {
  EXPECT_EQ(linesWrittenWith({0, false, 0, 1, {}}), kWritten);
  EXPECT_EQ(linesWrittenWith({0, false, 0, 33, {}}), kWritten);
  for (std::size_t n = 1; n <= kFew; ++n) {
    EXPECT_EQ(linesWrittenWith({n, false, EINTR, 0, {}}), kWritten);
  }
}

TEST_F(FileWriteFaultTest, AnErrorOnClosingIsNotReported) {
  for (const int error : {ENOSPC, EIO, EDQUOT}) {
    closing = {1, false, error, 0, {}};
    EXPECT_EQ(m_schema->writeFile(m_directory.string(), "V3.user.at"), 0U);
    EXPECT_TRUE(closing.reached);
    closing = {};
    EXPECT_EQ(m_directory.read("V3.user.at"), m_text);
  }
}

}  // namespace
