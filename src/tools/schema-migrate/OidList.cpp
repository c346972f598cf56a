#include "OidList.h"

#include <algorithm>
#include <sstream>

#include "Disk.h"
#include "Schemas.h"
#include "Trouble.h"
#include "Untraced.h"

namespace fs = std::filesystem;

std::set<std::string> readOidList(const fs::path &list) {
  const std::string text = textOf(list);
  if (!text.empty() && text.back() != '\n') {
    const auto lines = std::count(text.begin(), text.end(), '\n');
    throw Trouble(kBadInput,
                  errorAt(list, static_cast<int>(lines) + 1,
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

void readExcludedOids(const fs::path &list, const std::set<std::string> &oids,
                      SchemaManager *schema) {
  const bool isRead = schema->readExcludedOids(list.string()) == 0;
  const Untraced untraced;
  requireRead(isRead && std::all_of(oids.begin(), oids.end(),
                                    [schema](const std::string &oid) {
                                      return schema->isExcluded(oid) != 0;
                                    }),
              list);
}

void readExcludedOids(const fs::path &list, SchemaManager *schema) {
  readExcludedOids(list, readOidList(list), schema);
}
