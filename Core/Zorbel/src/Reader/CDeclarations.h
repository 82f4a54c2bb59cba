#pragma once

#include <Zorbel/CStringT.h>

#include <cstddef>
#include <string_view>
#include <unordered_map>
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

  /// A file begins, whose includes come first.
  void OpenFile(SOpenFile& file);

  /// What follows is declared in the file; before the first call, in a text.
  void SetFile(SOpenFile& file) { m_file = &file; }

  SLibrary& FindOrAddLibrary(const char* path);
  void AddBean(SLibrary& library, SBeanDescription&& bean);

  /// Returns the position of the first of the library's beans that the file set, or one that it includes, declares.
  std::size_t FirstBean(const SLibrary& library) const;

  /// Returns the beans of a file, and of those that it includes, which earlier includes of the outer file have
  /// declared, library by library in the order in which the file names them. Requires: the file has just been read, and
  /// is an include.
  std::vector<SDeclared> FindOverrides(const SOpenFile& file) const;

 private:
  /// A library as one file names it. A file that names it once more behind its includes has another one.
  struct SMention {
    unsigned int file;
    std::size_t firstBean;
  };

  struct SKnownLibrary {
    SLibrary* library = nullptr;
    std::vector<SMention> mentions;  // in included files
  };

  struct SMentioned {
    const SKnownLibrary* known;
    std::size_t mention;
  };

  bool IsIncluded() const { return m_file != nullptr && m_file->outer != nullptr; }
  void Mention(SKnownLibrary& known);
  void NoteNames(const SKnownLibrary& known);
  void NoteName(const CStringT<char>& name);
  void NameBeansBefore(const SOpenFile& file) const;

  SDocument& m_document;
  SOpenFile* m_file = nullptr;
  std::unordered_map<std::string_view, SKnownLibrary> m_libraries;  // by path
  std::vector<SMentioned> m_mentions;                               // of all libraries, in their order
  CbMap<CStringT<char>, unsigned int> m_fileOfBean;                 // the last one, of those that are included
  bool m_hasBeans = false;
  bool m_notesNames = false;
};

}  // namespace Zorbel::Internal
