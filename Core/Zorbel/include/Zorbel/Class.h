#pragma once

/// Declares classes to the container in a few lines. In a plug-in, outside of functions:
///
///     ZORBEL_CLASS(motion, CAxis) {
///       Constructor<std::shared_ptr<ILogger>, double>();
///       Method("SetLimits", &Class::SetLimits);
///       Method("Home", &Class::Home);
///     }
///
/// makes the wrapper of `motion::CAxis` and exports its maker; `CDeclaration` says what may stand in the block.
/// A host writes the same for its own classes, and makes them known with `ZORBEL_REGISTER_CLASS(motion, CAxis);`.
/// Namespaces and class are given one by one, at most six; a class of the global namespace alone.

#include <typeinfo>
#include <utility>

#include <Zorbel/CDeclaration.h>
#include <Zorbel/Export.h>
#include <Zorbel/IBeanWrapper.h>
#include <Zorbel/ILibrary.h>
#include <Zorbel/detail/kit/ClassWrapper.h>
#include <Zorbel/detail/kit/ModuleStamp.h>

namespace Zorbel {

/// Registers the type id of an interface, which the interface names as `kTypeId`, under the name that documents use.
/// Returns: true. Throws: `CException` when `name` is null. Thread: any.
template <class I>
bool RegisterInterface(const char* name) {
  GetLocalLibrary().RegisterTypeID(name, I::kTypeId);
  return true;
}

namespace Kit {

/// Returns a new wrapper. All wrappers of a class share what it declared, which also objects keep as long as they need
/// it.
template <class Declaration>
IBeanWrapper* MakeWrapper() {
  return new CClassWrapper(Describe<Declaration>());
}

/// An interface that this module registers when it is loaded, in static storage. The library has it registered through
/// the module's stamp, when it has seen that the module fits.
class CModuleInterface {
 public:
  ZORBEL_LOCAL explicit CModuleInterface(bool (*add)()) noexcept : m_add(add), m_next(std::exchange(First(), this)) {}
  CModuleInterface(const CModuleInterface&) = delete;
  CModuleInterface& operator=(const CModuleInterface&) = delete;

  /// Registers all of them, once.
  ZORBEL_LOCAL static void RegisterAll() {
    [[maybe_unused]] static const bool done = [] {
      for (const CModuleInterface* next = First(); next != nullptr; next = next->m_next) {
        next->m_add();
      }
      return true;
    }();
  }

 private:
  ZORBEL_LOCAL static CModuleInterface*& First() noexcept {
    static CModuleInterface* first = nullptr;
    return first;
  }

  bool (*m_add)();
  CModuleInterface* m_next;
};

}  // namespace Kit
}  // namespace Zorbel

/// The stamp that each module built with this header exports once, however many of its sources include it.
// NOLINTNEXTLINE(misc-definitions-in-headers): the linker keeps one of them
extern "C" ZORBEL_STAMP_EXPORT const ::Zorbel::Kit::SModuleStamp zorbel_module_stamp =
    ::Zorbel::Kit::MakeStamp(&::Zorbel::Kit::CModuleInterface::RegisterAll);

#define ZORBEL_CLASS(...)                                                  \
  ZORBEL_DETAIL_CLASS(ZORBEL_DETAIL_JOIN(ZORBEL_DETAIL_NAME, __VA_ARGS__), \
                      ZORBEL_DETAIL_JOIN(ZORBEL_DETAIL_TYPE, __VA_ARGS__))

/// Registers a class of the host, declared with `ZORBEL_CLASS` in this source, or in another one that
/// `ZORBEL_DECLARE_CLASS` with the same names refers to.
#define ZORBEL_REGISTER_CLASS(...) ZORBEL_DETAIL_REGISTER(ZORBEL_DETAIL_JOIN(ZORBEL_DETAIL_NAME, __VA_ARGS__))
#define ZORBEL_DECLARE_CLASS(...) ZORBEL_DETAIL_MAKER(ZORBEL_DETAIL_JOIN(ZORBEL_DETAIL_NAME, __VA_ARGS__))

/// Registers an interface of a plug-in when a container loads its module; a host calls `RegisterInterface` instead.
#define ZORBEL_MODULE_INTERFACE(type, name)                                    \
  static const ::Zorbel::Kit::CModuleInterface ZORBEL_DETAIL_LINE(registered)( \
      [] { return ::Zorbel::RegisterInterface<type>(name); })

#define ZORBEL_DETAIL_MAKER(name) ZORBEL_DETAIL_MAKER2(name)
#define ZORBEL_DETAIL_MAKER2(name) ZORBEL_PLUGIN_EXPORT ::Zorbel::IBeanWrapper* create_##name##_Wrapper()
#define ZORBEL_DETAIL_REGISTER(name) ZORBEL_DETAIL_REGISTER2(name)
#define ZORBEL_DETAIL_REGISTER2(name)                                      \
  ::Zorbel::GetLocalLibrary().RegisterFunction("create_" #name "_Wrapper", \
                                               reinterpret_cast<void*>(&create_##name##_Wrapper))
#define ZORBEL_DETAIL_CLASS(name, type) ZORBEL_DETAIL_CLASS2(name, type)
#define ZORBEL_DETAIL_CLASS2(name, type)                                                                       \
  namespace {                                                                                                  \
  struct declare_##name final : ::Zorbel::CDeclaration<type> {                                                 \
    static constexpr const char* kClassName = ZORBEL_DETAIL_TEXT(type);                                        \
    using CDeclaration::CDeclaration;                                                                          \
    void Declare();                                                                                            \
  };                                                                                                           \
  const ::Zorbel::Kit::CDeclaredClass declared_##name(typeid(type), &::Zorbel::Kit::Describe<declare_##name>); \
  }                                                                                                            \
  ZORBEL_DETAIL_MAKER2(name);                                                                                  \
  ::Zorbel::IBeanWrapper* create_##name##_Wrapper() { return ::Zorbel::Kit::MakeWrapper<declare_##name>(); }   \
  void declare_##name::Declare()

#define ZORBEL_DETAIL_TEXT(x) ZORBEL_DETAIL_TEXT2(x)
#define ZORBEL_DETAIL_TEXT2(x) #x
#define ZORBEL_DETAIL_LINE(name) ZORBEL_DETAIL_LINE2(name, __LINE__)
#define ZORBEL_DETAIL_LINE2(name, line) ZORBEL_DETAIL_LINE3(name, line)
#define ZORBEL_DETAIL_LINE3(name, line) name##line

// A macro named after how many names there are joins them: to one word, or to a qualified type.
#define ZORBEL_DETAIL_JOIN(how, ...) \
  ZORBEL_DETAIL_PICK(__VA_ARGS__, how##6, how##5, how##4, how##3, how##2, how##1, )(__VA_ARGS__)
#define ZORBEL_DETAIL_PICK(a, b, c, d, e, f, picked, ...) picked
#define ZORBEL_DETAIL_NAME1(a) a
#define ZORBEL_DETAIL_NAME2(a, b) a##_##b
#define ZORBEL_DETAIL_NAME3(a, b, c) a##_##b##_##c
#define ZORBEL_DETAIL_NAME4(a, b, c, d) a##_##b##_##c##_##d
#define ZORBEL_DETAIL_NAME5(a, b, c, d, e) a##_##b##_##c##_##d##_##e
#define ZORBEL_DETAIL_NAME6(a, b, c, d, e, f) a##_##b##_##c##_##d##_##e##_##f
#define ZORBEL_DETAIL_TYPE1(a) a
#define ZORBEL_DETAIL_TYPE2(a, b) a::b
#define ZORBEL_DETAIL_TYPE3(a, b, c) a::b::c
#define ZORBEL_DETAIL_TYPE4(a, b, c, d) a::b::c::d
#define ZORBEL_DETAIL_TYPE5(a, b, c, d, e) a::b::c::d::e
#define ZORBEL_DETAIL_TYPE6(a, b, c, d, e, f) a::b::c::d::e::f
