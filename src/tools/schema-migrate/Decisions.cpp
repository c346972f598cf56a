#include "Decisions.h"

#include <sstream>

#include "Disk.h"
#include "Trouble.h"

namespace fs = std::filesystem;

namespace {

// The words of a line that stand before a comment.
std::vector<std::string> wordsOf(const std::string &line) {
  std::vector<std::string> words;
  std::istringstream in(line);
  std::string word;
  while (in >> word && word[0] != '#') {
    words.push_back(word);
  }
  return words;
}

std::string inWords(const std::vector<std::string> &words) {
  std::string text;
  for (const std::string &word : words) {
    text += (text.empty() ? "'" : " ") + word;
  }
  return text + "'";
}

}  // namespace

std::map<std::string, Decision> readDecisions(const fs::path &file) {
  std::istringstream in(textOf(file));
  std::map<std::string, Decision> decisions;
  std::string errors;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    const auto fail = [&](const std::string &message) {
      errors += (errors.empty() ? "" : "\n") + errorAt(file, number, message);
    };
    const std::vector<std::string> words = wordsOf(line);
    if (words.empty()) {
      continue;
    }
    if (words.size() != 2 || (words[1] != "old" && words[1] != "new")) {
      fail("expected an OID and 'old' or 'new', found " + inWords(words));
      continue;
    }
    const auto side =
        words[1] == "old" ? schemaplan::Side::kOld : schemaplan::Side::kNew;
    const auto [decision, isNew] =
        decisions.try_emplace(words[0], Decision{side, number});
    if (!isNew) {
      fail("expected one decision on " + words[0] + ", found another on line " +
           std::to_string(decision->second.line));
    }
  }
  if (!errors.empty()) {
    throw Trouble(kBadInput, errors);
  }
  return decisions;
}
