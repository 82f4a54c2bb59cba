#include <ThisPlatform.h>
#include <Zorbel/CStringT.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <climits>
#include <clocale>
#include <cstring>
#include <string>

#include "Support/Together.h"

namespace {

using Test::RunTogether;

template <class C>
class CString : public testing::Test {
 protected:
  // The text in the width under test.
  static std::basic_string<C> X(const char* text) { return {text, text + std::strlen(text)}; }
  static CStringT<C> S(const char* text) { return X(text).c_str(); }
};

using Widths = testing::Types<char, wchar_t>;
TYPED_TEST_SUITE(CString, Widths);

}  // namespace

TYPED_TEST(CString, CopiesShareTheirTextUntilOneChanges) {
  const CStringT<TypeParam> original = this->S("text");
  CStringT<TypeParam> copy = original;
  EXPECT_EQ(original.GetString(), copy.GetString());
  EXPECT_EQ(sizeof(void*), sizeof copy);
  copy += copy;
  copy += copy.GetString() + 6;
  CStringT<TypeParam> longer = copy;
  longer += 'x';  // there is room for it
  EXPECT_EQ(this->S("texttextxtx"), longer);
  EXPECT_EQ(this->S("texttextxt"), copy);
  EXPECT_EQ(this->S("text"), original);
  const TypeParam bar = '|';
  EXPECT_EQ(this->S("|text|text"), bar + original + bar + original.GetString());
  const CStringT<TypeParam> moved = std::move(copy);
  EXPECT_EQ(this->S("texttextxt"), moved);
  copy += static_cast<const TypeParam*>(nullptr);  // NOLINT(bugprone-use-after-move)
  EXPECT_TRUE(copy == nullptr && copy == CStringT<TypeParam>(nullptr) && copy.IsEmpty());
  EXPECT_TRUE(CStringT<TypeParam>(nullptr, 4).IsEmpty() && CStringT<TypeParam>(longer, -1).IsEmpty());
}

TEST(CStringT, GrowsToTwiceItsLengthAsFarAsTextsGo) {
  constexpr std::size_t kLongest = INT_MAX - 1;
  const std::size_t cases[][3] = {{0, 1, 1},
                                  {4, 5, 8},
                                  {4, 9, 9},
                                  {kLongest / 2, kLongest / 2 + 1, kLongest},
                                  {kLongest - 1, kLongest, kLongest},
                                  {kLongest, kLongest + 1, kLongest + 1}};
  for (const auto& [length, needed, expected] : cases) {
    EXPECT_EQ(expected, Zorbel::detail::GrownCapacity(length, needed)) << length;
  }
}

TYPED_TEST(CString, ComparesCharacterByCharacter) {
  const std::array texts = {"", "A", "a", "aa", "b"};  // ascending
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t j = 0; j < texts.size(); ++j) {
      const auto a = this->S(texts[i]);
      const auto b = this->S(texts[j]);
      const TypeParam* c = b;
      EXPECT_TRUE((a == b) == (i == j) && (a == c) == (i == j) && (c == a) == (i == j) && (a != c) == (i != j));
      EXPECT_TRUE((a < b) == (i < j) && (a < c) == (i < j) && (c > a) == (i < j) && (b > a) == (i < j));
      EXPECT_TRUE((a >= b) == (i >= j) && (a >= c) == (i >= j) && (c <= a) == (i >= j) && (b <= a) == (i >= j));
    }
  }
}

TYPED_TEST(CString, FindsAndCuts) {
  const auto text = this->S("aXbXXc");
  EXPECT_EQ(1, text.Find('X'));
  EXPECT_EQ(3, text.Find(this->X("X").c_str(), 2));
  EXPECT_EQ(3, text.Find(this->X("XX").c_str(), -5));
  EXPECT_EQ(-1, text.Find(this->X("x").c_str()));
  EXPECT_EQ(-1, text.Find('a', 99));
  EXPECT_EQ(4, text.ReverseFind('X'));
  const std::pair<CStringT<TypeParam>, const char*> cuts[] = {
      {text.Left(2), "aX"},       {text.Left(-1), ""},      {text.Left(99), "aXbXXc"}, {text.Mid(4), "Xc"},
      {text.Mid(99), ""},         {text.Mid(-1, 2), "aX"},  {text.Mid(2, -1), ""},     {text.Right(2), "Xc"},
      {text.Right(99), "aXbXXc"}, {text.Right(INT_MIN), ""}};
  for (const auto& [cut, expected] : cuts) {
    EXPECT_EQ(this->S(expected), cut);
  }
}

TYPED_TEST(CString, ReplacesRemovesAndTrims) {
  const struct {
    const char *wanted, *replacement, *result;
    int count;
  } cases[] = {{"X", "YX", "aYXbYXYXc", 3}, {"XX", "", "aXbc", 1}, {"x", "y", "aXbXXc", 0}, {"", "y", "aXbXXc", 0}};
  for (const auto& each : cases) {
    auto text = this->S("aXbXXc");
    EXPECT_EQ(each.count, text.Replace(this->X(each.wanted).c_str(), this->X(each.replacement).c_str()));
    EXPECT_EQ(this->S(each.result), text);
  }
  auto text = this->S("XaXXb");
  EXPECT_EQ(3, text.Remove('X'));
  EXPECT_EQ(this->S("ab"), text);
  EXPECT_EQ(this->S("a \v"), this->S("\t a \v").TrimLeft());
  EXPECT_EQ(this->S("a b"), this->S(" \t\n\v\f\ra b\r ").Trim());
  EXPECT_TRUE(this->S(" ").Trim().IsEmpty());
}

TEST(CStringT, ConvertsByTheCodePage) {
  const char* narrow = "a\x7F\xA0\xFF \x80\x99\x9F \x81\x8D\x8F\x90\x9D";  // the last five are unassigned
  const wchar_t* wide = L"a\u007F\u00A0\u00FF \u20AC\u2122\u0178 \u0081\u008D\u008F\u0090\u009D";
  EXPECT_EQ(CStringT<wchar_t>(narrow), wide);
  EXPECT_EQ(CStringT<char>(wide), narrow);
  EXPECT_TRUE(CStringT<wchar_t>("").IsEmpty());
  CStringT<char> lossy = L"\u0416\u0080\u20AC";
  lossy += L"\uFFFF";
  EXPECT_EQ(lossy, "??\x80?");
}

TEST(CStringT, ChangesTheLetterCaseOnlyWhereTheCodePageHasTheCounterpart) {
  const std::string before = std::setlocale(LC_CTYPE, nullptr);
  ASSERT_NE(nullptr, std::setlocale(LC_CTYPE, ::Test::kOtherLocale));
  EXPECT_EQ(CStringT<char>("aB\xE4\xFF\xB5").MakeUpper(), "AB\xC4\x9F\xB5");
  EXPECT_EQ(CStringT<wchar_t>(L"aB\u00C4").MakeLower(), L"ab\u00E4");
  std::setlocale(LC_CTYPE, before.c_str());
}

TEST(CStringT, FormatsByTheRulesOfItsWidthAndStaysAsItWasWhenThatFails) {
  CStringT<wchar_t> wide = L"kept";
  EXPECT_THROW(wide.Format(nullptr), CStringFormatError);
  EXPECT_THROW(wide.Format(L"%d %y", 1), CStringFormatError);
  wide.Format(L"%s and %S", wide.GetString(), "\x80");
  EXPECT_EQ(wide, L"kept and \u20AC");
  CStringT<char> narrow;
  narrow.Format("%s, %S, %hs, %ls, %c, %d", "a", L"\u20AC", "b", L"c", 'd', -1);
  EXPECT_EQ(narrow, "a, \x80, b, c, d, -1");
}

TEST(CStringTThreads, CopiesOfOneTextAreChangedAndDroppedOnSeveralThreads) {
  const CStringT<char> kept = "shared";
  std::array copies = {kept, kept, kept};
  std::atomic<int> mismatches = 0;
  RunTogether(3, [&](std::size_t i) {
    CStringT<char>& mine = copies[i];
    for (int turn = 0; turn < 1000; ++turn) {
      CStringT<char> copy = mine;
      copy += 'x';
      mismatches += copy != "sharedx" || mine != "shared";
    }
    mine.Empty();
  });
  EXPECT_EQ(0, mismatches);
  EXPECT_EQ(kept, "shared");
}
