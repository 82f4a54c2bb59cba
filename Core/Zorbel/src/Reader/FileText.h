#pragma once

#include <string>

namespace Zorbel::Internal {

/// The text of a file's bytes, as it is parsed.
struct SFileText {
  const char* text = "";     ///< without a byte-order mark
  bool singleBytes = false;  ///< each character is one byte, as in what was UTF-16; else it is UTF-8
};

/// Finds the text in the bytes; UTF-16 is converted to the ANSI code page in their place. False when that cannot be
/// done. The text lives as long as the bytes are left alone.
bool FindText(std::string& bytes, SFileText& found);

}  // namespace Zorbel::Internal
