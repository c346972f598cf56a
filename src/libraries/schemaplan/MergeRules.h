// What the library's merge can carry from an old installation into a release.
#ifndef SCHEMAPLAN_MERGERULES_H_
#define SCHEMAPLAN_MERGERULES_H_

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "Finding.h"
#include "Installation.h"

namespace schemaplan {

// SchemaManager::mergeSchemas() adds a definition that the release lacks only
// if a user, qor or system file of the old installation still records its OID
// once the comparison has taken out what is not carried. What it adds,
// writeFile() writes if the OID leads to it: a written file holds, for each OID
// recorded for it, the object class, or else the attribute type and its storage
// definition.
class MergeRules {
 public:
  // The installations must outlive this.
  MergeRules(const Installation &old, const Installation &release);

  // To be called before add() for the OID of each definition that obstacleTo()
  // will be asked about. The text must outlive this.
  void watch(std::string_view oid) { m_records.try_emplace(oid); }

  // What comparison and merge make of a definition of the old installation;
  // those are dropped that no manager holds.
  enum class Fate { kDropped, kRemoved, kCarried };

  // To be called for each definition of the old installation, in the order of
  // reading, before obstacleTo(). Its file records the OID whatever its fate.
  void add(const schemacheck::Statement &statement, Fate fate);

  // The release's definition that a definition of the old installation meets:
  // the one with its name, or for storage definitions its OID; or else one that
  // has its OID although it is another. Null if there is none.
  const schemacheck::Statement *counterpart(
      const schemacheck::Statement &statement) const;

  // What stands against carrying a definition that was added as carried: that
  // it could not be added, that it would not be written, or that it would drive
  // another definition out of the release. The finding lies in the old
  // installation.
  std::optional<schemacheck::Finding> obstacleTo(
      const schemacheck::Statement &statement) const;

 private:
  // What is known of an OID in the old installation.
  struct Record {
    unsigned int files = 0;     // that record it, as bits
    unsigned int removals = 0;  // of it that the comparison makes
    // The first attribute type or object class to be carried that has it.
    const schemacheck::Statement *carried = nullptr;
  };

  const schemacheck::Statement *namesake(
      const schemacheck::Statement &statement) const;
  const schemacheck::Statement *rival(
      const schemacheck::Statement &statement) const;
  const Record &recordOf(const schemacheck::Statement &statement) const;
  bool canBeAdded(const schemacheck::Statement &statement) const;
  std::string differencesFrom(const schemacheck::Statement &statement,
                              const schemacheck::Statement &release) const;
  std::optional<schemacheck::Finding> obstacleToName(
      const schemacheck::Statement &statement) const;
  std::optional<schemacheck::Finding> obstacleToOid(
      const schemacheck::Statement &statement) const;

  const Installation &m_old;
  const Installation &m_release;
  std::unordered_map<std::string_view, Record> m_records;  // by watched OID
  // The release's definitions that its manager holds under their OIDs alone, by
  // kind and key. They are written, too.
  std::map<std::pair<schemacheck::Kind, std::string_view>,
           const schemacheck::Statement *>
      m_shadowed;
};

}  // namespace schemaplan

#endif  // SCHEMAPLAN_MERGERULES_H_
