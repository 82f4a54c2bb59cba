#include "Configuration/CXMLResource.h"

#include <string>

#include "Configuration/CContainerEnvironment.h"
#include "Errors/Raise.h"
#include "Errors/SharedOrigins.h"
#include "Reader/CDocumentReader.h"
#include "Services/CServiceConfig.h"

namespace Zorbel {
namespace {

using Internal::kResourceFile;

/// The first problem is the last one.
class CRaisingHandler : public Internal::IProblemHandler {
 public:
  void Handle(const Internal::SProblem& problem) override {
    Internal::Raise({kResourceFile, problem.fault.function, problem.fault.line}, problem.text);
  }
  std::wstring NameOf(const char* bean) override { return Utf8ToWide(bean); }
};

}  // namespace

CXMLResource::CXMLResource(IBeanFactory* owner, const char* xmlText) : CXMLResource(owner) {
  CRaisingHandler problems;
  Internal::CContainerEnvironment environment(m_registry.GetDefinitions());
  Internal::CDocumentReader(m_document, environment, problems).ReadText(xmlText);
}

CXMLResource::CXMLResource(IBeanFactory* owner, const wchar_t* fileName) : CXMLResource(owner) {
  CRaisingHandler problems;
  Internal::CContainerEnvironment environment(m_registry.GetDefinitions());
  Internal::CDocumentReader(m_document, environment, problems).ReadFile(fileName != nullptr ? fileName : L"");
}

std::shared_ptr<ITypeRegistration> CXMLResource::RegisterInstance(const char* typeId, bool front,
                                                                  const std::shared_ptr<IObject>& instance,
                                                                  std::shared_ptr<ITypeRegistration> registration) {
  CServiceRegistry& services = m_registry.GetServices();
  if (!registration) {
    if (services.Holds(typeId, instance)) {
      return nullptr;
    }
    registration = std::make_shared<CServiceConfig>(instance);
  }
  services.Insert(typeId, front, registration);
  return registration;
}

std::shared_ptr<ITypeRegistration> CXMLResource::RegisterService(const char* typeId, bool front,
                                                                 std::function<std::unique_ptr<IObject>()>&& maker,
                                                                 std::shared_ptr<ITypeRegistration> registration) {
  if (!registration) {
    registration = std::make_shared<CServiceConfig>(std::move(maker));
  }
  m_registry.GetServices().Insert(typeId, front, registration);
  return registration;
}

std::vector<std::shared_ptr<ITypeRegistration>> CXMLResource::ReleaseInstance(
    const std::shared_ptr<IObject>& instance) {
  return m_registry.GetServices().Release(instance);
}

std::shared_ptr<ITypeRegistration> CXMLResource::FindService(const char* typeId, unsigned int index) {
  return m_registry.GetServices().Find(typeId, index);
}

void CXMLResource::RequireTypeId(const char* typeId, const char* function, const wchar_t* message) {
  if (typeId == nullptr) {
    Internal::Raise({kResourceFile, function}, message);
  }
}

void CXMLResource::RaiseOverride(const CStringT<char>& bean) {
  Internal::Raise({kResourceFile, "Zorbel::CXMLResource::Integrate"}, L"Overriding bean '%s' is not allowed",
                  Utf8ToWide(bean.GetString()));
}

void CXMLResource::RaiseAlreadyRegistered(const char* typeId) {
  Internal::Raise({kResourceFile, "Zorbel::CXMLResource::RegisterInstance"},
                  L"Service instance is already registered for interface '%s'",
                  std::wstring(CStringT<wchar_t>(typeId).GetString()));
}

void CXMLResource::RaiseNotRegistered() {
  Internal::Raise({kResourceFile, "Zorbel::CXMLResource::ReleaseInstance"}, L"Service instance was not registered");
}

}  // namespace Zorbel
