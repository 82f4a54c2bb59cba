#pragma once

#include <cstddef>

namespace XmlParser {

inline constexpr std::size_t kNoPosition = static_cast<std::size_t>(-1);

/// Prepares `text`, which ends with a NUL, for a parser that compares names exactly and lets unknown entities pass:
/// folds the names of elements and attributes to lower case. Returns the position of the first "&" inside an element
/// that starts no reference to a character, or `kNoPosition`; what stands behind it is not folded.
std::size_t FoldNames(char* text);

}  // namespace XmlParser
