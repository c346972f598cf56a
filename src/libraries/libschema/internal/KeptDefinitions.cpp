#include "internal/KeptDefinitions.h"

#include "QORSchema.h"

namespace libschema {

bool KeptDefinitions::contains(QORSchema *definition) const {
  return m_keepers.find(definition) != m_keepers.end();
}

void KeptDefinitions::keep(QORSchema *definition) {
  if (contains(definition)) {
    return;
  }
  // Owns the definition last, when nothing can throw any more.
  const Keeper keeper = std::make_shared<std::unique_ptr<QORSchema>>();
  m_keepers.emplace(definition, keeper);
  keeper->reset(definition);
}

void KeptDefinitions::share(QORSchema *definition, KeptDefinitions *other) {
  other->keep(definition);
  m_keepers.insert(*other->m_keepers.find(definition));
}

void KeptDefinitions::takeOver(QORSchema *definition,
                               KeptDefinitions *other) noexcept {
  m_keepers.insert(other->m_keepers.extract(definition));
}

bool KeptDefinitions::drop(QORSchema *definition) noexcept {
  return m_keepers.erase(definition) != 0;
}

}  // namespace libschema
