#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <Zorbel/IBeanWrapper.h>
#include <Zorbel/IObject.h>
#include <Zorbel/detail/BeanObjects.h>
#include <Zorbel/detail/CallLog.h>
#include <Zorbel/detail/Overloads.h>

namespace Zorbel::Kit {

/// All that a class declares. Thread: constant once the class is declared.
struct SClass {
  /// Returns false when the object has not the class whose method it is.
  using Method = std::function<bool(IObject*, const Arguments&)>;
  using Creator = std::function<std::unique_ptr<IObject>(SLifetime&&, const Arguments&)>;

  explicit SClass(std::string className) : name(std::move(className)) {}
  SClass(const SClass&) = delete;
  SClass& operator=(const SClass&) = delete;

  const std::string name;
  COverloads<Creator> creators{"Creation method", name};
  COverloads<Method> methods{"Method", name};
};

inline void FillTypes(std::vector<std::string>& types, const std::vector<SParameter>& parameters) {
  for (const SParameter& parameter : parameters) {
    types.push_back(parameter.typeName);
  }
}

/// The wrapper of every declared class.
class CClassWrapper final : public IBeanWrapper {
 public:
  explicit CClassWrapper(std::shared_ptr<const SClass> described) : m_class(std::move(described)) {}

  const char* GetClassName() const override { return m_class->name.c_str(); }

  std::unique_ptr<IObject> CreateInstance(const char* method, std::size_t /*argumentCount*/, const Arguments* arguments,
                                          std::shared_ptr<const IBeanWrapper> /*wrapper*/, const char* exitMethod,
                                          const std::vector<std::shared_ptr<IObject>>& dependencies) const override {
    constexpr const char* kOrigin = "Zorbel::IBeanWrapper::CreateInstance";
    const Arguments none;
    const Arguments& values = arguments != nullptr ? *arguments : none;
    const auto* creator = m_class->creators.Select(kOrigin, method, values);
    SLifetime lifetime{dependencies, nullptr};
    if (creator == nullptr || !FindExit(exitMethod, lifetime)) {
      return nullptr;
    }
    try {
      return creator->call(std::move(lifetime), values);
    } catch (...) {
      WarnOfException(kOrigin, "Creation method '" + std::string(method) + "'", m_class->name);
      throw;
    }
  }

  bool CallMethod(IObject* object, const char* method, std::size_t /*argumentCount*/,
                  const Arguments* arguments) const override {
    constexpr const char* kOrigin = "Zorbel::IBeanWrapper::CallMethod";
    const Arguments none;
    const Arguments& values = arguments != nullptr ? *arguments : none;
    const auto* found = m_class->methods.Select(kOrigin, method, values);
    try {
      return found != nullptr && found->call(object, values);
    } catch (...) {
      WarnOfException(kOrigin, "Method '" + std::string(method) + "'", m_class->name);
      throw;
    }
  }

  void GetCreationParameterTypes(const char* method, std::size_t argumentCount,
                                 std::vector<std::string>& types) override {
    if (const auto* creator = m_class->creators.Find(method, argumentCount)) {
      FillTypes(types, creator->parameters);
    }
  }

  void GetParameterTypes(const char* method, std::size_t argumentCount, std::vector<std::string>& types) override {
    if (const auto* found = m_class->methods.Find(method, argumentCount)) {
      FillTypes(types, found->parameters);
    }
  }

 private:
  // An exit method that cannot be called would be missed only when it is too late.
  bool FindExit(const char* name, SLifetime& lifetime) const {
    if (*name == '\0') {
      return true;
    }
    const auto* method = m_class->methods.Find(name, 0);
    if (method == nullptr) {
      Warn("Zorbel::IBeanWrapper::CreateInstance",
           CStringT<wchar_t>(("Exit method '" + std::string(name) + "' of class '" + m_class->name +
                              "' does not exist or takes arguments")
                                 .c_str()));
      return false;
    }
    lifetime.exit = [described = m_class, method](IObject* object) { RunExit(*described, *method, object); };
    return true;
  }

  static void RunExit(const SClass& described, const SFunction<SClass::Method>& method, IObject* object) noexcept {
    try {
      method.call(object, {});
    } catch (...) {
      WarnOfException("Zorbel::IObject::~IObject", "Exit method '" + method.name + "'", described.name);
    }
  }

  std::shared_ptr<const SClass> m_class;
};

}  // namespace Zorbel::Kit
