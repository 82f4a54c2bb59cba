#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>

#include <Zorbel/CStringT.h>
#include <Zorbel/IObject.h>
#include <Zorbel/ObjectCast.h>
#include <Zorbel/detail/CallLog.h>

namespace Zorbel::Kit {

/// How an argument suits a parameter.
enum class EFit { suits, missing, wrongType };

/// How the values of a parameter of type `P` are named in documents, checked and read. `value` is what the container
/// passes: the address of the value, or null when there is none.
template <class P, class = void>
struct SParameterOf {
  static_assert(!std::is_same_v<P, P>, "documents have no values for a parameter of this type");
};

/// The name of a basic type in documents; null for other types.
template <class T>
inline constexpr const char* kBasicTypeName = nullptr;
template <>
inline constexpr const char* kBasicTypeName<bool> = "bool";
template <>
inline constexpr const char* kBasicTypeName<char> = "char";
template <>
inline constexpr const char* kBasicTypeName<signed char> = "int8_t";
template <>
inline constexpr const char* kBasicTypeName<unsigned char> = "unsigned char";
template <>
inline constexpr const char* kBasicTypeName<short> = "short";
template <>
inline constexpr const char* kBasicTypeName<unsigned short> = "unsigned short";
template <>
inline constexpr const char* kBasicTypeName<int> = "int";
template <>
inline constexpr const char* kBasicTypeName<unsigned int> = "unsigned int";
template <>
inline constexpr const char* kBasicTypeName<long> = "long";
template <>
inline constexpr const char* kBasicTypeName<unsigned long> = "unsigned long";
template <>
inline constexpr const char* kBasicTypeName<float> = "float";
template <>
inline constexpr const char* kBasicTypeName<double> = "double";

/// A value of type `Stored`, which every parameter that takes it needs.
template <class Stored>
struct SLiteral {
  static constexpr bool kReference = false;
  static const std::type_info& Stores() { return typeid(Stored); }
  static EFit Fit(const void* value) { return value != nullptr ? EFit::suits : EFit::missing; }
};

template <class P>
struct SParameterOf<P, std::enable_if_t<kBasicTypeName<P> != nullptr>> : SLiteral<P> {
  static std::string TypeName() { return kBasicTypeName<P>; }
  static P Read(void* value) { return *static_cast<const P*>(value); }
};

template <class P>
struct SParameterOf<P, std::enable_if_t<std::is_enum_v<P>>> : SParameterOf<std::underlying_type_t<P>> {
  static P Read(void* value) { return static_cast<P>(SParameterOf<std::underlying_type_t<P>>::Read(value)); }
};

/// A text: `CStringT` is one pointer wide, to its characters, so both a string object and the plain pointer that names
/// arrive as are read alike.
template <class P, class C>
struct SText : SLiteral<CStringT<C>> {
  static std::string TypeName() { return std::is_same_v<C, char> ? "const char*" : "const wchar_t*"; }
  static P Read(void* value) { return P(*static_cast<const C* const*>(value)); }
};

template <>
struct SParameterOf<const char*> : SText<const char*, char> {};
template <>
struct SParameterOf<std::string> : SText<std::string, char> {};
template <>
struct SParameterOf<std::string_view> : SText<std::string_view, char> {};
template <>
struct SParameterOf<CStringT<char>> : SText<CStringT<char>, char> {};
template <>
struct SParameterOf<const wchar_t*> : SText<const wchar_t*, wchar_t> {};
template <>
struct SParameterOf<std::wstring> : SText<std::wstring, wchar_t> {};
template <>
struct SParameterOf<std::wstring_view> : SText<std::wstring_view, wchar_t> {};
template <>
struct SParameterOf<CStringT<wchar_t>> : SText<CStringT<wchar_t>, wchar_t> {};

/// A reference to a bean or a service; without one the pointer is empty.
template <class I>
struct SParameterOf<std::shared_ptr<I>> {
  static constexpr bool kReference = true;
  static const std::type_info& Stores() { return typeid(std::shared_ptr<IObject>); }
  static std::string TypeName() { return "std::shared_ptr<" + Kit::TypeName(typeid(I)) + ">"; }
  static EFit Fit(const void* value) {
    IObject* object = Object(value).get();
    return object == nullptr || ObjectCast<std::remove_cv_t<I>>(object) != nullptr ? EFit::suits : EFit::wrongType;
  }
  static std::shared_ptr<I> Read(void* value) { return ObjectCast<std::remove_cv_t<I>>(Object(value)); }

  static std::shared_ptr<IObject> Object(const void* value) {
    return value != nullptr ? *static_cast<const std::shared_ptr<IObject>*>(value) : nullptr;
  }
};

/// A reference that must be there. The object lives at least until the call returns.
template <class I>
struct SParameterOf<I&> : SParameterOf<std::shared_ptr<I>> {
  using Pointer = SParameterOf<std::shared_ptr<I>>;
  static EFit Fit(const void* value) { return Pointer::Object(value) == nullptr ? EFit::missing : Pointer::Fit(value); }
  static I& Read(void* value) { return *Pointer::Read(value); }
};

/// A value that may be missing.
template <class P>
struct SParameterOf<std::optional<P>> : SParameterOf<P> {
  static EFit Fit(const void* value) { return value != nullptr ? SParameterOf<P>::Fit(value) : EFit::suits; }
  static std::optional<P> Read(void* value) {
    return value != nullptr ? std::optional<P>(SParameterOf<P>::Read(value)) : std::nullopt;
  }
};

template <class T>
inline constexpr bool kIsValue = std::is_scalar_v<T>;
template <class I>
inline constexpr bool kIsValue<std::shared_ptr<I>> = true;
template <class P>
inline constexpr bool kIsValue<std::optional<P>> = true;
template <class C>
inline constexpr bool kIsValue<CStringT<C>> = true;
template <class C>
inline constexpr bool kIsValue<std::basic_string<C>> = true;
template <class C>
inline constexpr bool kIsValue<std::basic_string_view<C>> = true;

/// What reads an argument for a parameter declared as `A`: values are read as such whether they are taken by value or
/// by reference; a reference to any other class is one to a bean.
template <class A>
using ParameterOf = SParameterOf<
    std::conditional_t<std::is_lvalue_reference_v<A> && !kIsValue<std::remove_cv_t<std::remove_reference_t<A>>>, A,
                       std::remove_cv_t<std::remove_reference_t<A>>>>;

/// A parameter at run time.
struct SParameter {
  std::string typeName;
  const std::type_info* stores;
  bool isReference;
  EFit (*fit)(const void* value);
};

template <class A>
SParameter DescribeParameter() {
  using Parameter = ParameterOf<A>;
  return {Parameter::TypeName(), &Parameter::Stores(), Parameter::kReference, &Parameter::Fit};
}

}  // namespace Zorbel::Kit
