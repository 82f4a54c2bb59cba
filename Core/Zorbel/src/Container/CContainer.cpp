#include <Zorbel/CContainer.h>
#include <Zorbel/ILibrary.h>

#include <string>
#include <utility>

#include "BasePool/CbStopWatch.h"
#include "Configuration/CXMLResource.h"
#include "Container/Integration.h"
#include "Container/SharedFactory.h"
#include "Errors/Raise.h"
#include "Errors/SharedOrigins.h"
#include "Factory/CBeanFactoryImpl.h"
#include "Libraries/CLocalLibrary.h"
#include "Threads/ThreadState.h"

namespace Zorbel {
namespace {

const Logging::CLogger logger(L"Zorbel");

constexpr const char* kConstructor = "Zorbel::CContainer::CContainer";
constexpr const char* kReset = "Zorbel::CContainer::Reset";
constexpr int kMilliseconds = 1000;

CBeanFactoryImpl& Implementation(const std::shared_ptr<IBeanFactory>& factory, const char* function) {
  auto* implementation = dynamic_cast<CBeanFactoryImpl*>(factory.get());
  if (implementation == nullptr) {
    Internal::Raise({Internal::kContainerFile, function}, L"Zorbel is not configured");
  }
  return *implementation;
}

/// Measures an operation and tells of it.
class CReport {
 public:
  CReport() : m_watch(kMilliseconds) { m_watch.Start(); }

  /// Writes an information line with the texts and the elapsed time in place of each `%s` of the format. The text of a
  /// word that takes work is a function, called when the line is written. What was done is done: without memory there
  /// is no line.
  template <class... Texts>
  void Write(const Internal::SOrigin& origin, const wchar_t* format, const Texts&... texts) noexcept {
    try {
      m_watch.Stop();
      if (logger.IsLogLevelEnabled(Internal::ELogLevel::information)) {
        logger.Info(origin.file, static_cast<int>(origin.line), origin.function, format, TextOf(texts)...,
                    m_watch.GetElapsedText().c_str());
      }
    } catch (...) {
      return;
    }
  }

 private:
  static const wchar_t* TextOf(const wchar_t* text) { return text; }
  template <class F>
  static const wchar_t* TextOf(const F& text) {
    return text();
  }

  CbStopWatch m_watch;
};

const wchar_t* ModeWord(bool integration) { return integration ? L"integration" : L"stand-alone"; }

auto ModeOf(const std::shared_ptr<IBeanFactory>& factory) {
  return [&factory] { return ModeWord(Internal::IsSharedFactory(factory.get())); };
}

/// `source` is the text of a document or the name of its file.
template <class Source>
void Load(CBeanFactoryImpl& factory, Source source) {
  Internal::RequireNotLoading();  // before anything is read: reading may load modules
  CXMLResource resource(&factory, source);
  Internal::IntegrateResource(factory, resource);
}

// A refused call loses nothing. Outside of bean code a load waits for its turn and cannot be refused any more; inside,
// the turn and the factory's lock are taken before the factory is emptied.
template <class Source>
void Reload(CBeanFactoryImpl& factory, Source source) {
  Internal::RequireNotLoading();
  const auto reload = [&] {
    factory.Clear();
    Load(factory, source);
  };
  if (Internal::ThisThread().factoryLocksHeld == 0) {
    reload();
    return;
  }
  const Internal::CIntegration turn;
  factory.WhileLocked(reload);
}

}  // namespace

CContainer::CContainer() : m_factory(Internal::CreateFactory(true)) {
  if (!m_factory) {
    Internal::Raise({Internal::kContainerFile, kConstructor}, L"Zorbel is not configured");
  }
}

CContainer::CContainer(std::nullptr_t) : m_factory(Internal::CreateFactory(false)) {
  if (!m_factory) {
    Internal::Raise({Internal::kContainerFile, kConstructor}, L"Could not create bean factory");
  }
}

CContainer::CContainer(const char* xml, bool integration) {
  CReport report;
  m_factory = Internal::CreateFactory(integration);
  Load(Implementation(m_factory, kConstructor), xml);
  report.Write({Internal::kContainerFile, kConstructor}, L"Loading configuration from xml (%s)... (%s)",
               ModeWord(integration));
}

CContainer::CContainer(const wchar_t* path, bool integration) {
  CReport report;
  m_factory = Internal::CreateFactory(integration);
  Load(Implementation(m_factory, kConstructor), path);
  report.Write({Internal::kContainerFile, kConstructor}, L"Loading configuration from file '%s' (%s)... (%s)", path,
               ModeWord(integration));
}

CContainer::CContainer(const CContainer& other) = default;
CContainer::CContainer(CContainer&& other) noexcept = default;

CContainer& CContainer::operator=(const CContainer& other) {
  Internal::Replace(m_factory, other.m_factory);
  return *this;
}

CContainer& CContainer::operator=(CContainer&& other) noexcept {
  if (this != &other) {
    Internal::Replace(m_factory, std::move(other.m_factory));
  }
  return *this;
}

CContainer::~CContainer() { Internal::LetGo(m_factory); }

bool CContainer::Exists(const char* name) const { return m_factory && m_factory->Exists(name); }

void CContainer::ReleaseInstance(std::shared_ptr<IObject> instance) {
  Configured("Zorbel::CContainer::ReleaseInstance").ReleaseInstance(instance);
}

// Code of plug-ins may assign to this container in the middle of a reset, which still is one of the first factory.

void CContainer::Reset() {
  CReport report;
  const CContainer first = *this;
  Implementation(first.m_factory, kReset).Clear();
  report.Write({Internal::kContainerFile, kReset}, L"Resetting %s configuration... (%s)",
               [&] { return Internal::IsSharedFactory(first.m_factory.get()) ? L"integrated" : L"stand-alone"; });
}

void CContainer::Reset(const char* xml) {
  CReport report;
  const CContainer first = *this;
  Reload(Implementation(first.m_factory, kReset), xml);
  report.Write({Internal::kContainerFile, kReset}, L"Resetting configuration from xml (%s)... (%s)",
               ModeOf(first.m_factory));
}

void CContainer::Reset(const wchar_t* path) {
  CReport report;
  const CContainer first = *this;
  Reload(Implementation(first.m_factory, kReset), path);
  report.Write({Internal::kContainerFile, kReset}, L"Resetting configuration from file '%s' (%s)... (%s)", path,
               ModeOf(first.m_factory));
}

ILibraryConfiguration& GetLocalLibrary() { return CLocalLibrary::Instance(); }

}  // namespace Zorbel
