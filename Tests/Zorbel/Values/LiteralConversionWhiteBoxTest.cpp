#include "Values/LiteralConversion.h"
#include "Zorbel/Beans.h"

using namespace Test;

namespace {

using LiteralConversion = Beans;

}  // namespace

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
