// Catches trace records.
#ifndef TESTS_SUPPORT_TRACERECORDER_H_
#define TESTS_SUPPORT_TRACERECORDER_H_

#include <string>
#include <vector>

#include "ldtr.h"

// The bits of trcEvents.
constexpr unsigned int kTraceEntry = 0x1000;       // entry and exit
constexpr unsigned int kTraceExit = 0x2000;        // exit alone
constexpr unsigned int kTraceWalkEntry = 0x10000;  // the same of the operations
constexpr unsigned int kTraceWalkExit = 0x20000;   // that walk tables or sets
constexpr unsigned int kTraceDebug = 0x04000000;

// While it exists, trcEvents is `mask` and the records of all threads are kept.
class TraceRecorder {
 public:
  explicit TraceRecorder(unsigned int mask);
  ~TraceRecorder();

  TraceRecorder(const TraceRecorder &) = delete;
  TraceRecorder &operator=(const TraceRecorder &) = delete;

  // The records so far, a text each, numbers in hexadecimal but for the code:
  //   "entry 53051000 kind 3200000"
  //   "exit 53051000 kind 21 event 1000 code 0"
  //   "debug 53051000 kind 3400000 level c8010000 readFile: Could not ...\n"
  // (33 is 21 and 43 is 2b.) A record that carries data that is not null ends
  // in " data".
  const std::vector<std::string> &records() const { return m_records; }

  // The texts of the debug records alone.
  std::vector<std::string> messages() const;

 private:
  static void receive(const ldtr_record &record, void *recorder);

  std::vector<std::string> m_records;
};

#endif  // TESTS_SUPPORT_TRACERECORDER_H_
