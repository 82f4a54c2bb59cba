#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/IBeanFactory.h>
#include <Zorbel/ILibrary.h>

#include <functional>
#include <initializer_list>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "BasePool/CbMap.h"
#include "Definitions/CBeanConfig.h"
#include "Document/SLibrary.h"
#include "Services/CServiceRegistry.h"
#include "XmlParser/XmlParser.h"

namespace Zorbel {
namespace Internal {

struct SLoad;

}  // namespace Internal

/// Loop variables by name.
using Variables = CbMap<CStringT<wchar_t>, CStringT<wchar_t>>;

/// One configuration document as read, and a factory's registry of all documents merged into it.
/// Thread: has no lock of its own; a factory calls its registry under the factory's locks, and documents are read under
/// none. Code of plug-ins that is called from here may call back, on the same thread.
class CXMLResource {
 public:
  /// An empty resource. `owner` is asked for the beans behind configured services.
  explicit CXMLResource(IBeanFactory* owner) : m_owner(owner) {}

  /// Reads a document; a null or empty text gives an empty resource. Includes are ignored.
  /// Throws: `CException`, with what is wrong and where; for a bean that provides an interface also what
  /// `FindBeanConfig` and `CLocalLibrary::GetTypeID` throw.
  CXMLResource(IBeanFactory* owner, const char* xmlText);

  /// Reads a document file with the files that it includes. Throws: likewise, and what `Integrate` throws.
  CXMLResource(IBeanFactory* owner, const wchar_t* fileName);

  CXMLResource(const CXMLResource&) = delete;
  CXMLResource& operator=(const CXMLResource&) = delete;

  /// Takes over what the document `other` declares; `other` is of no use afterwards. Returns the name of the first bean
  /// that is here already, with nothing changed then; nothing when there is none.
  /// Throws: std::bad_alloc, `CbExceptionContainer`, with nothing changed.
  std::optional<CStringT<char>> Integrate(CXMLResource& other);

  /// Returns the definition of a bean, or null when none is declared. The first use of a bean's library loads it and
  /// builds the definitions of all of its beans. Throws: `CException` when a wrapper maker is missing; what
  /// `CDynamicLibrary` and `CBeanConfig` throw. Those built before stay.
  CBeanConfig* FindBeanConfig(const char* name) { return FindBeanConfig(name, BeanMap::Traits::Hash(name)); }
  CBeanConfig* FindBeanConfig(const char* name, std::uint64_t hash);

  /// Returns the beans to be created at load time, in the order of merging.
  const std::vector<CStringT<char>>& GetEagerBeans() const { return m_eagerBeans; }

  /// Returns the library on whose behalf such a bean is created; null when there is none.
  const SLibrary* FindEagerLibrary(const char* name) const;

  /// Registers a ready-made object for the interface, or enters a given registration as it is. Returns the
  /// registration; null, with nothing changed, when the object is registered for the interface already.
  std::shared_ptr<ITypeRegistration> RegisterInstance(const char* typeId, bool front,
                                                      const std::shared_ptr<IObject>& instance,
                                                      std::shared_ptr<ITypeRegistration> registration);
  std::shared_ptr<ITypeRegistration> RegisterService(const char* typeId, bool front,
                                                     std::function<std::unique_ptr<IObject>()>&& maker,
                                                     std::shared_ptr<ITypeRegistration> registration);

  /// Removes and returns the registrations that hold `instance`, so that the caller destroys them where it holds no
  /// lock.
  std::vector<std::shared_ptr<ITypeRegistration>> ReleaseInstance(const std::shared_ptr<IObject>& instance);

  /// Returns the registration at position `index`, or null.
  std::shared_ptr<ITypeRegistration> FindService(const char* typeId, unsigned int index);
  unsigned int GetServiceCount(const char* typeId) const { return m_services.GetCount(typeId); }

  bool HasDefinitions() const { return m_beans.GetCount() != 0; }
  bool HasServices() const { return !m_services.IsEmpty(); }

  /// Exchanges the registrations of services alone.
  void SwapServices(CServiceRegistry& services) noexcept { m_services.Swap(services); }
  void AbandonServices() noexcept { m_services.Abandon(); }

  /// Throws: `CException` when the type id is null.
  static void RequireTypeId(const char* typeId, const char* function, const wchar_t* message);

  /// Raise what the operations above have told, where no lock is held. Throw: `CException`, always.
  [[noreturn]] static void RaiseOverride(const CStringT<char>& bean);
  [[noreturn]] static void RaiseAlreadyRegistered(const char* typeId);
  [[noreturn]] static void RaiseNotRegistered();

 private:
  using BeanMap = CbMap<CStringT<char>, std::unique_ptr<CBeanConfig>>;

  class CMerge;

  struct SLoadedLibrary {
    std::unique_ptr<ILibrary> library;
    SLibraryRecord* record;
  };

  /// The files being read, innermost first.
  struct SOpenFile {
    const wchar_t* name;
    const SOpenFile* outer;
  };

  /// Where in a document the reader is.
  struct SScope {
    SLibraryRecord* library;
    const Variables* variables;
    int depth;  // loops and inline beans around it
    Internal::SLoad& load;
  };

  using ElementHandler = std::function<void(const XMLNode&)>;
  using BodyReader = std::function<void(const XMLNode&, const SScope&)>;
  using ElementNames = std::initializer_list<const char*>;

  // Reading
  void ReadDocument(const SOpenFile& file, Internal::SLoad& load);
  void ReadIncludes(const XMLNode& root, const SOpenFile& file, Internal::SLoad& load);
  static void Open(const SOpenFile& file, const std::wstring& resolvedName, Internal::SLoad& load);
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
  void parseLibrary(const XMLNode& root, Internal::SLoad& load);
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
  void Include(CXMLResource& included);
  const CStringT<char>* FindOverride(const CXMLResource& other) const;
  void ForgetLoadedLibraries() noexcept;
  void processLibrary(SLibraryRecord& library);
  void* FindWrapperMaker(SLibraryRecord& library, const CStringT<char>& className);
  void processBean(const SBeanDescription& bean, SLibraryRecord& library);
  ILibrary& LoadedLibrary(SLibraryRecord& library);

  IBeanFactory* m_owner;
  CStringT<wchar_t> m_fileName;  // empty for a document from a text
  std::vector<CStringT<char>> m_eagerBeans;
  CbMap<CStringT<char>, const SLibrary*> m_eagerLibraries;
  std::list<SLibraryRecord> m_libraries;                     // never moved or removed
  CbMap<CStringT<char>, SLibraryRecord*> m_librariesByPath;  // keeps look-ups from walking the list above
  CbMap<CStringT<char>, SLibraryRecord*> m_librariesByBean;  // the first, in their order, with a bean of that name
  std::vector<SLoadedLibrary> m_loadedLibraries;
  BeanMap m_beans;
  CServiceRegistry m_services;
};

}  // namespace Zorbel
