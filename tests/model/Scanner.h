// The scanner of schema files once more, slow and obvious, on a text in memory.
#ifndef TESTS_MODEL_SCANNER_H_
#define TESTS_MODEL_SCANNER_H_

#include <cstddef>
#include <string>

#include "model/Trace.h"

namespace model {

// Token codes. A single character is its own code.
enum : int {
  kId = 259,
  kDone = 260,
  kObjectClasses = 1002,
  kName = 1003,
  kDesc = 1004,
  kSup = 1005,
  kAuxiliary = 1006,
  kMust = 1007,
  kMay = 1008,
  kStructural = 1009,
  kAttributeTypes = 1010,
  kEquality = 1011,
  kSyntax = 1012,
  kSingleValue = 1013,
  kUsage = 1014,
  kNoUserModification = 1015,
  kQorAttributeTypes = 1016,
  kAccessClass = 1017,
  kDbName = 1018,
  kSubstr = 1019,
  kOrdering = 1020,
  kCollective = 1021,
  kObsolete = 1022,
  kAbstract = 1023,
  kLength = 1024,
  kApprox = 1025,
  kReverse = 1026,
  kNumber = 2024,
  kNumberLen = 2025,
  kNumberBad = 2026,
};

class Scanner {
 public:
  // `trace` is not owned and must outlive the scanner.
  Scanner(std::string text, Trace *trace);

  // Reads the next token and returns its code.
  int lexan();
  // Goes on to the next token when the current one is `token`.
  void match(int token);

  int current() const { return m_current; }
  int index() const { return m_index; }
  int line() const { return m_line; }
  // The text of the current token; empty when it has none.
  std::string text() const;

 private:
  // Reads a character into m_c; at the end of the text m_c stays as it is.
  bool read();
  int scan();
  bool skipLayout();
  int number();
  int word();
  int resolve(const std::string &word, int code);
  int find(const std::string &word) const;

  const std::string m_text;
  Trace *const m_trace;
  std::size_t m_at = 0;
  bool m_end = false;  // a character was wanted where there was none
  char m_c = '\0';
  int m_line = 1;
  int m_index = -1;
  int m_current = -1;
  // The entry behind the keywords, once there is one.
  bool m_hasEntry = false;
  std::string m_entry;
  int m_entryCode = 0;
};

}  // namespace model

#endif  // TESTS_MODEL_SCANNER_H_
