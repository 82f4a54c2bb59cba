#pragma once

#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <typeinfo>

#if __has_include(<cxxabi.h>)
#include <cxxabi.h>
#endif

#include <Logging/CLogger.h>
#include <Zorbel/CException.h>
#include <Zorbel/CStringT.h>
#include <Zorbel/ObjectCast.h>

namespace Zorbel::Kit {

/// Returns the type's name as sources spell it, where the compiler offers that.
inline std::string TypeName(const std::type_info& type) {
#if __has_include(<cxxabi.h>)
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> text(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status),
                                                         &std::free);
  if (text) {
    return text.get();
  }
#endif
  return type.name();
}

/// Returns the name of the object's class, seen through what carries it.
inline std::string ClassNameOf(const IObject& object) {
  const auto* carrier = dynamic_cast<const IBeanObject*>(&object);
  return TypeName(carrier != nullptr ? carrier->GetBeanType() : typeid(object));
}

inline void Warn(const char* function, const CStringT<wchar_t>& text) noexcept {
  try {
    Logging::CLogger(L"Zorbel").Warn("Zorbel/Class", __LINE__, function, L"%s", text.GetString());
  } catch (...) {
    return;  // without memory for a channel there is no line
  }
}

/// Returns what the exception being handled says of itself.
inline CStringT<wchar_t> CurrentExceptionText() {
  try {
    throw;
  } catch (const CException& error) {
    return error.GetMessageW();
  } catch (const IException& error) {
    return CStringT<wchar_t>("raised by ") + CStringT<wchar_t>(error.GetFunctionName());
  } catch (const std::exception& error) {
    return CStringT<wchar_t>(error.what());
  } catch (...) {
    return L"unknown exception";
  }
}

/// Writes what was thrown by `called`, an operation of the class.
inline void WarnOfException(const char* function, const std::string& called, const std::string& className) noexcept {
  try {
    const std::string start = called + " of class '" + className + "' threw exception: ";
    Warn(function, CStringT<wchar_t>(start.c_str()) + CurrentExceptionText());
  } catch (...) {
    return;
  }
}

}  // namespace Zorbel::Kit
