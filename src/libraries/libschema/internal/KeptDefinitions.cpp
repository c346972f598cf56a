#include "internal/KeptDefinitions.h"

#include <utility>

#include "QORSchema.h"

namespace libschema {

KeptDefinitions::~KeptDefinitions() {
  for (const auto &[definition, keeper] : m_keepers) {
    if (keeper == nullptr) {
      delete definition;
    }
  }
}

bool KeptDefinitions::contains(QORSchema *definition) const {
  return m_keepers.find(definition) != m_keepers.end();
}

// Those that are kept one after the other were mostly made in that order.
void KeptDefinitions::keep(QORSchema *definition) {
  m_keepers.try_emplace(m_keepers.end(), definition);
}

void KeptDefinitions::share(QORSchema *definition, KeptDefinitions *other) {
  other->keep(definition);
  Keeper &theirs = other->m_keepers.find(definition)->second;
  Keeper keeper = theirs;
  if (keeper == nullptr) {
    keeper = std::make_shared<std::unique_ptr<QORSchema>>();
  }
  m_keepers.emplace(definition, keeper);
  // Owns the definition last, when nothing can throw any more.
  if (theirs == nullptr) {
    keeper->reset(definition);
    theirs = std::move(keeper);
  }
}

void KeptDefinitions::takeOver(QORSchema *definition,
                               KeptDefinitions *other) noexcept {
  m_keepers.insert(other->m_keepers.extract(definition));
}

bool KeptDefinitions::drop(QORSchema *definition) noexcept {
  const auto entry = m_keepers.find(definition);
  if (entry == m_keepers.end()) {
    return false;
  }
  if (entry->second == nullptr) {
    delete definition;
  }
  m_keepers.erase(entry);
  return true;
}

}  // namespace libschema
