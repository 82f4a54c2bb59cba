#pragma once

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include <Zorbel/IObject.h>
#include <Zorbel/ObjectCast.h>
#include <Zorbel/detail/kit/ClassRecord.h>
#include <Zorbel/detail/kit/Parameter.h>

namespace Zorbel {

/// Picks one of several functions of a name by its parameters: `Overload<int, bool>(&CAxis::SetEncoder)`.
template <class... A>
struct COverload {
  template <class R, class C>
  constexpr auto operator()(R (C::*method)(A...)) const {
    return method;
  }
  template <class R, class C>
  constexpr auto operator()(R (C::*method)(A...) const) const {
    return method;
  }
  template <class R>
  constexpr auto operator()(R (*function)(A...)) const {
    return function;
  }
};
template <class... A>
inline constexpr COverload<A...> Overload{};  // NOLINT(readability-identifier-naming): called like a function

/// Tells the container what it may do with a class `T`. Used through `ZORBEL_CLASS`, whose block calls these members.
///
/// Parameters may be: the basic types and enumerations (by their integer); `std::string`, `std::string_view`,
/// `const char*`, `CStringT<char>` and their wide counterparts; `std::shared_ptr<I>` for references, empty for null or
/// a missing object; `I&` for references that must be there; `std::optional` of these for what may be missing; each by
/// value or by constant reference. What a function returns is ignored, except by `Factory`.
///
/// A value that is missing or of another type fails the call, with a line in the log that names class, function and
/// position. Functions of one name are told apart by the number and the types of their parameters; texts are one type
/// for each width. Only where something else than the container makes the call are literals taken as they are declared.
/// Throws: `CException` when calls could not tell two functions of one name apart.
template <class T>
class CDeclaration {
 public:
  explicit CDeclaration(Kit::SClass& described) : m_class(described) {}
  CDeclaration(const CDeclaration&) = delete;
  CDeclaration& operator=(const CDeclaration&) = delete;

 protected:
  using Class = T;
  ~CDeclaration() = default;

  /// The class's constructor with these parameters. The instance may become part of an object of a derived class, which
  /// default-constructs the virtual bases of `T`; a class whose virtual bases need arguments is made by a `Factory`.
  template <class... A>
  void Constructor() {
    static_assert(std::is_constructible_v<T, A...>, "the class has no constructor with these parameters");
    const auto make = [](const Kit::SCreation& creation, A... arguments) {
      return Kit::Construct<T>(creation, std::forward<A>(arguments)...);
    };
    AddCreator<A...>(Unqualified(), make, std::index_sequence_for<A...>());
  }

  /// A static or free function, or a lambda, that documents name as `factory-method`. It returns a
  /// `std::unique_ptr` to the instance, which may be of any class; an empty one when it could not be made. An exit
  /// method is looked up where the instance's class is declared in the same module, else in this class.
  template <class F>
  void Factory(const char* name, F function) {
    static_assert(!std::is_member_function_pointer_v<F>, "a factory method is static or free, or a lambda");
    AddFactory(name, std::function(std::move(function)));
  }

  /// A member function, of the class or of a base, that serves as property setter, init method or exit method.
  template <class R, class C, bool n, class... A>
  void Method(const char* name, R (C::*method)(A...) noexcept(n)) {
    AddMethod<C, A...>(name, method, std::index_sequence_for<A...>());
  }
  template <class R, class C, bool n, class... A>
  void Method(const char* name, R (C::*method)(A...) const noexcept(n)) {
    AddMethod<C, A...>(name, method, std::index_sequence_for<A...>());
  }
  template <class R, class C, bool n, class... A>
  void Method(const char* name, R (C::*method)(A...) & noexcept(n)) {
    AddMethod<C, A...>(name, method, std::index_sequence_for<A...>());
  }
  template <class R, class C, bool n, class... A>
  void Method(const char* name, R (C::*method)(A...) const& noexcept(n)) {
    AddMethod<C, A...>(name, method, std::index_sequence_for<A...>());
  }

  /// Likewise a free function or lambda whose first parameter is a reference to the instance.
  template <class F>
  void Method(const char* name, F function) {
    AddFunction(name, std::function(std::move(function)));
  }

 private:
  template <class... A>
  static std::vector<Kit::SParameter> Parameters() {
    return {Kit::DescribeParameter<A>()...};
  }

  // A member of a base is reached through the class, which the base need not be found without.
  template <class C>
  static auto* Target(IObject* object) {
    return ObjectCast<std::conditional_t<std::is_base_of_v<C, T>, T, std::remove_const_t<C>>>(object);
  }

  std::string Unqualified() const {
    const std::size_t colon = m_class.name.rfind(':');
    return colon == std::string::npos ? m_class.name : m_class.name.substr(colon + 1);
  }

  template <class... A, class F, std::size_t... i>
  void AddCreator(std::string name, F make, std::index_sequence<i...>) {
    m_class.creators.Add({std::move(name), Parameters<A...>(),
                          [make](const Kit::SCreation& creation, [[maybe_unused]] const Kit::CArguments& values) {
                            return make(creation, Kit::ParameterOf<A>::Read(values[i])...);
                          }});
  }

  template <class U, class... A>
  void AddFactory(const char* name, std::function<std::unique_ptr<U>(A...)> function) {
    const auto make = [function = std::move(function)](const Kit::SCreation& creation, A... arguments) {
      return Kit::AdoptMadeBy<T>(creation, function(std::forward<A>(arguments)...));
    };
    AddCreator<A...>(name, make, std::index_sequence_for<A...>());
  }

  template <class R, class... A>
  void AddFactory(const char* /*name*/, std::function<R(A...)> /*function*/) {
    static_assert(!std::is_same_v<R, R>, "a factory method returns a std::unique_ptr");
  }

  template <class R, class C, class... A>
  void AddFunction(const char* name, std::function<R(C&, A...)> function) {
    AddMethod<C, A...>(name, std::move(function), std::index_sequence_for<A...>());
  }

  template <class C, class... A, class F, std::size_t... i>
  void AddMethod(const char* name, F method, std::index_sequence<i...>) {
    m_class.methods.Add(
        {name, Parameters<A...>(), [method](IObject* object, [[maybe_unused]] const Kit::CArguments& values) {
           auto* target = Target<C>(object);
           if (target != nullptr) {
             std::invoke(method, *target, Kit::ParameterOf<A>::Read(values[i])...);
           }
           return target != nullptr;
         }});
  }

  Kit::SClass& m_class;
};

}  // namespace Zorbel
