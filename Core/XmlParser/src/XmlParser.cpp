#include "XmlParser/XmlParser.h"

#include <pugixml.hpp>

#include <algorithm>
#include <cstring>

#include "XmlParser/CLineIndex.h"
#include "XmlScan.h"
#include "XmlTree.h"

namespace {

using XmlParser::kNone;
using XmlParser::SElement;
using XmlParser::SScan;
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

XMLFailure FailureOf(const pugi::xml_parse_result& result, std::size_t length) {
  if (result || result.status == pugi::status_no_document_element) {
    return {eXMLErrorNone, kNoXmlPosition};
  }
  const auto position = static_cast<std::size_t>(result.offset);
  const bool atEnd = position + 1 >= length;  // the parser sets the last character aside
  return {Translate(result.status, atEnd), atEnd ? length : position};
}

// Returns the length of the text.
std::size_t CopyCharacters(const char* text, STree& tree) {
  const std::size_t length = std::strlen(text);
  tree.characters = std::make_unique_for_overwrite<char[]>(length + 1);
  std::memcpy(tree.characters.get(), text, length + 1);
  return length;
}

// What keeps the characters from being read, if anything does. The tree is built where nothing is wrong.
XMLFailure ParseCharacters(STree& tree, std::size_t length, const SScan& scan) {
  pugi::xml_document document;
  const pugi::xml_parse_result result =
      document.load_buffer_inplace(tree.characters.get(), length, kOptions, pugi::encoding_utf8);
  if (result.status == pugi::status_out_of_memory) {
    throw std::bad_alloc();
  }
  const XMLFailure malformed = FailureOf(result, length);
  if (malformed.error == eXMLErrorNone && scan.failure.error == eXMLErrorNone) {
    tree.elements.reserve(scan.elements + 1);
    tree.attributes.reserve(scan.attributes);
    BuildTree(document, tree);
  }
  return malformed;
}

// The failure that comes first in the text.
XMLFailure ReadText(const char* text, STree& tree) {
  const std::size_t length = CopyCharacters(text, tree);
  const SScan scan = XmlParser::FoldNames(tree.characters.get());
  const XMLFailure malformed = ParseCharacters(tree, length, scan);
  return scan.failure.position < malformed.position ? scan.failure : malformed;
}

// Adds all failures up to the one that keeps the text from being read; returns whether there is none such.
bool ReadTextLocated(const char* text, STree& tree, std::vector<XMLFailure>& failures) {
  const std::size_t earlier = failures.size();
  const std::size_t length = CopyCharacters(text, tree);
  const SScan scan = XmlParser::FoldNames(tree.characters.get(), tree.places, failures);
  const XMLFailure malformed = ParseCharacters(tree, length, scan);
  if (malformed.error == eXMLErrorNone) {
    return true;
  }
  while (failures.size() > earlier && failures.back().position >= malformed.position) {
    failures.pop_back();
  }
  failures.push_back(malformed);
  return false;
}

XMLResults Describe(const char* text, const XMLFailure& failure) {
  const auto [line, column] = XmlParser::CLineIndex(text, XmlParser::ECharacters::kUtf8).At(failure.position);
  return {failure.error, line, column};
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
  const XMLFailure failure = ReadText(text, *tree);
  if (failure.error != eXMLErrorNone) {
    result = Describe(text, failure);
    return {};
  }
  XMLNode root = XMLNode(tree, 0).getChildNode(rootName);
  result = {root.isEmpty() ? eXMLErrorFirstTagNotFound : eXMLErrorNone, 0, 0};
  return root;
}

XMLNode XMLNode::parseLocated(const char* text, const char* rootName, std::vector<XMLFailure>& failures) {
  if (text == nullptr) {
    failures.push_back({eXMLErrorNoElements, kNoXmlPosition});
    return {};
  }
  const auto tree = std::make_shared<STree>();
  if (!ReadTextLocated(text, *tree, failures)) {
    return {};
  }
  XMLNode root = XMLNode(tree, 0).getChildNode(rootName);
  if (root.isEmpty()) {
    failures.push_back({eXMLErrorFirstTagNotFound, kNoXmlPosition});
  }
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

int XMLNode::getAttributeCount() const {
  return isEmpty() ? 0 : static_cast<int>(m_tree->elements[m_element].attributeCount);
}

const char* XMLNode::getAttributeName(int index) const {
  return m_tree->attributes[m_tree->elements[m_element].firstAttribute + static_cast<std::uint32_t>(index)].name;
}

XMLRange XMLNode::getRange() const {
  return isEmpty() || m_tree->places.elements.empty() ? XMLRange{} : m_tree->places.elements[m_element];
}

XMLRange XMLNode::getAttributeRange(int index) const {
  const std::uint32_t first = m_tree->elements[m_element].firstAttribute;
  const std::vector<XMLRange>& places = m_tree->places.attributes;
  return places.empty() ? XMLRange{} : places[first + static_cast<std::uint32_t>(index)];
}
