#include "SourceText.h"

#include <algorithm>
#include <utility>

namespace schemacheck {

SourceText::SourceText(std::string name, std::string bytes)
    : m_name(std::move(name)),
      m_bytes(std::make_shared<const std::string>(std::move(bytes))),
      m_lineStarts{0} {
  std::size_t newline = m_bytes->find('\n');
  while (newline != std::string::npos) {
    m_lineStarts.push_back(newline + 1);
    newline = m_bytes->find('\n', newline + 1);
  }
}

Position SourceText::position(std::size_t offset) const {
  offset = std::min(offset, m_bytes->size());
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
  const std::string_view bytes = *m_bytes;
  const std::size_t begin = m_lineStarts[number - 1];
  const bool isLast = number == m_lineStarts.size();
  std::size_t end = isLast ? bytes.size() : m_lineStarts[number] - 1;
  if (!isLast && end > begin && bytes[end - 1] == '\r') {
    --end;
  }
  return bytes.substr(begin, end - begin);
}

}  // namespace schemacheck
