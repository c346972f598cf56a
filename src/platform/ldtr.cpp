#include "ldtr.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <mutex>
#include <new>
#include <string>

unsigned int trcEvents = 0;

namespace {

struct Sink {
  // Recursive, so that a sink may call traced code.
  std::recursive_mutex mutex;
  ldtr_sink function = nullptr;
  void *context = nullptr;
};

// Never destroyed: objects that outlive main() may still be traced. Not on the
// heap: records are written also when memory has run out.
Sink &theSink() {
  alignas(Sink) static unsigned char storage[sizeof(Sink)];
  static Sink *const sink = new (storage) Sink;
  return *sink;
}

void deliver(const ldtr_record &record) {
  Sink &sink = theSink();
  const std::lock_guard<std::recursive_mutex> lock(sink.mutex);
  if (sink.function != nullptr) {
    sink.function(record, sink.context);
  }
}

}  // namespace

void ldtr_set_sink(ldtr_sink function, void *context) {
  Sink &sink = theSink();
  const std::lock_guard<std::recursive_mutex> lock(sink.mutex);
  sink.function = function;
  sink.context = context;
}

void ldtr_write(unsigned int kind, unsigned int id, void *data) {
  deliver({ldtr_record::Type::kEntry, kind, id, 0, 0, 0, "", data});
}

void ldtr_exit_errcode(unsigned int id, int kind, unsigned int event, long code,
                       void *data) {
  deliver({ldtr_record::Type::kExit, static_cast<unsigned int>(kind), id, event,
           code, 0, "", data});
}

ldtr_formater_local::ldtr_formater_local(unsigned int id, unsigned int kind,
                                         void *data)
    : m_id(id), m_kind(kind), m_data(data) {}

void ldtr_formater_local::debug(unsigned int level, const char *format, ...) {
  char brief[256];
  std::va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(brief, sizeof brief, format, arguments);
  va_end(arguments);
  ldtr_record record{
      ldtr_record::Type::kDebug, m_kind, m_id, 0, 0, level, brief, m_data};
  if (length < 0) {
    record.text = format;  // not formattable: the format says more than nothing
  }
  std::string whole;
  if (length >= static_cast<int>(sizeof brief)) {
    whole.resize(static_cast<std::size_t>(length));
    va_start(arguments, format);
    std::vsnprintf(whole.data(), whole.size() + 1, format, arguments);
    va_end(arguments);
    record.text = whole.c_str();
  }
  deliver(record);
}
