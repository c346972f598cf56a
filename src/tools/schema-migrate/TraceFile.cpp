#include "TraceFile.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>
#include <system_error>
#include <utility>

#include "Disk.h"
#include "Trouble.h"
#include "internal/Trace.h"

namespace {

using libschema::Function;

const char *nameOf(Function function) {
  switch (function) {
    case Function::kAttributeAttrsEqual:
      return "Attribute::attrsEqual";
    case Function::kAttributeParse:
      return "Attribute::parse";
    case Function::kAttributeDumpToFile:
      return "Attribute::dump(ofstream)";
    case Function::kAttributeDump:
      return "Attribute::dump()";
    case Function::kQORAttributeParse:
      return "QORAttribute::parse";
    case Function::kQORAttributeQorAttrsEqual:
      return "QORAttribute::qorAttrsEqual";
    case Function::kQORAttributeDumpToFile:
      return "QORAttribute::dump(ofstream)";
    case Function::kQORAttributeDump:
      return "QORAttribute::dump()";
    case Function::kObjectClassObjsEqual:
      return "ObjectClass::objsEqual";
    case Function::kObjectClassParse:
      return "ObjectClass::parse";
    case Function::kObjectClassDumpToFile:
      return "ObjectClass::dump(ofstream)";
    case Function::kObjectClassDump:
      return "ObjectClass::dump()";
    case Function::kLexanLookUp:
      return "SchemaLexan::lookUp";
    case Function::kLexanLexan:
      return "SchemaLexan::lexan";
    case Function::kLexanMatch:
      return "SchemaLexan::match";
    case Function::kLexanInsertString:
      return "SchemaLexan::insertString";
    case Function::kLexanInsertCharacter:
      return "SchemaLexan::insertCharacter";
    case Function::kLexanDumpTable:
      return "SchemaLexan::dumpTable";
    case Function::kLexanDump:
      return "SchemaLexan::dump";
    case Function::kLexanGetLineNumber:
      return "SchemaLexan::getLineNumber";
    case Function::kLexanGetFileName:
      return "SchemaLexan::getFileName";
    case Function::kLexanGetWorkingDir:
      return "SchemaLexan::getWorkingDir";
    case Function::kLexanFileIsOpen:
      return "SchemaLexan::fileIsOpen";
    case Function::kManagerDumpAttrTable:
      return "SchemaManager::dumpAttrTable";
    case Function::kManagerDumpQORAttrTable:
      return "SchemaManager::dumpQORAttrTable";
    case Function::kManagerDumpOcTable:
      return "SchemaManager::dumpOcTable";
    case Function::kManagerGetAttr:
      return "SchemaManager::getAttr";
    case Function::kManagerGetQORAttr:
      return "SchemaManager::getQORAttr";
    case Function::kManagerGetObjClass:
      return "SchemaManager::getObjClass";
    case Function::kManagerDumpUserOc:
      return "SchemaManager::dumpUserOc";
    case Function::kManagerDumpUserAt:
      return "SchemaManager::dumpUserAt";
    case Function::kManagerDumpQorOc:
      return "SchemaManager::dumpQorOc";
    case Function::kManagerDumpQorAt:
      return "SchemaManager::dumpQorAt";
    case Function::kManagerDumpSysOc:
      return "SchemaManager::dumpSysOc";
    case Function::kManagerDumpSysAt:
      return "SchemaManager::dumpSysAt";
    case Function::kManagerCompObjTables:
      return "SchemaManager::compObjTables";
    case Function::kManagerCompAttrTables:
      return "SchemaManager::compAttrTables";
    case Function::kManagerCompQORAttrTables:
      return "SchemaManager::compQORAttrTables";
    case Function::kManagerReadFile:
      return "SchemaManager::readFile";
    case Function::kManagerWriteFile:
      return "SchemaManager::writeFile";
    case Function::kManagerWriteSetToFile:
      return "SchemaManager::writeSetToFile";
    case Function::kManagerReadExcludedOids:
      return "SchemaManager::readExcludedOids";
    case Function::kManagerDelOidFromFileSet:
      return "SchemaManager::delOidFromFileSet";
    case Function::kManagerMergeSchemas:
      return "SchemaManager::mergeSchemas";
    case Function::kManagerMergeAttrs:
      return "SchemaManager::mergeAttrs";
    case Function::kManagerMergeQORAttrs:
      return "SchemaManager::mergeQORAttrs";
    case Function::kManagerMergeObjClasses:
      return "SchemaManager::mergeObjClasses";
    case Function::kManagerFindOidInSet:
      return "SchemaManager::findOidInSet";
    case Function::kManagerDumpEOids:
      return "SchemaManager::dumpEOids";
    case Function::kManagerCompSchemas:
      return "SchemaManager::compSchemas";
    case Function::kManagerCheckCollisions:
      return "SchemaManager::checkCollisions";
    case Function::kManagerModifySchema:
      return "SchemaManager::modifySchema";
    case Function::kManagerIsExcluded:
      return "SchemaManager::isExcluded";
    case Function::kManagerDelOidFromModSch:
      return "SchemaManager::delOidFromModSch";
    case Function::kManagerCheckObjClasses:
      return "SchemaManager::checkObjClasses";
    case Function::kManagerCheckAttrs:
      return "SchemaManager::checkAttrs";
    case Function::kManagerCheckQORAttrs:
      return "SchemaManager::checkQORAttrs";
    case Function::kManagerGetOcTable:
      return "SchemaManager::getOcTable";
    case Function::kManagerGetQORAttrTable:
      return "SchemaManager::getQORAttrTable";
    case Function::kManagerGetAttrTable:
      return "SchemaManager::getAttrTable";
    case Function::kManagerIsModFileEmpty:
      return "SchemaManager::isModFileEmpty";
  }
  return nullptr;
}

// The time of day with microseconds.
std::string timeOfDay() {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  const auto fraction = std::chrono::duration_cast<std::chrono::microseconds>(
                            now.time_since_epoch()) %
                        std::chrono::seconds(1);
  std::tm local{};
  localtime_r(&seconds, &local);
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d.%06d", local.tm_hour,
                local.tm_min, local.tm_sec, static_cast<int>(fraction.count()));
  return text;
}

}  // namespace

std::string functionName(unsigned int id) {
  if (const char *name = nameOf(static_cast<Function>(id))) {
    return name;
  }
  char text[16];
  std::snprintf(text, sizeof text, "0x%08x", id);
  return text;
}

TraceFile::TraceFile(std::filesystem::path path, unsigned int events)
    : m_path(std::move(path)) {
  if (typeOf(m_path, Links::kFollow) == std::filesystem::file_type::regular) {
    throw Trouble(
        kFileError,
        errorAt(m_path, 0, "expected no file there for the trace, found one"));
  }
  m_out.open(m_path);
  if (!m_out) {
    throw Trouble(kFileError,
                  errorAt(m_path, 0, "cannot open the file for the trace"));
  }
  ldtr_set_sink(&TraceFile::receive, this);
  trcEvents = events;
}

TraceFile::~TraceFile() {
  trcEvents = 0;
  ldtr_set_sink(nullptr, nullptr);
  m_out.close();
  std::error_code ignored;
  const std::filesystem::path file =
      std::filesystem::canonical(m_path, ignored);
  if (!m_complete && std::filesystem::is_regular_file(file, ignored) &&
      std::filesystem::file_size(file, ignored) == 0) {
    std::filesystem::remove(file, ignored);
  }
}

void TraceFile::close() {
  trcEvents = 0;
  m_out.close();
  if (!m_out) {
    throw Trouble(kFileError, errorAt(m_path, 0, "cannot write the trace"));
  }
  m_complete = true;
}

void TraceFile::receive(const ldtr_record &record, void *file) {
  static_cast<TraceFile *>(file)->write(record);
}

void TraceFile::write(const ldtr_record &record) {
  // With some masks there are exits without entries.
  const bool ends = record.type == ldtr_record::Type::kExit;
  if (ends && !m_entered.empty() && m_entered.back() == record.id) {
    m_entered.pop_back();
  }
  m_out << timeOfDay() << ' ' << std::string(m_entered.size() * 2, ' ');
  const std::string name = functionName(record.id);
  switch (record.type) {
    case ldtr_record::Type::kEntry:
      m_out << "> " << name << '\n';
      m_entered.push_back(record.id);
      break;
    case ldtr_record::Type::kExit:
      m_out << "< " << name << ' ' << record.code << '\n';
      break;
    case ldtr_record::Type::kDebug: {
      std::string text = record.text;
      while (!text.empty() && text.back() == '\n') {
        text.pop_back();
      }
      m_out << "= " << name << ": " << text << '\n';
      break;
    }
  }
}
