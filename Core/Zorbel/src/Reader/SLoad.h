#pragma once

#include <string>
#include <unordered_set>

namespace Zorbel::Internal {

inline constexpr unsigned int kMostFiles = 100'000;
inline constexpr unsigned int kMostPasses = 4'000'000;

/// One whole load: the document asked for with all that it includes. Neither files that include others more than once
/// nor loops inside each other may make it go on without end.
struct SLoad {
  std::unordered_set<std::wstring> openFiles;  ///< the resolved names of those being read

  /// To be called before a file is read, and before a pass of a loop runs. Throw: `CException` for one too many.
  void CountFile();
  void CountPass();

 private:
  unsigned int m_files = 0;
  unsigned int m_passes = 0;
};

}  // namespace Zorbel::Internal
