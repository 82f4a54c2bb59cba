#include "Reader/CLoadLimits.h"
#include "Reader/Expansion.h"
#include "Zorbel/Beans.h"

using namespace Test;

namespace {

using Expansion = Beans;
using WholeLoad = Beans;

std::wstring Repeated(const std::wstring& text, int times) {
  std::wstring result;
  for (; times > 0; --times) {
    result += text;
  }
  return result;
}

}  // namespace

// With the first of the texts, more than that would take many minutes.
TEST_F(Expansion, ReadsNoMoreThanItMayProduce) {
  using Zorbel::Internal::EExpansion;
  Zorbel::Internal::SVariable empty{L"e", L""};
  Zorbel::Internal::SVariable nested{L"n", L"%v%", &empty};
  Zorbel::Internal::SVariable variable{L"v", L"", &nested};
  const auto expand = [&](const std::wstring& value, const std::wstring& text) {
    variable.value = value.c_str();
    std::wstring result;
    const EExpansion outcome = Zorbel::Internal::Expand(text, &variable, result);
    return outcome == EExpansion::kEndless ? L"endless" : result;
  };
  const std::wstring full(1'000'000, L'x');
  const std::wstring pattern = L"%" + std::wstring(500'001, L'.');
  EXPECT_EQ(expand(L"a" + std::wstring(10'000'000, L' ') + L"b", Repeated(L"%.v%", 10'000)), Repeated(L"ab", 10'000));
  EXPECT_EQ(expand(pattern + L"e%", L"%v%%v%"), L"");
  EXPECT_EQ(expand(pattern + L".e%", L"%v%%v%"), L"endless");
  EXPECT_TRUE(expand(full, L"%n%") == full);
  EXPECT_EQ(expand(full, L"%n%y"), L"endless");
  EXPECT_EQ(expand(L"%e%", Repeated(L"%v%", 5'000)), L"");
  EXPECT_EQ(expand(L"%e%", Repeated(L"%v%", 5'000) + L"%e%"), L"endless");
}

TEST_F(WholeLoad, EndsBehindItsFilesAndPasses) {
  Zorbel::Internal::CLoadLimits limits;
  unsigned int files = 0;
  unsigned int passes = 0;
  for (; limits.CountFile(); ++files) {
  }
  for (; limits.CountPass(); ++passes) {
  }
  EXPECT_TRUE(files == 100'000 && limits.IsFirstFileBeyond());
  EXPECT_TRUE(passes == 4'000'000 && limits.IsFirstPassBeyond());
}
