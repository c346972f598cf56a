#include "internal/Definition.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <utility>

#include "SchemaLexan.h"
#include "internal/Character.h"

namespace libschema {

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), toLower);
  return text;
}

std::string firstNameLower(const std::vector<std::string> &names) {
  return names.empty() ? std::string() : lowerCase(names.front());
}

namespace {

// Most names that are equal are so in case, too.
bool equalIgnoringCase(const std::string &a, const std::string &b) {
  return a.size() == b.size() &&
         (a == b ||
          std::equal(a.begin(), a.end(), b.begin(),
                     [](char x, char y) { return toLower(x) == toLower(y); }));
}

// Lists up to this length are searched one by one; for longer ones, a sorted
// copy is searched, so that a definition with very many names costs no square
// of them. What is asked is the same: whether each element occurs.
constexpr std::size_t kShortList = 16;

bool eachOccurs(const std::vector<std::string> &mine,
                const std::vector<std::string> &theirs) {
  return std::all_of(
      mine.begin(), mine.end(), [&theirs](const std::string &element) {
        return std::any_of(theirs.begin(), theirs.end(),
                           [&element](const std::string &candidate) {
                             return equalIgnoringCase(element, candidate);
                           });
      });
}

bool eachOccursSorted(const std::vector<std::string> &mine,
                      const std::vector<std::string> &theirs) {
  std::vector<std::string> sorted(theirs.size());
  std::transform(theirs.begin(), theirs.end(), sorted.begin(), lowerCase);
  std::sort(sorted.begin(), sorted.end());
  return std::all_of(mine.begin(), mine.end(),
                     [&sorted](const std::string &element) {
                       return std::binary_search(sorted.begin(), sorted.end(),
                                                 lowerCase(element));
                     });
}

}  // namespace

bool listsMatch(const std::vector<std::string> &mine,
                const std::vector<std::string> &theirs) {
  if (mine.size() != theirs.size()) {
    return false;
  }
  return mine.size() <= kShortList ? eachOccurs(mine, theirs)
                                   : eachOccursSorted(mine, theirs);
}

std::string oidAndName(const std::string &oid,
                       const std::vector<std::string> &names) {
  std::string text = "OID --> " + oid + "\nName --> ";
  appendJoined(&text, names, ", ");
  text += "\n\n";
  return text;
}

int enterDefinition(SchemaLexan *lex) {
  lex->match(lex->getCurrentToken());
  lex->match('(');
  return lex->getCurrentToken();
}

void readText(SchemaLexan *lex, std::string *text) {
  text->clear();
  lex->getStringValue(lex->getTokenValIndex(), *text);
}

void appendText(SchemaLexan *lex, std::vector<std::string> *texts) {
  if (texts->empty()) {
    texts->reserve(2);
  }
  std::string text;
  readText(lex, &text);
  texts->push_back(std::move(text));
}

std::string startLine(const char *keyword, const std::string &oid) {
  std::string line;
  line.reserve(512);
  line.append(keyword).append("=( ").append(oid);
  return line;
}

void appendQuoted(std::string *line, const std::vector<std::string> &names) {
  for (const std::string &name : names) {
    *line += '\'';
    *line += name;
    *line += "' ";
  }
}

void appendJoined(std::string *line, const std::vector<std::string> &elements,
                  const char *separator) {
  const char *before = "";
  for (const std::string &element : elements) {
    *line += before;
    *line += element;
    before = separator;
  }
}

void appendField(std::string *line, const char *keyword,
                 const std::string &value) {
  if (!value.empty()) {
    *line += keyword;
    *line += value;
    *line += ' ';
  }
}

void writeLine(std::ofstream &out, std::string line) {
  line += '\n';
  out.write(line.data(), static_cast<std::streamsize>(line.size())).flush();
}

void printField(const char *label, const std::string &value) {
  std::cout << label << value << std::endl;
}

void printField(const char *label, const std::vector<std::string> &elements) {
  std::cout << label;
  for (const std::string &element : elements) {
    std::cout << element << ' ';
  }
  std::cout << std::endl;
}

}  // namespace libschema
