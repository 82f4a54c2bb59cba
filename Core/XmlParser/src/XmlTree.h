#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "XmlPlaces.h"

namespace pugi {
class xml_node;
}

namespace XmlParser {

inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

struct SAttribute {
  const char* name;
  const char* value;
};

/// An element, in document order; the others are named by their positions.
struct SElement {
  const char* name = nullptr;
  const char* text = nullptr;  // the first piece; null for none
  std::uint32_t firstAttribute = 0;
  std::uint32_t attributeCount = 0;
  std::uint32_t firstChild = kNone;
  std::uint32_t nextSibling = kNone;
};

/// A parsed document. Its positions are plain numbers, so that a walk over children can be resumed from one without
/// looking at those before it.
struct STree {
  std::unique_ptr<char[]> characters;  // names and values point into them
  std::vector<SElement> elements;      // the first stands for the document itself
  std::vector<SAttribute> attributes;
  std::deque<std::string> joinedTexts;  // texts that comments part
  SPlaces places;
};

/// Fills `tree` from a parsed document whose names and values lie in the tree's characters.
void BuildTree(const pugi::xml_node& document, STree& tree);

}  // namespace XmlParser
