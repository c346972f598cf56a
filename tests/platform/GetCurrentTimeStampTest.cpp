#include "getCurrentTimeStamp.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace {

// Sets an environment variable, or unsets it where `value` is null, and puts
// things back in the end.
class Environment {
 public:
  Environment(const char *name, const char *value) : m_name(name) {
    if (const char *before = getenv(name)) {
      m_before = before;
    }
    put(value);
  }
  ~Environment() {
    put(m_before ? m_before->c_str() : nullptr);
    tzset();
  }

  Environment(const Environment &) = delete;
  Environment &operator=(const Environment &) = delete;

 private:
  void put(const char *value) {
    if (value == nullptr) {
      unsetenv(m_name);
    } else {
      setenv(m_name, value, 1);
    }
  }

  const char *m_name;
  std::optional<std::string> m_before;
};

std::string stampAt(const char *epoch) {
  const Environment time("SOURCE_DATE_EPOCH", epoch);
  return getCurrentTimeStamp(1);
}

// The moment that a stamp names, read without regard to the code tested; the
// offset, in seconds, goes to `offset`.
std::time_t momentOf(const std::string &stamp, long *offset) {
  std::tm when{};
  char sign = 0;
  int hours = 0;
  int minutes = 0;
  EXPECT_EQ(
      std::sscanf(stamp.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d%c%2d:%2d",
                  &when.tm_year, &when.tm_mon, &when.tm_mday, &when.tm_hour,
                  &when.tm_min, &when.tm_sec, &sign, &hours, &minutes),
      9)
      << stamp;
  when.tm_year -= 1900;
  when.tm_mon -= 1;
  *offset = (sign == '-' ? -60L : 60L) * (60L * hours + minutes);
  return timegm(&when) - *offset;
}

// The text with each digit as 0.
std::string shapeOf(std::string text) {
  for (char &c : text) {
    if (c >= '0' && c <= '9') {
      c = '0';
    }
  }
  return text;
}

// Checks that the stamp given now is the present time with the offset `zone`.
void expectNowIn(const std::string &zone) {
  const std::time_t before = std::time(nullptr);
  const std::string stamp = getCurrentTimeStamp(1);
  const std::time_t after = std::time(nullptr);

  EXPECT_EQ(shapeOf(stamp.substr(0, 19)), "0000-00-00T00:00:00");
  EXPECT_EQ(stamp.substr(19), zone) << stamp;
  long offset = 0;
  const std::time_t moment = momentOf(stamp, &offset);
  EXPECT_LE(before, moment) << stamp;
  EXPECT_LE(moment, after) << stamp;
}

TEST(GetCurrentTimeStampTest, TheEpochOfTheEnvironmentIsGivenInUtc) {
  const struct {
    const char *epoch;
    const char *stamp;
  } cases[] = {
      {"0", "1970-01-01T00:00:00+00:00"},
      {"1", "1970-01-01T00:00:01+00:00"},
      {"86399", "1970-01-01T23:59:59+00:00"},
      {"951782400", "2000-02-29T00:00:00+00:00"},
      {"1700000000", "2023-11-14T22:13:20+00:00"},
      {"0001700000000", "2023-11-14T22:13:20+00:00"},
      {"2147483647", "2038-01-19T03:14:07+00:00"},
      {"2147483648", "2038-01-19T03:14:08+00:00"},
      {"4294967296", "2106-02-07T06:28:16+00:00"},
      {"253402300799", "9999-12-31T23:59:59+00:00"},
  };
  for (const auto &each : cases) {
    EXPECT_EQ(stampAt(each.epoch), each.stamp) << each.epoch;
  }
}

TEST(GetCurrentTimeStampTest, TheEpochOfTheEnvironmentIgnoresTheTimeZone) {
  for (const char *zone : {"UTC0", "EAST-5:30", "WEST+3:30", "AAA3BBB2"}) {
    const Environment local("TZ", zone);
    tzset();
    EXPECT_EQ(stampAt("1700000000"), "2023-11-14T22:13:20+00:00") << zone;
  }
}

TEST(GetCurrentTimeStampTest, AnyOtherContentOfTheVariableIsIgnored) {
  const Environment local("TZ", "EAST-5:45");
  for (const char *epoch : {"",
                            " ",
                            "abc",
                            "-",
                            "-1",
                            "+1",
                            " 1",
                            "1 ",
                            "1\n",
                            "1x",
                            "x1",
                            "0x10",
                            "1.5",
                            "1e3",
                            "1,000",
                            "9223372036854775808",
                            "18446744073709551617",
                            "99999999999999999999999",
                            "9223372036854775807",
                            "-1700000000"}) {
    SCOPED_TRACE(epoch);
    const Environment time("SOURCE_DATE_EPOCH", epoch);
    expectNowIn("+05:45");
  }
}

TEST(GetCurrentTimeStampTest, AYearOfFiveDigitsIsIgnored) {
  const Environment local("TZ", "EAST-5:45");
  const Environment time("SOURCE_DATE_EPOCH", "253402300800");
  expectNowIn("+05:45");
}

TEST(GetCurrentTimeStampTest, GivesTheLocalTimeWithItsOffset) {
  const Environment time("SOURCE_DATE_EPOCH", nullptr);
  const struct {
    const char *zone;
    const char *offset;
  } cases[] = {
      {"UTC0", "+00:00"},      {"EAST-2", "+02:00"},    {"EAST-14", "+14:00"},
      {"EAST-5:30", "+05:30"}, {"EAST-0:30", "+00:30"}, {"WEST8", "-08:00"},
      {"WEST12", "-12:00"},    {"WEST3:30", "-03:30"},  {"WEST0:30", "-00:30"},
  };
  for (const auto &each : cases) {
    SCOPED_TRACE(each.zone);
    const Environment local("TZ", each.zone);
    expectNowIn(each.offset);
  }
}

TEST(GetCurrentTimeStampTest, DaylightSavingTimeIsPartOfTheOffset) {
  const Environment time("SOURCE_DATE_EPOCH", nullptr);
  const Environment local("TZ", "WIN3SUM2,0/0,J365/25");  // summer all year
  expectNowIn("-02:00");
}

TEST(GetCurrentTimeStampTest, EveryFormIsTheOneForm) {
  const Environment time("SOURCE_DATE_EPOCH", "1700000000");
  for (const int form : {-1, 0, 1, 2, 100}) {
    EXPECT_EQ(getCurrentTimeStamp(form), "2023-11-14T22:13:20+00:00") << form;
  }
}

TEST(GetCurrentTimeStampTest, SeveralThreadsMayAsk) {
  const Environment time("SOURCE_DATE_EPOCH", "1700000000");
  std::vector<std::vector<std::string>> stamps(4);
  std::vector<std::thread> threads;
  threads.reserve(stamps.size());
  for (std::vector<std::string> &own : stamps) {
    threads.emplace_back([&own] {
      for (int i = 0; i < 100; ++i) {
        own.push_back(getCurrentTimeStamp(1));
      }
    });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
  for (const std::vector<std::string> &own : stamps) {
    EXPECT_EQ(own, std::vector<std::string>(100, "2023-11-14T22:13:20+00:00"));
  }
}

}  // namespace
