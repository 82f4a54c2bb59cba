#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/IBeanFactory.h>
#include <Zorbel/ILibrary.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

#include "BasePool/CbMap.h"
#include "CBeanConfig.h"
#include "SLibrary.h"
#include "XmlParser/XmlParser.h"

namespace Zorbel {

/// Loop variables by name.
using Variables = CbMap<CStringT<wchar_t>, CStringT<wchar_t>>;

/// One configuration document as read, and a factory's registry of all documents merged into it.
/// Thread: has no lock of its own; a factory calls its registry under the factory's locks. Code of plug-ins that is
/// called from here may call back, on the same thread.
class CXMLResource {
 public:
  /// An empty resource. `owner` is asked for the beans behind configured services.
  explicit CXMLResource(IBeanFactory* owner) : m_owner(owner) {}

  /// Reads a document; a null or empty text gives an empty resource. Includes are ignored.
  /// Throws: `CException`, with what is wrong and where.
  CXMLResource(IBeanFactory* owner, const char* xmlText);

  /// Reads a document file with the files that it includes. Throws: likewise.
  CXMLResource(IBeanFactory* owner, const wchar_t* fileName);

  CXMLResource(const CXMLResource&) = delete;
  CXMLResource& operator=(const CXMLResource&) = delete;

  /// Takes over what the document `other` declares; `other` is of no use afterwards.
  /// Throws: `CException`, with nothing changed, when a bean's name is taken.
  void Integrate(CXMLResource& other);

  /// Returns the definition of a bean, or null when none is declared. The first use of a bean's library loads it and
  /// builds the definitions of all of its beans. Throws: `CException` when a module or a wrapper maker is missing.
  CBeanConfig* FindBeanConfig(const char* name) { return FindBeanConfig(name, BeanMap::Traits::Hash(name)); }
  CBeanConfig* FindBeanConfig(const char* name, std::uint64_t hash);

  /// Returns the beans to be created at load time, in the order of merging, with their libraries.
  std::vector<std::pair<CStringT<char>, const SLibrary*>> GetEagerBeans() const;

  std::shared_ptr<ITypeRegistration> RegisterInstance(const char* typeId, bool front,
                                                      const std::shared_ptr<IObject>& instance,
                                                      std::shared_ptr<ITypeRegistration> registration);
  std::shared_ptr<ITypeRegistration> RegisterService(const char* typeId, bool front,
                                                     std::function<std::unique_ptr<IObject>()>&& maker,
                                                     std::shared_ptr<ITypeRegistration> registration);

  /// Removes and returns the registrations that hold `instance`, so that the caller destroys them where it holds no
  /// lock. Throws: `CException` when there are none.
  std::vector<std::shared_ptr<ITypeRegistration>> ReleaseInstance(const std::shared_ptr<IObject>& instance);

  /// Returns the registration at position `index`, or null.
  std::shared_ptr<ITypeRegistration> FindService(const char* typeId, unsigned int index);
  unsigned int GetServiceCount(const char* typeId);

 private:
  using BeanMap = CbMap<CStringT<char>, std::unique_ptr<CBeanConfig>>;
  using ServiceList = std::deque<std::shared_ptr<ITypeRegistration>>;

  /// The files being read, innermost first.
  struct SOpenFile {
    const wchar_t* name;
    std::wstring resolvedName;
    const SOpenFile* outer;
  };

  /// Where in a document the reader is.
  struct SScope {
    SLibraryRecord* library;
    const Variables* variables;
    int depth;  // loops and inline beans around it
  };

  using ElementHandler = std::function<void(const XMLNode&)>;
  using BodyReader = std::function<void(const XMLNode&, const SScope&)>;
  using ElementNames = std::initializer_list<const char*>;

  // Reading
  CXMLResource(IBeanFactory* owner, const wchar_t* fileName, const SOpenFile* outer);
  void ReadIncludes(const XMLNode& root, const SOpenFile& file);
  static void CheckIncludes(const SOpenFile& file);
  static std::wstring IncludeChain(const SOpenFile& file);

  // Containers, loops and texts
  static void ParseContainer(const XMLNode& container, ElementNames names, const SScope& scope,
                             const ElementHandler& handler, const BodyReader& readBody);
  static void ParseFor(const XMLNode& loop, const SScope& scope, const BodyReader& readBody);
  static void ParseForeach(const XMLNode& loop, const SScope& scope, const BodyReader& readBody);
  static CStringT<wchar_t> Substitute(const char* text, const Variables& variables);
  static CStringT<char> SubstituteNarrow(const char* text, const Variables& variables);
  static int StringToInt(const char* text);
  static bool StringToBool(const wchar_t* text);
  static int Deeper(const SScope& scope, const char* function);

  // The body of a document
  void parseLibrary(const XMLNode& root);
  void parseBeans(const XMLNode& container, const SScope& scope);
  SLibraryRecord* parseBean(const XMLNode& node, SBeanDescription& bean, const SScope& scope, const char* inlineName);
  void parseName(const XMLNode& node, SBeanDescription& bean, const SScope& scope, const char* inlineName);
  SLibraryRecord* parseClass(const XMLNode& node, SBeanDescription& bean, const SScope& scope, const char* inlineName);
  static void parseFlags(const XMLNode& node, SBeanDescription& bean, const SScope& scope, bool isInline);
  static void parseMethods(const XMLNode& node, SBeanDescription& bean, const SScope& scope);
  void parseContent(const XMLNode& node, SBeanDescription& bean, const SScope& scope);
  void parseConstructorArguments(const XMLNode& node, SBeanDescription& bean, const SScope& scope);
  void parseArgument(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                     const SScope& scope);
  static void parseValue(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                         const SScope& scope);
  static void parseReference(const XMLNode& node, SArgumentDescription& argument, const SBeanDescription& bean,
                             const SScope& scope);
  void parseInlineBean(const XMLNode& node, SArgumentDescription& argument, const SScope& scope);
  void parseProperties(const XMLNode& node, SBeanDescription& bean, const SScope& scope);
  void parseProperty(const XMLNode& node, SBeanDescription& bean, const SScope& scope);
  void parseInterfaces(const XMLNode& node, SBeanDescription& bean, const SScope& scope);
  static void parseDependencies(const XMLNode& node, SBeanDescription& bean, const SScope& scope);

  // The registry
  SLibraryRecord* FindOrAddLibrary(const char* path);
  void AddBean(SLibraryRecord& library, SBeanDescription&& bean);
  void CheckOverrides(const CXMLResource& other) const;
  void IntegrateServices(const CXMLResource& other);
  void TakeLibraries(CXMLResource& other);
  void IntegrateLibrary(SLibraryRecord& other);
  void NoteEagerBean(const SBeanDescription& bean, const SLibrary& library);
  void processLibrary(SLibraryRecord& library);
  void* FindWrapperMaker(SLibraryRecord& library, const CStringT<char>& className);
  void processBean(const SBeanDescription& bean, SLibraryRecord& library);
  ILibrary& LoadedLibrary(SLibraryRecord& library);
  void Insert(const char* typeId, bool front, const std::shared_ptr<ITypeRegistration>& registration);

  IBeanFactory* m_owner;
  CStringT<wchar_t> m_fileName;  // empty for a document from a text
  std::vector<CStringT<char>> m_eagerBeans;
  CbMap<CStringT<char>, const SLibrary*> m_eagerLibraries;
  std::deque<SLibraryRecord> m_libraries;                    // never moved or removed
  CbMap<CStringT<char>, SLibraryRecord*> m_librariesByPath;  // keeps look-ups from walking the list above
  CbMap<CStringT<char>, SLibraryRecord*> m_librariesByBean;  // the first, in their order, with a bean of that name
  std::vector<std::unique_ptr<ILibrary>> m_loadedLibraries;
  BeanMap m_beans;
  CbMap<CStringT<char>, ServiceList> m_services;
};

}  // namespace Zorbel
