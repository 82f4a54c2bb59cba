#pragma once

#include <string>
#include <unordered_set>

#include "Document/SDocument.h"
#include "Reader/CBodyReader.h"
#include "Reader/CDeclarations.h"
#include "Reader/CReading.h"
#include "Reader/FileText.h"
#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

/// Reads one document, with all that it includes. Thread: one; what it works on is its caller's.
class CDocumentReader {
 public:
  /// `sources` is told where everything comes from; null when nobody asks.
  CDocumentReader(SDocument& document, IEnvironment& environment, IProblemHandler& problems,
                  CSourceRecorder* sources = nullptr);

  /// Reads a text; a null or empty one declares nothing. Includes are ignored. Throws: what the handler and the
  /// environment throw.
  void ReadText(const char* xml);

  /// Reads a file. Throws: likewise.
  void ReadFile(const wchar_t* name);

 private:
  // Files
  void Read(SOpenFile& file);
  bool Open(SOpenFile& file, const std::wstring& resolvedName);
  bool ReadBytes(const SOpenFile& file, std::string& bytes);
  void ReadIncludes(const XMLNode& root, SOpenFile& file);
  void Include(SOpenFile& file);
  void ReportOverrides(const SOpenFile& file);
  template <class... Texts>
  void ReportFile(const SFault& fault, const SOpenFile& file, const wchar_t* format, const Texts&... texts);

  // Texts; the file is null for one that comes from none
  XMLNode ParseBytes(std::string bytes, const SOpenFile& file);
  XMLNode Parse(const SFileText& text, const SOpenFile* file);
  XMLNode ParseLocated(const SFileText& text, const SOpenFile* file);
  void ReportUnreadable(const SOpenFile* file, const STextPosition& where, unsigned int line, unsigned int column);

  SDocument& m_document;
  CReading m_reading;
  CDeclarations m_declarations;
  CBodyReader m_body;
  std::unordered_set<std::wstring> m_openNames;  // resolved
  unsigned int m_fileCount = 0;
};

}  // namespace Zorbel::Internal
