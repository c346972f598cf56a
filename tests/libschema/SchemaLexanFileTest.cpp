// Files of every kind, files that fail, locales, and the interface's layout.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <clocale>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <locale>
#include <string>

#include "Clex_analyzer.h"
#include "SchemaLexan.h"
#include "libschema/SchemaLexanTesting.h"
#include "support/TemporaryDirectory.h"

namespace {

class SchemaLexanFileTest : public testing::Test {
 protected:
  const TemporaryDirectory m_directory;
};

void expectAtTheEnd(SchemaLexan &lexan) {
  EXPECT_EQ(lexan.lexan(), TOK_DONE);
  EXPECT_EQ(lexan.getCurrentToken(), -1);
  EXPECT_EQ(lexan.getTokenValIndex(), -1);
  EXPECT_EQ(lexan.getLineNumber(), 1);
  EXPECT_FALSE(lexan.fileIsOpen());
  EXPECT_EQ(lexan.lexan(), TOK_DONE);
  lexan.match(-1);
  EXPECT_EQ(lexan.getCurrentToken(), TOK_DONE);
}

TEST_F(SchemaLexanFileTest, ASlashStandsBetweenDirectoryAndName) {
  const std::string file = m_directory.write("file", "cn\n");
  std::filesystem::create_directory(m_directory.path() / "sub");
  const std::string directory = m_directory.string();
  const struct {
    std::string workingDir;
    std::string fileName;
    bool opens;
  } cases[] = {
      {directory, "file", true},
      {directory + "/", "file", true},
      {directory, "/file", true},
      {directory, "sub/../file", true},
      {directory + "/sub/..", "file", true},
      {"", file, true},  // a name that starts at the root
      {"", file.substr(1), true},
      {directory + "/fi", "le", false},
      {directory, file, false},
      {directory, "other", false},
      {directory + "/sub", "file", false},
      {directory + "/file", "", false},
      {directory + "/file", "file", false},
      {"", "", true},  // the root itself
  };
  for (const auto &each : cases) {
    SCOPED_TRACE(each.workingDir + " and " + each.fileName);
    SchemaLexan lexan(each.workingDir, each.fileName);
    EXPECT_EQ(lexan.fileIsOpen(), each.opens);
    EXPECT_EQ(lexan.getWorkingDir(), each.workingDir);
    EXPECT_EQ(lexan.getFileName(), each.fileName);
  }
}

TEST_F(SchemaLexanFileTest, AMissingFileIsAtItsEnd) {
  SchemaLexan lexan(m_directory.string(), "missing");
  EXPECT_FALSE(lexan.fileIsOpen());
  expectAtTheEnd(lexan);
  EXPECT_FALSE(std::filesystem::exists(m_directory.path() / "missing"));
  EXPECT_EQ(lexan.insertString("cn", TOK_ID), 25);
  EXPECT_TRUE(lexan.isString(25));
}

TEST_F(SchemaLexanFileTest, AMissingDirectoryIsAMissingFile) {
  SchemaLexan lexan(m_directory.string() + "/missing", "file");
  EXPECT_FALSE(lexan.fileIsOpen());
  expectAtTheEnd(lexan);
}

TEST_F(SchemaLexanFileTest, ADirectoryOpensAndIsAtItsEnd) {
  std::filesystem::create_directory(m_directory.path() / "sub");
  SchemaLexan lexan(m_directory.string(), "sub");
  EXPECT_TRUE(lexan.fileIsOpen());
  expectAtTheEnd(lexan);
}

TEST_F(SchemaLexanFileTest, AnEmptyFileOpensAndIsAtItsEnd) {
  m_directory.write("empty", "");
  SchemaLexan lexan(m_directory.string(), "empty");
  EXPECT_TRUE(lexan.fileIsOpen());
  expectAtTheEnd(lexan);
}

TEST_F(SchemaLexanFileTest, TheFileIsNotChangedAndIsClosedInTheEnd) {
  const std::string path = m_directory.write("file", "cn");
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  const auto lowest = [] {
    const int descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(descriptor);
    return descriptor;
  };
  const int before = lowest();
  {
    SchemaLexan lexan(m_directory.string(), "file");
    EXPECT_TRUE(lexan.fileIsOpen());
    EXPECT_EQ(lexan.lexan(), TOK_DONE);
    EXPECT_NE(lowest(), before);
  }
  EXPECT_EQ(lowest(), before);
  EXPECT_EQ(m_directory.read("file"), "cn");
}

// Reads a file whose first piece can be read and whose next one cannot: the
// descriptor becomes one of a directory after the first token. The first piece
// ends with `text`.
std::string tokensBeforeAReadError(const std::string &text) {
  const TemporaryDirectory directory;
  constexpr std::size_t kPiece = 8191;  // of the standard library's stream
  directory.write("file", "(" + std::string(kPiece - 1 - text.size(), ' ') +
                              text + std::string(kPiece, 'z') + "\n");
  const int other = open(directory.string().c_str(), O_RDONLY | O_CLOEXEC);
  const int descriptor = dup(other);
  close(descriptor);  // the one that the analyser is going to use
  SchemaLexan lexan(directory.string(), "file");
  EXPECT_EQ(lexan.lexan(), '(');
  dup2(other, descriptor);
  close(other);
  std::string list = allTokens(lexan, 20);
  EXPECT_FALSE(lexan.fileIsOpen());
  EXPECT_EQ(lexan.lexan(), TOK_DONE);
  return list;
}

// Not the end of the file: what was read of a word or number is a token.
TEST_F(SchemaLexanFileTest, AReadErrorEndsEveryLoop) {
  const struct {
    const char *text;
    const char *tokens;
  } cases[] = {
      {" ", "1: TOK_DONE"},
      {")", "1: ')' TOK_DONE"},
      {"\n", "2: TOK_DONE"},
      {"#", "2: TOK_DONE"},
      {"# cn", "2: TOK_DONE"},
      {"cn", "1: TOK_ID(cn) TOK_DONE"},
      {"NAME", "1: TOK_NAME(NAME) TOK_DONE"},
      {"'c n", "1: TOK_ID(c n) TOK_DONE"},
      {"'cn'", "1: TOK_ID(cn) TOK_DONE"},
      {"'", "1: TOK_ID() TOK_DONE"},
      {"2.5", "1: TOK_NUMBER(2.5) TOK_DONE"},
      {"2.5 ", "1: TOK_NUMBER(2.5) TOK_DONE"},
      {"2.5{", "1: TOK_NUMBER_BAD(2.5{) TOK_DONE"},
      {"2.5{6", "1: TOK_NUMBER_BAD(2.5{6) TOK_DONE"},
      {"2.5{6}", "1: TOK_NUMBER_LEN(2.5{6}) TOK_DONE"},
  };
  for (const auto &each : cases) {
    EXPECT_EQ(tokensBeforeAReadError(each.text), each.tokens) << each.text;
  }
}

// A locale in which every byte is a letter, a digit, a blank and punctuation,
// and numbers have a separator behind each digit.
class EveryClass : public std::ctype<char> {
 public:
  EveryClass() : std::ctype<char>(table()) {}

 private:
  static const mask *table() {
    static mask classes[table_size];
    for (mask &each : classes) {
      each = alpha | digit | space | punct | print;
    }
    return classes;
  }
};

class Separators : public std::numpunct<char> {
  char do_thousands_sep() const override { return ','; }
  std::string do_grouping() const override { return "\1"; }
};

// Restores both locales in the end.
class SchemaLexanLocaleTest : public SchemaLexanFileTest {
 protected:
  ~SchemaLexanLocaleTest() override {
    std::locale::global(m_cxx);
    std::setlocale(LC_ALL, m_c.c_str());
  }

  // The tokens of a file that holds every byte, behind a number, in a word and
  // in a string, and what the analyser dumps in the end.
  std::string tokensAndDump() {
    std::string text;
    for (int byte = 0; byte < 256; ++byte) {
      const char c = static_cast<char>(byte);
      text.append({'1', c, 'a', c, 'b', ' ', '\'', 'x', c, 'y', '\'', '\n'});
    }
    m_directory.write("file", text);
    SchemaLexan lexan(m_directory.string(), "file");
    const std::string list = allTokens(lexan);
    std::ofstream out(m_directory.path() / "dump");
    lexan.dump(1, out);
    out.close();
    return list + m_directory.read("dump");
  }

 private:
  const std::locale m_cxx;
  const std::string m_c = std::setlocale(LC_ALL, nullptr);
};

TEST_F(SchemaLexanLocaleTest, TheLocaleOfTheEnvironmentChangesNothing) {
  const std::string before = tokensAndDump();
  int tried = 0;
  for (const char *name : {"C.UTF-8", "C.utf8", "en_US.UTF-8", "de_DE",
                           "de_DE.ISO-8859-1", "tr_TR", "tr_TR.UTF-8"}) {
    if (std::setlocale(LC_ALL, name) == nullptr) {
      continue;
    }
    SCOPED_TRACE(name);
    ++tried;
    EXPECT_TRUE(tokensAndDump() == before);
    std::locale::global(std::locale(name));
    EXPECT_TRUE(tokensAndDump() == before);
    std::locale::global(std::locale::classic());
  }
  if (tried == 0) {
    GTEST_SKIP() << "no locale but the C locale";
  }
}

TEST_F(SchemaLexanLocaleTest, OtherCharacterClassesChangeNothing) {
  const std::string before = tokensAndDump();
  std::locale::global(std::locale(std::locale(), new EveryClass));
  EXPECT_TRUE(tokensAndDump() == before);
}

TEST_F(SchemaLexanLocaleTest, OtherNumbersChangeNothing) {
  const std::string before = tokensAndDump();
  std::locale::global(std::locale(std::locale(), new Separators));
  EXPECT_EQ(tokensAndDump(), before);
}

#if defined(__x86_64__) && defined(__GXX_ABI_VERSION)
// A pointer to a virtual operation holds the operation's place in the table of
// virtual functions.
template <class Operation>
std::size_t slotOf(Operation operation) {
  static_assert(sizeof operation >= sizeof(std::size_t));
  std::size_t place = 0;
  std::memcpy(&place, &operation, sizeof place);
  return (place - 1) / sizeof(void *);
}

template <class Lexan>
void expectSlotsInOrder() {
  const std::size_t slots[] = {
      slotOf(&Lexan::getLineNumber),
      slotOf(&Lexan::getFileName),
      slotOf(&Lexan::getWorkingDir),
      slotOf(&Lexan::isString),
      slotOf(&Lexan::isCharacter),
      slotOf(&Lexan::getCurrentToken),
      slotOf(&Lexan::getTokenValIndex),
      slotOf(&Lexan::getStringValue),
      slotOf(&Lexan::getCharValue),
      slotOf(&Lexan::lookUp),
      slotOf(&Lexan::lexan),
      slotOf(&Lexan::match),
      slotOf(&Lexan::insertString),
      slotOf(&Lexan::insertCharacter),
      slotOf(&Lexan::clear),
      slotOf(&Lexan::dumpTable),
      slotOf(&Lexan::dump),
      slotOf(&Lexan::skip),
  };
  std::size_t expected = 0;
  for (const std::size_t slot : slots) {
    EXPECT_EQ(slot, expected++);
  }
}

TEST(SchemaLexanInterfaceTest, VirtualOperationsStandInTheirFixedOrder) {
  expectSlotsInOrder<Clex_analyzer>();
  expectSlotsInOrder<SchemaLexan>();
}
#endif

}  // namespace
