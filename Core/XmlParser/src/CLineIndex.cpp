#include "XmlParser/CLineIndex.h"

#include <algorithm>

namespace XmlParser {

CLineIndex::CLineIndex(std::string_view text, ECharacters characters)
    : m_text(text), m_characters(characters), m_lineStarts{0} {
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', end + 1)) {
    m_lineStarts.push_back(end + 1);
  }
}

SLinePlace CLineIndex::At(std::size_t position) const {
  if (position > m_text.size()) {
    return {0, 0};
  }
  const auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), position);
  const std::size_t lineStart = *(next - 1);
  return {static_cast<int>(next - m_lineStarts.begin()),
          CountCharacters(m_text.substr(lineStart, position - lineStart)) + 1};
}

int CLineIndex::CountCharacters(std::string_view part) const {
  if (m_characters == ECharacters::kSingleBytes) {
    return static_cast<int>(part.size());
  }
  const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return static_cast<int>(std::count_if(part.begin(), part.end(), begins));
}

}  // namespace XmlParser
