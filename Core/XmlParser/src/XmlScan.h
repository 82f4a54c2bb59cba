#pragma once

#include <cstddef>
#include <vector>

#include "XmlParser/XmlParser.h"
#include "XmlPlaces.h"

namespace XmlParser {

inline char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

inline bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

struct SScan {
  XMLFailure failure = {eXMLErrorNone, kNoXmlPosition};
  std::size_t elements = 0;  // as many as a document without failure holds
  std::size_t attributes = 0;
};

/// Prepares `text`, which ends with a NUL, for a parser that compares names exactly: folds the names of elements and
/// attributes to lower case. The failure is one that such a parser lets pass: the first "&" inside an element that
/// starts no reference to a character; what stands behind it is not folded.
SScan FoldNames(char* text);

/// The same, but goes on to the end: adds all such failures to `failures`, and the places of what it passes to
/// `places`.
SScan FoldNames(char* text, SPlaces& places, std::vector<XMLFailure>& failures);

}  // namespace XmlParser
