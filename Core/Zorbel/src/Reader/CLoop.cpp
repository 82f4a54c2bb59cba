#include "Reader/CLoop.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <optional>
#include <string>

#include "Reader/XmlChildren.h"

namespace Zorbel::Internal {
namespace {

constexpr const char* kFunction = "ParseContainer";
constexpr std::int64_t kMostPassesOfOneLoop = 1'000'000;  // more than this is a mistake, not a document

// Decimal; modulo 2^32, and what stands behind the digits is ignored.
std::optional<int> StringToInt(const char* text) {
  while (std::isspace(static_cast<unsigned char>(*text)) != 0) {
    ++text;
  }
  const bool negative = *text == '-';
  if (negative || *text == '+') {
    ++text;
  }
  if (*text < '0' || *text > '9') {
    return std::nullopt;
  }
  std::uint32_t value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) {
    value = value * 10 + static_cast<std::uint32_t>(*text - '0');
  }
  return static_cast<int>(negative ? 0 - value : value);
}

std::int64_t CountPasses(std::int64_t first, std::int64_t last, std::int64_t step) {
  return first > last ? 0 : (last - first) / step + 1;
}

// The counter has 32 bits: it must step over `last` before it leaves them.
bool Ends(std::int64_t first, std::int64_t last, std::int64_t step) {
  return first > last ||
         (step > 0 && first + CountPasses(first, last, step) * step <= std::numeric_limits<std::int32_t>::max());
}

template <class Loop>
void Run(CReading& reading, const XMLNode& node, const SScope& scope, const BodyReader& readBody) {
  Loop loop(reading, node, scope);
  while (loop.Next()) {
    readBody(node, loop.GetBody());
  }
}

}  // namespace

CLoop::CLoop(CReading& reading, const XMLNode& node, const SScope& scope)
    : m_node(node), m_reading(reading), m_body{scope.library, &m_variable, scope.depth + 1} {
  m_variable.outer = scope.variables;
  m_variable.loop = &node;
}

void CLoop::ReadVariable(const wchar_t* errorWithoutName) {
  m_variable.name = CStringT<wchar_t>(m_node.getAttribute("substitute"));
  if (m_variable.name.IsEmpty()) {
    Report({"loop-variable", kFunction}, "substitute", errorWithoutName);
  }
}

void CLoop::RequireFewPasses(std::int64_t passes) {
  if (passes > kMostPassesOfOneLoop) {
    Report({"long-loop", kFunction}, nullptr, L"Loop over '%s' exceeds 1000000 passes",
           std::wstring(m_variable.name.GetString()));
  }
}

void CLoop::RequireShallow(const SScope& scope) {
  m_tooDeep = !MayNest(m_reading, scope, SWhere{m_node, scope.variables}, kFunction);
}

bool CLoop::BeginPass() {
  if (m_tooDeep) {
    return false;
  }
  m_variable.pass = nullptr;
  if (m_reading.limits.CountPass()) {
    return true;
  }
  if (m_reading.limits.IsFirstPassBeyond()) {
    Report({"many-passes", kFunction}, nullptr, L"Configuration runs more than 4000000 loop passes");
  }
  return false;
}

// The order of the steps decides which of several errors is told first.
CForLoop::CForLoop(CReading& reading, const XMLNode& node, const SScope& scope) : CLoop(reading, node, scope) {
  m_next = ReadNumber("first");
  m_last = ReadNumber("last");
  m_step = node.getAttribute("inc") != nullptr ? ReadNumber("inc") : 1;
  ReadVariable(L"Empty attribute 'substitute' in bean for loop");
  if (!m_faulty && !Ends(m_next, m_last, m_step)) {
    Report({"endless-loop", kFunction}, nullptr, L"Loop over '%s' never ends",
           std::wstring(m_variable.name.GetString()));
  }
  if (!m_faulty) {
    RequireFewPasses(CountPasses(m_next, m_last, m_step));
  }
  if (m_faulty) {
    m_last = m_next;
    m_step = 1;
  }
  RequireShallow(scope);
}

int CForLoop::ReadNumber(const char* attribute) {
  const std::optional<int> number = StringToInt(OrEmpty(m_node.getAttribute(attribute)));
  if (!number) {
    Report({"number", "StringToInt"}, attribute, L"Value of numeric parameter must be numeric");
  }
  return number.value_or(0);
}

bool CForLoop::Next() {
  if (m_next > m_last || !BeginPass()) {
    return false;
  }
  m_variable.value = std::to_wstring(m_next).c_str();
  m_next += m_step;
  return true;
}

CForeachLoop::CForeachLoop(CReading& reading, const XMLNode& node, const SScope& scope)
    : CLoop(reading, node, scope), m_items(OrEmpty(node.getAttribute("set"))) {
  ReadVariable(L"Empty attribute 'substitute' in bean foreach loop");
  RequireFewPasses(std::count(m_items.begin(), m_items.end(), '|') + (m_items.ends_with('|') ? 0 : 1));
  if (m_faulty) {
    m_items = m_items.substr(0, m_items.find('|'));
  }
  RequireShallow(scope);
}

bool CForeachLoop::Next() {
  if (m_atEnd || !BeginPass()) {
    return false;
  }
  m_variable.value = CStringT<wchar_t>(std::string(TakeItem()).c_str()).Trim();
  return true;
}

std::string_view CForeachLoop::TakeItem() {
  const std::size_t separator = m_items.find('|');
  const std::string_view item = m_items.substr(0, separator);
  m_items.remove_prefix(separator == std::string_view::npos ? m_items.size() : separator + 1);
  m_atEnd = m_items.empty();
  return item;
}

void RunLoops(CReading& reading, const XMLNode& container, const SScope& scope, const BodyReader& readBody) {
  ForEachChild(container, "for", [&](const XMLNode& loop) { Run<CForLoop>(reading, loop, scope, readBody); });
  ForEachChild(container, "foreach", [&](const XMLNode& loop) { Run<CForeachLoop>(reading, loop, scope, readBody); });
}

}  // namespace Zorbel::Internal
