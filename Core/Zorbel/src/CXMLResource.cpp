#include "CXMLResource.h"

#include <string>

#include "CXMLResourceOrigin.h"
#include "Platform/File.h"
#include "Platform/Thread.h"
#include "Raise.h"
#include "XmlChildren.h"
#include "XmlFile.h"

namespace Zorbel {
namespace {

using Internal::kResourceFile;

constexpr const char* kConstructor = "Zorbel::CXMLResource::CXMLResource";
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
    Internal::Raise({kResourceFile, kConstructor}, L"File '%s' not found", std::wstring(fileName));
  }
  if (results.error != eXMLErrorNone) {
    Internal::Raise({kResourceFile, kConstructor}, L"Error while parsing file '%s': %s", std::wstring(fileName),
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
    Internal::Raise({kResourceFile, kConstructor}, L"Error while parsing xml: %s", ParseErrorText(results));
  }
  parseLibrary(root);
}

CXMLResource::CXMLResource(IBeanFactory* owner, const wchar_t* fileName)
    : CXMLResource(owner, fileName != nullptr ? fileName : L"", nullptr) {}

CXMLResource::CXMLResource(IBeanFactory* owner, const wchar_t* fileName, const SOpenFile* outer) : m_owner(owner) {
  const SOpenFile file{fileName, Platform::ResolveFileName(fileName), outer};
  CheckIncludes(file);
  const XMLNode root = ParseFile(fileName);
  ReadIncludes(root, file);
  m_fileName = fileName;
  parseLibrary(root);
}

void CXMLResource::ReadIncludes(const XMLNode& root, const SOpenFile& file) {
  const std::wstring prefix = DirectoryPrefix(file.name);
  Internal::ForEachChild(root, "include", [&](const XMLNode& include) {
    CStringT<wchar_t> path(include.getAttribute("path"));
    if (path.IsEmpty()) {
      Internal::Raise({kResourceFile, kConstructor}, L"Missing argument 'path' in include tag");
    }
    path.Replace(L'/', L'\\');
    CXMLResource included(m_owner, (prefix + path.GetString()).c_str(), &file);
    Include(included);
  });
}

// Documents that include each other, and chains that would exhaust the stack, end here.
void CXMLResource::CheckIncludes(const SOpenFile& file) {
  std::size_t depth = 0;
  for (const SOpenFile* open = file.outer; open != nullptr; open = open->outer, ++depth) {
    if (open->resolvedName == file.resolvedName) {
      Internal::Raise({kResourceFile, kConstructor}, L"File '%s' includes itself (%s)", std::wstring(file.name),
                      IncludeChain(file));
    }
  }
  if (depth > Platform::MaximumRecursionDepth()) {
    Internal::Raise({kResourceFile, kConstructor}, L"File '%s' is included too deeply", std::wstring(file.name));
  }
}

std::wstring CXMLResource::IncludeChain(const SOpenFile& file) {
  std::wstring chain = file.name;
  for (const SOpenFile* open = file.outer; open != nullptr; open = open->outer) {
    chain.insert(0, L" -> ").insert(0, open->name);
  }
  return chain;
}

}  // namespace Zorbel
