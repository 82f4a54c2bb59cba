// What the library does without showing it.

#include "Beans.h"
#include "Factory/CBeanFactoryImpl.h"
#include "Reader/Expansion.h"
#include "Reader/CLoadLimits.h"
#include "Resolution/LiveInstances.h"
#include "Together.h"
#include "Values/LiteralConversion.h"

using namespace Test;

namespace {

using LiveInstances = Beans;
using LiveInstancesThreads = Beans;
using Factory = Beans;
using LiteralConversion = Beans;
using Expansion = Beans;
using WholeLoad = Beans;
using Numbers = std::pair<std::uint64_t, std::uint64_t>;  // live and created instances

Numbers NumbersOf(const char* bean) {
  const auto found = Zorbel::Internal::LiveInstances::Find(bean);
  return found ? Numbers(found->liveInstances, found->createdInstances) : Numbers();
}

std::wstring Repeated(const std::wstring& text, int times) {
  std::wstring result;
  for (; times > 0; --times) {
    result += text;
  }
  return result;
}

}  // namespace

TEST_F(LiveInstances, AreCountedByBeanOnceFullyBuiltUntilTheLastIsReleased) {
  Numbers duringInit(9, 9);
  const auto look = [&](auto*, auto&, auto*) { return duringInit = NumbersOf("f"), false; };
  m_classes.Add("Fails", {.call = look});
  m_classes.Add("C");
  const std::string beans = Bean("C") + "<bean name='s' class='C' singleton='true'/>";
  Zorbel::CContainer container = Load(beans + "<bean name='f' class='Fails' init-method='Init'/>");
  std::vector<Object> objects{container.GetBean("b"), container.GetBean("b"), container.GetBean("b")};
  EXPECT_EQ(NumbersOf("b"), Numbers(3, 3));
  objects = {Load(beans).GetBean("b")};
  EXPECT_EQ(NumbersOf("b"), Numbers(1, 4));
  objects.clear();
  EXPECT_EQ(NumbersOf("b"), Numbers(0, 0));
  container.GetBean("s");
  EXPECT_EQ(NumbersOf("s"), Numbers(1, 1));
  container.GetBean("f");
  EXPECT_TRUE(duringInit == Numbers(0, 0) && NumbersOf("f") == Numbers(0, 0));
  container.Reset();
  EXPECT_EQ(NumbersOf("s"), Numbers(0, 0));
}

TEST_F(LiveInstancesThreads, AreCountedExactly) {
  m_classes.Add("C");
  const Zorbel::CContainer container = Load(Bean("C"));
  const Object kept = container.GetBean("b");
  RunTogether(4, [&](int) {
    for (int i = 0; i < 250; ++i) {
      container.GetBean("b");
    }
  });
  EXPECT_EQ(NumbersOf("b"), Numbers(1, 1001));
}

TEST_F(Factory, TakesOverAnotherOnlyWhenItIsEmptied) {
  Zorbel::CBeanFactoryImpl target;
  EXPECT_EQ(ErrorOf([&] { target = Zorbel::CBeanFactoryImpl(); }), L"Internal error");
  EXPECT_EQ(Origin(), "Zorbel::CBeanFactoryImpl::operator = in Core/Zorbel/src/CBeanFactoryImpl");
  EXPECT_FALSE(target.Exists("b"));
}

TEST_F(LiteralConversion, SkipsWhiteSpaceBeforeNumbersOnly) {
  const std::wstring skipped =
      L" \t\n\v\f\r\x85\xA0\x1680\x2000\x2001\x2002\x2003\x2004\x2005\x2006\x2007\x2008\x2009\x200A\x2028\x2029\x202F"
      L"\x205F"
      L"\x3000";
  EXPECT_EQ(Zorbel::Literal::ToInt((skipped + L"-12").c_str()), -12);
  EXPECT_EQ(Zorbel::Literal::ToUnsigned((skipped + L"010").c_str()), 8U);
  EXPECT_EQ(Zorbel::Literal::ToDouble((skipped + L".5").c_str()), 0.5);
  EXPECT_EQ(ErrorOf([] { Zorbel::Literal::ToBool(L" true"); }), L"Invalid bool value");
  for (const int other : {0x1C, 0x84, 0x180E, 0x1FFF, 0x200B, 0x2060, 0xFEFF, 0x0661, 0xFF11}) {  // digits, too
    const std::wstring text = {static_cast<wchar_t>(other), L'1'};
    EXPECT_EQ(Zorbel::Literal::ToInt(text.c_str()), 0) << other;
    EXPECT_EQ(Zorbel::Literal::ToUnsigned(text.c_str()), 0U) << other;
    EXPECT_EQ(Zorbel::Literal::ToDouble(text.c_str()), 0.0) << other;
  }
}

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
