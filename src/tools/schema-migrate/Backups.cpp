#include "Backups.h"

#include <algorithm>
#include <ctime>
#include <regex>
#include <system_error>
#include <utility>

#include "Disk.h"

namespace fs = std::filesystem;

namespace {

std::string now() {
  const std::time_t seconds = std::time(nullptr);
  std::tm utc{};
  gmtime_r(&seconds, &utc);
  char text[32];
  std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &utc);
  return text;
}

}  // namespace

std::string backupStem(const fs::path &target) {
  return target.filename().string() + ".backup-";
}

std::vector<std::string> backupsOf(const fs::path &target) {
  const std::string stem = backupStem(target);
  const std::regex form("(\\d{8}-\\d{6})(-([1-9]\\d{0,8}))?");
  // Ordered by the date and the number behind it.
  std::vector<std::pair<std::pair<std::string, int>, std::string>> found;
  for (const fs::path &path : entriesOf(target.parent_path())) {
    const std::string name = path.filename().string();
    std::error_code ignored;
    if (name.rfind(stem, 0) != 0 ||
        !fs::is_directory(fs::symlink_status(path, ignored))) {
      continue;
    }
    const std::string rest = name.substr(stem.size());
    std::smatch match;
    if (std::regex_match(rest, match, form)) {
      const int number = match[3].matched ? std::stoi(match[3].str()) : 1;
      found.push_back({{match[1].str(), number}, name});
    }
  }
  std::sort(found.begin(), found.end());
  std::vector<std::string> names;
  names.reserve(found.size());
  for (const auto &[order, name] : found) {
    names.push_back(name);
  }
  return names;
}

std::string keepAsBackup(const fs::path &former, const fs::path &target) {
  const std::string name = backupStem(target) + now();
  std::string taken = name;
  for (int number = 2; !renameToFree(former, target.parent_path() / taken);
       ++number) {
    taken = name + "-" + std::to_string(number);
  }
  return taken;
}
