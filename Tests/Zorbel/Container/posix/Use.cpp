#include "Use.h"

#include <Logging/CLogger.h>
#include <Zorbel/Class.h>
#include <Zorbel/Zorbel.h>

#include <cstdlib>
#include <string>
#include <utility>

using Zorbel::CContainer;
using Zorbel::IObject;

namespace host {

class CPart : public IObject {
 public:
  explicit CPart(std::shared_ptr<IObject> greeter) : m_greeter(std::move(greeter)) {}
  void Close() { m_greeter.reset(); }

 private:
  std::shared_ptr<IObject> m_greeter;
};

}  // namespace host

ZORBEL_CLASS(host, CPart) {
  Constructor<std::shared_ptr<IObject>>();
  Method("Close", &Class::Close);
}

namespace {

constexpr const char* kHostsLibrary =
    "<library path='" ZORBEL_HOST_LIBRARY
    "'><beans><bean name='part' class='host::CPart' exit-method='Close'>"
    "<constructor-arg><argument><ref bean='greeter'/></argument></constructor-arg></bean></beans></library>";

const Logging::CLogger logger(L"Host");

void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "failed: %s\n", what);
    std::_Exit(1);
  }
}

std::shared_ptr<IObject> UseServices(CContainer& container) {
  auto released = std::make_shared<int>(0);
  container.RegisterService("made", [] { return std::make_unique<IObject>(); })
      ->SetReleaseFunction([released](const IObject*) { ++*released; });
  container.GetService("made");
  Require(*released == 1, "a service and its release function");
  return container.GetService("made");
}

void UseSharedFactory(const std::shared_ptr<IObject>& object) {
  CContainer shared;
  shared.RegisterInstance("ready", object);
  Require(shared.GetServiceCount("ready") > 0, "a registered instance");
  shared.ReleaseInstance(object);
}

}  // namespace

Objects UseEverything(const char* plugin) {
  ZORBEL_REGISTER_CLASS(host, CPart);
  Zorbel::GetLocalLibrary().RegisterTypeID("IPart", "host.IPart");
  const std::string document = std::string("<zorbel>") + plugin + kHostsLibrary + "</zorbel>";
  CContainer container(document.c_str(), false);
  Objects made = {container.GetBean("greeter"), container.GetBean("part"), UseServices(container)};
  for (const auto& object : made) {
    Require(object != nullptr, "an object");
  }
  UseSharedFactory(made.back());
  container.Reset(document.c_str());
  logger.Warn(__FILE__, __LINE__, __func__, L"%s", container.Exists("part") ? L"used" : L"lost");
  return made;
}

// For who opens the module that this is compiled into.
ZORBEL_PLUGIN_EXPORT void UseProduct(Objects& made) { made = UseEverything(); }
