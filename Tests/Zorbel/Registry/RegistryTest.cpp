#include <fstream>

#include "Zorbel/Beans.h"

using namespace Test;
using Zorbel::CContainer;

namespace {

using Registry = Beans;

std::string Library(const std::string& path, const std::string& beans) {
  return "<library path='" + path + "'><beans>" + beans + "</beans></library>";
}
std::string Declared(const std::string& name, const std::string& className, const std::string& content = "") {
  return "<bean name='" + name + "' class='" + className + "'>" + content + "</bean>";
}
std::string Provides(const std::string& interfaceName) {
  return "<provides><interface>" + interfaceName + "</interface></provides>";
}
CContainer LoadAll(const std::string& libraries) { return LoadText("<zorbel>" + libraries + "</zorbel>", false); }
CContainer Merge(const std::string& libraries) { return LoadText("<zorbel>" + libraries + "</zorbel>", true); }

}  // namespace

TEST_F(Registry, BuildsTheDefinitionsOfALibraryOnItsFirstUse) {
  m_classes.Add("C");
  m_classes.Add("D");
  m_classes.Add("E");
  const CContainer container =
      Merge(Library("emptyplugin", Declared("c", "C") + Declared("d", "D") + Declared("c", "E")) +
            Library("makers", Declared("e", "E") + Declared("c", "E")) + Library("none", ""));
  EXPECT_FALSE(container.Exists("C"));
  EXPECT_EQ(Journal::Take(), Lines());
  EXPECT_TRUE(container.Exists("c"));
  EXPECT_EQ(Journal::Take(), (Lines{"make C", "make D"}));
  EXPECT_TRUE(container.Exists("e") && container.Exists("d"));
  EXPECT_EQ(Journal::Take(), Lines{"make E"});
  const CContainer later = Merge(Library("emptyplugin", Declared("late", "C") + Declared("d2", "D")));
  EXPECT_TRUE(container.Exists("c"));
  EXPECT_EQ(Journal::Take(), Lines());
  EXPECT_TRUE(container.Exists("d2"));
  EXPECT_EQ(Journal::Take(), (Lines{"make C", "make D"}));
}

TEST_F(Registry, KeepsTheDefinitionsBeforeOneThatFailsAndTriesAgain) {
  m_classes.Add("C");
  const CContainer container =
      LoadAll(Library("emptyplugin", Declared("c", "C") + Declared("late", "ns::sub::Late") + Declared("d", "C")));
  const std::wstring error = L"Getting wrapper maker failed for class 'ns::sub::Late'";
  EXPECT_EQ(ErrorOf([&] { container.Exists("c"); }), error);
  EXPECT_EQ(Origin(), "Zorbel::CXMLResource::processBean in Core/Zorbel/src/CXMLResource");
  EXPECT_TRUE(container.Exists("c"));
  EXPECT_EQ(ErrorOf([&] { container.Exists("d"); }), error);
  EXPECT_EQ(Journal::Take(), Lines{"make C"});
  m_classes.Add("ns::sub::Late");
  EXPECT_TRUE(container.Exists("d") && container.Exists("late"));
}

TEST_F(Registry, RefusesTakenNamesAndStaysAsItWas) {
  Zorbel::GetLocalLibrary().RegisterTypeID("ITaken", "taken");
  m_classes.Add("C");
  const CContainer container = Merge(Library("emptyplugin", Declared("c", "C")));
  const std::string taken =
      Library("makers", "<bean name='new' class='C' lazy='false'>" + Provides("ITaken") + "</bean>") +
      Library("other", Declared("c", "C"));
  EXPECT_EQ(ErrorOf([&] { Merge(taken); }), L"Overriding bean 'c' is not allowed");
  EXPECT_EQ(Origin(), "Zorbel::CXMLResource::Integrate in Core/Zorbel/src/CXMLResource");
  Merge("");
  EXPECT_FALSE(container.Exists("new"));
  EXPECT_EQ(container.GetServiceCount("taken"), 0U);
  EXPECT_NE(container.GetBean("c"), nullptr);
  EXPECT_EQ(m_log.Warnings(), WideLines());
  Merge(Library("emptyplugin", Declared("C", "C")));
  EXPECT_TRUE(container.Exists("C"));
}

TEST_F(Registry, AnswersWithTheProviderMergedLast) {
  Zorbel::GetLocalLibrary().RegisterTypeID("IOne", "one");
  Zorbel::GetLocalLibrary().RegisterTypeID("ITwo", "two");
  m_classes.Add("A");
  m_classes.Add("B");
  const std::string both = "<provides><interface>ITwo</interface><interface>IOne</interface></provides>";
  const CContainer container =
      Merge(Library("emptyplugin", "<bean name='a' class='A' singleton='true'>" + both + "</bean>" +
                                       Declared("hidden' exported='false", "A", Provides("IOne"))));
  Merge(Library("makers", Declared("b", "B", Provides("IOne"))));
  EXPECT_EQ(container.GetServiceCount("one"), 3U);
  EXPECT_EQ(Cast(container.GetService("one"))->className, "B");
  EXPECT_EQ(container.GetService("one", 1), nullptr);
  EXPECT_EQ(m_log.Warnings().back(), L"Bean 'hidden' shall be exported from library 'emptyplugin', but not allowed");
  EXPECT_EQ(container.GetService("one", 2), container.GetBean("a"));
  EXPECT_EQ(container.GetService("two"), container.GetBean("a"));
  EXPECT_NE(container.GetService("one"), container.GetService("one"));
}

TEST_F(Registry, LooksForWrapperMakersInTheModuleFirst) {
  m_classes.Add("of::Module");
  m_classes.Add("NoWrapper");
  m_classes.Add("C");
  CContainer container = LoadAll(Library("makers", Declared("b", "of::Module' init-method='Init") +
                                                       Declared("n", "NoWrapper") + Declared("c", "C")) +
                                 Library("./makers", Declared("d", "of::Module")));
  EXPECT_EQ(container.GetBean("b"), nullptr);
  EXPECT_EQ(container.GetBean("n"), nullptr);
  EXPECT_EQ(m_log.Warnings(), (WideLines{L"Init method of class 'of::Module' does not exist or is not valid",
                                         L"Wrapper maker of class 'NoWrapper' returned no wrapper"}));
  EXPECT_NE(container.GetBean("c"), nullptr);
  EXPECT_EQ(Journal::Take(), (Lines{"make C", "create C.C/0", "~C"}));
}

TEST_F(Registry, ReportsModulesThatCannotBeLoadedWithTheirPathAsWritten) {
  Zorbel::GetLocalLibrary().RegisterTypeID("INone", "none");
  m_classes.Add("C");
  std::ofstream("notamodule.txt") << "text";
  for (const std::string path : {"nowhere/none", "none.dll", "./notamodule.txt", "n\xC3\xB6"}) {
    const std::string library = Library(path, Declared("b", "C"));
    const std::wstring shown = path == "n\xC3\xB6" ? L"n\u00F6" : std::wstring(path.begin(), path.end());
    const std::wstring error = L"Could not load library '" + shown + L"'";
    const CContainer container = LoadAll(library);
    m_log.Clear();
    EXPECT_EQ(ErrorOf([&] { container.Exists("b"); }), error);
    const std::vector<Logging::SRecord> lines = m_log.Records();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].channel, L"Zorbel.Modules");
    const std::wstring warning = L"Library '" + shown + L"' cannot be loaded: ";
    EXPECT_TRUE(lines[0].text.starts_with(warning) && lines[0].text.size() > warning.size()) << path;
    EXPECT_EQ(lines[1].text, error);
    EXPECT_EQ(Origin(), "Zorbel::CDynamicLibrary::CDynamicLibrary in Core/Zorbel/src/CDynamicLibrary");
    EXPECT_EQ(container.GetBean("b"), nullptr);
    EXPECT_EQ(ErrorOf([&] { LoadAll(Library(path, Declared("b", "C", Provides("INone")))); }), error);
  }
  EXPECT_EQ(std::remove("notamodule.txt"), 0);
}
