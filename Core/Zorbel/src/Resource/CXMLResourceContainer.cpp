// The walk over containers with their loops, and the texts inside them.

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "Errors/CXMLResourceOrigin.h"
#include "Errors/Raise.h"
#include "Platform/CodePage.h"
#include "Reader/Expansion.h"
#include "Reader/SLoad.h"
#include "Reader/XmlChildren.h"
#include "Resource/CXMLResource.h"
#include "Threads/ThreadState.h"

namespace Zorbel {
namespace {

using Internal::ForEachChild;
using Internal::kContainerFunction;
using Internal::kResourceFile;

constexpr std::int64_t kMostPassesOfOneLoop = 1'000'000;  // more than this is a mistake, not a document
constexpr int kDeepest = 256;                             // keeps hostile nesting from exhausting the stack

CStringT<wchar_t> LoopVariable(const XMLNode& loop, const wchar_t* errorWhenEmpty) {
  CStringT<wchar_t> name(loop.getAttribute("substitute"));
  if (name.IsEmpty()) {
    Internal::Raise({kResourceFile, kContainerFunction}, errorWhenEmpty);
  }
  return name;
}

void RequireFewPasses(std::int64_t passes, const CStringT<wchar_t>& variable) {
  if (passes > kMostPassesOfOneLoop) {
    Internal::Raise({kResourceFile, kContainerFunction}, L"Loop over '%s' exceeds 1000000 passes",
                    std::wstring(variable.GetString()));
  }
}

struct SRange {
  std::int64_t first;
  std::int64_t last;
  std::int64_t step;

  std::int64_t CountPasses() const { return first > last ? 0 : (last - first) / step + 1; }

  // The counter has 32 bits: it must step over `last` before it leaves them.
  bool Ends() const {
    return first > last || (step > 0 && first + CountPasses() * step <= std::numeric_limits<std::int32_t>::max());
  }
};

std::string_view NextItem(std::string_view& items) {
  const std::size_t separator = items.find('|');
  const std::string_view item = items.substr(0, separator);
  items.remove_prefix(separator == std::string_view::npos ? items.size() : separator + 1);
  return item;
}

bool IsPlainAscii(const char* text) {
  for (; *text != '\0'; ++text) {
    if (static_cast<unsigned char>(*text) >= 0x80) {
      return false;
    }
  }
  return true;
}

}  // namespace

int CXMLResource::Deeper(const SScope& scope, const char* function) {
  if (scope.depth == kDeepest || (scope.depth > 0 && Internal::IsStackShort())) {
    Internal::Raise({kResourceFile, function}, L"Elements are nested too deeply");
  }
  return scope.depth + 1;
}

void CXMLResource::ParseContainer(const XMLNode& container, ElementNames names, const SScope& scope,
                                  const ElementHandler& handler, const BodyReader& readBody) {
  for (const char* name : names) {
    ForEachChild(container, name, handler);
  }
  ForEachChild(container, "for", [&](const XMLNode& loop) { ParseFor(loop, scope, readBody); });
  ForEachChild(container, "foreach", [&](const XMLNode& loop) { ParseForeach(loop, scope, readBody); });
}

void CXMLResource::ParseFor(const XMLNode& loop, const SScope& scope, const BodyReader& readBody) {
  const int first = StringToInt(loop.getAttribute("first"));
  const int last = StringToInt(loop.getAttribute("last"));
  const char* step = loop.getAttribute("inc");
  const SRange range{first, last, step != nullptr ? StringToInt(step) : 1};
  const CStringT<wchar_t> variable = LoopVariable(loop, L"Empty attribute 'substitute' in bean for loop");
  if (!range.Ends()) {
    Internal::Raise({kResourceFile, kContainerFunction}, L"Loop over '%s' never ends",
                    std::wstring(variable.GetString()));
  }
  RequireFewPasses(range.CountPasses(), variable);

  Variables variables(*scope.variables);
  const SScope body{scope.library, &variables, Deeper(scope, kContainerFunction), scope.load};
  for (std::int64_t counter = range.first; counter <= range.last; counter += range.step) {
    scope.load.CountPass();
    variables.SetAt(variable).value = std::to_wstring(counter).c_str();
    readBody(loop, body);
  }
}

void CXMLResource::ParseForeach(const XMLNode& loop, const SScope& scope, const BodyReader& readBody) {
  std::string_view items = Internal::OrEmpty(loop.getAttribute("set"));
  const CStringT<wchar_t> variable = LoopVariable(loop, L"Empty attribute 'substitute' in bean foreach loop");
  RequireFewPasses(std::count(items.begin(), items.end(), '|') + (items.ends_with('|') ? 0 : 1), variable);

  Variables variables(*scope.variables);
  const SScope body{scope.library, &variables, Deeper(scope, kContainerFunction), scope.load};
  do {
    scope.load.CountPass();
    const std::string item(NextItem(items));
    variables.SetAt(variable).value = CStringT<wchar_t>(item.c_str()).Trim();
    readBody(loop, body);
  } while (!items.empty());
}

int CXMLResource::StringToInt(const char* text) {
  const char* next = Internal::OrEmpty(text);
  while (std::isspace(static_cast<unsigned char>(*next)) != 0) {
    ++next;
  }
  const bool negative = *next == '-';
  if (negative || *next == '+') {
    ++next;
  }
  if (*next < '0' || *next > '9') {
    Internal::Raise({kResourceFile, "StringToInt"}, L"Value of numeric parameter must be numeric");
  }
  std::uint32_t value = 0;  // modulo 2^32
  for (; *next >= '0' && *next <= '9'; ++next) {
    value = value * 10 + static_cast<std::uint32_t>(*next - '0');
  }
  return static_cast<int>(negative ? 0 - value : value);
}

bool CXMLResource::StringToBool(const wchar_t* text) {
  const std::wstring_view value = text;
  if (value != L"true" && value != L"false") {
    Internal::Raise({kResourceFile, "StringToBool"}, L"Value of bool parameter must be 'true' or 'false'");
  }
  return value == L"true";
}

CStringT<wchar_t> CXMLResource::Substitute(const char* text, const Variables& variables) {
  if (text == nullptr || *text == '\0') {
    return {};
  }
  const std::wstring decoded = Platform::Utf8ToWideLossy(text);
  if (variables.GetCount() == 0) {
    return decoded.c_str();
  }
  return Internal::Expand(decoded, variables).c_str();
}

CStringT<char> CXMLResource::SubstituteNarrow(const char* text, const Variables& variables) {
  if (text != nullptr && variables.GetCount() == 0 && IsPlainAscii(text)) {
    return text;  // most texts: the conversions would change nothing
  }
  return Substitute(text, variables).GetString();
}

}  // namespace Zorbel
