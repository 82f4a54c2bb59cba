#include "XmlParser/XmlParser.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "XmlScan.h"
#include "XmlTree.h"

namespace {

using XmlParser::kNone;
using XmlParser::SElement;
using XmlParser::SFailure;
using XmlParser::STree;

// Line ends and white space stay as they are. Sections and instructions keep a node, so that they part texts.
constexpr unsigned int kOptions = pugi::parse_escapes | pugi::parse_trim_pcdata | pugi::parse_cdata | pugi::parse_pi;

XMLError Translate(pugi::xml_parse_status status, bool atEnd) {
  switch (status) {
    case pugi::status_end_element_mismatch: return atEnd ? eXMLErrorMissingEndTag : eXMLErrorUnmatchedEndTag;
    case pugi::status_bad_end_element: return atEnd ? eXMLErrorMissingEndTag : eXMLErrorUnmatchedEndTag;
    case pugi::status_bad_cdata:
    case pugi::status_bad_comment: return eXMLErrorUnmatchedEndClearTag;
    default: return eXMLErrorUnexpectedToken;
  }
}

SFailure FailureOf(const pugi::xml_parse_result& result, std::size_t length) {
  if (result || result.status == pugi::status_no_document_element) {
    return {};
  }
  const auto position = static_cast<std::size_t>(result.offset);
  const bool atEnd = position + 1 >= length;  // the parser sets the last character aside
  return {Translate(result.status, atEnd), atEnd ? length : position};
}

// The failure that comes first in the text.
SFailure ParseCharacters(const char* text, STree& tree) {
  const std::size_t length = std::strlen(text);
  tree.characters = std::make_unique_for_overwrite<char[]>(length + 1);
  std::memcpy(tree.characters.get(), text, length + 1);
  const XmlParser::SScan scan = XmlParser::FoldNames(tree.characters.get());

  pugi::xml_document document;
  const pugi::xml_parse_result result =
      document.load_buffer_inplace(tree.characters.get(), length, kOptions, pugi::encoding_utf8);
  if (result.status == pugi::status_out_of_memory) {
    throw std::bad_alloc();
  }
  const SFailure malformed = FailureOf(result, length);
  if (scan.failure.position < malformed.position) {
    return scan.failure;
  }
  if (malformed.error == eXMLErrorNone) {
    tree.elements.reserve(scan.elements + 1);
    tree.attributes.reserve(scan.attributes);
    BuildTree(document, tree);
  }
  return malformed;
}

XMLResults Describe(const char* text, const SFailure& failure) {
  const std::string_view before(text, std::min(failure.position, std::strlen(text)));
  const std::size_t lineStart = before.rfind('\n') + 1;
  const std::string_view line = before.substr(lineStart);
  const auto isCharacter = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return {failure.error, static_cast<int>(std::count(before.begin(), before.end(), '\n')) + 1,
          static_cast<int>(std::count_if(line.begin(), line.end(), isCharacter)) + 1};
}

// `folded` is in lower case already.
bool IsName(const char* folded, const char* name) {
  for (; *folded != '\0' && *folded == XmlParser::Lower(*name); ++folded, ++name) {
  }
  return *folded == '\0' && *name == '\0';
}

}  // namespace

XMLNode::XMLNode(std::shared_ptr<const STree> tree, std::uint32_t element)
    : m_tree(std::move(tree)), m_element(element) {}

XMLNode XMLNode::parseString(const char* text, const char* rootName, XMLResults* results) {
  XMLResults ignored{};
  XMLResults& result = results != nullptr ? *results : ignored;
  if (text == nullptr) {
    result = {eXMLErrorNoElements, 0, 0};
    return {};
  }
  const auto tree = std::make_shared<STree>();
  const SFailure failure = ParseCharacters(text, *tree);
  if (failure.error != eXMLErrorNone) {
    result = Describe(text, failure);
    return {};
  }
  XMLNode root = XMLNode(tree, 0).getChildNode(rootName);
  result = {root.isEmpty() ? eXMLErrorFirstTagNotFound : eXMLErrorNone, 0, 0};
  return root;
}

XMLNode XMLNode::NextOf(const char* name, std::uint32_t candidate) const {
  while (candidate != kNone && !IsName(m_tree->elements[candidate].name, name)) {
    candidate = m_tree->elements[candidate].nextSibling;
  }
  return candidate != kNone ? XMLNode(m_tree, candidate) : XMLNode();
}

int XMLNode::nChildNode(const char* name) const {
  int count = 0;
  int iterator = 0;
  while (!getChildNode(name, &iterator).isEmpty()) {
    ++count;
  }
  return count;
}

XMLNode XMLNode::getChildNode(const char* name, int index) const {
  int iterator = 0;
  XMLNode child = getChildNode(name, &iterator);
  for (; index > 0 && !child.isEmpty(); --index) {
    child = getChildNode(name, &iterator);
  }
  return child;
}

// The iterator is the position of the element that was returned last; that of the document itself is 0.
XMLNode XMLNode::getChildNode(const char* name, int* iterator) const {
  if (isEmpty()) {
    return {};
  }
  const auto last = static_cast<std::uint32_t>(*iterator);
  XMLNode child = NextOf(name, last == 0 ? m_tree->elements[m_element].firstChild : m_tree->elements[last].nextSibling);
  if (!child.isEmpty()) {
    *iterator = static_cast<int>(child.m_element);
  }
  return child;
}

const char* XMLNode::getAttribute(const char* name) const {
  if (isEmpty()) {
    return nullptr;
  }
  const SElement& element = m_tree->elements[m_element];
  const auto* first = m_tree->attributes.data() + element.firstAttribute;
  const auto* last = first + element.attributeCount;
  const auto* found = std::find_if(first, last, [name](const auto& attribute) { return IsName(attribute.name, name); });
  return found != last ? found->value : nullptr;
}

const char* XMLNode::getText() const { return isEmpty() ? nullptr : m_tree->elements[m_element].text; }
