#include "Reader/CProblemList.h"

#include "Platform/CodePage.h"

namespace Zorbel::Internal {

void CProblemList::Handle(const SProblem& problem) {
  const SPlace& place = problem.extent.begin;
  if (problem.file == nullptr ||
      m_found.emplace(problem.fault.code, problem.file->name, place.line, place.column).second) {
    m_problems.push_back(problem);
  }
}

std::wstring CProblemList::NameOf(const char* bean) { return Platform::Utf8ToWideLossy(bean); }

}  // namespace Zorbel::Internal
