#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Document/SDocument.h"
#include "Document/Sources.h"
#include "Reader/CDeclarations.h"
#include "Reader/CReading.h"
#include "Reader/SScope.h"
#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

/// Reads what stands in a document beside its includes: libraries, beans and what they consist of. Where several things
/// are wrong, the order of the steps decides which is told first.
class CBodyReader {
 public:
  CBodyReader(CReading& reading, SDocument& document, CDeclarations& declarations)
      : m_reading(reading), m_document(document), m_declarations(declarations) {}

  /// Reads the libraries of a root element. The file's name is empty for a text.
  void parseLibrary(const XMLNode& root, const std::wstring& fileName);

 private:
  /// A bean in the making; the source is there when somebody asks for it.
  struct SDraft {
    SBeanDescription bean;
    std::unique_ptr<SBeanSource> source;
  };

  // Beans
  void parseBeans(const XMLNode& container, const SScope& scope);
  SLibrary* parseBean(const XMLNode& node, SDraft& draft, const SScope& scope, const char* inlineName);
  void parseName(const XMLNode& node, SBeanDescription& bean, const SScope& scope, const char* inlineName);
  SLibrary* parseClass(const XMLNode& node, SBeanDescription& bean, const SScope& scope, const char* inlineName);
  void parseFlags(const XMLNode& node, SBeanDescription& bean, const SScope& scope, bool isInline);
  void parseMethods(const XMLNode& node, SBeanDescription& bean, const SScope& scope);
  void parseContent(const XMLNode& node, SDraft& draft, const SScope& scope);
  void parseProvides(const XMLNode& node, SDraft& draft, const SScope& scope);
  void parseInterfaces(const XMLNode& node, SDraft& draft, const SScope& scope);
  void parseDependencies(const XMLNode& node, SDraft& draft, const SScope& scope);
  std::string NewUuid(const char* function, const SWhere& where);
  bool StringToBool(const char* text, bool otherwise, const SWhere& where);
  SLibrary* FindOrAddLibrary(const char* path, const XMLNode& mention, const SVariable* variables);
  SDraft NewDraft(const XMLNode& node, const SScope& scope);
  void Add(SLibrary& library, SDraft&& draft);
  void NoteSource(SDraft& draft, std::vector<SSource> SBeanSource::*list, const XMLNode& node, const SScope& scope);

  // Arguments and properties
  void parseConstructorArguments(const XMLNode& node, SDraft& draft, const SScope& scope);
  XMLNode parseArgument(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                        const SScope& scope);
  void parseValue(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                  const SScope& scope);
  void parseNull(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                 const SScope& scope);
  void parseReference(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                      const SScope& scope);
  void parseInlineBean(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                       const SScope& scope);
  void parseInlineName(const XMLNode& node, SArgumentDescription& argument, const SScope& scope);
  void parseProperties(const XMLNode& node, SDraft& draft, const SScope& scope);
  void parseProperty(const XMLNode& node, SDraft& draft, const SScope& scope);
  void parsePropertyArgument(const XMLNode& holder, SDraft& draft, const SScope& scope);

  CReading& m_reading;
  SDocument& m_document;
  CDeclarations& m_declarations;
};

}  // namespace Zorbel::Internal
