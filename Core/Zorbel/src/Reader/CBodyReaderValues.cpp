// Constructor arguments and properties.

#include <cctype>
#include <functional>
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
    const XMLNode value = parseArgument(child, bean.constructorArguments.emplace_back(), bean, scope);
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
  using Step = void (CBodyReader::*)(const XMLNode&, SArgumentDescription&, const SBeanDescription&, const SScope&);
  static constexpr std::pair<const char*, Step> kSteps[] = {{"value", &CBodyReader::parseValue},
                                                            {"nullptr", &CBodyReader::parseNull},
                                                            {"ref", &CBodyReader::parseReference},
                                                            {"bean", &CBodyReader::parseInlineBean}};
  for (const auto& [name, parse] : kSteps) {
    if (XMLNode value = node.getChildNode(name); !value.isEmpty()) {
      (this->*parse)(value, argument, bean, scope);
      return value;
    }
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
    m_reading.Report({"value-type", kArgumentFunction}, SWhere{node, scope.variables, "type"},
                     L"Error while parsing arguments of bean '%s': Type is not defined", Wide(bean.name));
  }
  argument.kind = m_reading.SubstituteNarrow(type, {node, scope.variables, "type"});
  argument.text = m_reading.Substitute(node.getText(), {node, scope.variables});
}

void CBodyReader::parseNull(const XMLNode&, SArgumentDescription& argument, const SBeanDescription&, const SScope&) {
  argument.kind = SArgumentDescription::kNull;
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
void CBodyReader::parseInlineBean(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription&,
                                  const SScope& scope) {
  parseInlineName(node, argument, scope);
  if (!MayNest(m_reading, scope, {node, scope.variables}, kArgumentFunction)) {
    return;
  }
  const SScope inside{scope.library, scope.variables, scope.depth + 1};
  SDraft draft = NewDraft(node, inside);
  SLibrary* library = parseBean(node, draft, inside, CStringT<char>(argument.text));
  Add(*library, std::move(draft));
}

void CBodyReader::parseInlineName(const XMLNode& node, SArgumentDescription& argument, const SScope& scope) {
  const std::string uuid = NewUuid(kArgumentFunction, {node, scope.variables});
  const char* className = OrEmpty(node.getAttribute("class"));
  if (*className == '\0') {
    m_reading.Report({"class", kArgumentFunction}, SWhere{node, scope.variables, "class"},
                     L"Class name for unnamed bean not defined");
  }
  argument.kind = SArgumentDescription::kBean;
  argument.text = m_reading.Substitute(InlineName(uuid, className).c_str(), {node});
}

void CBodyReader::parseProperties(const XMLNode& node, SDraft& draft, const SScope& scope) {
  const auto readProperty = [&](const XMLNode& property) { parseProperty(property, draft, scope); };
  const auto readBody = [&](const XMLNode& loop, const SScope& body) { parseProperties(loop, draft, body); };
  ParseContainer(m_reading, node, {"property"}, scope, std::cref(readProperty), readBody);
}

void CBodyReader::parseProperty(const XMLNode& node, SDraft& draft, const SScope& scope) {
  constexpr const char* kPropertyFunction = "Zorbel::CXMLResource::parseProperty";
  const char* name = node.getAttribute("name");
  if (!HasText(name)) {
    m_reading.Report({"property-name", kPropertyFunction}, SWhere{node, scope.variables, "name"},
                     L"Error while parsing property: There is no valid attribute 'name'");
  }
  SPropertyDescription& property = draft.bean.properties.emplace_back();
  property.name = m_reading.SubstituteNarrow(name, {node, scope.variables, "name"});
  if (draft.source) {
    draft.source->properties.push_back({m_reading.SourceOf(node, scope.variables), {}});
  }
  if (const XMLNode arguments = node.getChildNode("arguments"); arguments.isEmpty()) {
    parsePropertyArgument(node, draft, scope);
  } else {
    ForEachChild(arguments, "argument", [&](const XMLNode& holder) { parsePropertyArgument(holder, draft, scope); });
  }
  if (property.arguments.empty()) {
    m_reading.Report({"arguments", kPropertyFunction}, SWhere{node, scope.variables},
                     L"Error while parsing property: Missing arguments");
  }
}

// An argument of the last property so far.
void CBodyReader::parsePropertyArgument(const XMLNode& holder, SDraft& draft, const SScope& scope) {
  SBeanDescription& bean = draft.bean;
  const XMLNode value = parseArgument(holder, bean.properties.back().arguments.emplace_back(), bean, scope);
  if (draft.source) {
    draft.source->properties.back().arguments.push_back(m_reading.SourceOf(value, scope.variables));
  }
}

}  // namespace Zorbel::Internal
