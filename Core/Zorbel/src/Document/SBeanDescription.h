#pragma once

#include <Zorbel/CStringT.h>

#include <vector>

namespace Zorbel {

/// One value of a constructor argument or property: a reference, or else a literal with the name of its basic type. The
/// text is the bean's name, the interface's name, or the literal.
struct SArgumentDescription {
  static constexpr const char* kBean = "bean";
  static constexpr const char* kService = "service";
  static constexpr const char* kNull = "nullptr";

  CStringT<char> kind;
  CStringT<wchar_t> text;
};

/// One call of a method to inject values.
struct SPropertyDescription {
  CStringT<char> name;
  std::vector<SArgumentDescription> arguments;
};

/// What a document says about one bean.
struct SBeanDescription {
  CStringT<char> name;
  CStringT<char> className;
  CStringT<char> factoryMethod;  ///< the creation method
  std::vector<SArgumentDescription> constructorArguments;
  CStringT<char> initMethod;               ///< empty for none
  CStringT<char> exitMethod;               ///< empty for none
  std::vector<CStringT<char>> interfaces;  ///< type ids
  std::vector<SPropertyDescription> properties;
  std::vector<CStringT<char>> dependsOn;  ///< names of beans to be resolved first
  bool singleton = false;
  bool exported = true;
  bool autoname = false;
  bool lazy = true;
  CStringT<char> factoryBean;  ///< name of the bean whose class creates this one; empty for none
};

}  // namespace Zorbel
