#pragma once

#include <functional>
#include <memory>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include <Zorbel/Export.h>
#include <Zorbel/IObject.h>
#include <Zorbel/detail/kit/BeanObjects.h>
#include <Zorbel/detail/kit/CallLog.h>
#include <Zorbel/detail/kit/Overloads.h>

namespace Zorbel::Kit {

struct SClass;

/// What a creation method is told besides its arguments.
struct SCreation {
  std::shared_ptr<const SClass> creatingClass;
  const char* exitMethod;  // empty for none
  const std::vector<std::shared_ptr<IObject>>& dependencies;

  bool HasExitMethod() const { return *exitMethod != '\0'; }
};

/// All that a class declares. Thread: constant once the class is declared.
struct SClass {
  /// Returns false when the object has not the class whose method it is.
  using Method = std::function<bool(IObject*, const CArguments&)>;
  using Creator = std::function<std::unique_ptr<IObject>(const SCreation&, const CArguments&)>;

  explicit SClass(std::string className) : name(std::move(className)) {}
  SClass(const SClass&) = delete;
  SClass& operator=(const SClass&) = delete;

  const std::string name;
  COverloads<Creator> creators{"Creation method", name};
  COverloads<Method> methods{"Method", name};
};

inline constexpr const char* kClassRecordFile = "Zorbel/detail/ClassRecord";
inline constexpr const char* kCreation = "Zorbel::IBeanWrapper::CreateInstance";

/// Returns what the class declares, which is asked once.
template <class Declaration>
std::shared_ptr<const SClass> Describe() {
  // Never destroyed: destructors of static objects may ask for beans, when what was made in functions is gone already.
  static const auto& described = *[] {
    auto declared = std::make_shared<SClass>(Declaration::kClassName);
    Declaration(*declared).Declare();
    return new std::shared_ptr<const SClass>(std::move(declared));
  }();
  return described;
}

/// A class that this module declares, in static storage: known from the module's start, whether or not a bean of it was
/// ever defined. Thread: any, once the module is loaded.
class CDeclaredClass {
 public:
  using Description = std::shared_ptr<const SClass> (*)();

  ZORBEL_LOCAL CDeclaredClass(const std::type_info& type, Description describe) noexcept
      : m_type(type), m_describe(describe), m_next(std::exchange(First(), this)) {}
  CDeclaredClass(const CDeclaredClass&) = delete;
  CDeclaredClass& operator=(const CDeclaredClass&) = delete;

  /// Returns the class that was declared for the type, or null.
  ZORBEL_LOCAL static std::shared_ptr<const SClass> Find(const std::type_info& type) {
    for (const CDeclaredClass* next = First(); next != nullptr; next = next->m_next) {
      if (next->m_type == type) {
        return next->m_describe();
      }
    }
    return nullptr;
  }

 private:
  ZORBEL_LOCAL static const CDeclaredClass*& First() noexcept {
    static const CDeclaredClass* first = nullptr;
    return first;
  }

  const std::type_info& m_type;
  Description m_describe;
  const CDeclaredClass* m_next;
};

/// Calls the method; an object of another class is told in the log.
inline bool CallOn(const char* origin, const SClass& described, const SFunction<SClass::Method>& method,
                   IObject* object, const CArguments& arguments) {
  const bool called = method.call(object, arguments);
  if (!called) {
    Warn({kClassRecordFile, __LINE__, origin},
         [&] { return described.methods.Text(method.name) + " cannot be called on a '" + ClassNameOf(*object) + "'"; });
  }
  return called;
}

inline void RunExit(const SClass& described, const SFunction<SClass::Method>& method, IObject* object) noexcept {
  constexpr const char* kExit = "Zorbel::IObject::~IObject";
  try {
    CallOn(kExit, described, method, object, CArguments(nullptr));
  } catch (...) {
    WarnOfException({kClassRecordFile, __LINE__, kExit}, "Exit method", method.name.c_str(), described.name);
  }
}

/// Fills in what an instance has to do at its end: the named exit method, of the first of these classes that declares
/// it. Returns false, with a line in the log, when none does: it would be missed only when it is too late.
inline bool FindExit(const SCreation& creation, const std::vector<std::shared_ptr<const SClass>>& candidates,
                     SLifetime& lifetime) {
  const std::string name = creation.exitMethod;
  for (const auto& described : candidates) {
    if (const auto* method = described->methods.Find(name, 0)) {
      lifetime.exit = [described, method](IObject* object) { RunExit(*described, *method, object); };
      return true;
    }
  }
  Warn({kClassRecordFile, __LINE__, kCreation}, [&] {
    return "Exit method '" + name + "' of class '" + candidates.front()->name + "' does not exist or takes arguments";
  });
  return false;
}

/// Constructs an instance of the class that declares the constructor.
template <class T, class... Args>
std::unique_ptr<IObject> Construct(const SCreation& creation, Args&&... args) {
  SLifetime lifetime{creation.dependencies, nullptr};
  if (creation.HasExitMethod() && !FindExit(creation, {creation.creatingClass}, lifetime)) {
    return nullptr;
  }
  return MakeInstance<T>(std::move(lifetime), std::forward<Args>(args)...);
}

/// The classes that an instance made by a factory method may have its exit method from.
template <class U>
std::vector<std::shared_ptr<const SClass>> ClassesOf(const SCreation& creation, const U& made) {
  std::vector<std::shared_ptr<const SClass>> classes;
  for (const std::type_info* type : {&typeid(made), &typeid(U)}) {
    if (std::shared_ptr<const SClass> described = CDeclaredClass::Find(*type)) {
      classes.push_back(std::move(described));
    }
  }
  classes.push_back(creation.creatingClass);
  return classes;
}

/// Takes over an instance that a factory method made.
template <class U>
std::unique_ptr<IObject> AdoptMade(const SCreation& creation, std::unique_ptr<U> made) {
  if (!made) {
    return nullptr;
  }
  SLifetime lifetime{creation.dependencies, nullptr};
  if (creation.HasExitMethod() && !FindExit(creation, ClassesOf(creation, *made), lifetime)) {
    return nullptr;
  }
  return Adopt(std::move(lifetime), std::move(made));
}

/// Likewise; an instance of the declaring class `T` is held as one, which a base need not be able to tell.
template <class T, class U>
std::unique_ptr<IObject> AdoptMadeBy(const SCreation& creation, std::unique_ptr<U> made) {
  if constexpr (std::is_polymorphic_v<U> && std::is_base_of_v<U, T> && std::is_destructible_v<T> &&
                !std::is_same_v<U, T>) {
    if (T* derived = dynamic_cast<T*>(made.get())) {
      static_cast<void>(made.release());
      return AdoptMade(creation, std::unique_ptr<T>(derived));
    }
  }
  return AdoptMade(creation, std::move(made));
}

}  // namespace Zorbel::Kit
