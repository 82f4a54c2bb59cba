#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/IBeanWrapper.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace motion {

using Arguments = std::vector<void*>;

/// Returns the referenced object as a `T`; empty when the reference has none, or another type.
template <class T>
std::shared_ptr<T> Reference(const Arguments& arguments, std::size_t position) {
  const auto* object = static_cast<const std::shared_ptr<Zorbel::IObject>*>(arguments[position]);
  return object != nullptr ? std::dynamic_pointer_cast<T>(*object) : nullptr;
}

/// Returns a literal; `T` is the value type of the type name in the document.
template <class T>
const T& Literal(const Arguments& arguments, std::size_t position) {
  return *static_cast<const T*>(arguments[position]);
}

inline std::string Text(const Arguments& arguments, std::size_t position) {
  return Literal<CStringT<char>>(arguments, position).GetString();
}

/// An object that runs its exit method once before it goes, and keeps what it depends on until after that.
template <class T>
class CWithExit : public T {
 public:
  template <class... Args>
  CWithExit(std::function<void(T&)> exit, std::vector<std::shared_ptr<Zorbel::IObject>> dependencies, Args&&... args)
      : T(std::forward<Args>(args)...), m_dependencies(std::move(dependencies)), m_exit(std::move(exit)) {}
  ~CWithExit() override {
    if (m_exit) {
      m_exit(*this);
    }
  }

 private:
  std::vector<std::shared_ptr<Zorbel::IObject>> m_dependencies;
  std::function<void(T&)> m_exit;
};

/// A method that documents may call: the types of its parameters, and the call.
template <class T>
struct SMethod {
  std::vector<std::string> types;
  std::function<void(T&, const Arguments&)> call;
};

/// The part of a wrapper that is the same for every class. The rest is the class's name, its methods and its maker.
template <class T>
class CWrapper : public Zorbel::IBeanWrapper {
 public:
  using Dependencies = std::vector<std::shared_ptr<Zorbel::IObject>>;
  using Exit = std::function<void(T&)>;
  using Creator =
      std::function<std::unique_ptr<T>(const std::string& method, const Arguments&, Exit, const Dependencies&)>;

  CWrapper(std::string className, Creator creator, std::multimap<std::string, SMethod<T>> methods)
      : m_className(std::move(className)), m_creator(std::move(creator)), m_methods(std::move(methods)) {}

  const char* GetClassName() const override { return m_className.c_str(); }

  std::unique_ptr<Zorbel::IObject> CreateInstance(const char* method, std::size_t, const Arguments* arguments,
                                                  std::shared_ptr<const IBeanWrapper>, const char* exitMethod,
                                                  const Dependencies& dependencies) const override {
    Exit exit;
    if (const SMethod<T>* found = Find(exitMethod, 0)) {
      exit = [call = found->call](T& object) { call(object, {}); };
    }
    return m_creator(method, arguments != nullptr ? *arguments : Arguments(), std::move(exit), dependencies);
  }

  bool CallMethod(Zorbel::IObject* object, const char* method, std::size_t count,
                  const Arguments* arguments) const override {
    const SMethod<T>* found = Find(method, count);
    auto* target = dynamic_cast<T*>(object);
    if (found == nullptr || target == nullptr) {
      return false;
    }
    found->call(*target, arguments != nullptr ? *arguments : Arguments());
    return true;
  }

  void GetParameterTypes(const char* method, std::size_t count, std::vector<std::string>& types) override {
    if (const SMethod<T>* found = Find(method, count)) {
      types = found->types;
    }
  }

 private:
  const SMethod<T>* Find(const std::string& name, std::size_t count) const {
    for (auto [entry, end] = m_methods.equal_range(name); entry != end; ++entry) {
      if (entry->second.types.size() == count) {
        return &entry->second;
      }
    }
    return nullptr;
  }

  const std::string m_className;
  const Creator m_creator;
  const std::multimap<std::string, SMethod<T>> m_methods;
};

}  // namespace motion
