#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>

#include <Zorbel/CStringT.h>
#include <Zorbel/IObject.h>
#include <Zorbel/ObjectCast.h>
#include <Zorbel/detail/kit/CallLog.h>

namespace Zorbel::Kit {

/// How an argument suits a parameter.
enum class EFit { suits, missing, wrongType };

/// What a wrapper is passed for an argument: the address of the value, or null when there is none; and the type of the
/// value, null where it is not known.
struct SValue {
  void* pointer;
  const std::type_info* type;

  bool IsNull() const { return pointer == nullptr || (type != nullptr && *type == typeid(std::nullptr_t)); }
  bool CanBe(const std::type_info& wanted) const { return type == nullptr || *type == wanted; }
};

/// How the values of a parameter of type `P` are named in documents, checked and read. `Read` takes what `Fit` found to
/// suit.
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

/// Returns the name that a literal of this type has in messages.
inline std::string LiteralName(const std::type_info& type) {
  if (type == typeid(CStringT<char>)) {
    return "const char*";
  }
  return type == typeid(CStringT<wchar_t>) ? "const wchar_t*" : TypeName(type);
}

/// A value of type `Stored`, which every parameter that takes it needs.
template <class Stored>
struct SLiteral {
  static constexpr bool kReference = false;
  static const std::type_info& Stores() { return typeid(Stored); }
  static bool IsMissing(const SValue& value) { return value.IsNull(); }
  static EFit Fit(const SValue& value) {
    if (value.IsNull()) {
      return EFit::missing;
    }
    return value.CanBe(typeid(Stored)) ? EFit::suits : EFit::wrongType;
  }
};

template <class P>
struct SParameterOf<P, std::enable_if_t<kBasicTypeName<P> != nullptr>> : SLiteral<P> {
  static std::string TypeName() { return kBasicTypeName<P>; }
  static P Read(const SValue& value) { return *static_cast<const P*>(value.pointer); }
};

template <class P>
struct SParameterOf<P, std::enable_if_t<std::is_enum_v<P>>> : SParameterOf<std::underlying_type_t<P>> {
  static P Read(const SValue& value) { return static_cast<P>(SParameterOf<std::underlying_type_t<P>>::Read(value)); }
};

/// A text: `CStringT` is one pointer wide, to its characters, so both a string object and the plain pointer that names
/// arrive as are read alike. No text is null, so a null pointer in its place is a missing value.
template <class P, class C>
struct SText : SLiteral<CStringT<C>> {
  using Literal = SLiteral<CStringT<C>>;
  static std::string TypeName() { return LiteralName(typeid(CStringT<C>)); }
  static bool IsMissing(const SValue& value) { return value.IsNull() || Characters(value) == nullptr; }
  static EFit Fit(const SValue& value) {
    const EFit fit = Literal::Fit(value);
    return fit == EFit::suits && Characters(value) == nullptr ? EFit::missing : fit;
  }
  static P Read(const SValue& value) { return P(Characters(value)); }
  static const C* Characters(const SValue& value) { return *static_cast<const C* const*>(value.pointer); }
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
  static bool IsMissing(const SValue& value) {
    return value.CanBe(Stores()) ? Object(value) == nullptr : value.IsNull();
  }
  static EFit Fit(const SValue& value) {
    if (value.IsNull()) {
      return EFit::suits;
    }
    if (!value.CanBe(Stores())) {
      return EFit::wrongType;
    }
    IObject* object = Object(value).get();
    return object == nullptr || ObjectCast<std::remove_cv_t<I>>(object) != nullptr ? EFit::suits : EFit::wrongType;
  }
  static std::shared_ptr<I> Read(const SValue& value) { return ObjectCast<std::remove_cv_t<I>>(Object(value)); }

  static std::shared_ptr<IObject> Object(const SValue& value) {
    return value.IsNull() ? nullptr : *static_cast<const std::shared_ptr<IObject>*>(value.pointer);
  }
};

/// A reference that must be there. The object lives at least until the call returns.
template <class I>
struct SParameterOf<I&> : SParameterOf<std::shared_ptr<I>> {
  using Pointer = SParameterOf<std::shared_ptr<I>>;
  static EFit Fit(const SValue& value) { return Pointer::IsMissing(value) ? EFit::missing : Pointer::Fit(value); }
  static I& Read(const SValue& value) { return *Pointer::Read(value); }
};

/// A value that may be missing.
template <class P>
struct SParameterOf<std::optional<P>> : SParameterOf<P> {
  using Value = SParameterOf<P>;
  static EFit Fit(const SValue& value) {
    const EFit fit = Value::Fit(value);
    return fit == EFit::missing ? EFit::suits : fit;
  }
  static std::optional<P> Read(const SValue& value) {
    return Value::IsMissing(value) ? std::nullopt : std::optional<P>(Value::Read(value));
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
  EFit (*fit)(const SValue& value);
};

template <class A>
SParameter DescribeParameter() {
  using Parameter = ParameterOf<A>;
  return {Parameter::TypeName(), &Parameter::Stores(), Parameter::kReference, &Parameter::Fit};
}

}  // namespace Zorbel::Kit
