#include <windows.h>

#include <algorithm>
#include <filesystem>

#include "Support/Plugins/windows/IReport.h"
#include "Zorbel/Beans.h"

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
