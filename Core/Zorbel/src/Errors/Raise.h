#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include <Logging/CLogger.h>

#include "BasePool/CbConversion.h"
#include "BasePool/CbStr.h"

namespace Zorbel::Internal {

/// Where an error or a log line comes from. Made at the place itself, so that the line is the place's.
struct SOrigin {
  constexpr SOrigin(const char* sourceFile, const char* qualifiedFunction, unsigned int sourceLine = __builtin_LINE())
      : file(sourceFile), function(qualifiedFunction), line(sourceLine) {}

  const char* file;
  const char* function;
  unsigned int line;
};

enum ELogLevel { information = 2, warning = 3 };

/// Throws: `CException` with the message.
[[noreturn]] void Raise(const SOrigin& origin, const std::wstring& message);

/// Throws: `CException` with the texts in place of each `%s` of the format.
template <class... Texts>
[[noreturn]] void Raise(const SOrigin& origin, const wchar_t* format, const std::wstring& first,
                        const Texts&... texts) {
  std::wstring message;
  Raise(origin, CbStrT<std::wstring>(message).Format(format, first.c_str(), texts.c_str()...));
}

inline std::wstring WideName(std::string_view name) { return AnsiToWide(name); }

template <class F>
std::enable_if_t<std::is_invocable_v<const F&>, std::wstring> WideName(const F& name) {
  return AnsiToWide(name());
}

/// Writes a warning line with the narrow names, or what functions return as such, in place of each `%s`. They are
/// called and converted only when it is written.
template <class... Names>
void Warn(const Logging::CLogger& logger, const SOrigin& origin, const wchar_t* format, const Names&... names) {
  if (logger.IsLogLevelEnabled(ELogLevel::warning)) {
    logger.Warn(origin.file, static_cast<int>(origin.line), origin.function, format, WideName(names).c_str()...);
  }
}

}  // namespace Zorbel::Internal
