#include "SourceText.h"

#include <algorithm>
#include <utility>

namespace schemacheck {

SourceText::SourceText(std::string name, std::string bytes)
    : m_name(std::move(name)), m_bytes(std::move(bytes)), m_lineStarts{0} {
  for (std::size_t i = 0; i < m_bytes.size(); ++i) {
    if (m_bytes[i] == '\n') {
      m_lineStarts.push_back(i + 1);
    }
  }
}

Position SourceText::position(std::size_t offset) const {
  offset = std::min(offset, m_bytes.size());
  const auto next =
      std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
  const std::size_t start = *(next - 1);
  return {static_cast<int>(next - m_lineStarts.begin()),
          static_cast<int>(offset - start) + 1};
}

std::string_view SourceText::line(int line) const {
  if (line < 1 || static_cast<std::size_t>(line) > m_lineStarts.size()) {
    return {};
  }
  const auto number = static_cast<std::size_t>(line);
  const std::size_t begin = m_lineStarts[number - 1];
  const bool isLast = number == m_lineStarts.size();
  std::size_t end = isLast ? m_bytes.size() : m_lineStarts[number] - 1;
  if (!isLast && end > begin && m_bytes[end - 1] == '\r') {
    --end;
  }
  return std::string_view(m_bytes).substr(begin, end - begin);
}

}  // namespace schemacheck
