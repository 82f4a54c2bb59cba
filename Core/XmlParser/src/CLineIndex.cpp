#include "XmlParser/CLineIndex.h"

namespace XmlParser {
namespace {

constexpr std::size_t kBlock = 1024;  // bytes

}  // namespace

CLineIndex::CLineIndex(std::string_view text, ECharacters characters)
    : m_text(text), m_characters(characters), m_blocks{{1, 1}} {
  m_blocks.reserve(text.size() / kBlock + 1);
  for (std::size_t begin = 0; begin + kBlock <= text.size(); begin += kBlock) {
    m_blocks.push_back(Behind(text.substr(begin, kBlock), m_blocks.back()));
  }
}

SLinePlace CLineIndex::At(std::size_t position) const {
  if (position > m_text.size()) {
    return {0, 0};
  }
  const std::size_t block = position / kBlock;
  return Behind(m_text.substr(block * kBlock, position % kBlock), m_blocks[block]);
}

SLinePlace CLineIndex::Behind(std::string_view part, SLinePlace place) const {
  for (const char c : part) {
    if (c == '\n') {
      place = {place.line + 1, 1};
    } else if (m_characters == ECharacters::kSingleBytes || (static_cast<unsigned char>(c) & 0xC0) != 0x80) {
      ++place.column;
    }
  }
  return place;
}

}  // namespace XmlParser
