#include "Reader/CReading.h"

#include "Platform/CodePage.h"
#include "Reader/CSourceRecorder.h"

namespace Zorbel::Internal {
namespace {

constexpr const char* kSubstitute = "Substitute";
constexpr unsigned int kMostEndlessTexts = 100;  // in one load; they take long, and loops have as many as passes

// Such a text is the same in all forms.
bool IsPlain(const char* text, bool hasVariables) {
  for (; *text != '\0'; ++text) {
    if (static_cast<unsigned char>(*text) >= 0x80 || (hasVariables && *text == '%')) {
      return false;
    }
  }
  return true;
}

}  // namespace

CStringT<wchar_t> CReading::Substitute(const char* text, const SWhere& where) {
  if (text == nullptr || *text == '\0') {
    return {};
  }
  const std::wstring decoded = Platform::Utf8ToWideLossy(text);
  if (where.variables == nullptr || decoded.find(L'%') == std::wstring::npos) {
    return decoded.c_str();
  }
  if (m_endlessTexts == kMostEndlessTexts) {
    ++m_failedTexts;
    return decoded.c_str();
  }
  std::wstring expanded;
  const EExpansion outcome = Expand(decoded, where.variables, expanded);
  if (outcome != EExpansion::kDone) {
    ReportExpansion(outcome, decoded, where);
    return decoded.c_str();
  }
  return expanded.c_str();
}

CStringT<char> CReading::SubstituteNarrow(const char* text, const SWhere& where) {
  if (text != nullptr && IsPlain(text, where.variables != nullptr)) {
    return text;  // most texts: the conversions would change nothing
  }
  return Substitute(text, where).GetString();
}

void CReading::ReportExpansion(EExpansion outcome, const std::wstring& text, const SWhere& where) {
  ++m_failedTexts;
  if (outcome == EExpansion::kLoneSign) {
    Report({"pattern", kSubstitute}, where, L"Invalid substitution pattern");
  } else if (outcome == EExpansion::kUnknownVariable) {
    Report({"unknown-variable", kSubstitute}, where, L"Missing substitution");
  } else {
    ++m_endlessTexts;
    Report({"endless-substitution", kSubstitute}, where, L"Substitution of '%s' does not end", text);
  }
}

SSource CReading::SourceOf(const XMLNode& node, const SVariable* variables) {
  return m_sources->SourceOf(node, variables);
}

template <class Where>
void CReading::Tell(const SFault& fault, const Where& where, std::wstring& text) {
  SProblem problem(fault);
  problem.text.swap(text);
  Locate(problem, where);
  m_problems.Handle(problem);
}

template void CReading::Tell(const SFault& fault, const SWhere& where, std::wstring& text);
template void CReading::Tell(const SFault& fault, const STextPosition& where, std::wstring& text);
template void CReading::Tell(const SFault& fault, const SSource& where, std::wstring& text);

void CReading::Locate(SProblem& problem, const SWhere& where) const {
  if (m_sources == nullptr) {
    return;
  }
  const SSource source = m_sources->SourceOf(where.node, where.variables);
  Locate(problem, source);
  problem.attribute = where.attribute;
  if (const SExtent* attribute =
          where.attribute != nullptr ? source.element->FindAttribute(where.attribute) : nullptr) {
    problem.extent = *attribute;
  }
}

void CReading::Locate(SProblem& problem, const STextPosition& where) const {
  if (m_sources != nullptr) {
    const SPlace place = m_sources->PlaceAt(where.position);
    problem.file = m_sources->GetFile();
    problem.extent = {place, place};
  }
}

void CReading::Locate(SProblem& problem, const SSource& where) {
  if (where.element != nullptr) {
    problem.file = where.element->file;
    problem.extent = where.element->extent;
    problem.pass = where.pass;
  }
}

}  // namespace Zorbel::Internal
