#include "SchemaManager.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <locale>
#include <memory>
#include <utility>
#include <vector>

#include "SchemaLexan.h"
#include "getCurrentTimeStamp.h"
#include "internal/AscendingSearch.h"
#include "internal/Comparison.h"
#include "internal/Definition.h"
#include "internal/Kinds.h"
#include "internal/Merge.h"
#include "internal/Reading.h"
#include "internal/Trace.h"

using libschema::findIn;
using libschema::Function;
using libschema::kDebugLevel;
using libschema::kTableWalk;
using libschema::TraceScope;

namespace {

constexpr unsigned int kFailed = 1;
constexpr unsigned int kNoSuchOid = 32;
constexpr unsigned int kNoSuchFile = 89;

// There is nothing to hand out for a key that is in no table, and an empty
// definition would pass for one that was found.
[[noreturn]] void abortLookUp(const char *operation, const std::string &key) {
  std::cerr << operation << ": there is no definition with the key '" << key
            << "'" << std::endl;
  std::abort();
}

// Skips the rest of a line. Kept on purpose: the end of the file does not end
// the line, so that a last line without a newline is skipped for ever. A read
// error throws.
void skipLine(std::istream *in) {
  char c = 0;
  do {
    in->get(c);
  } while (c != '\n');
}

// Adds the OIDs in the file `path` to `oids`. False when the file cannot be
// opened.
bool readOidList(const std::string &path, std::set<std::string> *oids) {
  std::ifstream in(path);
  if (!in.good()) {
    return false;
  }
  in.imbue(std::locale::classic());  // it decides what is white space
  // The stream would take a word that finds no memory for the end of the list.
  in.exceptions(std::ios::badbit);
  try {
    std::string word;
    // Kept on purpose: a word that the end of the file touches is not taken.
    while (in >> word && !in.eof()) {
      if (word.find('#') == std::string::npos) {
        oids->insert(word);
      } else {
        skipLine(&in);
      }
    }
  } catch (const std::ios::failure &) {
    // A read error passes for the end of the file.
  }
  return true;
}

// `none` for an empty table; otherwise `heading` and the OID and the names of
// each definition.
template <class Definition>
std::string report(const char *none, const char *heading,
                   const std::map<std::string, Definition *> &table) {
  if (table.empty()) {
    return none;
  }
  std::string text = heading;
  for (const auto &entry : table) {
    text += entry.second->getOidAndName();
  }
  return text;
}

// Erases the entries, which are in the order of the table. When most are to go,
// the others change to a table of their own, which takes less balancing.
template <class Table>
void eraseAll(const std::vector<typename Table::iterator> &entries,
              Table *table) {
  if (entries.size() < table->size() / 2) {
    for (const auto &entry : entries) {
      table->erase(entry);
    }
    return;
  }
  Table others;
  auto erased = entries.begin();
  for (auto entry = table->begin(); entry != table->end();) {
    const auto current = entry++;
    if (erased != entries.end() && *erased == current) {
      ++erased;
    } else {
      others.insert(others.end(), table->extract(current));
    }
  }
  table->swap(others);
}

// Prints `header`, and the key and the fields of each definition.
template <class Definition>
void printTable(const char *header,
                const std::map<std::string, Definition *> &table) {
  std::cout << header;
  for (const auto &entry : table) {
    std::cout << '\n' << entry.first << '\t';
    entry.second->dump();
    std::cout << '\n';
  }
  std::cout << '\n';
}

// Prints `header` and the OIDs, one a line.
void printOids(const char *header, const std::set<std::string> &oids) {
  std::cout << header;
  for (const std::string &oid : oids) {
    std::cout << oid << '\n';
  }
  std::cout << '\n';
}

}  // namespace

struct SchemaManager::File {
  const char *name;
  OidSet SchemaManager::*oids;  // where its OIDs are recorded; null: nowhere
  bool searched;  // whether findOidInSet() and delOidFromFileSet() look there
};

const SchemaManager::File SchemaManager::kFiles[] = {
    {"V3.user.oc", &SchemaManager::m_user_oc, true},
    {"V3.user.at", &SchemaManager::m_user_at, true},
    {"V3.qor.oc", &SchemaManager::m_qor_oc, true},
    {"V3.qor.at", &SchemaManager::m_qor_at, true},
    {"V3.system.oc", &SchemaManager::m_sys_oc, true},
    {"V3.system.at", &SchemaManager::m_sys_at, true},
    {"V3.modifiedschema", &SchemaManager::m_mod_schema, false},
    {"V3.config.at", nullptr, false},
    {"V3.config.oc", nullptr, false},
};

// Null when there is no file of that name.
const SchemaManager::File *SchemaManager::findFile(const std::string &name) {
  for (const File &file : kFiles) {
    if (name == file.name) {
      return &file;
    }
  }
  return nullptr;
}

const std::set<std::string> *SchemaManager::recordedOids(
    const std::string &fileName) const {
  const File *file = findFile(fileName);
  if (file == nullptr || file->oids == nullptr) {
    return nullptr;
  }
  return &(this->*file->oids);
}

SchemaManager::SchemaManager(std::string workingDir)
    : m_lexan(nullptr), m_working_dir(std::move(workingDir)) {}

SchemaManager::~SchemaManager() {
  deleteOwned(m_attr_table);
  deleteOwned(m_oc_table);
  deleteOwned(m_qor_attr_table);
}

template <class Definition>
void SchemaManager::deleteOwned(const Table<Definition> &table) {
  for (const auto &entry : table) {
    if (!m_kept.contains(entry.second)) {
      delete entry.second;
    }
  }
}

// The definition that a lookup finds. It is recorded as the lookup's.
template <class Kind>
typename Kind::Definition *SchemaManager::lookUp(const std::string &key) {
  TraceScope trace(Kind::kLookUp);
  auto *found = Kind::find(this, key);
  if (found == nullptr) {
    abortLookUp(Kind::kLookUpName, key);
  }
  return found;
}

Attribute SchemaManager::getAttr(std::string key) {
  return *lookUp<AttributeKind>(key);
}

QORAttribute SchemaManager::getQORAttr(std::string oid) {
  return *lookUp<StorageKind>(oid);
}

ObjectClass SchemaManager::getObjClass(std::string key) {
  return *lookUp<ObjectClassKind>(key);
}

std::string SchemaManager::convert(std::string s) {
  return libschema::lowerCase(std::move(s));
}

unsigned int SchemaManager::readFile(std::string fileName) {
  TraceScope trace(Function::kManagerReadFile);
  auto lexan = std::make_unique<SchemaLexan>(m_working_dir, fileName);
  m_lexan = lexan.get();
  const unsigned int result = readOpenedFile(fileName, &trace);
  if (result != 0) {
    m_lexan->closeFile();
    static_cast<void>(lexan.release());  // kept on purpose: never freed
  }
  return trace.result(result);
}

unsigned int SchemaManager::readOpenedFile(const std::string &fileName,
                                           TraceScope *trace) {
  if (!m_lexan->fileIsOpen()) {
    if (trace->debugging()) {
      trace->record().debug(kDebugLevel,
                            "readFile: Could not open file to be parsed\n");
    }
    return kFailed;
  }
  const File *file = findFile(fileName);
  if (file == nullptr) {
    if (trace->debugging()) {
      trace->record().debug(kDebugLevel,
                            "readFile: Unexpected file name given, %s\n",
                            fileName.c_str());
    }
    return kNoSuchFile;
  }
  Reading reading(this, file->oids == nullptr ? nullptr : &(this->*file->oids));
  if (!reading.run()) {
    if (trace->debugging()) {
      trace->record().debug(kDebugLevel,
                            "readFile: There was an error parsing the file, "
                            "%s.\n",
                            fileName.c_str());
    }
    return kFailed;
  }
  if (trace->debugging()) {
    trace->record().debug(kDebugLevel,
                          "readFile: Successfully parsed the file, %s.\n",
                          fileName.c_str());
  }
  return 0;
}

unsigned int SchemaManager::writeFile(std::string dir, std::string fileName) {
  TraceScope trace(Function::kManagerWriteFile);
  const File *file = findFile(fileName);
  if (file == nullptr || file->oids == nullptr) {
    if (trace.debugging()) {
      trace.record().debug(kDebugLevel,
                           "writeFile: Unexpected file name given, %s\n",
                           fileName.c_str());
    }
    return trace.result(kNoSuchFile);
  }
  return trace.result(writeSet(this->*file->oids, dir + "/" + fileName));
}

unsigned int SchemaManager::writeSetToFile(std::set<std::string> oids,
                                           std::string path) {
  return writeSet(oids, path);
}

unsigned int SchemaManager::writeSet(const OidSet &oids,
                                     const std::string &path) {
  TraceScope trace(Function::kManagerWriteSetToFile, kTableWalk);
  std::ofstream out(path);
  if (!out) {
    if (trace.debugging()) {
      trace.record().debug(kDebugLevel,
                           "writeSetToFile: Unable to open file for writing, "
                           "%s.\n",
                           path.c_str());
    }
    return trace.result(kFailed);
  }
  if (!oids.empty()) {
    out << "# File generated by 6.0 migration " << getCurrentTimeStamp(1)
        << '\n';
  }
  libschema::AscendingSearch objectClasses(&m_oc_oid_table);
  libschema::AscendingSearch attributes(&m_attr_oid_table);
  libschema::AscendingSearch storages(&m_qor_attr_table);
  for (const std::string &oid : oids) {
    const auto objectClass = objectClasses.find(oid);
    if (objectClass != m_oc_oid_table.end()) {
      objectClass->second->dump(out);
      continue;
    }
    const auto attribute = attributes.find(oid);
    if (attribute == m_attr_oid_table.end()) {
      continue;
    }
    attribute->second->dump(out);
    const auto storage = storages.find(oid);
    if (storage != m_qor_attr_table.end()) {
      { TraceScope lookUp(StorageKind::kLookUp); }  // as getQORAttr() does
      storage->second->dump(out);
    }
  }
  return trace.result(0U);
}

unsigned int SchemaManager::readExcludedOids(std::string path) {
  TraceScope trace(Function::kManagerReadExcludedOids);
  if (!readOidList(path, &m_excluded_oids)) {
    if (trace.debugging()) {
      trace.record().debug(kDebugLevel,
                           "readExcludedOids: Unable to open file for reading, "
                           "%s.\n",
                           path.c_str());
    }
    return trace.result(kFailed);
  }
  return trace.result(0U);
}

unsigned int SchemaManager::isExcluded(std::string oid) {
  return findExcluded(oid);
}

unsigned int SchemaManager::findExcluded(const std::string &oid) {
  TraceScope trace(Function::kManagerIsExcluded, kTableWalk);
  return trace.result(m_excluded_oids.count(oid) != 0 ? 1U : 0U);
}

unsigned int SchemaManager::delOidFromFileSet(std::string oid) {
  return removeFromFileSet(oid);
}

unsigned int SchemaManager::removeFromFileSet(const std::string &oid) {
  TraceScope trace(Function::kManagerDelOidFromFileSet, kTableWalk);
  for (const File &file : kFiles) {
    if (!file.searched) {
      continue;
    }
    OidSet &oids = this->*file.oids;
    const auto found = oids.find(oid);
    if (found != oids.end()) {
      oids.erase(found);
      return trace.result(0U);
    }
  }
  if (trace.debugging()) {
    trace.record().debug(kDebugLevel,
                         "delOidFromFileSet: Unable to delete OID from set, "
                         "%s.\n",
                         oid.c_str());
  }
  return trace.result(kNoSuchOid);
}

unsigned int SchemaManager::modifySchema(std::string path) {
  TraceScope trace(Function::kManagerModifySchema);
  OidSet oids;
  if (!readOidList(path, &oids)) {
    if (trace.debugging()) {
      trace.record().debug(kDebugLevel,
                           "modifySchema: Unable to open file, %s, for "
                           "reading.\n",
                           path.c_str());
    }
    return trace.result(kFailed);
  }
  for (const std::string &oid : oids) {
    if (m_oc_oid_table.count(oid) != 0) {
      withdraw<ObjectClassKind>(oid);
    } else if (m_attr_oid_table.count(oid) != 0) {
      withdraw<AttributeKind>(oid);
    } else if (m_qor_attr_table.count(oid) != 0) {
      removeOwned<StorageKind>(m_qor_attr_table.find(oid));
      removeFromModSch(oid);
    }
  }
  return trace.result(0U);
}

// Takes the definition that its OID leads to out of the table of names.
template <class Kind>
void SchemaManager::withdraw(const std::string &oid) {
  auto &table = Kind::owning(this);
  const auto entry = table.find(Kind::key(lookUp<Kind>(oid)));
  if (entry != table.end()) {
    removeOwned<Kind>(entry);
  }
  removeFromModSch(oid);
}

unsigned int SchemaManager::delOidFromModSch(std::string oid) {
  return removeFromModSch(oid);
}

unsigned int SchemaManager::removeFromModSch(const std::string &oid) {
  TraceScope trace(Function::kManagerDelOidFromModSch, kTableWalk);
  return trace.result(m_mod_schema.erase(oid) != 0 ? 0U : kNoSuchOid);
}

unsigned int SchemaManager::isModFileEmpty() {
  TraceScope trace(Function::kManagerIsModFileEmpty);
  return trace.result(m_mod_schema.empty() ? 1U : 0U);
}

unsigned int SchemaManager::compSchemas(SchemaManager *other) {
  TraceScope trace(Function::kManagerCompSchemas);
  compAttrTables(other);
  compQORAttrTables(other);
  compObjTables(other);
  return trace.result(1U);
}

unsigned int SchemaManager::compAttrTables(SchemaManager *other) {
  TraceScope trace(Function::kManagerCompAttrTables, kTableWalk);
  Comparison<AttributeKind>(this, other).run();
  return trace.result(1U);
}

unsigned int SchemaManager::compQORAttrTables(SchemaManager *other) {
  TraceScope trace(Function::kManagerCompQORAttrTables, kTableWalk);
  Comparison<StorageKind>(this, other).run();
  return trace.result(1U);
}

unsigned int SchemaManager::compObjTables(SchemaManager *other) {
  TraceScope trace(Function::kManagerCompObjTables, kTableWalk);
  Comparison<ObjectClassKind>(this, other).run();
  return trace.result(1U);
}

// Takes an entry out of its owning table, and deletes the definition unless its
// OID or another schema still leads to it.
template <class Kind>
void SchemaManager::removeOwned(Entry<Kind> entry) {
  auto *definition = entry->second;
  const auto *byOid = Kind::byOid(this);
  const bool reachable =
      byOid != nullptr && findIn(*byOid, definition->oid()) == definition;
  if (reachable) {
    m_kept.keep(definition);
  }
  Kind::owning(this).erase(entry);
  if (!reachable && !m_kept.drop(definition)) {
    delete definition;
  }
}

// The same for many entries, in the order of the table; nothing has left it
// when this throws. Where OIDs may lead to the definitions, all of these are
// kept until the manager goes, since to look up each takes longer. Returns them
// in the order of their addresses: it is mostly that in which they were read.
template <class Kind>
std::vector<typename Kind::Definition *> SchemaManager::removeOwned(
    const std::vector<Entry<Kind>> &entries) {
  std::vector<typename Kind::Definition *> removed(entries.size());
  std::transform(entries.begin(), entries.end(), removed.begin(),
                 [](Entry<Kind> entry) { return entry->second; });
  std::sort(removed.begin(), removed.end(), std::less<>());
  if (Kind::byOid(this) != nullptr) {
    for (auto *definition : removed) {
      m_kept.keep(definition);
    }
    eraseAll(entries, &Kind::owning(this));
    return removed;
  }
  eraseAll(entries, &Kind::owning(this));
  for (auto *definition : removed) {
    if (!m_kept.drop(definition)) {
      delete definition;
    }
  }
  return {};
}

unsigned int SchemaManager::mergeSchemas(SchemaManager *old) {
  TraceScope trace(Function::kManagerMergeSchemas);
  const bool done = mergeAttrs(old) != 0 && mergeQORAttrs(old) != 0 &&
                    mergeObjClasses(old) != 0;
  return trace.result(done ? 1U : 0U);
}

// A schema merged into itself is merged already; so in all three.
unsigned int SchemaManager::mergeAttrs(SchemaManager *old) {
  TraceScope trace(Function::kManagerMergeAttrs, kTableWalk);
  const bool done = old == this || Merge<AttributeKind>(this, old).run();
  if (!done && trace.debugging()) {
    trace.record().debug(kDebugLevel,
                         "mergeAttrs: findOidInSet returned NULL\n");
  }
  return trace.result(done ? 1U : 0U);
}

unsigned int SchemaManager::mergeQORAttrs(SchemaManager *old) {
  TraceScope trace(Function::kManagerMergeQORAttrs, kTableWalk);
  const bool done = old == this || Merge<StorageKind>(this, old).run();
  if (!done && trace.debugging()) {
    trace.record().debug(kDebugLevel,
                         "mergeQORAttrs: findOidInSet returned NULL\n");
  }
  return trace.result(done ? 1U : 0U);
}

unsigned int SchemaManager::mergeObjClasses(SchemaManager *old) {
  TraceScope trace(Function::kManagerMergeObjClasses, kTableWalk);
  const bool done = old == this || Merge<ObjectClassKind>(this, old).run();
  if (!done && trace.debugging()) {
    trace.record().debug(kDebugLevel,
                         "mergeObjClasses: findOidInSet returned NULL\n");
  }
  return trace.result(done ? 1U : 0U);
}

std::set<std::string> *SchemaManager::findOidInSet(SchemaManager *old,
                                                   std::string oid) {
  return findSet(old, oid);
}

SchemaManager::OidSet *SchemaManager::findSet(SchemaManager *old,
                                              const std::string &oid) {
  TraceScope trace(Function::kManagerFindOidInSet, kTableWalk);
  for (const File &file : kFiles) {
    if (file.searched && (old->*file.oids).count(oid) != 0) {
      return &(this->*file.oids);
    }
  }
  if (trace.debugging()) {
    trace.record().debug(kDebugLevel,
                         "findOidInSet: Unable to find OID, %s, in set.\n",
                         oid.c_str());
  }
  return nullptr;
}

unsigned int SchemaManager::checkCollisions(SchemaManager *other) {
  TraceScope trace(Function::kManagerCheckCollisions);
  checkObjClasses(other);
  checkAttrs(other);
  checkQORAttrs(other);
  return trace.result(1U);
}

unsigned int SchemaManager::checkObjClasses(SchemaManager *other) {
  TraceScope trace(Function::kManagerCheckObjClasses, kTableWalk);
  return trace.result(checkTable<ObjectClassKind>(other));
}

unsigned int SchemaManager::checkAttrs(SchemaManager *other) {
  TraceScope trace(Function::kManagerCheckAttrs, kTableWalk);
  return trace.result(checkTable<AttributeKind>(other));
}

unsigned int SchemaManager::checkQORAttrs(SchemaManager *other) {
  TraceScope trace(Function::kManagerCheckQORAttrs, kTableWalk);
  return trace.result(checkTable<StorageKind>(other));
}

// As in a comparison, the lookups are recorded and not made.
template <class Kind>
unsigned int SchemaManager::checkTable(SchemaManager *other) {
  auto &mine = Kind::owning(this);
  auto &theirs = Kind::owning(other);
  libschema::AscendingSearch search(&theirs);

  std::vector<Entry<Kind>> removals;  // the walk changes nothing
  for (auto entry = mine.begin(); entry != mine.end(); ++entry) {
    { TraceScope trace(Kind::kLookUp); }
    if (search.find(entry->first) == theirs.end() &&
        !other->hasKey(entry->second->oid())) {
      removals.push_back(entry);
    }
  }
  removeOwned<Kind>(removals);
  return 1;
}

// Whether an owning table files something under `oid`. Kept on purpose: the
// tables of attribute types and object classes are those of names, where an OID
// is a key only if a definition has it for a name.
bool SchemaManager::hasKey(const std::string &oid) const {
  return m_oc_table.count(oid) != 0 || m_attr_table.count(oid) != 0 ||
         m_qor_attr_table.count(oid) != 0;
}

std::string SchemaManager::getOcTable() {
  TraceScope trace(Function::kManagerGetOcTable);
  return report("No objectClasses definition collisions found.\n",
                "The following objectClasses definition collisions found:\n",
                m_oc_table);
}

// The heading differs from the others on purpose.
std::string SchemaManager::getAttrTable() {
  TraceScope trace(Function::kManagerGetAttrTable);
  return report("No attributeTypes definition collisions found.\n",
                "The following attributeTypes collisions found:\n",
                m_attr_table);
}

std::string SchemaManager::getQORAttrTable() {
  TraceScope trace(Function::kManagerGetQORAttrTable);
  return report(
      "No QORAttributeTypes definition collisions found.\n",
      "The following QORAttributeTypes definition collisions found:\n",
      m_qor_attr_table);
}

void SchemaManager::dumpAttrTable() {
  TraceScope trace(Function::kManagerDumpAttrTable);
  printTable("AttributeTable contains:\nKey\nValue\n", m_attr_table);
}

void SchemaManager::dumpQORAttrTable() {
  TraceScope trace(Function::kManagerDumpQORAttrTable);
  printTable("QORAttributeTable contains:\nKey\nValue\n", m_qor_attr_table);
}

// The tab between Key and Value is kept on purpose.
void SchemaManager::dumpOcTable() {
  TraceScope trace(Function::kManagerDumpOcTable);
  printTable("ObjectClassTable contains:\nKey\tValue\n", m_oc_table);
}

void SchemaManager::dumpUserOc() {
  TraceScope trace(Function::kManagerDumpUserOc);
  printOids("OIDs from the V3.user.oc file\n", m_user_oc);
}

void SchemaManager::dumpUserAt() {
  TraceScope trace(Function::kManagerDumpUserAt);
  printOids("OIDs from the V3.user.at file\n", m_user_at);
}

void SchemaManager::dumpQorOc() {
  TraceScope trace(Function::kManagerDumpQorOc);
  printOids("OIDs from the V3.qor.oc file\n", m_qor_oc);
}

void SchemaManager::dumpQorAt() {
  TraceScope trace(Function::kManagerDumpQorAt);
  printOids("OIDs from the V3.qor.at file\n", m_qor_at);
}

void SchemaManager::dumpSysOc() {
  TraceScope trace(Function::kManagerDumpSysOc);
  printOids("OIDs from the V3.system.oc file\n", m_sys_oc);
}

void SchemaManager::dumpSysAt() {
  TraceScope trace(Function::kManagerDumpSysAt);
  printOids("OIDs from the V3.system.at file\n", m_sys_at);
}

void SchemaManager::dumpEOids() {
  TraceScope trace(Function::kManagerDumpEOids);
  printOids("excluded oids\n", m_excluded_oids);
}
