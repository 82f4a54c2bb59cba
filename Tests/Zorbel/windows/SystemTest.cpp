#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "Beans.h"
#include "Support/Plugins/windows/IReport.h"

using namespace Test;
namespace fs = std::filesystem;

namespace {

using System = Beans;

/// Declares "r" of a class of the module, and "m" whose class lacks the method.
std::string ReportDocument(const std::string& path) {
  return "<zorbel><library path='" + path +
         "'><beans><bean name='r' class='order::CReport'/><bean name='m' class='order::CByHand' init-method='Init'/>"
         "</beans></library></zorbel>";
}

std::string ProgramFolder() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  return fs::path(path).parent_path().string();
}

std::string Replaced(std::string text, char from, char to) {
  std::replace(text.begin(), text.end(), from, to);
  return text;
}

std::string Utf16(const std::wstring& text) {
  return "\xFF\xFE" + std::string(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
}

class Document : public Beans {
 protected:
  Document() {
    m_classes.Add("C", {.create = [this](const SCreation& creation) {
                    m_value = static_cast<const CStringT<wchar_t>*>(creation.arguments->at(0))->GetString();
                    return nullptr;
                  }});
  }
  ~Document() override { fs::remove_all(m_folder); }

  std::wstring ValueOf(const std::string& content) {
    fs::create_directories(m_folder);
    std::ofstream(m_folder / "d.xml", std::ios::binary) << content;
    m_value.clear();
    Zorbel::CContainer((m_folder / "d.xml").c_str(), false).GetBean("b");
    return m_value;
  }

  const fs::path m_folder = fs::temp_directory_path() / "ZorbelSystemTest";
  std::wstring m_value;
};

std::wstring LiteralDocument(const std::wstring& text) {
  return L"<zorbel><library path='emptyplugin'><beans><bean name='b' class='C'><constructor-arg><argument>"
         L"<value type='wchar_t*'>" +
         text + L"</value></argument></constructor-arg></bean></beans></library></zorbel>";
}

}  // namespace

TEST_F(System, PluginsMayIncludeTheSystemsHeaderBeforeOursOrAfter) {
  for (const char* order : {"first", "last"}) {
    for (const char* definition : {"plain", "nominmax", "unicode"}) {
      const std::string module = std::string("systemheader-") + order + "-" + definition;
      const Zorbel::CContainer container(ReportDocument(module).c_str(), false);
      const auto report = container.GetBean<order::IReport>("r");
      ASSERT_NE(report, nullptr) << module;
      EXPECT_EQ(report->Report(), L"Error while parsing xml: Error when parssing 'zorbel'. here") << module;
      m_log.Clear();
      EXPECT_EQ(container.GetBean("m"), nullptr);
      EXPECT_EQ(m_log.Warnings(), WideLines{L"Init method of class 'by hand' does not exist or is not valid"});
    }
  }
}

TEST_F(System, LibraryPathsMayHaveEitherSeparatorAnyLetterCaseAndTheExtension) {
  const std::string path = ProgramFolder() + "\\systemheader-first-plain";
  for (const std::string& same :
       {path, path + ".dll", Replaced(path, '\\', '/'), std::string("SystemHeader-FIRST-Plain.DLL")}) {
    EXPECT_NE(Zorbel::CContainer(ReportDocument(same).c_str(), false).GetBean("r"), nullptr) << same;
  }
}

TEST_F(Document, HasCharactersOfTwoUnitsAsLiteralsInUtf8) {
  std::string utf8;
  const std::wstring document = LiteralDocument(L"\u00F6\u20AC\U0001F600\U0010FFFF");
  const int size = static_cast<int>(document.size());
  utf8.resize(
      static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, document.data(), size, nullptr, 0, nullptr, nullptr)));
  WideCharToMultiByte(CP_UTF8, 0, document.data(), size, utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr);
  EXPECT_EQ(ValueOf(utf8), L"\u00F6\u20AC\xD83D\xDE00\xDBFF\xDFFF");
}

TEST_F(Document, IsReadFromUtf16WithTheCodePagesDefaultForWhatItLacks) {
  EXPECT_EQ(ValueOf(Utf16(LiteralDocument(L"plain"))), L"plain");
  EXPECT_EQ(ValueOf(Utf16(LiteralDocument(L"\u0416\U0001F600"))), L"???");
}

TEST_F(Document, IncludedUnderAnotherLetterCaseIsTheSameFile) {
  fs::create_directories(m_folder);
  std::ofstream(m_folder / "Self.xml") << "<zorbel><include path='SELF.XML'/></zorbel>";
  const std::wstring error = ErrorOf([&] { Zorbel::CContainer((m_folder / "Self.xml").c_str(), false); });
  EXPECT_NE(error.find(L"SELF.XML' includes itself ("), std::wstring::npos) << fs::path(error).string();
}
