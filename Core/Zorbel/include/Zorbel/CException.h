#pragma once

#include <memory>
#include <string>

#include <Zorbel/Export.h>
#include <Zorbel/IException.h>

namespace Zorbel {

/// The library's own error. Constructing one writes its message to the log, at error level on the channel "Zorbel";
/// copying, moving, assigning and cloning write nothing.
/// Null texts are stored as empty ones. Thread: as every `IException`.
class ZORBEL_API CException : public IException {
 public:
  /// Throws: std::bad_alloc, with nothing logged.
  CException(const char* file, unsigned int line, const char* function, const wchar_t* message);

  /// Has the message "Unspecified Zorbel exception".
  CException(const char* file, unsigned int line, const char* function);

  CException(const CException& other);
  CException(CException&& other) noexcept;  ///< leaves `other` with empty texts
  CException& operator=(const CException& other);
  CException& operator=(CException&& other) noexcept;
  ~CException() override;

  std::unique_ptr<IException> Clone() const override;
  const char* GetFilename() const override;
  unsigned int GetCodeLine() const override;
  const char* GetFunctionName() const override;
  unsigned int GetThreadID() const override;

  /// Returns the error text shown to the user; never null. Ownership: as for the other texts.
  const wchar_t* GetMessageW() const;

 private:
  std::string m_file;
  std::string m_function;
  unsigned int m_line;
  std::wstring m_message;
  unsigned int m_threadId;
};

}  // namespace Zorbel
