#include "OidList.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "Inventory.h"
#include "Trouble.h"

namespace fs = std::filesystem;

std::set<std::string> readOidList(const fs::path &list) {
  requireReadableFile(list);
  std::ifstream in(list, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  if (!text.empty() && text.back() != '\n') {
    const auto lines = std::count(text.begin(), text.end(), '\n');
    throw Trouble(errorAt(list, static_cast<int>(lines) + 1,
                          "expected a newline at the end of the file, found "
                          "none; the last word would be ignored"));
  }
  std::set<std::string> oids;
  std::istringstream lines(text);
  std::string line;
  while (std::getline(lines, line)) {
    std::istringstream words(line);
    std::string word;
    while (words >> word && word.find('#') == std::string::npos) {
      oids.insert(word);
    }
  }
  return oids;
}

void readExcludedOids(const fs::path &list, SchemaManager *schema) {
  readOidList(list);
  if (schema->readExcludedOids(list.string()) != 0) {
    throw Trouble(errorAt(list, 0, "cannot open the file"));
  }
}
