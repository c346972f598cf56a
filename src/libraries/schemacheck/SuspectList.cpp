#include <algorithm>
#include <utility>

#include "Suspects.h"

namespace schemacheck {

namespace {

// One of them may account for its field, and the others be harmless.
constexpr std::size_t kMostAlike = kMostFindings + 1;

bool areAlike(const Suspect &a, const Suspect &b) {
  return a.code == b.code && a.field == b.field && a.harmless == b.harmless &&
         a.always == b.always;
}

}  // namespace

void SuspectList::add(Suspect suspect) {
  const auto group =
      std::find_if(m_groups.begin(), m_groups.end(), [&](const Group &one) {
        return areAlike(m_suspects[one.first], suspect);
      });
  if (group == m_groups.end()) {
    m_groups.push_back({m_suspects.size(), 1});
  } else if (++group->size > kMostAlike) {
    return;
  }
  m_suspects.push_back(std::move(suspect));
}

}  // namespace schemacheck
