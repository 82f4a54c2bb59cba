#pragma once

#include <deque>
#include <list>
#include <string>
#include <string_view>
#include <vector>

/// Where the records of a document come from. A reader notes it for those who ask; what it notes has the shape of the
/// document, each source at the position of its record.
namespace Zorbel {

struct SSourceElement;

/// Both count from 1, a column for each character; 0 for none.
struct SPlace {
  unsigned int line = 0;
  unsigned int column = 0;
};

/// From its first character to the place behind its last one.
struct SExtent {
  SPlace begin;
  SPlace end;
};

struct SSourceFile {
  std::wstring name;                           ///< as it was opened; empty for a text
  const SSourceElement* includedBy = nullptr;  ///< null for the outermost; what has that file leads on outwards
};

struct SSourceAttribute {
  std::string name;  ///< in lower case
  SExtent extent;    ///< from the name to the closing quote
};

/// An element of a file.
struct SSourceElement {
  const SSourceFile* file = nullptr;
  SExtent extent;
  std::vector<SSourceAttribute> attributes;

  /// Returns where an attribute stands, or null when the element has none of that name, which is in lower case.
  const SExtent* FindAttribute(std::string_view name) const;
};

/// One pass of a loop.
struct SSourcePass {
  std::wstring variable;
  std::wstring value;
  const SSourceElement* loop = nullptr;
  const SSourcePass* outer = nullptr;
};

/// Where one record comes from: an element, and the passes of the loops around it, innermost first.
struct SSource {
  const SSourceElement* element = nullptr;
  const SSourcePass* pass = nullptr;
};

struct SPropertySource {
  SSource property;
  std::vector<SSource> arguments;  ///< the elements that hold the values
};

struct SInterfaceSource {
  SSource element;
  std::string name;  ///< as the document has it; the record is its type id
};

struct SBeanSource {
  SSource bean;
  std::vector<SSource> constructorArguments;  ///< the elements that hold the values
  std::vector<SPropertySource> properties;
  std::vector<SInterfaceSource> interfaces;
  std::vector<SSource> dependsOn;
};

struct SLibrarySource {
  std::vector<SSource> mentions;  ///< the libraries, and beans of others, that name the path
  std::deque<SBeanSource> beans;
};

struct SDocumentSources {
  SDocumentSources() = default;
  SDocumentSources(const SDocumentSources&) = delete;
  SDocumentSources& operator=(const SDocumentSources&) = delete;

  std::list<SLibrarySource> libraries;
  std::vector<SSource> includes;

  // What the sources above refer to.
  std::deque<SSourceFile> files;
  std::deque<SSourceElement> elements;
  std::deque<SSourcePass> passes;
};

}  // namespace Zorbel
