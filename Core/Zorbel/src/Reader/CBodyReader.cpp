#include "Reader/CBodyReader.h"

#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "BasePool/CbConversion.h"
#include "Platform/Uuid.h"
#include "Reader/CSourceRecorder.h"
#include "Reader/ParseContainer.h"
#include "Reader/XmlChildren.h"

namespace Zorbel::Internal {
namespace {

constexpr const char* kBeanFunction = "Zorbel::CXMLResource::parseBean";

// The part behind the last ":", unless that is the first character.
CStringT<char> Unqualified(const CStringT<char>& method) {
  const int colon = method.ReverseFind(':');
  return colon > 0 ? method.Mid(colon + 1) : method;
}

}  // namespace

void CBodyReader::parseLibrary(const XMLNode& root, const std::wstring& fileName) {
  ForEachChild(root, "library", [&](const XMLNode& node) {
    const char* path = OrEmpty(node.getAttribute("path"));
    if (*path == '\0') {
      m_reading.Report({"library-path", "Zorbel::CXMLResource::parseLibrary"}, SWhere{node, nullptr, "path"},
                       L"Error (path not found) when parsing library in file '%s'", fileName);
    }
    SLibrary* library = FindOrAddLibrary(path, node, nullptr);
    const XMLNode beans = node.getChildNode("beans");
    if (!beans.isEmpty()) {
      parseBeans(beans, SScope{library});
    }
  });
}

void CBodyReader::parseBeans(const XMLNode& container, const SScope& scope) {
  const auto addBean = [&](const XMLNode& node) {
    SDraft draft = NewDraft(node, scope);
    SLibrary* library = parseBean(node, draft, scope, nullptr);
    Add(*library, std::move(draft));
  };
  const auto readBody = [this](const XMLNode& loop, const SScope& body) { parseBeans(loop, body); };
  ParseContainer(m_reading, container, {"bean", "service"}, scope, std::cref(addBean), readBody);
}

SLibrary* CBodyReader::parseBean(const XMLNode& node, SDraft& draft, const SScope& scope, const char* inlineName) {
  SBeanDescription& bean = draft.bean;
  SLibrary* library = parseClass(node, bean, scope, inlineName);
  parseName(node, bean, scope, inlineName);
  parseFlags(node, bean, scope, inlineName != nullptr);
  parseMethods(node, bean, scope);
  if (bean.name.IsEmpty()) {
    bean.name = NewUuid(kBeanFunction, {node, scope.variables}).c_str();
  }
  if (!bean.lazy) {
    m_document.eagerBeans.push_back(bean.name);
  }
  parseContent(node, draft, scope);
  return library;
}

// Behind an "@" that is not the first character stands the path of the library that the bean belongs to.
SLibrary* CBodyReader::parseClass(const XMLNode& node, SBeanDescription& bean, const SScope& scope,
                                  const char* inlineName) {
  const unsigned int failed = m_reading.CountFailedTexts();
  bean.className = m_reading.NarrowAttribute(node, "class", scope.variables);
  if (bean.className.IsEmpty()) {
    parseName(node, bean, scope, inlineName);
    m_reading.Report({"class", kBeanFunction}, SWhere{node, scope.variables, "class"},
                     L"Missing class name when parsing type '%s'", AnsiToWide(bean.name.GetString()));
  }
  const int at = bean.className.Find('@');
  if (at <= 0 || m_reading.CountFailedTexts() != failed) {
    return scope.library;
  }
  SLibrary* library = FindOrAddLibrary(bean.className.Mid(at + 1), node, scope.variables);
  bean.className = bean.className.Left(at);
  return library;
}

void CBodyReader::parseName(const XMLNode& node, SBeanDescription& bean, const SScope& scope, const char* inlineName) {
  bean.name =
      inlineName != nullptr ? CStringT<char>(inlineName) : m_reading.NarrowAttribute(node, "name", scope.variables);
}

void CBodyReader::parseFlags(const XMLNode& node, SBeanDescription& bean, const SScope& scope, bool isInline) {
  const auto read = [&](const char* name, bool& flag) {
    if (const char* text = node.getAttribute(name)) {
      flag = StringToBool(text, flag, {node, scope.variables, name});
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

bool CBodyReader::StringToBool(const char* text, bool otherwise, const SWhere& where) {
  const std::string_view plain = text;
  if (plain == "true" || plain == "false") {
    return plain == "true";  // most texts
  }
  const unsigned int failed = m_reading.CountFailedTexts();
  const CStringT<wchar_t> substituted = m_reading.Substitute(text, where);
  const std::wstring_view value = substituted.GetString();
  if (value == L"true" || value == L"false") {
    return value == L"true";
  }
  if (m_reading.CountFailedTexts() == failed) {  // otherwise it is told
    m_reading.Report({"flag", "StringToBool"}, where, L"Value of bool parameter must be 'true' or 'false'");
  }
  return otherwise;
}

void CBodyReader::parseMethods(const XMLNode& node, SBeanDescription& bean, const SScope& scope) {
  const auto read = [&](const char* name) { return m_reading.NarrowAttribute(node, name, scope.variables); };
  bean.initMethod = read("init-method");
  bean.exitMethod = read("exit-method");
  bean.factoryBean = read("factory-bean");
  const bool hasMethod = node.getAttribute("factory-method") != nullptr;
  bean.factoryMethod = Unqualified(hasMethod ? read("factory-method") : bean.className);
}

void CBodyReader::parseContent(const XMLNode& node, SDraft& draft, const SScope& scope) {
  using Step = void (CBodyReader::*)(const XMLNode&, SDraft&, const SScope&);
  static constexpr std::pair<const char*, Step> kSteps[] = {
      {"constructor-arg", &CBodyReader::parseConstructorArguments},
      {"properties", &CBodyReader::parseProperties},
      {"provides", &CBodyReader::parseProvides},
      {"depends-on", &CBodyReader::parseDependencies}};
  for (const auto& [name, parse] : kSteps) {
    const XMLNode child = node.getChildNode(name);
    if (!child.isEmpty()) {
      (this->*parse)(child, draft, scope);
    }
  }
}

// Loops are carried out, but their bodies provide nothing.
void CBodyReader::parseProvides(const XMLNode& node, SDraft& draft, const SScope& scope) {
  const auto readInterface = [&](const XMLNode& interfaceNode) { parseInterfaces(interfaceNode, draft, scope); };
  ParseContainer(m_reading, node, {"interface"}, scope, std::cref(readInterface), [](const XMLNode&, const SScope&) {});
}

// The library comes first: its module may register the interface's type id when it is loaded.
void CBodyReader::parseInterfaces(const XMLNode& node, SDraft& draft, const SScope& scope) {
  const SWhere where{node, scope.variables};
  m_reading.environment.UseLibrary(*scope.library, m_declarations.FirstBean(*scope.library));
  const unsigned int failed = m_reading.CountFailedTexts();
  const CStringT<char> name = m_reading.SubstituteNarrow(node.getText(), where);
  if (name.IsEmpty()) {
    m_reading.Report({"interface", "Zorbel::CXMLResource::parseInterfaces"}, where,
                     L"Error while parsing interface: Missing interface name");
    return;
  }
  if (m_reading.CountFailedTexts() != failed) {
    return;  // told
  }
  if (const std::optional<CStringT<char>> typeId = m_reading.environment.FindTypeId(name)) {
    draft.bean.interfaces.push_back(*typeId);
    if (draft.source) {
      draft.source->interfaces.push_back({m_reading.SourceOf(node, scope.variables), name.GetString()});
    }
  } else {
    m_reading.Report({"unknown-interface", "Zorbel::CXMLResource::parseInterfaces"}, where,
                     L"No type id for class '%s' registered", AnsiToWide(name.GetString()));
  }
}

void CBodyReader::parseDependencies(const XMLNode& node, SDraft& draft, const SScope& scope) {
  ForEachChild(node, "bean-name", [&](const XMLNode& child) {
    draft.bean.dependsOn.push_back(m_reading.SubstituteNarrow(child.getText(), {child, scope.variables}));
    NoteSource(draft, &SBeanSource::dependsOn, child, scope);
  });
}

std::string CBodyReader::NewUuid(const char* function, const SWhere& where) {
  std::string uuid;
  if (!Platform::CreateUuidText(uuid)) {
    m_reading.Report({"uuid", function}, where, L"Could not create uuid for unnamed bean");
  }
  return uuid;
}

SLibrary* CBodyReader::FindOrAddLibrary(const char* path, const XMLNode& mention, const SVariable* variables) {
  SLibrary& library = m_declarations.FindOrAddLibrary(path);
  if (CSourceRecorder* sources = m_reading.GetSources()) {
    sources->AddMention(library, sources->SourceOf(mention, variables));
  }
  return &library;
}

CBodyReader::SDraft CBodyReader::NewDraft(const XMLNode& node, const SScope& scope) {
  SDraft draft;
  if (m_reading.GetSources() != nullptr) {
    draft.source = std::make_unique<SBeanSource>();
    draft.source->bean = m_reading.SourceOf(node, scope.variables);
  }
  return draft;
}

void CBodyReader::NoteSource(SDraft& draft, std::vector<SSource> SBeanSource::*list, const XMLNode& node,
                             const SScope& scope) {
  if (draft.source) {
    ((*draft.source).*list).push_back(m_reading.SourceOf(node, scope.variables));
  }
}

void CBodyReader::Add(SLibrary& library, SDraft&& draft) {
  m_declarations.AddBean(library, std::move(draft.bean));
  if (draft.source) {
    m_reading.GetSources()->AddBean(library, std::move(*draft.source));
  }
}

}  // namespace Zorbel::Internal
