#pragma once

#include <string>

#include <Zorbel/IException.h>

/// Raised when the block allocator cannot obtain or set up storage. Constructing one logs "Out of memory" on the
/// channel "Exception"; copying writes nothing.
class CbExceptionContainer : public IException {
 public:
  /// Null texts are stored as empty ones.
  CbExceptionContainer(const char* file, unsigned int line, const char* function);

  std::unique_ptr<IException> Clone() const override { return std::make_unique<CbExceptionContainer>(*this); }
  const char* GetFilename() const override { return m_file.c_str(); }
  unsigned int GetCodeLine() const override { return m_line; }
  const char* GetFunctionName() const override { return m_function.c_str(); }
  unsigned int GetThreadID() const override { return m_threadId; }

 private:
  std::string m_file;
  unsigned int m_line;
  std::string m_function;
  unsigned int m_threadId;
};
