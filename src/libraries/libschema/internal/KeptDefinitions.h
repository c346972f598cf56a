// The definitions of a schema that its owning tables do not account for.
#ifndef LIBSCHEMA_INTERNAL_KEPTDEFINITIONS_H_
#define LIBSCHEMA_INTERNAL_KEPTDEFINITIONS_H_

#include <map>
#include <memory>

class QORSchema;

namespace libschema {

// A manager owns what its owning tables point to. Two kinds of definitions need
// more than that, and are kept here besides:
//  - one that has left its owning table but may be reachable by its OID;
//  - one that stands in the tables of two managers after a merge that failed.
// A definition is deleted when the last one that keeps it drops it. While it is
// kept, a table that points to it does not own it.
class KeptDefinitions {
 public:
  KeptDefinitions() = default;
  ~KeptDefinitions();

  KeptDefinitions(const KeptDefinitions &) = delete;
  KeptDefinitions &operator=(const KeptDefinitions &) = delete;

  bool contains(QORSchema *definition) const;

  // Takes over the ownership of a definition; one that is kept already stays
  // so. When it throws, nothing has changed.
  void keep(QORSchema *definition);

  // Keeps a definition that `other`'s manager owns together with it. When it
  // throws, `other` may keep the definition, and nothing else has changed.
  void share(QORSchema *definition, KeptDefinitions *other);

  // Takes over from `other`, if `other` keeps it.
  void takeOver(QORSchema *definition, KeptDefinitions *other) noexcept;

  // Stops keeping a definition. False when it was not kept.
  bool drop(QORSchema *definition) noexcept;

 private:
  // The inner pointer owns the definition, the outer one counts who keeps it.
  // (A shared_ptr to the definition itself would delete it when there is no
  // memory for the count.)
  using Keeper = std::shared_ptr<std::unique_ptr<QORSchema>>;

  // The keeper is null while nobody else keeps the definition, which this owns
  // then. All that keep a definition have the same keeper for it: share() makes
  // it or hands on the other's, and nobody keeps what another owns already.
  std::map<QORSchema *, Keeper> m_keepers;
};

}  // namespace libschema

#endif  // LIBSCHEMA_INTERNAL_KEPTDEFINITIONS_H_
