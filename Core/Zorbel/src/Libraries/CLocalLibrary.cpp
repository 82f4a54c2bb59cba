#include "Libraries/CLocalLibrary.h"

#include <mutex>

#include "Errors/Raise.h"
#include "Threads/CCallValues.h"

namespace Zorbel {
namespace {

constexpr const char* kFile = "Core/Zorbel/src/CLocalLibrary";

void RequireName(const char* name, const Internal::SOrigin& origin, const wchar_t* message) {
  if (name == nullptr) {
    Internal::Raise(origin, message);
  }
}

}  // namespace

void* CLocalLibrary::GetFunction(const char* name) {
  const std::shared_lock lock(m_mutex);
  void* const* function = name != nullptr ? m_functions.Lookup(name) : nullptr;
  return function != nullptr ? *function : nullptr;
}

void CLocalLibrary::RegisterFunction(const char* name, void* function) {
  RequireName(name, {kFile, "Zorbel::CLocalLibrary::RegisterFunction"}, L"RegisterFunction: the name is null");
  const std::unique_lock lock(m_mutex);
  m_functions.SetAt(name).value = function;
}

bool CLocalLibrary::UnregisterFunction(const char* name) {
  const std::unique_lock lock(m_mutex);
  return name != nullptr && m_functions.RemoveKey(name);
}

void CLocalLibrary::RegisterTypeID(const char* className, const char* typeId) {
  RequireName(className, {kFile, "Zorbel::CLocalLibrary::RegisterTypeID"}, L"RegisterTypeID: the class name is null");
  const std::unique_lock lock(m_mutex);
  const char* text = m_typeIdTexts.SetAt(typeId != nullptr ? typeId : "").key;
  m_typeIds.SetAt(className).value = text;
}

const std::type_info* CLocalLibrary::GetType(const std::vector<void*>& arguments, std::size_t position) const {
  return Internal::CCallValues::FindType(arguments, position);
}

const char* CLocalLibrary::GetTypeID(const char* className) {
  {
    const std::shared_lock lock(m_mutex);
    if (const char* const* typeId = m_typeIds.Lookup(className)) {
      return *typeId;
    }
  }
  Internal::Raise({kFile, "Zorbel::CLocalLibrary::GetTypeID"}, L"No type id for class '%s' registered",
                  Utf8ToWide(className));
}

}  // namespace Zorbel
