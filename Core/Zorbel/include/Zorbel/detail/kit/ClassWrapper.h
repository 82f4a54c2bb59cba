#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <Zorbel/IBeanWrapper.h>
#include <Zorbel/IObject.h>
#include <Zorbel/detail/kit/CallLog.h>
#include <Zorbel/detail/kit/ClassRecord.h>
#include <Zorbel/detail/kit/Overloads.h>

namespace Zorbel::Kit {

inline constexpr const char* kClassWrapperFile = "Zorbel/detail/ClassWrapper";

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

  std::unique_ptr<IObject> CreateInstance(const char* method, std::size_t /*argumentCount*/,
                                          const std::vector<void*>* arguments,
                                          std::shared_ptr<const IBeanWrapper> /*wrapper*/, const char* exitMethod,
                                          const std::vector<std::shared_ptr<IObject>>& dependencies) const override {
    const CArguments values(arguments);
    const auto* creator = m_class->creators.Select(kCreation, method, values);
    if (creator == nullptr) {
      return nullptr;
    }
    try {
      return creator->call({m_class, exitMethod, dependencies}, values);
    } catch (...) {
      WarnOfException({kClassWrapperFile, __LINE__, kCreation}, "Creation method", method, m_class->name);
      throw;
    }
  }

  bool CallMethod(IObject* object, const char* method, std::size_t /*argumentCount*/,
                  const std::vector<void*>* arguments) const override {
    constexpr const char* kCall = "Zorbel::IBeanWrapper::CallMethod";
    const CArguments values(arguments);
    const auto* found = m_class->methods.Select(kCall, method, values);
    try {
      return found != nullptr && CallOn(kCall, *m_class, *found, object, values);
    } catch (...) {
      WarnOfException({kClassWrapperFile, __LINE__, kCall}, "Method", method, m_class->name);
      throw;
    }
  }

  void GetCreationParameterTypes(const char* method, std::size_t argumentCount,
                                 std::vector<std::string>& types) override {
    if (const auto* creator = m_class->creators.Find(method, argumentCount)) {
      FillTypes(types, creator->parameters);
    }
  }

  // The container asks for each property of a document, so a wrong one is told here.
  void GetParameterTypes(const char* method, std::size_t argumentCount, std::vector<std::string>& types) override {
    const auto* found = m_class->methods.Expect("Zorbel::IBeanWrapper::GetParameterTypes", method, argumentCount);
    if (found != nullptr) {
      FillTypes(types, found->parameters);
    }
  }

 private:
  std::shared_ptr<const SClass> m_class;
};

}  // namespace Zorbel::Kit
