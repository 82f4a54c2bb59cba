#include "Reader/CDocumentReader.h"

#include <deque>
#include <utility>
#include <vector>

#include "BasePool/CbConversion.h"
#include "Platform/Thread.h"
#include "Reader/CSourceRecorder.h"
#include "Reader/FileText.h"
#include "Reader/XmlChildren.h"
#include "Threads/ThreadState.h"

namespace Zorbel::Internal {
namespace {

constexpr const char* kFunction = "Zorbel::CXMLResource::CXMLResource";
constexpr const char* kRootName = "zorbel";
constexpr std::size_t kLargestFile = 1'073'741'824;  // bytes

// Up to and including the last "\"; only without any, the last "/" counts.
std::wstring DirectoryPrefix(const std::wstring& fileName) {
  std::size_t separator = fileName.rfind(L'\\');
  if (separator == std::wstring::npos) {
    separator = fileName.rfind(L'/');
  }
  return separator == std::wstring::npos ? std::wstring() : fileName.substr(0, separator + 1);
}

std::wstring IncludeChain(const SOpenFile& file) {
  std::deque<const wchar_t*> names;
  for (const SOpenFile* open = file.outer; open != nullptr; open = open->outer) {
    names.push_front(open->name.c_str());
  }
  std::wstring chain;
  for (const wchar_t* name : names) {
    chain.append(name).append(L" -> ");
  }
  return chain + file.name;
}

/// Tells the environment of an included file, for the life of a scope.
class CInclusion {
 public:
  explicit CInclusion(IEnvironment& environment) : m_environment(environment) { environment.BeginInclude(); }
  ~CInclusion() { m_environment.EndInclude(); }
  CInclusion(const CInclusion&) = delete;
  CInclusion& operator=(const CInclusion&) = delete;

 private:
  IEnvironment& m_environment;
};

}  // namespace

CDocumentReader::CDocumentReader(SDocument& document, IEnvironment& environment, IProblemHandler& problems,
                                 CSourceRecorder* sources)
    : m_document(document),
      m_reading(environment, problems, sources),
      m_declarations(document),
      m_body(m_reading, document, m_declarations) {}

void CDocumentReader::ReadText(const char* xml) {
  if (xml == nullptr || *xml == '\0') {
    return;
  }
  const CSourceRecorder::CFile noted(m_reading.GetSources(), nullptr);
  m_body.parseLibrary(Parse({xml}, nullptr), {});
}

void CDocumentReader::ReadFile(const wchar_t* name) {
  SOpenFile file{name};
  const CSourceRecorder::CFile noted(m_reading.GetSources(), &file);
  Read(file);
}

void CDocumentReader::Read(SOpenFile& file) {
  const std::wstring resolvedName = m_reading.environment.ResolveFileName(file.name);
  if (!Open(file, resolvedName)) {
    return;
  }
  std::string bytes;
  const bool found = ReadBytes(file, bytes);
  const CSourceRecorder::CFile noted(file.outer != nullptr ? m_reading.GetSources() : nullptr, &file);
  const XMLNode root = found ? ParseBytes(std::move(bytes), file) : XMLNode();
  ReadIncludes(root, file);
  m_openNames.erase(resolvedName);
  m_declarations.SetFile(file);
  m_body.parseLibrary(root, file.name);
}

// Documents that include each other, and chains that would exhaust the stack, end here.
bool CDocumentReader::Open(SOpenFile& file, const std::wstring& resolvedName) {
  const std::size_t depth = m_openNames.size();
  if (m_openNames.contains(resolvedName)) {
    ReportFile({"include-cycle", kFunction}, file, L"File '%s' includes itself (%s)", file.name, IncludeChain(file));
    return false;
  }
  if (depth > Platform::MaximumRecursionDepth() || (depth > 0 && IsStackShort())) {
    ReportFile({"include-depth", kFunction}, file, L"File '%s' is included too deeply", file.name);
    return false;
  }
  if (!m_reading.limits.CountFile()) {
    if (m_reading.limits.IsFirstFileBeyond()) {
      ReportFile({"many-files", kFunction}, file, L"Configuration reads more than 100000 files");
    }
    return false;
  }
  file.number = ++m_fileCount;
  m_openNames.insert(resolvedName);
  m_declarations.OpenFile(file);
  return true;
}

bool CDocumentReader::ReadBytes(const SOpenFile& file, std::string& bytes) {
  switch (m_reading.environment.ReadFile(file.name, kLargestFile, bytes)) {
    case Platform::EReading::kFailed: ReportFile({"file", kFunction}, file, L"File '%s' not found", file.name); break;
    case Platform::EReading::kTooLarge:
      ReportFile({"large-file", kFunction}, file, L"File '%s' is larger than 1073741824 bytes", file.name);
      break;
    default: return true;
  }
  return false;
}

void CDocumentReader::ReadIncludes(const XMLNode& root, SOpenFile& file) {
  const std::wstring prefix = DirectoryPrefix(file.name);
  ForEachChild(root, "include", [&](const XMLNode& node) {
    CStringT<wchar_t> path(node.getAttribute("path"));
    if (path.IsEmpty()) {
      m_reading.Report({"include-path", kFunction}, SWhere{node, nullptr, "path"},
                       L"Missing argument 'path' in include tag");
      return;
    }
    path.Replace(L'/', L'\\');
    SOpenFile included{prefix + path.GetString(), &file, &node};
    Include(included);
  });
}

void CDocumentReader::Include(SOpenFile& file) {
  m_document.includes.push_back(file.name);
  if (CSourceRecorder* sources = m_reading.GetSources()) {
    sources->AddInclude(*file.include);
  }
  const CInclusion inclusion(m_reading.environment);
  Read(file);
  if (file.overrides) {
    ReportOverrides(file);
  }
}

void CDocumentReader::ReportOverrides(const SOpenFile& file) {
  const CSourceRecorder* sources = m_reading.GetSources();
  for (const CDeclarations::SDeclared& bean : m_declarations.FindOverrides(file)) {
    m_reading.Report({"overridden-bean", "Zorbel::CXMLResource::Integrate"},
                     sources != nullptr ? sources->SourceOf(*bean.library, bean.bean) : SSource(),
                     L"Overriding bean '%s' is not allowed", m_reading.NameOf(bean.library->beans[bean.bean].name));
  }
}

// The place is that of the include, if there is one.
template <class... Texts>
void CDocumentReader::ReportFile(const SFault& fault, const SOpenFile& file, const wchar_t* format,
                                 const Texts&... texts) {
  if (file.include != nullptr) {
    m_reading.Report(fault, SWhere{*file.include, nullptr, "path"}, format, texts...);
  } else {
    m_reading.Report(fault, STextPosition(), format, texts...);
  }
}

XMLNode CDocumentReader::ParseBytes(std::string bytes, const SOpenFile& file) {
  SFileText found;
  if (bytes.empty() || !FindText(bytes, found)) {
    ReportUnreadable(&file, {}, 0, 0);
    return {};
  }
  return Parse(found, &file);
}

XMLNode CDocumentReader::Parse(const SFileText& text, const SOpenFile* file) {
  if (m_reading.GetSources() != nullptr) {
    return ParseLocated(text, file);
  }
  XMLResults results{};
  XMLNode root = XMLNode::parseString(text.text, kRootName, &results);
  if (results.error != eXMLErrorNone) {
    ReportUnreadable(file, {}, static_cast<unsigned int>(results.nLine), static_cast<unsigned int>(results.nColumn));
  }
  return root;
}

XMLNode CDocumentReader::ParseLocated(const SFileText& text, const SOpenFile* file) {
  std::vector<XMLFailure> failures;
  XMLNode root = XMLNode::parseLocated(m_reading.GetSources()->Index(text), kRootName, failures);
  for (const XMLFailure& failure : failures) {
    const SPlace place = m_reading.GetSources()->PlaceAt(failure.position);
    ReportUnreadable(file, {failure.position}, place.line, place.column);
  }
  return root;
}

void CDocumentReader::ReportUnreadable(const SOpenFile* file, const STextPosition& where, unsigned int line,
                                       unsigned int column) {
  std::string text = std::string("Error when parssing '") + kRootName + "'";
  if (line != 0) {
    text += " at line " + std::to_string(line) + ", column " + std::to_string(column);
  }
  const std::wstring why = Utf8ToWide(text + ".");
  if (file != nullptr) {
    m_reading.Report({"xml", kFunction}, where, L"Error while parsing file '%s': %s", file->name, why);
  } else {
    m_reading.Report({"xml", kFunction}, where, L"Error while parsing xml: %s", why);
  }
}

}  // namespace Zorbel::Internal
