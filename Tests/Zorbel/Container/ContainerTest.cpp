#include <filesystem>
#include <fstream>

#include "Zorbel/Beans.h"

using namespace Test;
using Zorbel::CContainer;

namespace {

using Container = Beans;

const std::string kSingleton = Bean("C' singleton='true");

/// Replaces the elapsed time at the end of a line by "#".
std::wstring WithoutTime(const std::wstring& text) {
  const std::size_t end = text.rfind(L"ms)");
  const std::size_t before = text.find_last_not_of(L"0123456789'", end - 1);
  return before + 1 < end ? text.substr(0, before + 1) + L"#" + text.substr(end) : text;
}

}  // namespace

TEST_F(Container, SharesTheProcessesFactoryWhenIntegrated) {
  m_classes.Add("C");
  {
    const CContainer first(Document(kSingleton).c_str(), true);
    const CContainer second("", true);
    EXPECT_NE(first.GetBean("b"), nullptr);
    EXPECT_EQ(first.GetBean("b"), second.GetBean("b"));
    EXPECT_EQ(first.GetBean("b"), CContainer().GetBean("b"));
    EXPECT_FALSE(CContainer(nullptr).Exists("b") || CContainer("", false).Exists("b"));
    Journal::Take();
  }
  EXPECT_EQ(Journal::Take(), Lines{"~C"});
  EXPECT_FALSE(CContainer().Exists("b"));
}

TEST_F(Container, SharesAStandAloneFactoryWithItsCopiesUntilItIsMovedFrom) {
  m_classes.Add("C");
  CContainer original = Load(kSingleton);
  CContainer copy(nullptr);
  copy = original;
  const Object held = original.GetBean("b");
  EXPECT_EQ(copy.GetBean("b"), held);
  CContainer(original).Reset();
  EXPECT_FALSE(original.Exists("b"));
  original.Reset(Document(kSingleton).c_str());
  EXPECT_TRUE(copy.GetBean("b") && copy.GetBean("b") != held);

  EXPECT_EQ(CContainer(std::move(copy)).GetFactory(), original.GetFactory());
  EXPECT_FALSE(copy.Exists("b") || copy.GetBean("b") || copy.GetService("svc") || copy.GetServiceCount("svc") != 0);
  const std::function<void()> kOperations[] = {[&] { copy.Reset(); },
                                               [&] { copy.Reset(""); },
                                               [&] { copy.Reset(L"file"); },
                                               [&] { copy.ReleaseInstance(nullptr); },
                                               [&] { copy.RegisterService("svc", nullptr); },
                                               [&] { copy.RegisterInstance("svc", nullptr); }};
  for (const auto& operation : kOperations) {
    EXPECT_EQ(ErrorOf(operation), L"Zorbel is not configured");
  }
}

TEST_F(Container, TellsOfEachLoadAndResetInOneLine) {
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "ZorbelContainerTest.xml";
  std::ofstream(path) << "<zorbel/>";
  const std::wstring name = path.wstring();
  CContainer(name.c_str(), true).Reset();
  Logging::SetLevel(Logging::kLevelInformation);
  CContainer shared(static_cast<const char*>(nullptr), true);
  CContainer own(name.c_str(), false);
  for (CContainer* container : {&own, &shared}) {
    container->Reset();
    container->Reset("<zorbel/>");
    container->Reset(name.c_str());
  }
  EXPECT_EQ(CContainer().GetServiceCount("svc"), 0U);
  EXPECT_TRUE(std::filesystem::remove(path));
  const std::wstring file = L"configuration from file '" + name;
  const WideLines expected{L"Loading configuration from xml (integration)",
                           L"Loading " + file + L"' (stand-alone)",
                           L"Resetting stand-alone configuration",
                           L"Resetting configuration from xml (stand-alone)",
                           L"Resetting " + file + L"' (stand-alone)",
                           L"Resetting integrated configuration",
                           L"Resetting configuration from xml (integration)",
                           L"Resetting " + file + L"' (integration)"};
  const std::vector<Logging::SRecord> records = m_log.Records();
  ASSERT_EQ(records.size(), expected.size());
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_EQ(WithoutTime(records[i].text), expected[i] + L"... (#ms)");
    EXPECT_EQ(records[i].function, i < 2 ? "Zorbel::CContainer::CContainer" : "Zorbel::CContainer::Reset");
    EXPECT_EQ(records[i].file, "Core/Zorbel/src/CContainer");
  }
}

TEST_F(Container, LeavesNothingBehindWhenLoadingFails) {
  m_classes.Add("C");
  Logging::SetLevel(Logging::kLevelInformation);
  EXPECT_THROW(CContainer(Document(kSingleton + "<bean class=''/>").c_str(), true), Zorbel::CException);
  EXPECT_THROW(CContainer(L"nowhere.xml", true), Zorbel::CException);
  EXPECT_FALSE(CContainer().Exists("b"));
  CContainer good(Document(kSingleton).c_str(), true);
  EXPECT_EQ(ErrorOf([&] { CContainer(Document("<bean name='x' class='C'/>" + kSingleton).c_str(), true); }),
            L"Overriding bean 'b' is not allowed");
  EXPECT_TRUE(good.Exists("b") && !good.Exists("x"));
  EXPECT_THROW(good.Reset("<zorbel>"), Zorbel::CException);
  EXPECT_FALSE(good.Exists("b"));
  EXPECT_EQ(m_log.Texts(Logging::kLevelInformation).size(), 1U);
}

TEST_F(Container, CreatesEagerBeansAfterEachLoadAndGoesOnAfterAFailure) {
  m_classes.Add("Fails", {.create = [](auto&) { return nullptr; }});
  m_classes.Add("C");
  const std::string beans = Bean("Fails' lazy='false") +
                            "<bean name='o' class='C' lazy='false'/>"
                            "<bean name='s' class='C' lazy='false' singleton='true'/>";
  const CContainer first(Document(beans).c_str(), true);
  EXPECT_EQ(m_log.Warnings(), WideLines{L"Could not create bean 'b'"});
  Journal::Take();
  const CContainer second("", true);
  first.GetBean("s");
  EXPECT_EQ(Journal::Take(), (Lines{"create Fails.Fails/0", "create C.C/0", "~C"}));
}

TEST_F(Container, RaisesWhatBuildingADefinitionRaisesWhenAskedWhetherItExists) {
  m_classes.Add("C");
  const CContainer container = Load(Bean("C") + "<bean name='m' class='x::Missing'/>");
  EXPECT_FALSE(container.Exists("none") || container.Exists(nullptr) || container.GetBean(nullptr));
  EXPECT_EQ(ErrorOf([&] { container.Exists("m"); }), L"Getting wrapper maker failed for class 'x::Missing'");
  EXPECT_TRUE(container.Exists("b"));
}
