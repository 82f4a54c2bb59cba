#include "Definitions/CBeanConfig.h"

#include <string>

#include "Errors/Raise.h"

namespace Zorbel {
namespace {

constexpr const char* kFile = "Core/Zorbel/src/CBeanConfig";
constexpr const char* kConstructor = "Zorbel::CBeanConfig::CBeanConfig";

// A null value, like a literal, takes a parameter type.
bool NeedsParameterType(const SArgumentDescription& argument) {
  return argument.kind != SArgumentDescription::kBean && argument.kind != SArgumentDescription::kService;
}

}  // namespace

CBeanConfig::CBeanConfig(const SBeanDescription& description, WrapperMaker maker, const SLibrary* library)
    : m_description(&description), m_wrapper(maker()), m_maker(maker), m_library(library) {
  if (!m_wrapper && !m_description->properties.empty()) {
    Internal::Raise({kFile, kConstructor}, L"Wrapper maker of class '%s' returned no wrapper",
                    AnsiToWide(m_description->className.GetString()));
  }
  m_properties.reserve(m_description->properties.size());
  for (const SPropertyDescription& property : m_description->properties) {
    CheckParameterTypes(property);
    m_properties.push_back(CBeanProperty::Make(property));
  }
}

void CBeanConfig::CheckParameterTypes(const SPropertyDescription& property) const {
  std::vector<std::string> types;
  m_wrapper->GetParameterTypes(property.name, property.arguments.size(), types);
  std::size_t next = 0;
  for (const SArgumentDescription& argument : property.arguments) {
    if (!NeedsParameterType(argument)) {
      continue;
    }
    if (next >= types.size() || types[next].empty()) {
      Internal::Raise({kFile, kConstructor}, L"Missing argument type for property '%s'",
                      Utf8ToWide(property.name.GetString()));
    }
    ++next;
  }
}

std::shared_ptr<IBeanWrapper> CBeanConfig::GetWrapper() const {
  return m_wrapper ? m_wrapper : std::shared_ptr<IBeanWrapper>(m_maker());
}

}  // namespace Zorbel
