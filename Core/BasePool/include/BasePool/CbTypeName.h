#pragma once

#include <string>
#include <string_view>

#include <Zorbel/CStringT.h>

/// The name of a type as error origins show it: with "class" or "struct" before it, and its template arguments written
/// out. Types that no origin needs in that form go by the name that the compiler gives them.
template <class T>
struct CbTypeName {
  static std::string Get() {
    constexpr std::string_view kStart = "T = ";
    const std::string_view function = __PRETTY_FUNCTION__;  // ends with "[with T = Name; ...]" or "[T = Name]"
    const std::size_t first = function.find(kStart) + kStart.size();
    return std::string(function.substr(first, function.find_first_of(";]", first) - first));
  }
};

template <class T>
struct CbTypeName<T*> {
  static std::string Get() { return CbTypeName<T>::Get() + " *"; }
};

template <class T>
struct CbTypeName<const T*> {
  static std::string Get() { return CbTypeName<T>::Get() + " const *"; }
};

template <>
struct CbTypeName<void> {
  static std::string Get() { return "void"; }
};

template <>
struct CbTypeName<char> {
  static std::string Get() { return "char"; }
};

template <>
struct CbTypeName<wchar_t> {
  static std::string Get() { return "wchar_t"; }
};

template <>
struct CbTypeName<unsigned int> {
  static std::string Get() { return "unsigned int"; }
};

template <class C>
struct CbTypeName<CStringT<C>> {
  static std::string Get() {
    const std::string c = CbTypeName<C>::Get();
    return "class ATL::CStringT<" + c + ",class ATL::StrTraitATL<" + c + ",class ATL::ChTraitsCRT<" + c + "> > >";
  }
};

template <class C>
struct CbTypeName<std::basic_string<C>> {
  static std::string Get() {
    const std::string c = CbTypeName<C>::Get();
    return "class std::basic_string<" + c + ",struct std::char_traits<" + c + ">,class std::allocator<" + c + "> >";
  }
};

/// A template argument list in the form of the names above: a closing bracket stands apart from one before it.
inline std::string CbTemplateArguments(const std::string& arguments) {
  return "<" + arguments + (arguments.back() == '>' ? " >" : ">");
}
