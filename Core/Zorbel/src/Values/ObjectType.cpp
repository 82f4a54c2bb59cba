#include "Values/ObjectType.h"

#include <Zorbel/CStringT.h>

#include <string_view>

#include "Document/SBeanDescription.h"
#include "Values/ValueSources.h"

namespace Zorbel {
namespace {

std::shared_ptr<IValuePointer> WithValue(std::shared_ptr<IValuePointer> source) {
  return source->GetValue() != nullptr ? source : nullptr;
}

std::shared_ptr<IValuePointer> MakeBeanPointer(IBeanFactory* factory, const wchar_t* value, const SLibrary* library) {
  auto source = std::make_shared<CBeanPointer>();
  source->SetObject(factory->GetBean(CStringT<char>(value), library));
  return WithValue(std::move(source));
}

}  // namespace

bool ObjectType::IsReference(const char* typeName) {
  const std::string_view name = typeName;
  return name == SArgumentDescription::kService || name == SArgumentDescription::kBean ||
         name == SArgumentDescription::kNull;
}

std::shared_ptr<IValuePointer> ObjectType::CreateValuePointer(IBeanFactory* factory, const char* typeName,
                                                              const wchar_t* value, const SLibrary* library) {
  const std::string_view name = typeName;
  if (name == SArgumentDescription::kBean) {
    return MakeBeanPointer(factory, value, library);
  }
  if (name == SArgumentDescription::kService) {
    return WithValue(std::make_shared<CServicePointer>(factory, value));
  }
  return name == SArgumentDescription::kNull ? std::make_shared<CNullPointer>() : nullptr;
}

}  // namespace Zorbel
