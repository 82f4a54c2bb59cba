#include "Resource/CXMLResource.h"

#include <string>

#include "Errors/CXMLResourceOrigin.h"
#include "Errors/Raise.h"
#include "Platform/File.h"
#include "Platform/Thread.h"
#include "Reader/SLoad.h"
#include "Reader/XmlChildren.h"
#include "Reader/XmlFile.h"
#include "Threads/ThreadState.h"

namespace Zorbel {
namespace {

using Internal::kResourceConstructor;
using Internal::kResourceFile;
using Internal::SLoad;

constexpr const char* kRootName = "zorbel";

std::wstring ParseErrorText(const XMLResults& results) {
  std::string text = std::string("Error when parssing '") + kRootName + "'";
  if (results.nLine != 0) {
    text += " at line " + std::to_string(results.nLine) + ", column " + std::to_string(results.nColumn);
  }
  return Utf8ToWide(text + ".");
}

// Up to and including the last "\"; only without any, the last "/" counts.
std::wstring DirectoryPrefix(const std::wstring& fileName) {
  std::size_t separator = fileName.rfind(L'\\');
  if (separator == std::wstring::npos) {
    separator = fileName.rfind(L'/');
  }
  return separator == std::wstring::npos ? std::wstring() : fileName.substr(0, separator + 1);
}

XMLNode ParseFile(const wchar_t* fileName) {
  XMLResults results{};
  XMLNode root = Internal::ParseXmlFile(fileName, kRootName, results);
  if (results.error == eXMLErrorFileNotFound) {
    Internal::Raise({kResourceFile, kResourceConstructor}, L"File '%s' not found", std::wstring(fileName));
  }
  if (results.error == eXMLErrorFileTooLarge) {
    Internal::Raise({kResourceFile, kResourceConstructor}, L"File '%s' is larger than 1073741824 bytes",
                    std::wstring(fileName));
  }
  if (results.error != eXMLErrorNone) {
    Internal::Raise({kResourceFile, kResourceConstructor}, L"Error while parsing file '%s': %s", std::wstring(fileName),
                    ParseErrorText(results));
  }
  return root;
}

}  // namespace

CXMLResource::CXMLResource(IBeanFactory* owner, const char* xmlText) : m_owner(owner) {
  if (xmlText == nullptr || *xmlText == '\0') {
    return;
  }
  XMLResults results{};
  const XMLNode root = XMLNode::parseString(xmlText, kRootName, &results);
  if (results.error != eXMLErrorNone) {
    Internal::Raise({kResourceFile, kResourceConstructor}, L"Error while parsing xml: %s", ParseErrorText(results));
  }
  SLoad load;
  parseLibrary(root, load);
}

CXMLResource::CXMLResource(IBeanFactory* owner, const wchar_t* fileName) : m_owner(owner) {
  SLoad load;
  ReadDocument({fileName != nullptr ? fileName : L"", nullptr}, load);
}

void CXMLResource::ReadDocument(const SOpenFile& file, SLoad& load) {
  const std::wstring resolvedName = Platform::ResolveFileName(file.name);
  Open(file, resolvedName, load);
  const XMLNode root = ParseFile(file.name);
  ReadIncludes(root, file, load);
  load.openFiles.erase(resolvedName);
  m_fileName = file.name;
  parseLibrary(root, load);
}

void CXMLResource::ReadIncludes(const XMLNode& root, const SOpenFile& file, SLoad& load) {
  const std::wstring prefix = DirectoryPrefix(file.name);
  Internal::ForEachChild(root, "include", [&](const XMLNode& include) {
    CStringT<wchar_t> path(include.getAttribute("path"));
    if (path.IsEmpty()) {
      Internal::Raise({kResourceFile, kResourceConstructor}, L"Missing argument 'path' in include tag");
    }
    path.Replace(L'/', L'\\');
    CXMLResource included(m_owner);
    included.ReadDocument({(prefix + path.GetString()).c_str(), &file}, load);
    Include(included);
  });
}

// Documents that include each other, and chains that would exhaust the stack, end here. An error ends the whole load:
// what is open then does not matter.
void CXMLResource::Open(const SOpenFile& file, const std::wstring& resolvedName, SLoad& load) {
  const std::size_t depth = load.openFiles.size();
  if (!load.openFiles.insert(resolvedName).second) {
    Internal::Raise({kResourceFile, kResourceConstructor}, L"File '%s' includes itself (%s)", std::wstring(file.name),
                    IncludeChain(file));
  }
  if (depth > Platform::MaximumRecursionDepth() || (depth > 0 && Internal::IsStackShort())) {
    Internal::Raise({kResourceFile, kResourceConstructor}, L"File '%s' is included too deeply",
                    std::wstring(file.name));
  }
  load.CountFile();
}

std::wstring CXMLResource::IncludeChain(const SOpenFile& file) {
  std::deque<const wchar_t*> names;
  for (const SOpenFile* open = file.outer; open != nullptr; open = open->outer) {
    names.push_front(open->name);
  }
  std::wstring chain;
  for (const wchar_t* name : names) {
    chain.append(name).append(L" -> ");
  }
  return chain + file.name;
}

}  // namespace Zorbel
