#pragma once

#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "Reader/Problem.h"

namespace Zorbel::Internal {

/// Takes note of the problems of a document, for those who want to know them all. Where sources are asked for, what is
/// wrong in every pass of a loop, or whenever its file is included, is one problem, the first of those.
class CProblemList : public IProblemHandler {
 public:
  void Handle(const SProblem& problem) override;
  std::wstring NameOf(const char* bean) override;

  /// In the order in which they were found.
  const std::vector<SProblem>& GetProblems() const { return m_problems; }

 private:
  using Key = std::tuple<std::string, std::wstring, unsigned int, unsigned int>;  // code, file, line, column

  std::vector<SProblem> m_problems;
  std::set<Key> m_found;
};

}  // namespace Zorbel::Internal
