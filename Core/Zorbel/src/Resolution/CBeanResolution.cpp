#include "Resolution/CBeanResolution.h"

#include <string>

#include "Errors/Raise.h"
#include "Errors/SharedOrigins.h"
#include "Platform/Thread.h"
#include "Resolution/LiveInstances.h"
#include "Values/CArgumentList.h"
#include "Values/ValueSources.h"

namespace Zorbel {
namespace {

const Logging::CLogger logger(L"Zorbel");

Internal::SOrigin Here(unsigned int line = __builtin_LINE()) {
  return {Internal::kFactoryFile, Internal::kResolutionFunction, line};
}

template <class... Names>
bool GiveUp(const Internal::SOrigin& origin, const wchar_t* format, const Names&... names) {
  Internal::Warn(logger, origin, format, names...);
  return false;
}

}  // namespace

CBeanResolution::CBeanResolution(IBeanFactory& factory, std::shared_ptr<CFactoryState> state, const char* name,
                                 const SLibrary* requester)
    : m_factory(factory),
      m_state(std::move(state)),
      m_name(name),
      m_requester(requester),
      m_hash(CbKeyTraits<CStringT<char>>::Hash(name)) {}

// While the object of a failed resolution is destroyed, its bean still counts as being resolved.
CBeanResolution::~CBeanResolution() {
  m_object.reset();
  m_dependencies.clear();
  if (m_entered) {
    Internal::ThisThread().resolving = m_frame.outer;
    --Internal::ThisThread().resolutionDepth;
  }
}

SBean CBeanResolution::Run() {
  if (!FindDefinition() || !IsVisible()) {
    return {};
  }
  if (const SBean* singleton = FindSingleton()) {
    return *singleton;
  }
  if (!Enter()) {
    return {};
  }
  ResolveDependencies();
  const bool built = FindWrappers() && Create() && NameObject() && SetProperties() && Initialise();
  return built ? Finish() : SBean();
}

bool CBeanResolution::FindDefinition() {
  m_definition = m_state->configuration.FindBeanConfig(m_name, m_hash);
  return m_definition != nullptr || GiveUp(Here(), L"Bean '%s' requested, but not configured", m_name);
}

bool CBeanResolution::IsVisible() const {
  if (Description().exported) {
    return true;
  }
  const CStringT<char>& path = m_definition->GetLibrary()->path;
  return (m_requester != nullptr && m_requester->path == path) ||
         GiveUp(Here(), L"Bean '%s' shall be exported from library '%s', but not allowed", m_name, path.GetString());
}

const SBean* CBeanResolution::FindSingleton() {
  return Description().singleton ? m_state->singletons.Lookup(m_name, m_hash) : nullptr;
}

bool CBeanResolution::Enter() {
  Internal::SThreadState& thread = Internal::ThisThread();
  if (DependsOnItself()) {
    return false;
  }
  const std::size_t depth = thread.resolutionDepth;
  if (depth >= Platform::MaximumRecursionDepth() || (depth > 0 && Internal::IsStackShort())) {
    return GiveUp(Here(), L"Bean '%s' requested, but more than %s beans depend on each other in a row", m_name,
                  [&] { return std::to_string(depth); });
  }
  m_frame = {m_definition, Description().name, thread.resolving};
  thread.resolving = &m_frame;
  ++thread.resolutionDepth;
  m_entered = true;
  return true;
}

bool CBeanResolution::DependsOnItself() const {
  bool found = false;
  for (const auto* frame = Internal::ThisThread().resolving; frame != nullptr && !found; frame = frame->outer) {
    found = frame->definition == m_definition;
  }
  if (found) {
    GiveUp(Here(), L"Bean '%s' depends on itself (%s)", m_name,
           [this] { return Internal::PathOf(Internal::ThisThread().resolving, m_name); });
  }
  return found;
}

void CBeanResolution::ResolveDependencies() {
  m_dependencies.reserve(Description().dependsOn.size());
  for (const CStringT<char>& dependency : Description().dependsOn) {
    m_dependencies.push_back(m_factory.GetBean(dependency, m_requester));
  }
}

bool CBeanResolution::FindWrappers() {
  m_wrapper = m_state->GetWrapper(*m_definition);
  if (!m_wrapper) {
    return GiveUp(Here(), L"Wrapper maker of class '%s' returned no wrapper", Description().className.GetString());
  }
  const CStringT<char>& factoryBean = Description().factoryBean;
  if (factoryBean.IsEmpty()) {
    m_creatingWrapper = m_wrapper;
    return true;
  }
  const CBeanConfig* definition = m_state->configuration.FindBeanConfig(factoryBean);
  if (definition == nullptr) {
    return GiveUp(Here(), L"Factory bean '%s' requested, but not configured", factoryBean.GetString());
  }
  m_creatingWrapper = m_state->GetWrapper(*definition);
  return m_creatingWrapper != nullptr;
}

bool CBeanResolution::Create() {
  {
    const CArgumentList arguments(Description().constructorArguments, &m_factory, m_state->typeManager,
                                  m_definition->GetLibrary());
    m_object = std::shared_ptr<IObject>(
        m_creatingWrapper
            ->CreateInstance(Description().factoryMethod, arguments.GetCount(), arguments.GetValues(),
                             m_creatingWrapper, Description().exitMethod, m_dependencies)
            .release(),
        SDeleter());
  }
  return m_object != nullptr || GiveUp(Here(), L"Could not create bean '%s'", m_name);
}

bool CBeanResolution::NameObject() {
  if (!Description().autoname) {
    return true;
  }
  const CArgumentList arguments(std::make_shared<CValuePointer<CStringT<char>>>(Description().name));
  return m_wrapper->CallMethod(m_object.get(), "SetName", arguments.GetCount(), arguments.GetValues()) ||
         GiveUp(Here(), L"Could not auto name bean '%s'", m_name);
}

bool CBeanResolution::SetProperties() {
  for (const CBeanProperty::Owner& property : m_definition->GetProperties()) {
    if (!property->Apply(&m_factory, m_object.get(), m_wrapper.get(), &m_state->typeManager,
                         m_definition->GetLibrary())) {
      return GiveUp(Here(), L"Could not set property '%s' of bean '%s'", property->GetName().GetString(), m_name);
    }
  }
  return true;
}

bool CBeanResolution::Initialise() {
  if (Description().initMethod.IsEmpty()) {
    return true;
  }
  try {
    return CallInitMethod();
  } catch (...) {
    return GiveUp(Here(), L"Init method '%s' of class '%s' threw exception", Description().initMethod.GetString(),
                  [this] { return ClassName(); });
  }
}

bool CBeanResolution::CallInitMethod() {
  return m_wrapper->CallMethod(m_object.get(), Description().initMethod, 0, nullptr) ||
         GiveUp(Here(), L"Init method of class '%s' does not exist or is not valid", [this] { return ClassName(); });
}

const char* CBeanResolution::ClassName() const {
  const char* name = m_wrapper->GetClassName();
  return name != nullptr ? name : "";
}

SBean CBeanResolution::Finish() {
  SBean bean(m_wrapper, m_object);
  Internal::LiveInstances::Register(m_object.get(), m_name);
  if (Description().singleton) {
    m_state->singletons.SetAt(Description().name).value = bean;
  }
  return bean;
}

}  // namespace Zorbel
