#include "SchemaManager.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <locale>
#include <memory>
#include <utility>
#include <vector>

#include "Definition.h"
#include "SchemaLexan.h"
#include "Trace.h"
#include "getCurrentTimeStamp.h"

using libschema::Function;
using libschema::kDebugLevel;
using libschema::kTableWalk;
using libschema::TraceScope;

namespace {

constexpr unsigned int kCannotOpenOrParse = 1;
constexpr unsigned int kNoSuchOid = 32;
constexpr unsigned int kNoSuchFile = 89;

// The definition filed under `key`, or null.
template <class Definition>
Definition *findIn(const std::map<std::string, Definition *> &table,
                   const std::string &key) {
  const auto entry = table.find(key);
  return entry == table.end() ? nullptr : entry->second;
}

// There is nothing to hand out for a key that is in no table, and an empty
// definition would pass for one that was found.
[[noreturn]] void abortLookUp(const char *operation, const std::string &key) {
  std::cerr << operation << ": there is no definition with the key '" << key
            << "'" << std::endl;
  std::abort();
}

bool beginsSection(int token) {
  return token == TOK_ATTRIBUTETYPES || token == TOK_OBJECTCLASSES ||
         token == TOK_QORATTRIBUTETYPES;
}

// Skips the rest of a line. Kept on purpose: the end of the file does not end
// the line, so that a last line without a newline is skipped for ever.
void skipLine(std::istream *in) {
  char c = 0;
  do {
    in->get(c);
  } while (c != '\n' && !in->bad());
}

// Adds the OIDs in the file `path` to `oids`. False when the file cannot be
// opened.
bool readOidList(const std::string &path, std::set<std::string> *oids) {
  std::ifstream in(path);
  if (!in.good()) {
    return false;
  }
  in.imbue(std::locale::classic());
  std::string word;
  // Kept on purpose: a word that the end of the file touches is not taken.
  while (in >> word && !in.eof()) {
    if (word.find('#') == std::string::npos) {
      oids->insert(word);
    } else {
      skipLine(&in);
    }
  }
  return true;
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

struct SchemaManager::AttributeKind {
  using Definition = Attribute;
  static constexpr Function kLookUp = Function::kManagerGetAttr;
  static constexpr bool kComparisonUpdatesFileSets = true;

  static Table<Attribute> &owning(SchemaManager *schema) {
    return schema->m_attr_table;
  }
  static Table<Attribute> *byOid(SchemaManager *schema) {
    return &schema->m_attr_oid_table;
  }
  static std::string key(Attribute *attribute) {
    return attribute->getFirstNameLower();
  }
  static Attribute *find(SchemaManager *schema, const std::string &key) {
    Attribute *named = findIn(schema->m_attr_table, libschema::lowerCase(key));
    return named != nullptr ? named : findIn(schema->m_attr_oid_table, key);
  }
  static int equal(Attribute *mine, Attribute *theirs) {
    return mine->attrsEqual(*theirs);
  }
};

struct SchemaManager::ObjectClassKind {
  using Definition = ObjectClass;
  static constexpr Function kLookUp = Function::kManagerGetObjClass;
  static constexpr bool kComparisonUpdatesFileSets = true;

  static Table<ObjectClass> &owning(SchemaManager *schema) {
    return schema->m_oc_table;
  }
  static Table<ObjectClass> *byOid(SchemaManager *schema) {
    return &schema->m_oc_oid_table;
  }
  static std::string key(ObjectClass *objectClass) {
    return objectClass->getFirstNameLower();
  }
  static ObjectClass *find(SchemaManager *schema, const std::string &key) {
    ObjectClass *named = findIn(schema->m_oc_table, key);
    return named != nullptr ? named : findIn(schema->m_oc_oid_table, key);
  }
  static int equal(ObjectClass *mine, ObjectClass *theirs) {
    return mine->objsEqual(*theirs);
  }
};

// There is one table: it owns, and its keys are OIDs. Kept on purpose: the OIDs
// of storage definitions that a comparison removes stay recorded.
struct SchemaManager::StorageKind {
  using Definition = QORAttribute;
  static constexpr Function kLookUp = Function::kManagerGetQORAttr;
  static constexpr bool kComparisonUpdatesFileSets = false;

  static Table<QORAttribute> &owning(SchemaManager *schema) {
    return schema->m_qor_attr_table;
  }
  static Table<QORAttribute> *byOid(SchemaManager * /*schema*/) {
    return nullptr;
  }
  static std::string key(QORAttribute *attribute) {
    return attribute->getOid();
  }
  static QORAttribute *find(SchemaManager *schema, const std::string &key) {
    return findIn(schema->m_qor_attr_table, key);
  }
  static int equal(QORAttribute *mine, QORAttribute *theirs) {
    return mine->qorAttrsEqual(*theirs);
  }
};

SchemaManager::SchemaManager(std::string workingDir)
    : m_lexan(nullptr), m_working_dir(std::move(workingDir)) {}

SchemaManager::~SchemaManager() {
  deleteOwned(&m_attr_table);
  deleteOwned(&m_oc_table);
  deleteOwned(&m_qor_attr_table);
}

template <class Definition>
void SchemaManager::deleteOwned(Table<Definition> *table) {
  for (const auto &entry : *table) {
    if (!m_kept.contains(entry.second)) {
      delete entry.second;
    }
  }
  table->clear();
}

Attribute SchemaManager::getAttr(std::string key) {
  TraceScope trace(AttributeKind::kLookUp);
  const Attribute *found = AttributeKind::find(this, key);
  if (found == nullptr) {
    abortLookUp("getAttr", key);
  }
  return *found;
}

QORAttribute SchemaManager::getQORAttr(std::string oid) {
  TraceScope trace(StorageKind::kLookUp);
  const QORAttribute *found = StorageKind::find(this, oid);
  if (found == nullptr) {
    abortLookUp("getQORAttr", oid);
  }
  return *found;
}

ObjectClass SchemaManager::getObjClass(std::string key) {
  TraceScope trace(ObjectClassKind::kLookUp);
  const ObjectClass *found = ObjectClassKind::find(this, key);
  if (found == nullptr) {
    abortLookUp("getObjClass", key);
  }
  return *found;
}

std::string SchemaManager::convert(std::string s) {
  return libschema::lowerCase(std::move(s));
}

unsigned int SchemaManager::readFile(std::string fileName) {
  TraceScope trace(Function::kManagerReadFile);
  m_lexan = new SchemaLexan(m_working_dir, fileName);
  if (!m_lexan->fileIsOpen()) {
    if (trace.debugging()) {
      trace.record().debug(kDebugLevel,
                           "readFile: Could not open file to be parsed\n");
    }
    return trace.result(kCannotOpenOrParse);
  }
  const File *file = findFile(fileName);
  if (file == nullptr) {
    if (trace.debugging()) {
      trace.record().debug(kDebugLevel,
                           "readFile: Unexpected file name given, %s\n",
                           fileName.c_str());
    }
    return trace.result(kNoSuchFile);
  }
  OidSet *oids = file->oids == nullptr ? nullptr : &(this->*file->oids);
  if (!readSections(oids)) {
    if (trace.debugging()) {
      trace.record().debug(kDebugLevel,
                           "readFile: There was an error parsing the file, "
                           "%s.\n",
                           fileName.c_str());
    }
    return trace.result(kCannotOpenOrParse);
  }
  delete m_lexan;
  if (trace.debugging()) {
    trace.record().debug(kDebugLevel,
                         "readFile: Successfully parsed the file, %s.\n",
                         fileName.c_str());
  }
  return trace.result(0U);
}

// file = *( section / other )
bool SchemaManager::readSections(OidSet *oids) {
  int token = m_lexan->lexan();
  while (token != TOK_DONE) {
    if (!beginsSection(token)) {
      token = m_lexan->lexan();
    } else if (readSection(token, oids)) {
      token = m_lexan->getCurrentToken();
    } else {
      return false;
    }
  }
  return m_lexan->lexan() == TOK_DONE;  // the end of the file stays the end
}

// section = keyword ( "=" definition / "{" 1*definition "}" )
// The "}" stays the current token.
bool SchemaManager::readSection(int keyword, OidSet *oids) {
  const int opener = m_lexan->lexan();
  if (opener == '=') {
    return readDefinition(keyword, oids, false);
  }
  if (opener != '{') {
    return false;
  }
  do {
    if (!readDefinition(keyword, oids, true)) {
      return false;
    }
  } while (m_lexan->getCurrentToken() != '}');
  return true;
}

bool SchemaManager::readDefinition(int keyword, OidSet *oids, bool inBraces) {
  switch (keyword) {
    case TOK_ATTRIBUTETYPES:
      return readDefinition<AttributeKind>(oids, inBraces);
    case TOK_OBJECTCLASSES:
      return readDefinition<ObjectClassKind>(oids, inBraces);
    default:
      return readDefinition<StorageKind>(oids, inBraces);
  }
}

template <class Kind>
bool SchemaManager::readDefinition(OidSet *oids, bool inBraces) {
  auto parsed = std::make_unique<typename Kind::Definition>();
  const bool complete = parsed->parse(m_lexan) != 0;
  auto *definition = parsed.get();
  if (!complete || (inBraces && definition->oid().empty())) {
    static_cast<void>(parsed.release());  // kept on purpose: never freed
    return complete;
  }
  Kind::owning(this).try_emplace(Kind::key(definition), definition);
  // The table's now, or, kept on purpose, nobody's if its key was taken.
  static_cast<void>(parsed.release());
  if (auto *byOid = Kind::byOid(this)) {
    byOid->try_emplace(definition->oid(), definition);
  }
  if (oids != nullptr) {
    oids->insert(definition->oid());
  }
  return true;
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
  return trace.result(writeSetToFile(this->*file->oids, dir + "/" + fileName));
}

unsigned int SchemaManager::writeSetToFile(std::set<std::string> oids,
                                           std::string path) {
  TraceScope trace(Function::kManagerWriteSetToFile, kTableWalk);
  QORAttribute storage;
  std::ofstream out(path);
  if (!out) {
    if (trace.debugging()) {
      trace.record().debug(kDebugLevel,
                           "writeSetToFile: Unable to open file for writing, "
                           "%s.\n",
                           path.c_str());
    }
    return trace.result(kCannotOpenOrParse);
  }
  if (!oids.empty()) {
    out << "# File generated by 6.0 migration " << getCurrentTimeStamp(1)
        << '\n';
  }
  for (const std::string &oid : oids) {
    if (ObjectClass *objectClass = findIn(m_oc_oid_table, oid)) {
      objectClass->dump(out);
    } else if (Attribute *attribute = findIn(m_attr_oid_table, oid)) {
      attribute->dump(out);
      if (findIn(m_qor_attr_table, attribute->oid()) != nullptr) {
        storage = getQORAttr(oid);
        storage.dump(out);
      }
    }
  }
  out.close();
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
    return trace.result(kCannotOpenOrParse);
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
    if (file.searched && (this->*file.oids).erase(oid) != 0) {
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

unsigned int SchemaManager::compSchemas(SchemaManager *other) {
  TraceScope trace(Function::kManagerCompSchemas);
  const bool done = compAttrTables(other) != 0 &&
                    compQORAttrTables(other) != 0 && compObjTables(other) != 0;
  return trace.result(done ? 1U : 0U);
}

unsigned int SchemaManager::compAttrTables(SchemaManager *other) {
  TraceScope trace(Function::kManagerCompAttrTables, kTableWalk);
  return trace.result(compTable<AttributeKind>(other));
}

unsigned int SchemaManager::compQORAttrTables(SchemaManager *other) {
  TraceScope trace(Function::kManagerCompQORAttrTables, kTableWalk);
  return trace.result(compTable<StorageKind>(other));
}

unsigned int SchemaManager::compObjTables(SchemaManager *other) {
  TraceScope trace(Function::kManagerCompObjTables, kTableWalk);
  return trace.result(compTable<ObjectClassKind>(other));
}

// The definitions are at hand, so that nothing is looked up by getAttr() and
// its like and no copy is made; the lookups are recorded in the trace.
template <class Kind>
unsigned int SchemaManager::compTable(SchemaManager *other) {
  const auto recordLookUp = [] { TraceScope trace(Kind::kLookUp); };
  auto &mine = Kind::owning(this);
  const auto &theirs = Kind::owning(other);

  std::vector<decltype(mine.begin())> removals;  // the walk changes nothing
  for (auto entry = mine.begin(); entry != mine.end(); ++entry) {
    auto *definition = entry->second;
    recordLookUp();
    auto *namesake = findIn(theirs, entry->first);
    if (namesake != nullptr) {
      recordLookUp();
    }
    if (findExcluded(definition->oid()) != 0 ||
        (namesake != nullptr && Kind::equal(definition, namesake) != 0)) {
      removals.push_back(entry);
      if (Kind::kComparisonUpdatesFileSets) {
        removeFromFileSet(definition->oid());
      }
    }
  }
  for (const auto &entry : removals) {
    disown<Kind>(entry);
  }
  return 1;
}

// Takes an entry out of its owning table, and deletes the definition unless its
// OID or another schema still leads to it.
template <class Kind>
void SchemaManager::disown(
    typename Table<typename Kind::Definition>::iterator entry) {
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

// The merge of one kind: what it has done so far, so that both schemas are
// sound in whatever way it ends.
template <class Kind>
class SchemaManager::Merge {
 public:
  Merge(SchemaManager *target, SchemaManager *source)
      : m_target(target),
        m_source(source),
        m_targetTable(Kind::owning(target)),
        m_sourceTable(Kind::owning(source)),
        m_targetByOid(Kind::byOid(target)),
        m_sourceByOid(Kind::byOid(source)) {}

  // False when a definition could not be added.
  bool run() {
    bool complete = false;
    try {
      complete = walk();
      if (!complete) {
        share();
      }
    } catch (...) {
      forgetUnentered();
      releaseReplaced();
      handOver();
      throw;
    }
    releaseReplaced();
    if (complete) {
      handOver();
    }
    return complete;
  }

 private:
  using Definition = typename Kind::Definition;
  using Entry = typename Table<Definition>::iterator;

  bool walk() {
    for (Entry entry = m_sourceTable.begin(); entry != m_sourceTable.end();
         ++entry) {
      Definition *definition = entry->second;
      if (Definition *namesake = findIn(m_targetTable, entry->first)) {
        remove(replacedBy(definition, namesake));
      } else if (OidSet *oids =
                     m_target->findOidInSet(m_source, definition->oid())) {
        oids->insert(definition->oid());
      } else {
        return false;
      }
      m_walked.push_back(entry);
      m_targetTable.try_emplace(entry->first, definition);
      if (m_targetByOid != nullptr) {
        m_targetByOid->try_emplace(definition->oid(), definition);
      }
    }
    return true;
  }

  // The definition of the target that gives way to one that has the key of
  // `namesake`: the one that is found by the OID, if that is the namesake's.
  Definition *replacedBy(Definition *definition, Definition *namesake) {
    if (m_targetByOid == nullptr || namesake->oid() != definition->oid()) {
      return namesake;
    }
    TraceScope trace(Kind::kLookUp);
    Definition *found = Kind::find(m_target, definition->oid());
    return found != nullptr ? found : namesake;
  }

  // Takes what is filed under the keys of `replaced` out of the target. What
  // leaves the owning table is kept until it is clear what still leads to it,
  // unless the source owns it too.
  void remove(Definition *replaced) {
    std::string key = Kind::key(replaced);
    if (m_targetByOid != nullptr) {
      m_targetByOid->erase(replaced->oid());
    }
    const Entry entry = m_targetTable.find(key);
    if (entry == m_targetTable.end()) {
      return;
    }
    Definition *leaving = entry->second;
    if (findIn(m_sourceTable, key) != leaving) {
      m_target->m_kept.keep(leaving);
    }
    m_targetTable.erase(entry);
    m_replaced.emplace_back(std::move(key), leaving);
  }

  // Whether the target's tables lead to a definition that has this key.
  bool reached(const std::string &key, Definition *definition) const {
    return findIn(m_targetTable, key) == definition ||
           (m_targetByOid != nullptr &&
            findIn(*m_targetByOid, definition->oid()) == definition);
  }

  // After a failure: what stands in both schemas belongs to both.
  void share() {
    for (const Entry &entry : m_walked) {
      if (reached(entry->first, entry->second)) {
        m_target->m_kept.share(entry->second, &m_source->m_kept);
      }
    }
  }

  // After an exception: the walk may have stopped before the last definition
  // was entered.
  void forgetUnentered() noexcept {
    if (!m_walked.empty() &&
        !reached(m_walked.back()->first, m_walked.back()->second)) {
      m_walked.pop_back();
    }
  }

  // Lets go of what the target does not hold any longer.
  void releaseReplaced() noexcept {
    for (const auto &[key, definition] : m_replaced) {
      if (m_target->m_kept.contains(definition) && !reached(key, definition)) {
        m_target->m_kept.drop(definition);
      }
    }
  }

  // Takes out of the source what was walked: it is the target's now, or, if the
  // target does not hold it, nobody's.
  void handOver() noexcept {
    if (m_sourceByOid != nullptr) {
      for (const Entry &entry : m_walked) {
        m_sourceByOid->erase(entry->second->oid());
      }
    }
    for (const Entry &entry : m_walked) {
      Definition *definition = entry->second;
      const bool taken = reached(entry->first, definition);
      m_sourceTable.erase(entry);
      if (taken) {
        m_target->m_kept.takeOver(definition, &m_source->m_kept);
      } else if (!m_source->m_kept.drop(definition)) {
        delete definition;
      }
    }
  }

  SchemaManager *const m_target;
  SchemaManager *const m_source;
  Table<Definition> &m_targetTable;
  Table<Definition> &m_sourceTable;
  Table<Definition> *const m_targetByOid;  // null: this kind has none
  Table<Definition> *const m_sourceByOid;
  std::vector<Entry> m_walked;  // entries of the source's table
  // What left the target's table, with its key.
  std::vector<std::pair<std::string, Definition *>> m_replaced;
};

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
