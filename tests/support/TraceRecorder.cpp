#include "support/TraceRecorder.h"

#include <sstream>

namespace {

const char kTextStart[] = " level c8010000 ";

}  // namespace

TraceRecorder::TraceRecorder(unsigned int mask) {
  ldtr_set_sink(&TraceRecorder::receive, this);
  trcEvents = mask;
}

TraceRecorder::~TraceRecorder() {
  trcEvents = 0;
  ldtr_set_sink(nullptr, nullptr);
}

std::vector<std::string> TraceRecorder::messages() const {
  std::vector<std::string> texts;
  for (const std::string &record : m_records) {
    if (record.rfind("debug ", 0) == 0) {
      texts.push_back(
          record.substr(record.find(kTextStart) + sizeof kTextStart - 1));
    }
  }
  return texts;
}

void TraceRecorder::receive(const ldtr_record &record, void *recorder) {
  std::ostringstream text;
  text << std::hex;
  switch (record.type) {
    case ldtr_record::Type::kEntry:
      text << "entry " << record.id << " kind " << record.kind;
      break;
    case ldtr_record::Type::kExit:
      text << "exit " << record.id << " kind " << record.kind << " event "
           << record.event << " code " << std::dec << record.code;
      break;
    case ldtr_record::Type::kDebug:
      text << "debug " << record.id << " kind " << record.kind << " level "
           << record.level << ' ' << record.text;
      break;
  }
  if (record.data != nullptr) {
    text << " data";
  }
  static_cast<TraceRecorder *>(recorder)->m_records.push_back(text.str());
}
