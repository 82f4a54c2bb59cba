#include "Reader/CProblemList.h"

#include <utility>

#include "Platform/CodePage.h"

namespace Zorbel::Internal {

void CProblemList::Handle(const SProblem& problem) {
  const SPlace& place = problem.extent.begin;
  Key key(problem.fault.code, problem.file != nullptr ? problem.file->name : std::wstring(), place.line, place.column,
          problem.attribute != nullptr ? problem.attribute : "", place.line == 0 ? problem.text : std::wstring());
  if (m_found.size() == kMostProblems) {
    m_complete = m_complete && m_found.contains(key);
  } else if (m_found.insert(std::move(key)).second) {
    m_problems.push_back(problem);
  }
}

std::wstring CProblemList::NameOf(const char* bean) { return Platform::Utf8ToWideLossy(bean); }

}  // namespace Zorbel::Internal
