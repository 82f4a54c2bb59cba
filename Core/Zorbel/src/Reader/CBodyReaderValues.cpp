// Constructor arguments and properties.

#include <cctype>
#include <string>
#include <utility>

#include "BasePool/CbConversion.h"
#include "Reader/CBodyReader.h"
#include "Reader/ParseContainer.h"
#include "Reader/XmlChildren.h"

namespace Zorbel::Internal {
namespace {

constexpr const char* kArgumentFunction = "Zorbel::CXMLResource::parseArgument";

std::wstring Wide(const CStringT<char>& name) { return CStringT<wchar_t>(name).GetString(); }

bool HasText(const char* text) { return *OrEmpty(text) != '\0'; }

std::string InlineName(const std::string& uuid, const char* className) {
  std::string name = "unnamed bean ";
  for (const char c : uuid) {
    name.push_back(static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
  }
  return name + " " + className;
}

}  // namespace

void CBodyReader::parseConstructorArguments(const XMLNode& node, SDraft& draft, const SScope& scope) {
  SBeanDescription& bean = draft.bean;
  ForEachChild(node, "argument", [&](const XMLNode& child) {
    SArgumentDescription argument;
    const XMLNode value = parseArgument(child, argument, bean, scope);
    bean.constructorArguments.push_back(std::move(argument));
    NoteSource(draft, &SBeanSource::constructorArguments, value, scope);
  });
  if (bean.constructorArguments.empty()) {
    m_reading.Report({"arguments", "Zorbel::CXMLResource::parseConstructorArguments"}, SWhere{node, scope.variables},
                     L"Error while parsing constructor arguments of bean '%s': There are no arguments",
                     Wide(bean.name));
  }
}

// Returns the element that holds the value; the argument's own when there is none.
XMLNode CBodyReader::parseArgument(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                                   const SScope& scope) {
  if (XMLNode value = node.getChildNode("value"); !value.isEmpty()) {
    parseValue(value, argument, bean, scope);
    return value;
  }
  if (XMLNode null = node.getChildNode("nullptr"); !null.isEmpty()) {
    argument.kind = SArgumentDescription::kNull;
    return null;
  }
  if (XMLNode reference = node.getChildNode("ref"); !reference.isEmpty()) {
    parseReference(reference, argument, bean, scope);
    return reference;
  }
  if (XMLNode inlineBean = node.getChildNode("bean"); !inlineBean.isEmpty()) {
    parseInlineBean(inlineBean, argument, scope);
    return inlineBean;
  }
  m_reading.Report({"value", kArgumentFunction}, SWhere{node, scope.variables},
                   L"Error when parsing arguments of bean '%s': There are no arguments",
                   AnsiToWide(bean.name.GetString()));
  return node;
}

void CBodyReader::parseValue(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                             const SScope& scope) {
  const char* type = node.getAttribute("type");
  if (type == nullptr) {
    m_reading.Report({"value-type", kArgumentFunction}, SWhere{node, scope.variables},
                     L"Error while parsing arguments of bean '%s': Type is not defined", Wide(bean.name));
  }
  argument.kind = m_reading.SubstituteNarrow(type, {node, scope.variables, "type"});
  argument.text = m_reading.Substitute(node.getText(), {node, scope.variables});
}

void CBodyReader::parseReference(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                                 const SScope& scope) {
  for (const char* kind : {SArgumentDescription::kBean, SArgumentDescription::kService}) {
    if (const char* target = node.getAttribute(kind); HasText(target)) {
      argument.kind = kind;
      argument.text = m_reading.Substitute(target, {node, scope.variables, kind});
      return;
    }
  }
  m_reading.Report({"reference", kArgumentFunction}, SWhere{node, scope.variables},
                   L"Error while parsing arguments of bean '%s': There is no valid reference bean or service name",
                   Wide(bean.name));
}

// An inline bean is an ordinary bean of the library with a name that no document can know.
void CBodyReader::parseInlineBean(const XMLNode& node, SArgumentDescription& argument, const SScope& scope) {
  const SWhere where{node, scope.variables};
  const std::string uuid = NewUuid(kArgumentFunction, where);
  const char* className = OrEmpty(node.getAttribute("class"));
  if (*className == '\0') {
    m_reading.Report({"class", kArgumentFunction}, SWhere{node, scope.variables, "class"},
                     L"Class name for unnamed bean not defined");
  }
  argument.kind = SArgumentDescription::kBean;
  argument.text = m_reading.Substitute(InlineName(uuid, className).c_str(), {node});
  if (!MayNest(m_reading, scope, where, kArgumentFunction)) {
    return;
  }
  const SScope inside{scope.library, scope.variables, scope.depth + 1};
  SDraft draft = NewDraft(node, inside);
  SLibrary* library = parseBean(node, draft, inside, CStringT<char>(argument.text));
  Add(*library, std::move(draft));
}

void CBodyReader::parseProperties(const XMLNode& node, SDraft& draft, const SScope& scope) {
  const auto readProperty = [&](const XMLNode& property) { parseProperty(property, draft, scope); };
  const auto readBody = [&](const XMLNode& loop, const SScope& body) { parseProperties(loop, draft, body); };
  ParseContainer(m_reading, node, {"property"}, scope, readProperty, readBody);
}

void CBodyReader::parseProperty(const XMLNode& node, SDraft& draft, const SScope& scope) {
  constexpr const char* kPropertyFunction = "Zorbel::CXMLResource::parseProperty";
  const char* name = node.getAttribute("name");
  if (!HasText(name)) {
    m_reading.Report({"property-name", kPropertyFunction}, SWhere{node, scope.variables},
                     L"Error while parsing property: There is no valid attribute 'name'");
  }
  SPropertyDescription property;
  SPropertySource source;
  property.name = m_reading.SubstituteNarrow(name, {node, scope.variables, "name"});
  const auto addArgument = [&](const XMLNode& holder) {
    SArgumentDescription argument;
    const XMLNode value = parseArgument(holder, argument, draft.bean, scope);
    property.arguments.push_back(std::move(argument));
    if (draft.source) {
      source.arguments.push_back(m_reading.SourceOf(value, scope.variables));
    }
  };
  if (const XMLNode arguments = node.getChildNode("arguments"); arguments.isEmpty()) {
    addArgument(node);
  } else {
    ForEachChild(arguments, "argument", addArgument);
  }
  if (property.arguments.empty()) {
    m_reading.Report({"arguments", kPropertyFunction}, SWhere{node, scope.variables},
                     L"Error while parsing property: Missing arguments");
  }
  draft.bean.properties.push_back(std::move(property));
  if (draft.source) {
    source.property = m_reading.SourceOf(node, scope.variables);
    draft.source->properties.push_back(std::move(source));
  }
}

}  // namespace Zorbel::Internal
