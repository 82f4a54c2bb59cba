#include "Reader/CDeclarations.h"

#include <algorithm>
#include <utility>

namespace Zorbel::Internal {

// From the first file opened behind a bean on it matters who has declared a name. The files that have declared beans
// before lie inside each other, where any may.
void CDeclarations::OpenFile(SOpenFile& file) {
  file.firstMention = file.namedMentions = m_mentions.size();
  if (m_hasBeans && !m_notesNames) {
    for (const auto& [path, known] : m_libraries) {
      NoteNames(known);
    }
    m_notesNames = true;
  }
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
    m_mentions.push_back({&known, known.mentions.size()});
    known.mentions.push_back({m_file->number, known.library->beans.size()});
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

// While the file is read, all mentions from the first one in it on stand in it or in what it includes.
std::size_t CDeclarations::FirstBean(const SLibrary& library) const {
  if (!IsIncluded()) {
    return 0;
  }
  const std::vector<SMention>& mentions = m_libraries.at(library.path.GetString()).mentions;
  return std::partition_point(mentions.begin(), mentions.end(),
                              [this](const SMention& mention) { return mention.file < m_file->number; })
      ->firstBean;
}

// The outer file keeps them: later includes only add to them.
void CDeclarations::NameBeansBefore(const SOpenFile& file) const {
  SOpenFile& outer = *file.outer;
  for (; outer.namedMentions < file.firstMention; ++outer.namedMentions) {
    const auto& [known, mention] = m_mentions[outer.namedMentions];
    const bool isLast = mention + 1 == known->mentions.size();
    const std::size_t end = isLast ? known->library->beans.size() : known->mentions[mention + 1].firstBean;
    for (std::size_t i = known->mentions[mention].firstBean; i < end; ++i) {
      outer.beanNames.insert(known->library->beans[i].name.GetString());
    }
  }
}

std::vector<CDeclarations::SDeclared> CDeclarations::FindOverrides(const SOpenFile& file) const {
  NameBeansBefore(file);
  std::vector<SDeclared> overrides;
  std::unordered_set<const SKnownLibrary*> seen;
  for (std::size_t next = file.firstMention; next < m_mentions.size(); ++next) {
    const auto& [known, mention] = m_mentions[next];
    const auto& beans = known->library->beans;
    for (std::size_t i = seen.insert(known).second ? known->mentions[mention].firstBean : beans.size();
         i < beans.size(); ++i) {
      if (file.outer->beanNames.contains(beans[i].name.GetString())) {
        overrides.push_back({known->library, i});
      }
    }
  }
  return overrides;
}

}  // namespace Zorbel::Internal
