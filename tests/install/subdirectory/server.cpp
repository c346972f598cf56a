// server DIRECTORY: fails unless the library was compiled with the headers in
// platform/. Writes V3.user.at into the current directory.
#include <fstream>
#include <iostream>
#include <string>

#include "CSymbolTable.h"
#include "SchemaLexan.h"
#include "SchemaManager.h"
#include "getCurrentTimeStamp.h"
#include "ldtr.h"

namespace {

int failures = 0;

void expect(const char *what, long expected, long found) {
  if (expected != found) {
    std::cout << what << ": expected " << expected << ", found " << found
              << '\n';
    ++failures;
  }
}

}  // namespace

int main(int, char **argv) {
  constexpr int kWord = 5000;
  {
    SchemaLexan lexan(argv[1], "V3.user.at");
    expect("tables beside the scanner", 1, CSymbolTable::tables);
    int words = 0;
    int token = lexan.lexan();
    while (token != TOK_NUMBER && token != TOK_DONE) {
      token = lexan.lexan();
    }
    lexan.insertString("exampleBadgeNumber", kWord);  // a keyword from here on
    for (; token != TOK_DONE; token = lexan.lexan()) {
      words += token == kWord ? 1 : 0;
    }
    expect("places of the word", 1, words);
    expect("searches", 1, CSymbolTable::searches > 0 ? 1 : 0);
  }
  expect("tables behind the scanner", 0, CSymbolTable::tables);

  trcEvents = 0x04033000;  // entries, exits and debug records
  {
    SchemaManager schema(argv[1]);
    expect("result of reading", 0, schema.readFile("V3.user.at"));
    expect("result of writing", 0, schema.writeFile(".", "V3.user.at"));
    schema.readExcludedOids("no-such-file");
  }
  expect("exits without entry", 0, traced.exits - traced.entries);
  expect("records", 1, traced.entries > 0 && traced.texts > 0 ? 1 : 0);

  std::ifstream written("V3.user.at");
  std::string line;
  std::getline(written, line);
  expect("time stamp", 1,
         line.find(getCurrentTimeStamp(1)) != std::string::npos ? 1 : 0);
  return failures == 0 ? 0 : 1;
}
