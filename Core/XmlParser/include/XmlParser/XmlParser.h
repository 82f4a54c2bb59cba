#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

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

/// The position of what stands at no place in the text.
inline constexpr std::size_t kNoXmlPosition = static_cast<std::size_t>(-1);

/// A piece of a document's text, in bytes from its beginning; `end` is behind it. Empty when there is none.
struct XMLRange {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// Something wrong in a document's text, and the byte where it stands, or kNoXmlPosition.
struct XMLFailure {
  XMLError error;
  std::size_t position;
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

  /// Like `parseString`, for those who want to know where things stand and everything that is wrong: notes the places
  /// of elements and attributes, and adds to `failures`, in the order of the text, each reference that names no
  /// character, and at last what keeps the text from being read, if anything does: only then the result is empty. The
  /// first one is the failure of `parseString`; a null text and a missing root have no position. A reference that names
  /// no character stays as it is written, but a number may also become other bytes or end the value.
  /// Throws: std::bad_alloc.
  static XMLNode parseLocated(const char* text, const char* rootName, std::vector<XMLFailure>& failures);

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

  /// Returns the element's number in document order, by which those of one document can be told apart; 0 is none.
  std::uint32_t getPosition() const { return m_element; }

  /// Attributes in the order of the text, those of equal names included; names are in lower case.
  /// Requires: 0 <= `index` < the count.
  int getAttributeCount() const;
  const char* getAttributeName(int index) const;

  /// Returns the range of the whole element, from its "<" to behind the ">" of its end tag or of its single one. All
  /// ranges are empty for an empty node and in documents read by `parseString`.
  XMLRange getRange() const;

  /// Returns the range of the attribute at `index`, from its name to behind the closing quote.
  XMLRange getAttributeRange(int index) const;

 private:
  XMLNode(std::shared_ptr<const XmlParser::STree> tree, std::uint32_t element);

  XMLNode NextOf(const char* name, std::uint32_t candidate) const;

  std::shared_ptr<const XmlParser::STree> m_tree;
  std::uint32_t m_element = 0;
};
