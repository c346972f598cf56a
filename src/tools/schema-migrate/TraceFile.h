// A trace of the library's operations as text.
#ifndef SCHEMA_MIGRATE_TRACEFILE_H_
#define SCHEMA_MIGRATE_TRACEFILE_H_

#include <filesystem>
#include <fstream>
#include <vector>

#include "ldtr.h"

// While it exists, the library's trace records are written to a file, a line
// each: the time, two blanks for each operation that the record lies in, and
//   > SchemaManager::readFile            an operation begins
//   < SchemaManager::readFile 0          it ends, with its result
//   = SchemaManager::readFile: text      it says something
// There can be one at a time, and only one thread may be traced.
class TraceFile {
 public:
  // Makes the file. `events` is what trcEvents becomes. Throws Trouble when
  // there is a regular file of that name, which could be one of the inputs, or
  // when the file cannot be opened.
  TraceFile(std::filesystem::path path, unsigned int events);
  // Ends the trace. Unless close() has done so, the file is removed if nothing
  // was written to it.
  ~TraceFile();

  TraceFile(const TraceFile &) = delete;
  TraceFile &operator=(const TraceFile &) = delete;

  // Ends the trace. Throws Trouble when something could not be written.
  void close();

  // Entries, exits and messages of all operations.
  static constexpr unsigned int kAllEvents = 0x04033000;

 private:
  static void receive(const ldtr_record &record, void *file);
  void write(const ldtr_record &record);

  std::filesystem::path m_path;
  std::ofstream m_out;
  bool m_complete = false;  // close() has succeeded
  // The operations whose entry has been written and whose exit has not.
  std::vector<unsigned int> m_entered;
};

// "SchemaManager::readFile" and so on for a function id; the id in hexadecimal
// for one that the library does not have.
std::string functionName(unsigned int id);

#endif  // SCHEMA_MIGRATE_TRACEFILE_H_
