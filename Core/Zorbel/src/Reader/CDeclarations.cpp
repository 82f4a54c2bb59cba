#include "Reader/CDeclarations.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace Zorbel::Internal {

void CDeclarations::ExpectFile() {
  if (!m_hasBeans || m_notesNames) {
    return;
  }
  for (const auto& [path, known] : m_libraries) {
    NoteNames(known);
  }
  m_notesNames = true;
}

// The beans from one mention to the next one are those of its file.
void CDeclarations::NoteNames(const SKnownLibrary& known) {
  std::size_t bean = known.library->beans.size();
  for (auto mention = known.mentions.rbegin(); mention != known.mentions.rend(); ++mention) {
    for (; bean > mention->firstBean; --bean) {
      m_fileOfBean.SetAt(known.library->beans[bean - 1].name).value = mention->file;
    }
  }
}

SLibrary& CDeclarations::FindOrAddLibrary(const char* path) {
  auto known = m_libraries.find(path);
  if (known == m_libraries.end()) {
    SLibrary& added = m_document.libraries.emplace_back();
    added.path = path;
    known = m_libraries.emplace(added.path.GetString(), SKnownLibrary{&added, {}}).first;
  }
  if (IsIncluded()) {
    Mention(known->second);
  }
  return *known->second.library;
}

void CDeclarations::Mention(SKnownLibrary& known) {
  if (known.mentions.empty() || known.mentions.back().file != m_file->number) {
    known.mentions.push_back({m_file->number, m_mentionCount++, known.library->beans.size()});
  }
}

void CDeclarations::AddBean(SLibrary& library, SBeanDescription&& bean) {
  if (m_notesNames && IsIncluded()) {
    NoteName(bean.name);
  }
  m_hasBeans = true;
  library.beans.push_back(std::move(bean));
}

// Files are numbered as they are opened. So the innermost open file that is not younger than the last one with a bean
// of the name has included that one, or is it; the open file inside it, if any, is the one that may not declare it.
// Earlier ones with that name need not be looked at: they would have been told of by then.
void CDeclarations::NoteName(const CStringT<char>& name) {
  unsigned int& last = m_fileOfBean.SetAt(name).value;
  SOpenFile* inner = nullptr;
  for (SOpenFile* file = m_file; last != 0 && file->number > last; file = file->outer) {
    inner = file;
  }
  if (inner != nullptr) {
    inner->overrides = true;
  }
  last = m_file->number;
}

// All mentions from the first one in the file on stand in it or in what it includes.
const CDeclarations::SMention* CDeclarations::FirstMention(const SLibrary& library, const SOpenFile& file) const {
  const std::vector<SMention>& mentions = m_libraries.at(library.path.GetString()).mentions;
  const auto found = std::partition_point(mentions.begin(), mentions.end(),
                                          [&](const SMention& mention) { return mention.file < file.number; });
  return found != mentions.end() ? &*found : nullptr;
}

std::size_t CDeclarations::FirstBeanOf(const SOpenFile& file, const SLibrary& library) const {
  if (file.outer == nullptr) {
    return 0;
  }
  const SMention* first = FirstMention(library, file);
  return first != nullptr ? first->firstBean : library.beans.size();
}

std::vector<std::pair<const CDeclarations::SMention*, const SLibrary*>> CDeclarations::MentionsIn(
    const SOpenFile& file) const {
  std::vector<std::pair<const SMention*, const SLibrary*>> found;
  for (const SLibrary& library : m_document.libraries) {
    if (const SMention* first = FirstMention(library, file)) {
      found.emplace_back(first, &library);
    }
  }
  std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first->order < b.first->order; });
  return found;
}

std::set<std::string_view> CDeclarations::NamesBefore(const SOpenFile& file) const {
  std::set<std::string_view> names;
  for (const SLibrary& library : m_document.libraries) {
    const SMention* first = FirstMention(library, file);
    const std::size_t end = first != nullptr ? first->firstBean : library.beans.size();
    for (std::size_t i = FirstBeanOf(*file.outer, library); i < end; ++i) {
      names.insert(library.beans[i].name.GetString());
    }
  }
  return names;
}

std::vector<CDeclarations::SDeclared> CDeclarations::FindOverrides(const SOpenFile& file) const {
  const std::set<std::string_view> before = NamesBefore(file);
  std::vector<SDeclared> overrides;
  for (const auto& [first, library] : MentionsIn(file)) {
    for (std::size_t i = first->firstBean; i < library->beans.size(); ++i) {
      if (before.contains(library->beans[i].name.GetString())) {
        overrides.push_back({library, i});
      }
    }
  }
  return overrides;
}

}  // namespace Zorbel::Internal
