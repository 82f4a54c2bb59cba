#pragma once

#include <cstdarg>
#include <string>

#include <Zorbel/IException.h>

/// Formats into a string of the caller's. Used on one thread, for one call.
template <class T>
class CbStrT;

template <>
class CbStrT<std::wstring> {
 public:
  class CException;

  explicit CbStrT(std::wstring& target) : m_target(target) {}

  /// Replaces the target by the arguments formatted by `format`, with the wide printf rules: `%s` takes a wide text.
  /// A zero character ends the result. Returns the target.
  /// Throws: `CException`, with the target unchanged and nothing logged, when `format` is null or cannot be done.
  std::wstring& Format(const wchar_t* format, ...);
  std::wstring& Format(const wchar_t* format, va_list arguments);

 private:
  std::wstring& m_target;
};

/// Raised for a format that cannot be carried out. Constructing one writes nothing to the log.
class CbStrT<std::wstring>::CException : public IException {
 public:
  CException(const char* file, unsigned int line, const char* function);

  std::unique_ptr<IException> Clone() const override { return std::make_unique<CException>(*this); }
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
