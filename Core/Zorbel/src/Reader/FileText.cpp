#include "Reader/FileText.h"

#include <string_view>
#include <utility>

#include "Platform/CodePage.h"
#include "Platform/TextDetection.h"

namespace Zorbel::Internal {
namespace {

constexpr std::string_view kUtf16Marks[] = {"\xFF\xFE", "\xEF\xFF"};
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string_view WithoutUtf16Mark(std::string_view text) {
  for (const std::string_view mark : kUtf16Marks) {
    if (text.starts_with(mark)) {
      return text.substr(mark.size());
    }
  }
  return text;
}

}  // namespace

bool FindText(std::string& bytes, SFileText& found) {
  if (!Platform::IsUtf16Text(bytes)) {
    found.text = bytes.c_str() + (bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
    return true;
  }
  std::string converted;
  if (!Platform::Utf16ToAnsi(WithoutUtf16Mark(bytes), converted)) {
    return false;
  }
  bytes = std::move(converted);
  found = {bytes.c_str(), true};
  return true;
}

}  // namespace Zorbel::Internal
