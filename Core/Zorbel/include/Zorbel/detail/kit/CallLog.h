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
#include <Logging/Logging.h>
#include <Zorbel/CException.h>
#include <Zorbel/CStringT.h>
#include <Zorbel/Export.h>
#include <Zorbel/ObjectCast.h>
#include <Zorbel/detail/kit/Utf8.h>

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
  const auto* carrier = dynamic_cast<const IBeanCarrier*>(&object);
  return TypeName(carrier != nullptr ? carrier->GetBeanType() : typeid(object));
}

/// Where a line comes from: the header, the line in it that gives this, and the operation of the interface.
struct SPlace {
  const char* file;
  int line;
  const char* function;
};

/// The module's logger for lines of the kit, which have a channel of their own. It serves to the very end of the
/// process, as exit methods may run there.
ZORBEL_LOCAL inline const Logging::CLogger& CallLogger() {
  static const Logging::CLogger logger(L"Zorbel.Kit");
  return logger;
}

/// Writes a line. `text` is called where it is written, and may fail as well: without memory there is no line.
template <class F>
void Warn(const SPlace& place, F text) noexcept {
  try {
    const Logging::CLogger& logger = CallLogger();
    if (logger.IsLogLevelEnabled(Logging::kLevelWarning)) {
      logger.Warn(place.file, place.line, place.function, L"%s", Decoded(text()).GetString());
    }
  } catch (...) {
    return;
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
    return Decoded(std::string(error.what()));
  } catch (...) {
    return L"unknown exception";
  }
}

/// Writes what was thrown by `called`, an operation of the class.
inline void WarnOfException(const SPlace& place, const char* called, const char* name,
                            const std::string& className) noexcept {
  Warn(place, [&] {
    return Decoded(std::string(called) + " '" + name + "' of class '" + className + "' threw exception: ") +
           CurrentExceptionText();
  });
}

}  // namespace Zorbel::Kit
