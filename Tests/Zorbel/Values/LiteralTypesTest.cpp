#include <climits>
#include <limits>

#include "Zorbel/Beans.h"

using namespace Test;

namespace {

using LiteralTypes = Beans;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Zorbel::CContainer LoadLiteral(const std::string& type, const std::string& text) {
  return Load(Bean("C", Argument("<value type='" + type + "'>" + text + "</value>")));
}

/// Expects that a wrapper finds these values of type `T` for texts of the configured type.
template <class T>
void Expect(const char* type, std::initializer_list<std::pair<std::string, T>> literals) {
  for (const auto& [text, expected] : literals) {
    bool same = false;
    TestClasses classes;
    classes.Add("C", {.create = [&same, &value = expected](const SCreation& creation) {
                  same = *static_cast<const T*>(creation.arguments->at(0)) == value;
                  return nullptr;
                }});
    LoadLiteral(type, text).GetBean("b");
    EXPECT_TRUE(same) << type << " of " << text;
  }
}

}  // namespace

TEST_F(LiteralTypes, ConvertTextsByTheirRules) {
  Expect<bool>("bool", {{"true", true}, {"false", false}});
  Expect<char>("char", {{"xyz", 'x'}, {"", '\0'}, {"€", '\x80'}});
  Expect<signed char>("int8_t", {{"200", -56}});
  Expect<unsigned char>("unsigned char", {{"-1", 255}});
  Expect<unsigned char>("unsigned  char", {{"1", 1}});
  Expect<unsigned char>("unsignedchar", {{"1", 1}});
  Expect<unsigned char>("uint8_t", {{"300", 44}});
  Expect<short>("short", {{"99999999999", -1}});
  Expect<short>("int16_t", {{"70000", 4464}});
  Expect<unsigned short>("unsigned short", {{"-1", 65535}});
  Expect<unsigned short>("uint16_6", {{"65537", 1}});
  Expect<int>("int", {{"+12abc", 12}, {"0x1F", 0}, {"--1", 0}, {"99999999999", INT_MAX}});
  Expect<int>("int32_t", {{"-2147483649", INT_MIN}, {"", 0}});
  Expect<unsigned int>("unsigned int", {{"-1", 4294967295U}});
  Expect<unsigned int>("uint32_t", {{"4294967295", 2147483647U}});
  Expect<long>("long", {{"99999999999", 2147483647L}, {"-1", -1L}});
  Expect<unsigned long>("unsigned long", {{"0x1Fg", 31}, {"0X", 0}, {"0178", 15}, {"4294967296", 4294967295}});
  Expect<unsigned long>("unsigned long", {{"-2", 4294967294}, {"-99999999999", 4294967295}});
  Expect<float>("float", {{"0.1", 0.1F}, {"1e39", std::numeric_limits<float>::infinity()}});
  Expect<double>("double", {{"12.5e1x", 125},
                            {"+0x1.8p1", 3},
                            {"-.5", -0.5},
                            {"-abc", 0},
                            {"+-1", 0},
                            {"0x-5", 0},
                            {"0xinf", 0},
                            {"0x.8", 0.5}});
  Expect<double>("double", {{"-1e400", -kInfinity}, {"1e99999", kInfinity}, {"1e-99999", 0}, {"INF", kInfinity}});
  const std::string zeros(6000, '0');
  Expect<double>("double", {{"0." + zeros + "1", 0},
                            {"0x0." + zeros + "1p0", 0},
                            {"1" + zeros + "e-100", kInfinity},
                            {"0." + zeros + "1e6001", 1},
                            {"1e" + zeros + "9999999999999999999", kInfinity},
                            {"0xFp+-3", 15},
                            {"0xFp+3", 120}});
  Expect<CStringT<char>>("char*", {{"a€Ж", "a\x80?"}, {"", ""}});
  Expect<CStringT<char>>("const char *", {{"x", "x"}});
  Expect<CStringT<wchar_t>>("wchar_t*", {{"a€Ж", L"a€Ж"}});
  Expect<CStringT<wchar_t>>("const wchar_t*", {{"%x%", L"%x%"}});
}

TEST_F(LiteralTypes, OfInvalidNameOrTextFailTheBean) {
  m_classes.Add("C");
  const std::wstring unknown = L"Could not find type bean ";
  const std::tuple<const char*, const char*, std::wstring> kInvalid[] = {
      {"Unsigned char", "1", unknown + L"'Unsigned char'"},
      {"uint16_t", "1", unknown + L"'uint16_t'"},
      {" bean", "b", unknown + L"' bean'"},
      {"bool", "TRUE", L"Invalid bool value"},
      {"bool", "", L"Invalid bool value"}};
  for (const auto& [type, text, error] : kInvalid) {
    m_log.Clear();
    EXPECT_EQ(LoadLiteral(type, text).GetBean("b"), nullptr);
    EXPECT_EQ(m_log.Errors(), WideLines{error});
    EXPECT_EQ(m_log.Records().front().file, "Core/Zorbel/src/CTypeManager");
    EXPECT_EQ(m_log.Warnings(), WideLines{L"Could not resolve bean 'b', unknown exception was thrown"});
  }
}
