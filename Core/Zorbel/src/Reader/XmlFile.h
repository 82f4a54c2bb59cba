#pragma once

#include <cstddef>

#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

inline constexpr std::size_t kLargestFile = 1'073'741'824;  // bytes

/// Reads a file of at most that size and parses its text: UTF-16 is converted to the ANSI code page, and a UTF-8
/// byte-order mark skipped.
XMLNode ParseXmlFile(const wchar_t* fileName, const char* rootName, XMLResults& results);

}  // namespace Zorbel::Internal
