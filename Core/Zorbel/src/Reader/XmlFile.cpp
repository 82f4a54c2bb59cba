#include "Reader/XmlFile.h"

#include <string>
#include <string_view>

#include "Platform/CodePage.h"
#include "Platform/File.h"
#include "Platform/TextDetection.h"

namespace Zorbel::Internal {
namespace {

constexpr std::string_view kUtf16Marks[] = {"\xFF\xFE", "\xEF\xFF"};
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

void SkipMark(std::string_view& text, std::string_view mark) {
  if (text.starts_with(mark)) {
    text.remove_prefix(mark.size());
  }
}

bool ConvertUtf16(std::string& content) {
  std::string_view text = content;
  for (const std::string_view mark : kUtf16Marks) {
    if (text.size() == content.size()) {
      SkipMark(text, mark);
    }
  }
  std::string converted;
  if (!Platform::Utf16ToAnsi(text, converted)) {
    return false;
  }
  content = std::move(converted);
  return true;
}

XMLError Read(const wchar_t* fileName, std::string& content) {
  switch (Platform::ReadFile(fileName, kLargestFile, content)) {
    case Platform::EReading::kFailed: return eXMLErrorFileNotFound;
    case Platform::EReading::kTooLarge: return eXMLErrorFileTooLarge;
    default: return content.empty() ? eXMLErrorEmpty : eXMLErrorNone;
  }
}

XMLNode Failed(XMLError error, XMLResults& results) {
  results = XMLResults{error, 0, 0};
  return XMLNode();
}

}  // namespace

XMLNode ParseXmlFile(const wchar_t* fileName, const char* rootName, XMLResults& results) {
  std::string content;
  if (const XMLError error = Read(fileName, content); error != eXMLErrorNone) {
    return Failed(error, results);
  }
  if (!Platform::IsUtf16Text(content)) {
    const bool marked = content.starts_with(kUtf8Mark);
    return XMLNode::parseString(content.c_str() + (marked ? kUtf8Mark.size() : 0), rootName, &results);
  }
  if (!ConvertUtf16(content)) {
    return Failed(eXMLErrorCharConversionError, results);
  }
  return XMLNode::parseString(content.c_str(), rootName, &results);
}

}  // namespace Zorbel::Internal
