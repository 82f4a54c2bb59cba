#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "Reader/Problem.h"

namespace Zorbel::Internal {

/// Takes note of the problems of a document, for those who want to know them all. What is wrong in every pass of a
/// loop, or whenever its file is included, is one problem, the first of those.
class CProblemList : public IProblemHandler {
 public:
  static constexpr std::size_t kMostProblems = 10'000;

  void Handle(const SProblem& problem) override;
  std::wstring NameOf(const char* bean) override;

  /// In the order in which they were found.
  const std::vector<SProblem>& GetProblems() const { return m_problems; }

  /// False when there are more.
  bool IsComplete() const { return m_complete; }

 private:
  // Code, file, line, column, attribute; the text where no place is known.
  using Key = std::tuple<std::string, std::wstring, unsigned int, unsigned int, std::string, std::wstring>;

  std::vector<SProblem> m_problems;
  std::set<Key> m_found;
  bool m_complete = true;
};

}  // namespace Zorbel::Internal
