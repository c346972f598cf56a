// A quick no to most questions whether a set holds an OID.
#ifndef LIBSCHEMA_INTERNAL_OIDFILTER_H_
#define LIBSCHEMA_INTERNAL_OIDFILTER_H_

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace libschema {

// One bit in sixteen is set. They are asked before the set, the elements of
// which lie far apart in memory.
class OidFilter {
 public:
  explicit OidFilter(const std::set<std::string> &oids)
      : m_bits(oids.size() * kBitsEach) {
    for (const std::string &oid : oids) {
      m_bits[place(oid)] = true;
    }
  }

  // False only if the set did not hold it.
  bool mayHold(const std::string &oid) const {
    return !m_bits.empty() && m_bits[place(oid)];
  }

 private:
  static constexpr std::size_t kBitsEach = 16;

  std::size_t place(const std::string &oid) const {
    return std::hash<std::string>()(oid) % m_bits.size();
  }

  std::vector<bool> m_bits;
};

}  // namespace libschema

#endif  // LIBSCHEMA_INTERNAL_OIDFILTER_H_
