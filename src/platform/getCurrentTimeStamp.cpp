#include "getCurrentTimeStamp.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

// The time that SOURCE_DATE_EPOCH asks for, broken down as UTC; false when it
// asks for none that a calendar can show with four digits of the year.
bool reproducibleTime(std::tm *utc) {
  const char *text = std::getenv("SOURCE_DATE_EPOCH");
  if (text == nullptr) {
    return false;
  }
  std::time_t seconds = 0;
  const char *end = text + std::strlen(text);
  const auto [stop, error] = std::from_chars(text, end, seconds);
  return error == std::errc() && stop == end && seconds >= 0 &&
         gmtime_r(&seconds, utc) != nullptr && utc->tm_year <= 9999 - 1900;
}

}  // namespace

std::string getCurrentTimeStamp(int /*form*/) {
  std::tm when{};
  if (!reproducibleTime(&when)) {
    const std::time_t now = std::time(nullptr);
    tzset();  // localtime_r need not look at a changed TZ by itself
    localtime_r(&now, &when);
  }
  char text[64];
  const std::size_t length =
      std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S%z", &when);
  std::string stamp(text, length);
  stamp.insert(stamp.size() - 2, ":");  // strftime writes +hhmm
  return stamp;
}
