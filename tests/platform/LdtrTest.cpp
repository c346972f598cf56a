#include "ldtr.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstddef>
#include <cwchar>
#include <functional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Type = ldtr_record::Type;

constexpr unsigned int kId = 0x53051000;

// A record, its text copied.
struct Copy {
  Type type;
  unsigned int kind;
  unsigned int id;
  unsigned int event;
  long code;
  unsigned int level;
  std::string text;
  void *data;

  bool operator==(const Copy &other) const {
    return type == other.type && kind == other.kind && id == other.id &&
           event == other.event && code == other.code && level == other.level &&
           text == other.text && data == other.data;
  }
};

std::ostream &operator<<(std::ostream &out, const Copy &copy) {
  return out << "type " << static_cast<int>(copy.type) << " kind " << copy.kind
             << " id " << copy.id << " event " << copy.event << " code "
             << copy.code << " level " << copy.level << " text \"" << copy.text
             << "\" data " << copy.data;
}

using Copies = std::vector<Copy>;

// A sink that copies each record to the Copies that are its context.
void keep(const ldtr_record &record, void *copies) {
  static_cast<Copies *>(copies)->push_back(
      {record.type, record.kind, record.id, record.event, record.code,
       record.level, record.text, record.data});
}

Copy entry(unsigned int kind, unsigned int id, void *data = nullptr) {
  return {Type::kEntry, kind, id, 0, 0, 0, "", data};
}

Copy debugRecord(unsigned int level, const std::string &text) {
  return {Type::kDebug, 0x03400000, kId, 0, 0, level, text, nullptr};
}

ldtr_formater_local speaker() { return {kId, 0x03400000, nullptr}; }

// Each test starts and ends without a sink and with an empty mask.
class LdtrTest : public testing::Test {
 protected:
  ~LdtrTest() override {
    ldtr_set_sink(nullptr, nullptr);
    trcEvents = 0;
  }

  Copies m_kept;
};

TEST_F(LdtrTest, TheMaskIsEmptyAtFirst) { EXPECT_EQ(trcEvents, 0U); }

TEST_F(LdtrTest, AnEntryRecordArrivesWithItsNumbers) {
  ldtr_set_sink(keep, &m_kept);
  ldtr_write(0x03200000, kId, nullptr);
  ldtr_write(0xFFFFFFFF, 0xFFFFFFFE, this);
  ldtr_write(0, 0, nullptr);
  EXPECT_EQ(m_kept, (Copies{entry(0x03200000, kId),
                            entry(0xFFFFFFFF, 0xFFFFFFFE, this), entry(0, 0)}));
}

TEST_F(LdtrTest, AnExitRecordArrivesWithItsNumbers) {
  ldtr_set_sink(keep, &m_kept);
  ldtr_exit_errcode(kId, 33, 4096, 0, nullptr);
  ldtr_exit_errcode(0xFFFFFFFF, 43, 0x10000, LONG_MAX, this);
  ldtr_exit_errcode(1, -1, 0xFFFFFFFF, LONG_MIN, nullptr);
  EXPECT_EQ(m_kept,
            (Copies{{Type::kExit, 33, kId, 4096, 0, 0, "", nullptr},
                    {Type::kExit, 43, ~0U, 0x10000, LONG_MAX, 0, "", this},
                    {Type::kExit, ~0U, 1, ~0U, LONG_MIN, 0, "", nullptr}}));
}

TEST_F(LdtrTest, ADebugRecordArrivesFormatted) {
  ldtr_set_sink(keep, &m_kept);
  ldtr_formater_local(kId, 0x03400000, this)
      .debug(0xC8010000, "%s: %d of %5.1f%% %c\n", "readFile", -7, 12.34, 'x');
  EXPECT_EQ(m_kept, (Copies{{Type::kDebug, 0x03400000, kId, 0, 0, 0xC8010000,
                             "readFile: -7 of  12.3% x\n", this}}));
}

TEST_F(LdtrTest, OneFormaterMayWriteSeveralRecords) {
  ldtr_set_sink(keep, &m_kept);
  ldtr_formater_local trace = speaker();
  trace.debug(1, "first");
  trace.debug(2, "%s", "");
  trace.debug(3, "third %d", 3);
  EXPECT_EQ(m_kept, (Copies{debugRecord(1, "first"), debugRecord(2, ""),
                            debugRecord(3, "third 3")}));
}

TEST_F(LdtrTest, ATextOfAnyLengthArrivesWhole) {
  ldtr_set_sink(keep, &m_kept);
  for (std::size_t length = 0; length <= 1030; ++length) {
    m_kept.clear();
    const std::string text(length, 'x');
    speaker().debug(1, "<%s>", text.c_str());
    ASSERT_EQ(m_kept, Copies{debugRecord(1, "<" + text + ">")});
  }
  m_kept.clear();
  const std::string text(1000000, 'y');
  speaker().debug(1, "%s%d", text.c_str(), 42);
  EXPECT_EQ(m_kept, Copies{debugRecord(1, text + "42")});
}

TEST_F(LdtrTest, WhatCannotBeFormattedArrivesAsItsFormat) {
  ldtr_set_sink(keep, &m_kept);
  // No locale has this character: vsnprintf fails.
  speaker().debug(1, "before %lc after", static_cast<wint_t>(0x7FFFFFFF));
  EXPECT_EQ(m_kept, Copies{debugRecord(1, "before %lc after")});
}

TEST_F(LdtrTest, TheMaskIsTheCallersBusiness) {
  ldtr_set_sink(keep, &m_kept);
  for (const unsigned int mask : {0U, 0x1000U, 0x04000000U, ~0U}) {
    SCOPED_TRACE(mask);
    trcEvents = mask;
    m_kept.clear();
    ldtr_write(1, 2, nullptr);
    ldtr_exit_errcode(3, 4, 5, 6, nullptr);
    speaker().debug(7, "eight");
    EXPECT_EQ(m_kept, (Copies{entry(1, 2),
                              {Type::kExit, 4, 3, 5, 6, 0, "", nullptr},
                              debugRecord(7, "eight")}));
    EXPECT_EQ(trcEvents, mask);
  }
}

TEST_F(LdtrTest, WithoutASinkRecordsAreDropped) {
  const auto writeAll = [] {
    ldtr_write(1, 2, nullptr);
    ldtr_exit_errcode(3, 4, 5, 6, nullptr);
    speaker().debug(7, "%s", std::string(1000, 'x').c_str());
  };
  writeAll();
  ldtr_set_sink(keep, &m_kept);
  EXPECT_TRUE(m_kept.empty());  // nothing was kept for a later sink
  ldtr_set_sink(nullptr, &m_kept);
  writeAll();
  EXPECT_TRUE(m_kept.empty());
}

TEST_F(LdtrTest, ASinkReplacesTheFormerOne) {
  Copies second;
  ldtr_set_sink(keep, &m_kept);
  ldtr_write(1, 1, nullptr);
  ldtr_set_sink(keep, &second);
  ldtr_write(2, 2, nullptr);
  ldtr_set_sink(keep, &m_kept);
  ldtr_write(3, 3, nullptr);
  EXPECT_EQ(m_kept, (Copies{entry(1, 1), entry(3, 3)}));
  EXPECT_EQ(second, Copies{entry(2, 2)});
}

TEST_F(LdtrTest, TheContextMayBeNull) {
  static int calls;
  calls = 0;
  ldtr_set_sink(
      [](const ldtr_record &, void *context) {
        ++calls;
        EXPECT_EQ(context, nullptr);
      },
      nullptr);
  ldtr_write(1, 1, nullptr);
  EXPECT_EQ(calls, 1);
}

TEST_F(LdtrTest, TheSinkIsCalledByTheThreadThatWrites) {
  std::vector<std::thread::id> callers;
  ldtr_set_sink(
      [](const ldtr_record &, void *context) {
        static_cast<std::vector<std::thread::id> *>(context)->push_back(
            std::this_thread::get_id());
      },
      &callers);
  ldtr_write(1, 1, nullptr);
  std::thread other([] { ldtr_write(2, 2, nullptr); });
  const std::thread::id otherId = other.get_id();
  other.join();
  EXPECT_EQ(callers, (std::vector{std::this_thread::get_id(), otherId}));
}

TEST_F(LdtrTest, ASinkMayWriteRecordsItself) {
  // Answers each entry record with an exit and a debug record.
  ldtr_set_sink(
      [](const ldtr_record &record, void *copies) {
        keep(record, copies);
        if (record.type == Type::kEntry) {
          ldtr_exit_errcode(record.id, 33, 4096, 1, nullptr);
          speaker().debug(record.id, "%s", std::string(300, 'x').c_str());
        }
      },
      &m_kept);
  ldtr_write(1, 2, nullptr);
  ldtr_write(3, 4, nullptr);
  const std::string text(300, 'x');
  EXPECT_EQ(m_kept, (Copies{entry(1, 2),
                            {Type::kExit, 33, 2, 4096, 1, 0, "", nullptr},
                            debugRecord(2, text),
                            entry(3, 4),
                            {Type::kExit, 33, 4, 4096, 1, 0, "", nullptr},
                            debugRecord(4, text)}));
}

TEST_F(LdtrTest, ASinkMaySetTheSink) {
  struct Both {
    Copies first;
    Copies second;
  } both;
  ldtr_set_sink(
      [](const ldtr_record &record, void *context) {
        auto *copies = static_cast<Both *>(context);
        keep(record, &copies->first);
        ldtr_set_sink(keep, &copies->second);
        ldtr_write(record.kind + 1, record.id, nullptr);
      },
      &both);
  ldtr_write(1, 7, nullptr);
  ldtr_write(3, 7, nullptr);
  EXPECT_EQ(both.first, Copies{entry(1, 7)});
  EXPECT_EQ(both.second, (Copies{entry(2, 7), entry(3, 7)}));
}

TEST_F(LdtrTest, ASinkMayRemoveItself) {
  ldtr_set_sink(
      [](const ldtr_record &record, void *copies) {
        ldtr_set_sink(nullptr, nullptr);
        keep(record, copies);
      },
      &m_kept);
  ldtr_write(1, 1, nullptr);
  ldtr_write(2, 2, nullptr);
  EXPECT_EQ(m_kept, Copies{entry(1, 1)});
}

// Runs `code` on so many threads at a time; each is given its number.
void onThreads(std::size_t count,
               const std::function<void(std::size_t)> &code) {
  std::vector<std::thread> threads;
  threads.reserve(count);
  for (std::size_t number = 0; number < count; ++number) {
    threads.emplace_back([&code, number] { code(number); });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
}

TEST_F(LdtrTest, RecordsOfSeveralThreadsArriveWholeAndEachThreadsInOrder) {
  constexpr std::size_t kThreads = 4;
  constexpr int kRounds = 500;
  // A text for each record, some longer than any buffer, none like another.
  const auto text = [](std::size_t thread, int round) {
    return std::string(static_cast<std::size_t>(round),
                       static_cast<char>('a' + thread)) +
           std::to_string(round);
  };

  ldtr_set_sink(keep, &m_kept);  // not safe for several threads at a time
  onThreads(kThreads, [&text](std::size_t thread) {
    const auto id = static_cast<unsigned int>(thread);
    for (int round = 0; round < kRounds; ++round) {
      ldtr_write(static_cast<unsigned int>(round), id, nullptr);
      ldtr_formater_local(id, 1, nullptr)
          .debug(2, "%s", text(thread, round).c_str());
      ldtr_exit_errcode(id, 33, 4096, round, nullptr);
    }
  });

  std::array<Copies, kThreads> arrived;
  for (const Copy &copy : m_kept) {
    ASSERT_LT(copy.id, kThreads);
    arrived[copy.id].push_back(copy);
  }
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    const auto id = static_cast<unsigned int>(thread);
    Copies written;
    for (int round = 0; round < kRounds; ++round) {
      written.push_back(entry(static_cast<unsigned int>(round), id));
      written.push_back(
          {Type::kDebug, 1, id, 0, 0, 2, text(thread, round), nullptr});
      written.push_back({Type::kExit, 33, id, 4096, round, 0, "", nullptr});
    }
    EXPECT_TRUE(arrived[thread] == written) << "thread " << thread;
  }
}

// What a sink must not see: two threads in it at a time.
struct Crowd {
  std::atomic<int> inside{0};
  std::atomic<int> most{0};
  std::atomic<int> calls{0};
};

TEST_F(LdtrTest, OneThreadAtATimeIsInTheSink) {
  Crowd crowd;
  ldtr_set_sink(
      [](const ldtr_record &, void *context) {
        auto *seen = static_cast<Crowd *>(context);
        const int inside = ++seen->inside;
        if (inside > seen->most) {
          seen->most = inside;
        }
        std::this_thread::yield();
        ++seen->calls;
        --seen->inside;
      },
      &crowd);
  onThreads(4, [](std::size_t) {
    for (int i = 0; i < 300; ++i) {
      ldtr_write(1, 2, nullptr);
    }
  });
  EXPECT_EQ(crowd.most, 1);
  EXPECT_EQ(crowd.calls, 4 * 300);
}

// A sink that lets the test know that it is running, and takes its time.
struct Slow {
  std::atomic<bool> entered{false};
  std::atomic<bool> left{false};
};

void dawdle(const ldtr_record &, void *context) {
  auto *slow = static_cast<Slow *>(context);
  slow->entered = true;
  for (int i = 0; i < 20000; ++i) {
    std::this_thread::yield();
  }
  slow->left = true;
}

TEST_F(LdtrTest, SettingTheSinkWaitsUntilNobodyIsInTheFormerOne) {
  Slow slow;
  ldtr_set_sink(dawdle, &slow);
  std::atomic<bool> written{false};
  std::thread writer([&written] {
    ldtr_write(1, 2, nullptr);
    written = true;
  });
  while (!slow.entered && !written) {
    std::this_thread::yield();
  }
  ldtr_set_sink(nullptr, nullptr);
  const bool left = slow.left;
  writer.join();
  EXPECT_TRUE(left);
}

TEST_F(LdtrTest, TheSinkMayBeReplacedWhileOthersWrite) {
  Copies other;
  constexpr std::size_t kRecords = 2000;
  ldtr_set_sink(keep, &m_kept);
  onThreads(2, [this, &other](std::size_t thread) {
    for (std::size_t i = 0; i < kRecords; ++i) {
      if (thread == 0) {
        ldtr_write(1, 2, nullptr);
      } else {
        ldtr_set_sink(keep, i % 2 == 0 ? &other : &m_kept);
      }
    }
  });
  m_kept.insert(m_kept.end(), other.begin(), other.end());
  EXPECT_EQ(m_kept, Copies(kRecords, entry(1, 2)));
}

}  // namespace
