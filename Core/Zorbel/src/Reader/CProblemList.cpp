#include "Reader/CProblemList.h"

#include "Platform/CodePage.h"

namespace Zorbel::Internal {

void CProblemList::Handle(const SProblem& problem) {
  const SPlace& place = problem.extent.begin;
  const std::wstring file = problem.file != nullptr ? problem.file->name : std::wstring();
  if (place.line == 0 || m_found.emplace(problem.fault.code, file, place.line, place.column).second) {
    m_problems.push_back(problem);
  }
}

std::wstring CProblemList::NameOf(const char* bean) { return Platform::Utf8ToWideLossy(bean); }

}  // namespace Zorbel::Internal
