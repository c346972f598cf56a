// Tracing of the library's operations.
#ifndef LIBSCHEMA_INTERNAL_TRACE_H_
#define LIBSCHEMA_INTERNAL_TRACE_H_

#include "ldtr.h"

namespace libschema {

// The function ids: component 0x53, class, operation, 0.
enum class Function : unsigned int {
  kAttributeAttrsEqual = 0x53010100,
  kAttributeParse = 0x53010200,
  kAttributeDumpToFile = 0x53010300,
  kAttributeDump = 0x53010400,

  kQORAttributeParse = 0x53020100,
  kQORAttributeQorAttrsEqual = 0x53020200,
  kQORAttributeDumpToFile = 0x53020300,
  kQORAttributeDump = 0x53020400,

  kObjectClassObjsEqual = 0x53030100,
  kObjectClassParse = 0x53030200,
  kObjectClassDumpToFile = 0x53030300,
  kObjectClassDump = 0x53030400,

  kLexanLookUp = 0x53040100,
  kLexanLexan = 0x53040200,
  kLexanMatch = 0x53040300,
  kLexanInsertString = 0x53040400,
  kLexanInsertCharacter = 0x53040500,
  kLexanDumpTable = 0x53040600,
  kLexanDump = 0x53040700,
  kLexanGetLineNumber = 0x53040800,
  kLexanGetFileName = 0x53040900,
  kLexanGetWorkingDir = 0x53040A00,
  kLexanFileIsOpen = 0x53040B00,

  kManagerDumpAttrTable = 0x53050100,
  kManagerDumpQORAttrTable = 0x53050200,
  kManagerDumpOcTable = 0x53050300,
  kManagerGetAttr = 0x53050400,
  kManagerGetQORAttr = 0x53050500,
  kManagerGetObjClass = 0x53050600,
  kManagerDumpUserOc = 0x53050700,
  kManagerDumpUserAt = 0x53050800,
  kManagerDumpQorOc = 0x53050900,
  kManagerDumpQorAt = 0x53050A00,
  kManagerDumpSysOc = 0x53050B00,
  kManagerDumpSysAt = 0x53050C00,
  kManagerCompObjTables = 0x53050D00,
  kManagerCompAttrTables = 0x53050E00,
  kManagerCompQORAttrTables = 0x53050F00,
  kManagerReadFile = 0x53051000,
  kManagerWriteFile = 0x53051100,
  kManagerWriteSetToFile = 0x53051200,
  kManagerReadExcludedOids = 0x53051300,
  kManagerDelOidFromFileSet = 0x53051400,
  kManagerMergeSchemas = 0x53051500,
  kManagerMergeAttrs = 0x53051600,
  kManagerMergeQORAttrs = 0x53051700,
  kManagerMergeObjClasses = 0x53051800,
  kManagerFindOidInSet = 0x53051900,
  kManagerDumpEOids = 0x53051A00,
  kManagerCompSchemas = 0x53051B00,
  kManagerCheckCollisions = 0x53051C00,
  kManagerModifySchema = 0x53051D00,
  kManagerIsExcluded = 0x53051E00,
  kManagerDelOidFromModSch = 0x53051F00,
  kManagerCheckObjClasses = 0x53052000,
  kManagerCheckAttrs = 0x53052100,
  kManagerCheckQORAttrs = 0x53052200,
  kManagerGetOcTable = 0x53052300,
  kManagerGetQORAttrTable = 0x53052400,
  kManagerGetAttrTable = 0x53052500,
  kManagerIsModFileEmpty = 0x53052600,
};

// What the records of a class of operations carry, and the bits of trcEvents
// that ask for them.
struct EventClass {
  unsigned int entryMask;
  unsigned int entryKind;
  unsigned int exitMask;
  int exitKind;
  unsigned int exitEvent;
};

inline constexpr EventClass kOperation = {0x1000, 0x03200000, 0x3000, 33,
                                          0x1000};

// The operations that walk whole tables or sets.
inline constexpr EventClass kTableWalk = {0x10000, 0x032A0000, 0x30000, 43,
                                          0x10000};

inline constexpr unsigned int kDebugMask = 0x04000000;
inline constexpr unsigned int kDebugKind = 0x03400000;
inline constexpr unsigned int kDebugLevel = 0xC8010000;

// Traces one call of an operation: stands on its first line, writes the entry
// record there, and the exit record on every way out, an exception included.
//
//   TraceScope trace(Function::kManagerReadFile);
//   ...
//   return trace.result(1);
//
// With the mask clear it costs a test of trcEvents at either end.
class TraceScope {
 public:
  explicit TraceScope(Function function,
                      const EventClass &eventClass = kOperation)
      : m_id(static_cast<unsigned int>(function)), m_class(eventClass) {
    if ((trcEvents & m_class.entryMask) != 0) {
      ldtr_write(m_class.entryKind, m_id, nullptr);
    }
  }

  ~TraceScope() {
    if ((trcEvents & m_class.exitMask) != 0) {
      ldtr_exit_errcode(m_id, m_class.exitKind, m_class.exitEvent, m_code,
                        nullptr);
    }
  }

  TraceScope(const TraceScope &) = delete;
  TraceScope &operator=(const TraceScope &) = delete;

  // Makes `value` the code of the exit record, which is 0 otherwise, and
  // returns it.
  template <class Integer>
  Integer result(Integer value) {
    m_code = static_cast<long>(value);
    return value;
  }

  // Debug messages are written so, which leaves the format to the compiler's
  // check and formats nothing while nobody asks for it:
  //   if (trace.debugging()) {
  //     trace.record().debug(kDebugLevel, "readFile: ... %s\n", name.c_str());
  //   }
  static bool debugging() { return (trcEvents & kDebugMask) != 0; }
  ldtr_formater_local record() const {
    return ldtr_formater_local(m_id, kDebugKind, nullptr);
  }

 private:
  const unsigned int m_id;
  const EventClass &m_class;
  long m_code = 0;
};

}  // namespace libschema

#endif  // LIBSCHEMA_INTERNAL_TRACE_H_
