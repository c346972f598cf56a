#include "Backups.h"

#include <algorithm>
#include <ctime>
#include <optional>
#include <string_view>
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

bool areDigits(std::string_view text) {
  return !text.empty() &&
         text.find_first_not_of("0123456789") == std::string_view::npos;
}

// What backups are ordered by: the date and the number behind it.
using Order = std::pair<std::string, int>;

// The order of a backup whose name ends so; nothing if it is none.
std::optional<Order> orderOf(const std::string &end) {
  constexpr std::size_t kDay = 8;
  constexpr std::size_t kDate = 15;
  constexpr std::size_t kMostDigits = 9;
  const std::string_view text = end;
  if (text.size() < kDate || !areDigits(text.substr(0, kDay)) ||
      text[kDay] != '-' ||
      !areDigits(text.substr(kDay + 1, kDate - kDay - 1))) {
    return {};
  }
  if (text.size() == kDate) {
    return Order(end, 1);
  }
  const std::string_view number = text.substr(kDate + 1);
  if (text[kDate] != '-' || !areDigits(number) || number[0] == '0' ||
      number.size() > kMostDigits) {
    return {};
  }
  return Order(end.substr(0, kDate), std::stoi(std::string(number)));
}

}  // namespace

bool endsBackup(const std::string &end) { return orderOf(end).has_value(); }

std::string backupStem(const fs::path &target) {
  return target.filename().string() + ".backup-";
}

std::vector<std::string> backupsOf(const fs::path &target) {
  const std::string stem = backupStem(target);
  std::vector<std::pair<Order, std::string>> found;
  for (const fs::path &path : entriesOf(target.parent_path())) {
    const std::string name = path.filename().string();
    if (name.rfind(stem, 0) != 0 || typeOf(path) != fs::file_type::directory) {
      continue;
    }
    if (const auto order = orderOf(name.substr(stem.size()))) {
      found.emplace_back(*order, name);
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
  const std::string stem = backupStem(target);
  // The newest is the last one made, although a clock may be set back.
  std::string date = now();
  int number = 1;
  const std::vector<std::string> all = backupsOf(target);
  if (!all.empty()) {
    const std::optional<Order> newest = orderOf(all.back().substr(stem.size()));
    if (newest->first >= date) {
      date = newest->first;
      number = newest->second + 1;
    }
  }
  std::string taken;
  do {
    taken = stem + date + (number == 1 ? "" : "-" + std::to_string(number));
    ++number;
  } while (!renameToFree(former, target.parent_path() / taken));
  return taken;
}
