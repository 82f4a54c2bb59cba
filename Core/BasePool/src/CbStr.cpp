#include "BasePool/CbStr.h"

#include <Zorbel/detail/text/PrintFormat.h>

#include "Platform/Thread.h"

namespace {

constexpr const char* kFile = "Core/BasePool/CbStr";
constexpr const char* kFormatFunction =
    "CbStrT<class std::basic_string<wchar_t,struct std::char_traits<wchar_t>,class std::allocator<wchar_t> > >::Format";

const char* OrEmpty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

std::wstring& CbStrT<std::wstring>::Format(const wchar_t* format, ...) {
  struct SArguments {
    va_list list;
    ~SArguments() { va_end(list); }
  } arguments;
  va_start(arguments.list, format);
  return Format(format, arguments.list);
}

std::wstring& CbStrT<std::wstring>::Format(const wchar_t* format, va_list arguments) {
  if (format == nullptr) {
    throw CException(kFile, __LINE__, kFormatFunction);
  }
  std::wstring text;
  if (!Zorbel::detail::PrintFormatter<wchar_t>::Format(text, format, arguments)) {
    throw CException(kFile, __LINE__, kFormatFunction);
  }
  return m_target = text.substr(0, text.find(L'\0'));
}

CbStrT<std::wstring>::CException::CException(const char* file, unsigned int line, const char* function)
    : m_file(OrEmpty(file)), m_line(line), m_function(OrEmpty(function)), m_threadId(Platform::CurrentThreadId()) {}
