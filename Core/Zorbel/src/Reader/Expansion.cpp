#include "Reader/Expansion.h"

#include <map>
#include <string_view>
#include <tuple>
#include <utility>

namespace Zorbel::Internal {
namespace {

constexpr wchar_t kSign = L'%';
constexpr std::size_t kMostReplacements = 10'000;  // in one text; a value that contains its own pattern needs more
constexpr std::size_t kLongestResult = 1'000'000;  // characters; values may bring as many to read as patterns

struct SPattern {
  bool withoutSpaces = false;
  bool lowerCase = false;
  bool upperCase = false;
  std::wstring name;

  bool IsModified() const { return withoutSpaces || lowerCase || upperCase; }
  bool operator<(const SPattern& other) const {
    return std::tie(withoutSpaces, lowerCase, upperCase, name) <
           std::tie(other.withoutSpaces, other.lowerCase, other.upperCase, other.name);
  }
};

SPattern ParsePattern(std::wstring_view token) {
  SPattern pattern;
  while (!token.empty()) {
    switch (token.front()) {
      case L'.': pattern.withoutSpaces = true; break;
      case L'_': pattern.lowerCase = true; break;
      case L'^': pattern.upperCase = true; break;
      default: pattern.name = token; return pattern;
    }
    token.remove_prefix(1);
  }
  return pattern;
}

CStringT<wchar_t> Modify(CStringT<wchar_t> value, const SPattern& pattern) {
  if (pattern.withoutSpaces) {
    value.Remove(L' ');
  }
  if (pattern.lowerCase) {
    value.MakeLower();
  }
  if (pattern.upperCase) {
    value.MakeUpper();
  }
  return value;
}

/// Works from left to right. What is still to be read lies reversed on a stack, so that a value is put back in front
/// of it in time proportional to the value.
class CExpansion {
 public:
  CExpansion(const std::wstring& text, const SVariable* variables)
      : m_length(text.size()), m_variables(variables), m_rest(text.rbegin(), text.rend()) {}

  EExpansion Run(std::wstring& result) {
    while (MoveUpTo(kSign, m_result)) {
      std::wstring token;
      if (!MoveUpTo(kSign, token)) {
        return EExpansion::kLoneSign;
      }
      m_patternCharacters += token.size();
      const CStringT<wchar_t>* value = ValueOf(ParsePattern(token));
      if (value == nullptr) {
        return EExpansion::kUnknownVariable;
      }
      if (!PutBack(value->GetString())) {
        return EExpansion::kEndless;
      }
    }
    result = std::move(m_result);
    return EExpansion::kDone;
  }

 private:
  // Moves the rest up to the next `sign` to `target` and drops the sign. False when there is none: all is moved then.
  bool MoveUpTo(wchar_t sign, std::wstring& target) {
    const std::size_t found = m_rest.rfind(sign);
    const std::size_t stop = found == std::wstring::npos ? 0 : found + 1;
    target.append(m_rest.rbegin(), m_rest.rend() - static_cast<std::ptrdiff_t>(stop));
    m_rest.resize(found == std::wstring::npos ? 0 : found);
    return found != std::wstring::npos;
  }

  // A modified value is made once: the text may ask for it thousands of times.
  const CStringT<wchar_t>* ValueOf(const SPattern& pattern) {
    const CStringT<wchar_t>* value = FindVariable(m_variables, pattern.name);
    if (value == nullptr || !pattern.IsModified()) {
      return value;
    }
    const auto [modified, isNew] = m_modified.try_emplace(pattern);
    if (isNew) {
      modified->second = Modify(*value, pattern);
    }
    return &modified->second;
  }

  // False when that would be too much.
  bool PutBack(std::wstring_view value) {
    ++m_replacements;
    if (m_replacements > kMostReplacements || m_result.size() + m_rest.size() + value.size() > kLongestResult ||
        m_patternCharacters > m_length + kLongestResult) {
      return false;
    }
    m_rest.append(value.rbegin(), value.rend());
    return true;
  }

  const std::size_t m_length;
  const SVariable* m_variables;
  std::wstring m_result;
  std::wstring m_rest;
  std::map<SPattern, CStringT<wchar_t>> m_modified;
  std::size_t m_replacements = 0;
  std::size_t m_patternCharacters = 0;
};

}  // namespace

EExpansion Expand(const std::wstring& text, const SVariable* variables, std::wstring& result) {
  return CExpansion(text, variables).Run(result);
}

}  // namespace Zorbel::Internal
