#pragma once

#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

/// Reads a file and parses its text: UTF-16 is converted to the ANSI code page, and a UTF-8 byte-order mark skipped.
XMLNode ParseXmlFile(const wchar_t* fileName, const char* rootName, XMLResults& results);

}  // namespace Zorbel::Internal
