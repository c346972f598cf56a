// The trace records that the model expects.
#ifndef TESTS_MODEL_TRACE_H_
#define TESTS_MODEL_TRACE_H_

#include <cstdio>
#include <string>
#include <vector>

namespace model {

// Collects the records of a schema's operations in the form of a TraceRecorder.
struct Trace {
  unsigned int mask = 0;
  std::vector<std::string> records;

  void debug(unsigned int id, const std::string &text) {
    if ((mask & 0x04000000U) != 0) {
      records.push_back("debug " + hex(id) + " kind 3400000 level c8010000 " +
                        text);
    }
  }

  static std::string hex(unsigned int number) {
    char text[20];
    std::snprintf(text, sizeof text, "%x", number);
    return text;
  }
};

// The records of one operation: on entry here, on exit by result(), which every
// way out goes through.
class Operation {
 public:
  Operation(Trace *trace, unsigned int id)
      : Operation(trace, id, {0x1000U, "3200000", 0x3000U, "21 event 1000"}) {}

  int result(int code) const {
    if ((m_trace->mask & m_form.exitMask) != 0) {
      m_trace->records.push_back("exit " + Trace::hex(m_id) + " kind " +
                                 m_form.exitKind + " code " +
                                 std::to_string(code));
    }
    return code;
  }

  void debug(const std::string &text) const { m_trace->debug(m_id, text); }

 protected:
  // Which events ask for the records, and what kind these are.
  struct Form {
    unsigned int entryMask;
    const char *entryKind;
    unsigned int exitMask;
    const char *exitKind;
  };

  Operation(Trace *trace, unsigned int id, const Form &form)
      : m_trace(trace), m_id(id), m_form(form) {
    if ((m_trace->mask & m_form.entryMask) != 0) {
      m_trace->records.push_back("entry " + Trace::hex(id) + " kind " +
                                 m_form.entryKind);
    }
  }

 private:
  Trace *const m_trace;
  const unsigned int m_id;
  const Form m_form;
};

// The same for the operations that walk tables or sets.
class Walk : public Operation {
 public:
  Walk(Trace *trace, unsigned int id)
      : Operation(trace, id,
                  {0x10000U, "32a0000", 0x30000U, "2b event 10000"}) {}
};

}  // namespace model

#endif  // TESTS_MODEL_TRACE_H_
