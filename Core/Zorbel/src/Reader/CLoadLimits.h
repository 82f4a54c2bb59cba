#pragma once

namespace Zorbel::Internal {

/// What one whole load may do: the document asked for with all that it includes. Neither files that include others more
/// than once nor loops inside each other may make it go on without end.
class CLoadLimits {
 public:
  static constexpr unsigned int kMostFiles = 100'000;
  static constexpr unsigned int kMostPasses = 4'000'000;

  /// To be called before a file is read, and before a pass of a loop runs. False for those beyond.
  bool CountFile() { return ++m_files <= kMostFiles; }
  bool CountPass() { return ++m_passes <= kMostPasses; }

  /// True from the first file or pass beyond until the next one.
  bool IsFirstFileBeyond() const { return m_files == kMostFiles + 1; }
  bool IsFirstPassBeyond() const { return m_passes == kMostPasses + 1; }

 private:
  unsigned int m_files = 0;
  unsigned int m_passes = 0;
};

}  // namespace Zorbel::Internal
