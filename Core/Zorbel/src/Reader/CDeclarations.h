#pragma once

#include <Zorbel/CStringT.h>

#include <cstddef>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "BasePool/CbMap.h"
#include "Document/SDocument.h"
#include "Reader/SOpenFile.h"

namespace Zorbel::Internal {

/// The libraries and beans that a document declares, while it is read. Knows of those of included files which file has
/// declared them: no file may declare a bean that one included before it by the same file has declared. Beans of a file
/// itself may have the names of beans that it includes.
class CDeclarations {
 public:
  struct SDeclared {
    const SLibrary* library;
    std::size_t bean;
  };

  explicit CDeclarations(SDocument& document) : m_document(document) {}

  /// The file that what follows is declared in; null for a text.
  void SetFile(SOpenFile* file) { m_file = file; }

  /// To be called before a file is read. From then on it matters who has declared a name: the files that have declared
  /// beans before lie inside each other, where any may.
  void ExpectFile();

  SLibrary& FindOrAddLibrary(const char* path);
  void AddBean(SLibrary& library, SBeanDescription&& bean);

  /// Returns the position of the first of the library's beans that the file or one that it includes declares.
  std::size_t FirstBeanOf(const SOpenFile& file, const SLibrary& library) const;

  /// Returns the beans of a file that has been read, and of those that it includes, which earlier includes of the outer
  /// file have declared, library by library in the order in which the file names them.
  std::vector<SDeclared> FindOverrides(const SOpenFile& file) const;

 private:
  /// A library as one file names it. A file that names it once more behind its includes has another one.
  struct SMention {
    unsigned int file;
    unsigned int order;  // of all mentions
    std::size_t firstBean;
  };

  struct SKnownLibrary {
    SLibrary* library = nullptr;
    std::vector<SMention> mentions;  // in included files
  };

  bool IsIncluded() const { return m_file != nullptr && m_file->outer != nullptr; }
  void Mention(SKnownLibrary& known);
  void NoteNames(const SKnownLibrary& known);
  void NoteName(const CStringT<char>& name);
  const SMention* FirstMention(const SLibrary& library, const SOpenFile& file) const;
  std::vector<std::pair<const SMention*, const SLibrary*>> MentionsIn(const SOpenFile& file) const;
  std::set<std::string_view> NamesBefore(const SOpenFile& file) const;

  SDocument& m_document;
  SOpenFile* m_file = nullptr;
  std::unordered_map<std::string_view, SKnownLibrary> m_libraries;  // by path
  CbMap<CStringT<char>, unsigned int> m_fileOfBean;                 // the last one, of those that are included
  unsigned int m_mentionCount = 0;
  bool m_hasBeans = false;
  bool m_notesNames = false;
};

}  // namespace Zorbel::Internal
