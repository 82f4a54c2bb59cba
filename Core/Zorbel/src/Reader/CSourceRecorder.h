#pragma once

#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "Document/SLibrary.h"
#include "Document/Sources.h"
#include "Reader/FileText.h"
#include "Reader/SOpenFile.h"
#include "Reader/SVariable.h"
#include "XmlParser/CLineIndex.h"

namespace Zorbel::Internal {

/// Notes where the records of a document come from while it is read.
class CSourceRecorder {
 public:
  /// What a file, or a text, is read in, for the life of a scope.
  class CFile {
   public:
    /// Without a recorder it does nothing. `file` is null for a text.
    CFile(CSourceRecorder* recorder, const SOpenFile* file);
    ~CFile();
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

   private:
    CSourceRecorder* m_recorder;
  };

  /// `noted` outlives the recorder.
  explicit CSourceRecorder(SDocumentSources& noted) : m_noted(noted) {}

  /// The text of the file that is read in the innermost scope. Returns it as it stands, kept for the scope's life.
  const char* Index(const SFileText& text);

  /// Returns the file being read; null outside of all.
  const SSourceFile* GetFile() const;

  /// Returns a place in its text; none for a position outside of it.
  SPlace PlaceAt(std::size_t position) const;

  /// Returns where an element of the file being read comes from.
  SSource SourceOf(const XMLNode& node, const SVariable* variables);

  /// Returns where a bean that has been added comes from.
  SSource SourceOf(const SLibrary& library, std::size_t bean) const;

  void AddInclude(const XMLNode& node);
  void AddMention(const SLibrary& library, const SSource& source);
  void AddBean(const SLibrary& library, SBeanSource&& source);

 private:
  struct SOpenText {
    const SSourceFile* file = nullptr;
    std::string text;
    std::unique_ptr<XmlParser::CLineIndex> lines;
    std::vector<const SSourceElement*> elements;  // by position
  };

  const SSourceElement* ElementOf(const XMLNode& node);
  const SSourceElement* Note(const XMLNode& node);
  const SSourcePass* PassOf(const SVariable* variables);
  SExtent ExtentOf(const XMLRange& range) const;

  SDocumentSources& m_noted;
  std::deque<SOpenText> m_open;  // innermost last
  std::unordered_map<const SLibrary*, SLibrarySource*> m_libraries;
};

}  // namespace Zorbel::Internal
