#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace XmlParser {

/// What the bytes of a text are: characters of a one-byte code page, or pieces of those of UTF-8.
enum class ECharacters { kSingleBytes, kUtf8 };

/// Both count from 1, the column in characters; both are 0 for a place that is not in the text.
struct SLinePlace {
  int line;
  int column;
};

/// Tells lines and columns from positions. A line ends at LF.
/// Ownership: the text stays the caller's and lives as long as the index.
class CLineIndex {
 public:
  /// Takes time in proportion to the text.
  CLineIndex(std::string_view text, ECharacters characters);

  /// Returns the place of the byte at `position`, or of the end behind the last one. Takes the same time everywhere,
  /// however long the text and its lines are.
  SLinePlace At(std::size_t position) const;

 private:
  SLinePlace Behind(std::string_view part, SLinePlace place) const;

  std::string_view m_text;
  ECharacters m_characters;
  std::vector<SLinePlace> m_blocks;  // where each begins
};

}  // namespace XmlParser
