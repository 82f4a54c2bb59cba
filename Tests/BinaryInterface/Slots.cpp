// A module that knows of the interfaces only the order of their operations: it declares them itself, with a number for
// each operation's name.
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <Zorbel/Export.h>

namespace Zorbel {

class IObject {
 public:
  virtual ~IObject() = default;
};
struct SLibrary;

}  // namespace Zorbel

namespace slots {

using Zorbel::IObject;
using Object = std::shared_ptr<IObject>;
using Maker = std::function<std::unique_ptr<IObject>()>;

class CRegistration {
 public:
  virtual ~CRegistration() = default;
  virtual void Second() = 0;
  virtual bool Third() const = 0;
  virtual void Fourth(std::function<void(const IObject*)> function) = 0;
  virtual std::function<void(const IObject*)> Fifth() const = 0;
};

class CFactory {
 public:
  virtual ~CFactory() = default;
  virtual bool Second(const char* name) = 0;
  virtual Object Third(const char* typeId, unsigned int index) = 0;
  virtual Object Fourth(const char* typeId) = 0;
  virtual Object Fifth(const char* name, const Zorbel::SLibrary* library) = 0;
  virtual std::shared_ptr<CRegistration> Sixth(const char* typeId, bool front, Maker&& maker,
                                               std::shared_ptr<CRegistration> registration) = 0;
  virtual std::shared_ptr<CRegistration> Seventh(const char* typeId, bool front, Object instance,
                                                 std::shared_ptr<CRegistration> registration) = 0;
  virtual void Eighth(const Object& instance) = 0;
  virtual unsigned int Ninth(const char* typeId) = 0;
};

class CLibrary {
 public:
  virtual ~CLibrary() = default;
  virtual void Second(const char* name, void* function) = 0;
  virtual bool Third(const char* name) = 0;
  virtual void Fourth(const char* className, const char* typeId) = 0;
};

std::string called;

class CWrapper {
 public:
  virtual ~CWrapper() { called += "1"; }
  virtual const char* Second() const { return "slots"; }
  virtual std::unique_ptr<IObject> Third(const char* method, std::size_t count, const std::vector<void*>* arguments,
                                         std::shared_ptr<const CWrapper> wrapper, const char* exitMethod,
                                         const std::vector<Object>& dependencies) const {
    const bool right = method == std::string("C") && count == 0 && arguments == nullptr && wrapper.get() == this &&
                       exitMethod == std::string("Exit") && dependencies.empty();
    called += right ? "3" : "?";
    return std::make_unique<IObject>();
  }
  virtual bool Fourth(IObject* object, const char* method, std::size_t count, const std::vector<void*>* values) const {
    called += object != nullptr && method == std::string("P") && count == 1 && values->size() == 1 ? "4" : "?";
    return true;
  }
  virtual void Fifth() { called += "5"; }
  virtual void Sixth(const char* method, std::size_t count, std::vector<std::string>& types) {
    called += method == std::string("P") && count == 1 ? "6" : "?";
    types.emplace_back("int");
  }
};

std::string CallFactory(CFactory& factory) {
  std::string failed;
  const auto expect = [&](bool holds, const char* slot) { failed += holds ? "" : slot; };
  const auto object = std::make_shared<IObject>();
  expect(factory.Second("b"), "2");
  expect(factory.Fifth("b", nullptr) != nullptr, "5");
  const auto registration = factory.Sixth(
      "slots.id", false, [] { return std::make_unique<IObject>(); }, nullptr);
  factory.Seventh("slots.id", true, object, nullptr);
  expect(factory.Ninth("slots.id") == 2, "9");
  expect(factory.Fourth("slots.id") == object, "4");
  expect(factory.Third("slots.id", 1) != object, "3");
  factory.Eighth(object);
  expect(factory.Ninth("slots.id") == 1, "8");
  expect(!registration->Third() && factory.Fourth("slots.id") != factory.Fourth("slots.id"), "r3");
  registration->Second();
  expect(registration->Third() && factory.Fourth("slots.id") == factory.Fourth("slots.id"), "r2");
  expect(!registration->Fifth(), "r5");
  registration->Fourth([](const IObject*) {});
  expect(static_cast<bool>(registration->Fifth()), "r4");
  return failed;
}

}  // namespace slots

ZORBEL_PLUGIN_EXPORT void* create_C_Wrapper();
ZORBEL_PLUGIN_EXPORT const char* CallInterfaces(void* factory, void* library);
ZORBEL_PLUGIN_EXPORT const char* CalledOperations();

void* create_C_Wrapper() { return new slots::CWrapper; }

const char* CallInterfaces(void* factory, void* library) {
  static std::string failed;
  failed = slots::CallFactory(*static_cast<slots::CFactory*>(factory));
  auto& local = *static_cast<slots::CLibrary*>(library);
  local.Second("slots", library);
  local.Fourth("slots", "id");
  failed += local.Third("slots") && !local.Third("slots") ? "" : "l";
  return failed.c_str();
}

const char* CalledOperations() { return slots::called.c_str(); }
