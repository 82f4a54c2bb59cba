// The body of a document: libraries, beans, arguments, properties and interfaces.

#include <cctype>
#include <string>
#include <string_view>

#include "Errors/CXMLResourceOrigin.h"
#include "Errors/Raise.h"
#include "Libraries/CLocalLibrary.h"
#include "Platform/Uuid.h"
#include "Reader/XmlChildren.h"
#include "Resource/CXMLResource.h"
#include "Values/ObjectType.h"

namespace Zorbel {
namespace {

using Internal::ForEachChild;
using Internal::kResourceFile;

constexpr const char* kBeanFunction = "Zorbel::CXMLResource::parseBean";
constexpr const char* kArgumentFunction = "Zorbel::CXMLResource::parseArgument";

std::wstring Wide(const CStringT<char>& name) { return CStringT<wchar_t>(name).GetString(); }

bool HasText(const char* text) { return text != nullptr && *text != '\0'; }

std::string NewUuid(const char* function) {
  std::string uuid;
  if (!Platform::CreateUuidText(uuid)) {
    Internal::Raise({kResourceFile, function}, L"Could not create uuid for unnamed bean");
  }
  return uuid;
}

std::string InlineName(const std::string& uuid, const char* className) {
  std::string name = "unnamed bean ";
  for (const char c : uuid) {
    name.push_back(static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
  }
  return name + " " + className;
}

// The part behind the last ":", unless that is the first character.
CStringT<char> Unqualified(const CStringT<char>& method) {
  const int colon = method.ReverseFind(':');
  return colon > 0 ? method.Mid(colon + 1) : method;
}

}  // namespace

void CXMLResource::parseLibrary(const XMLNode& root, Internal::SLoad& load) {
  ForEachChild(root, "library", [&](const XMLNode& node) {
    const char* path = node.getAttribute("path");
    if (!HasText(path)) {
      Internal::Raise({kResourceFile, "Zorbel::CXMLResource::parseLibrary"},
                      L"Error (path not found) when parsing library in file '%s'", std::wstring(m_fileName));
    }
    SLibraryRecord* library = FindOrAddLibrary(path);
    const XMLNode beans = node.getChildNode("beans");
    if (!beans.isEmpty()) {
      const Variables none;
      parseBeans(beans, SScope{library, &none, 0, load});
    }
  });
}

void CXMLResource::parseBeans(const XMLNode& container, const SScope& scope) {
  const auto addBean = [&](const XMLNode& node) {
    SBeanDescription bean;
    SLibraryRecord* library = parseBean(node, bean, scope, nullptr);
    AddBean(*library, std::move(bean));
  };
  const auto readBody = [this](const XMLNode& node, const SScope& body) { parseBeans(node, body); };
  ParseContainer(container, {"bean", "service"}, scope, addBean, readBody);
}

// The order of the steps decides which of several errors is reported.
SLibraryRecord* CXMLResource::parseBean(const XMLNode& node, SBeanDescription& bean, const SScope& scope,
                                        const char* inlineName) {
  SLibraryRecord* library = parseClass(node, bean, scope, inlineName);
  parseName(node, bean, scope, inlineName);
  parseFlags(node, bean, scope, inlineName != nullptr);
  parseMethods(node, bean, scope);
  if (bean.name.IsEmpty()) {
    bean.name = NewUuid(kBeanFunction).c_str();
  }
  if (!bean.lazy) {
    m_eagerBeans.push_back(bean.name);
  }
  parseContent(node, bean, scope);
  return library;
}

// Behind an "@" that is not the first character stands the path of the library that the bean belongs to.
SLibraryRecord* CXMLResource::parseClass(const XMLNode& node, SBeanDescription& bean, const SScope& scope,
                                         const char* inlineName) {
  bean.className = SubstituteNarrow(node.getAttribute("class"), *scope.variables);
  if (bean.className.IsEmpty()) {
    parseName(node, bean, scope, inlineName);
    Internal::Raise({kResourceFile, kBeanFunction}, L"Missing class name when parsing type '%s'",
                    AnsiToWide(bean.name.GetString()));
  }
  const int at = bean.className.Find('@');
  if (at <= 0) {
    return scope.library;
  }
  SLibraryRecord* library = FindOrAddLibrary(bean.className.Mid(at + 1));
  bean.className = bean.className.Left(at);
  return library;
}

void CXMLResource::parseName(const XMLNode& node, SBeanDescription& bean, const SScope& scope, const char* inlineName) {
  bean.name = inlineName != nullptr ? CStringT<char>(inlineName)
                                    : SubstituteNarrow(node.getAttribute("name"), *scope.variables);
}

void CXMLResource::parseFlags(const XMLNode& node, SBeanDescription& bean, const SScope& scope, bool isInline) {
  const auto read = [&](const char* name, bool& flag) {
    if (const char* text = node.getAttribute(name)) {
      flag = StringToBool(Substitute(text, *scope.variables));
    }
  };
  if (!isInline) {
    read("singleton", bean.singleton);
    read("lazy", bean.lazy);
  }
  read("autoname", bean.autoname);
  if (!isInline) {
    read("exported", bean.exported);
  }
}

void CXMLResource::parseMethods(const XMLNode& node, SBeanDescription& bean, const SScope& scope) {
  const auto read = [&](const char* name) { return SubstituteNarrow(node.getAttribute(name), *scope.variables); };
  bean.initMethod = read("init-method");
  bean.exitMethod = read("exit-method");
  bean.factoryBean = read("factory-bean");
  const bool hasMethod = node.getAttribute("factory-method") != nullptr;
  bean.factoryMethod = Unqualified(hasMethod ? read("factory-method") : bean.className);
}

void CXMLResource::parseContent(const XMLNode& node, SBeanDescription& bean, const SScope& scope) {
  const auto withFirst = [&node](const char* name, const auto& parse) {
    const XMLNode child = node.getChildNode(name);
    if (!child.isEmpty()) {
      parse(child);
    }
  };
  withFirst("constructor-arg", [&](const XMLNode& child) { parseConstructorArguments(child, bean, scope); });
  withFirst("properties", [&](const XMLNode& child) { parseProperties(child, bean, scope); });
  withFirst("provides", [&](const XMLNode& child) {
    const auto readInterface = [&](const XMLNode& interfaceNode) { parseInterfaces(interfaceNode, bean, scope); };
    ParseContainer(child, {"interface"}, scope, readInterface, [](const XMLNode&, const SScope&) {});
  });
  withFirst("depends-on", [&](const XMLNode& child) { parseDependencies(child, bean, scope); });
}

void CXMLResource::parseConstructorArguments(const XMLNode& node, SBeanDescription& bean, const SScope& scope) {
  ForEachChild(node, "argument", [&](const XMLNode& child) {
    SArgumentDescription argument;
    parseArgument(child, argument, bean, scope);
    bean.constructorArguments.push_back(std::move(argument));
  });
  if (bean.constructorArguments.empty()) {
    Internal::Raise({kResourceFile, "Zorbel::CXMLResource::parseConstructorArguments"},
                    L"Error while parsing constructor arguments of bean '%s': There are no arguments", Wide(bean.name));
  }
}

void CXMLResource::parseArgument(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                                 const SScope& scope) {
  if (const XMLNode value = node.getChildNode("value"); !value.isEmpty()) {
    parseValue(value, argument, bean, scope);
  } else if (!node.getChildNode("nullptr").isEmpty()) {
    argument.kind = ObjectType::kNull;
  } else if (const XMLNode reference = node.getChildNode("ref"); !reference.isEmpty()) {
    parseReference(reference, argument, bean, scope);
  } else if (const XMLNode inlineBean = node.getChildNode("bean"); !inlineBean.isEmpty()) {
    parseInlineBean(inlineBean, argument, scope);
  } else {
    Internal::Raise({kResourceFile, kArgumentFunction},
                    L"Error when parsing arguments of bean '%s': There are no arguments",
                    AnsiToWide(bean.name.GetString()));
  }
}

void CXMLResource::parseValue(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                              const SScope& scope) {
  const char* type = node.getAttribute("type");
  if (type == nullptr) {
    Internal::Raise({kResourceFile, kArgumentFunction},
                    L"Error while parsing arguments of bean '%s': Type is not defined", Wide(bean.name));
  }
  argument.kind = SubstituteNarrow(type, *scope.variables);
  argument.text = Substitute(node.getText(), *scope.variables);
}

void CXMLResource::parseReference(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                                  const SScope& scope) {
  for (const char* kind : {ObjectType::kBean, ObjectType::kService}) {
    if (const char* target = node.getAttribute(kind); HasText(target)) {
      argument.kind = kind;
      argument.text = Substitute(target, *scope.variables);
      return;
    }
  }
  Internal::Raise({kResourceFile, kArgumentFunction},
                  L"Error while parsing arguments of bean '%s': There is no valid reference bean or service name",
                  Wide(bean.name));
}

// An inline bean is an ordinary bean of the library with a name that no document can know.
void CXMLResource::parseInlineBean(const XMLNode& node, SArgumentDescription& argument, const SScope& scope) {
  const std::string uuid = NewUuid(kArgumentFunction);
  const char* className = node.getAttribute("class");
  if (!HasText(className)) {
    Internal::Raise({kResourceFile, kArgumentFunction}, L"Class name for unnamed bean not defined");
  }
  argument.kind = ObjectType::kBean;
  const Variables none;
  argument.text = Substitute(InlineName(uuid, className).c_str(), none);

  const SScope inside{scope.library, scope.variables, Deeper(scope, kArgumentFunction), scope.load};
  SBeanDescription bean;
  SLibraryRecord* library = parseBean(node, bean, inside, CStringT<char>(argument.text));
  AddBean(*library, std::move(bean));
}

void CXMLResource::parseProperties(const XMLNode& node, SBeanDescription& bean, const SScope& scope) {
  const auto readProperty = [&](const XMLNode& property) { parseProperty(property, bean, scope); };
  const auto readBody = [this, &bean](const XMLNode& loop, const SScope& body) { parseProperties(loop, bean, body); };
  ParseContainer(node, {"property"}, scope, readProperty, readBody);
}

void CXMLResource::parseProperty(const XMLNode& node, SBeanDescription& bean, const SScope& scope) {
  constexpr const char* kPropertyFunction = "Zorbel::CXMLResource::parseProperty";
  const char* name = node.getAttribute("name");
  if (!HasText(name)) {
    Internal::Raise({kResourceFile, kPropertyFunction},
                    L"Error while parsing property: There is no valid attribute 'name'");
  }
  SPropertyDescription property;
  property.name = SubstituteNarrow(name, *scope.variables);
  const auto addArgument = [&](const XMLNode& holder) {
    SArgumentDescription argument;
    parseArgument(holder, argument, bean, scope);
    property.arguments.push_back(std::move(argument));
  };
  if (const XMLNode arguments = node.getChildNode("arguments"); arguments.isEmpty()) {
    addArgument(node);
  } else {
    ForEachChild(arguments, "argument", addArgument);
  }
  if (property.arguments.empty()) {
    Internal::Raise({kResourceFile, kPropertyFunction}, L"Error while parsing property: Missing arguments");
  }
  bean.properties.push_back(std::move(property));
}

// The library is loaded first: its module may register the interface's type id when it is.
void CXMLResource::parseInterfaces(const XMLNode& node, SBeanDescription& bean, const SScope& scope) {
  processLibrary(*scope.library);
  const CStringT<char> name = SubstituteNarrow(node.getText(), *scope.variables);
  if (name.IsEmpty()) {
    Internal::Raise({kResourceFile, "Zorbel::CXMLResource::parseInterfaces"},
                    L"Error while parsing interface: Missing interface name");
  }
  bean.interfaces.emplace_back(CLocalLibrary::Instance().GetTypeID(name));
}

void CXMLResource::parseDependencies(const XMLNode& node, SBeanDescription& bean, const SScope& scope) {
  ForEachChild(node, "bean-name", [&](const XMLNode& child) {
    bean.dependsOn.push_back(SubstituteNarrow(child.getText(), *scope.variables));
  });
}

}  // namespace Zorbel
