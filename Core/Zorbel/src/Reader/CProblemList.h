#pragma once

#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "Reader/Problem.h"

namespace Zorbel::Internal {

/// Takes note of the problems of a document, for those who want to know them all. What is wrong in every pass of a loop
/// is one problem, of the first of those passes.
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
