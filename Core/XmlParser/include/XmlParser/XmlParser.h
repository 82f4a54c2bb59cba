#pragma once

#include <cstdint>
#include <memory>

enum XMLError {
  eXMLErrorNone = 0,
  eXMLErrorEmpty,
  eXMLErrorNoElements,
  eXMLErrorFileNotFound,
  eXMLErrorFirstTagNotFound,
  eXMLErrorMissingEndTag,
  eXMLErrorUnmatchedEndTag,
  eXMLErrorUnmatchedEndClearTag,
  eXMLErrorUnexpectedToken,
  eXMLErrorUnknownCharacterEntity,
  eXMLErrorCharConversionError,
  eXMLErrorFileTooLarge
};

/// How a parse went. Line and column tell where the parser stopped and count from 1, a column for each character; both
/// are 0 when no place is known.
struct XMLResults {
  XMLError error;
  int nLine;
  int nColumn;
};

namespace XmlParser {
struct STree;
}

/// An element of a parsed document, or none. Names are compared without regard to ASCII letter case; texts keep the
/// document's bytes.
/// Ownership: a cheap value; copies share the document and keep it alive, and returned texts live as long as it does.
/// Thread: a document is only read once parsed.
class XMLNode {
 public:
  XMLNode() = default;

  /// Returns the first top-level element of that name; what else is at the top level is ignored. Comments, processing
  /// instructions and CDATA sections are no content, and entities declared by the document are not known.
  /// `results` may be null. Throws: std::bad_alloc.
  static XMLNode parseString(const char* text, const char* rootName, XMLResults* results);

  bool isEmpty() const { return m_tree == nullptr; }

  /// Returns the number of children of that name.
  int nChildNode(const char* name) const;

  /// Returns the child at position `index` among those of that name; an empty node when there is none. To walk the
  /// children, use the other form.
  XMLNode getChildNode(const char* name, int index = 0) const;

  /// Returns the next child of that name and moves `iterator`, which starts at 0, behind it; an empty node at the end.
  /// A walk takes time in proportion to the children. Requires: `iterator` is 0 or comes from a call on this element.
  XMLNode getChildNode(const char* name, int* iterator) const;

  /// Returns the value of an attribute, the first of that name; null when there is none.
  const char* getAttribute(const char* name) const;

  /// Returns the element's first piece of text, without white space at its ends; null when there is none. Comments do
  /// not part a text.
  const char* getText() const;

 private:
  XMLNode(std::shared_ptr<const XmlParser::STree> tree, std::uint32_t element);

  XMLNode NextOf(const char* name, std::uint32_t candidate) const;

  std::shared_ptr<const XmlParser::STree> m_tree;
  std::uint32_t m_element = 0;
};
