// Files whose reads come back with less than they were asked for, and files
// that shrink while they are read.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <regex>
#include <set>
#include <string>
#include <utility>

#include "FaultTesting.h"
#include "support/Child.h"

namespace fs = std::filesystem;

namespace {

const Arguments kApply = {"apply", "--old", "old", "--new",
                          "new",   "--out", "out"};
constexpr char kFile[] = "old/V3.user.at";
constexpr std::size_t kDefinitions = 100;
constexpr std::size_t kLine = 1000;  // bytes, with the newline

// What the command says and writes.
struct Outcome {
  CommandResult said;
  Contents made;  // what "out" holds

  bool operator==(const Outcome &other) const {
    return said.status == other.said.status && said.out == other.said.out &&
           said.error == other.said.error && made == other.made;
  }
};

class OddReadTest : public MigrateTest {
 protected:
  OddReadTest() {
    for (std::size_t i = 0; i < kDefinitions; ++i) {
      const std::string number = std::to_string(i);
      std::string line =
          "attributetypes=( 1.2." + number + " NAME 'a" + number + "' DESC '";
      line.resize(kLine - 5, 'x');
      m_text += line + "' )\n";
    }
    write(kFile, m_text);
    writeSmallRelease();
    write("list", "1.2.1\n1.2.50 # a comment\n");
    write("decisions", "1.2.3 old\n");
  }

  void SetUp() override {
    if (isSanitized()) {
      GTEST_SKIP() << "the sanitizer's library would have to be loaded first";
    }
  }

  // Of a run that `prepare` prepares, from a root without "out".
  Outcome outcomeOf(const Arguments &arguments,
                    const std::function<void()> &prepare) const {
    fs::remove_all(path("out"));
    CommandResult said = run(arguments, prepare);
    return {std::move(said), contentsOf(path("out"))};
  }

  const FixedDate m_date;
  std::string m_text;
};

TEST_F(OddReadTest, ShortReadsChangeNothing) {
  Arguments applying = kApply;
  applying.insert(applying.end(),
                  {"--excluded-oids", "list", "--modified-oids", "list"});
  for (const Arguments &arguments :
       {applying, Arguments{"check", "old", "new", "--excluded-oids", "list"},
        Arguments{"plan", "--old", "old", "--new", "new", "--decisions",
                  "decisions"},
        Arguments{"compare", "--old", "old", "--new", "new"},
        Arguments{"collisions", "--old", "old", "--new", "new", "--all"},
        Arguments{"show", "--dir", "old", "a1", "1.2.99"},
        Arguments{"dump", "--dir", "old"}}) {
    SCOPED_TRACE(arguments[0]);
    const Outcome right = outcomeOf(arguments, [] {});
    EXPECT_LE(right.said.status, kFindings) << right.said.error;
    for (const char *size : {"1", "7", "4095"}) {
      EXPECT_EQ(outcomeOf(arguments,
                          [size] {
                            setenv("LD_PRELOAD", SCHEMA_CHANGED_FILE_LIBRARY,
                                   1);
                            setenv("READ_AT_MOST", size, 1);
                          }),
                right)
          << size;
    }
  }
}

// Before each read of it in turn. A run reads the file as it was, or as it is,
// or says that it cannot; none takes a part of what was for the whole.
TEST_F(OddReadTest, AFileThatShrinksIsReadWhollyOrRefused) {
  std::set<std::string> messages;
  for (const Arguments &arguments :
       {kApply, Arguments{"check", "old", "new"},
        Arguments{"plan", "--old", "old", "--new", "new"}}) {
    for (const std::size_t size :
         {std::size_t{0}, kLine * 10, kLine * 10 + 500}) {
      SCOPED_TRACE(arguments[0] + ' ' + std::to_string(size));
      const Outcome whole = outcomeOf(arguments, [] {});
      write(kFile, m_text.substr(0, size));
      const Outcome cut = outcomeOf(arguments, [] {});
      EXPECT_FALSE(whole == cut);
      bool isCut = true;
      for (int n = 1; isCut && !HasFailure(); ++n) {
        SCOPED_TRACE(n);
        write(kFile, m_text);
        const Outcome now = outcomeOf(arguments, [&] {
          setenv("LD_PRELOAD", SCHEMA_CHANGED_FILE_LIBRARY, 1);
          setenv("CHANGED_FILE", fs::canonical(path(kFile)).c_str(), 1);
          setenv("CHANGED_READ", std::to_string(n).c_str(), 1);
          setenv("CHANGED_SIZE", std::to_string(size).c_str(), 1);
        });
        isCut = fs::file_size(path(kFile)) == size;
        EXPECT_TRUE(isCut || now == whole);
        if (!(now == whole) && !(now == cut)) {
          EXPECT_EQ(now.said.status, kFileError);
          EXPECT_EQ(now.made, kNotThere);
          messages.insert(std::regex_replace(now.said.out + now.said.error,
                                             std::regex("found [0-9]+"),
                                             "found N"));
        }
      }
      write(kFile, m_text);
    }
  }
  const std::string shrunk =
      "old/V3.user.at: error: [UNREADABLE-FILE] expected 99900 bytes, found N; "
      "was the file changed just now?\n";
  EXPECT_EQ(messages,
            (std::set<std::string>{
                shrunk, shrunk + "1 error, 0 warnings\n",
                "old/V3.user.at: error: cannot read the file; was it changed "
                "just now?\n",
                "old/V3.user.at: error: was changed while the migration ran; "
                "run it again when nothing changes the file\n"}));
}

}  // namespace
