// What the list of modified OIDs does to a migration's result.
#ifndef SCHEMA_MIGRATE_WITHDRAWALS_H_
#define SCHEMA_MIGRATE_WITHDRAWALS_H_

#include <set>
#include <string>
#include <vector>

#include "Plan.h"
#include "SchemaDirectory.h"
#include "SchemaManager.h"

// What became of an OID of the list of modified ones.
struct Withdrawal {
  std::string oid;
  // The definition that has the OID, in words; empty when none has.
  std::string definition;
  // Whether it is an attribute type with a storage definition, which goes or
  // stays with it.
  bool hasStorage;
  // Whether V3.modifiedschema recorded the OID until now.
  bool wasModified;
  // The file of the result that holds it all the same, because its OID is
  // recorded there; empty when it is gone. Known when the result is written.
  std::string staysIn;
  // Whether the release lacks the definition, and it is not carried, either.
  bool isLeft = false;
};

// What the library will do with the OIDs: of `merged`, the result of a merge
// into the release, modifySchema() withdraws what has them.
std::vector<Withdrawal> withdrawalsFrom(
    const SchemaManager &merged, const schemacheck::SchemaDirectory &release,
    const std::set<std::string> &oids);

// Fills in what the old installation alone has, and is planned to be withdrawn.
void findWhatIsLeft(const schemaplan::Plan &plan,
                    std::vector<Withdrawal> *withdrawals);

// Fills in which file of the result holds what was to be withdrawn.
void findWhatStays(const schemacheck::SchemaDirectory &written,
                   std::vector<Withdrawal> *withdrawals);

#endif  // SCHEMA_MIGRATE_WITHDRAWALS_H_
