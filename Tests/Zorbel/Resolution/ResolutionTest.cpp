#include <ThisPlatform.h>

#include <algorithm>
#include <stdexcept>

#include "Support/SmallStack.h"
#include "Zorbel/Beans.h"

using namespace Test;
using Zorbel::CContainer;

namespace {

using Resolution = Beans;

template <class T>
T Throw() {
  throw std::runtime_error("by the wrapper");
}

bool Refuse(Zorbel::IObject*, const std::string&, const Arguments*) { return false; }

const std::string kProperty = "<properties><property name='P'><value type='int'>1</value></property></properties>";

std::string Dependent(const std::string& name, const std::string& on) {
  return "<bean name='" + name + "' class='C'><depends-on><bean-name>" + on + "</bean-name></depends-on></bean>";
}

/// Beans "n0" and so on, each of which depends on the next.
std::string Chain(int count) {
  std::string beans;
  for (int i = 0; i < count; ++i) {
    beans += Dependent(Numbered("n", i), Numbered("n", i + 1));
  }
  return beans;
}

}  // namespace

TEST_F(Resolution, GivesUpWithAWarningAndLeavesNothingBehind) {
  m_classes.Add("NoWrapper", {.make = [](auto&) { return nullptr; }});
  m_classes.Add("MakerThrows", {.make = [](auto&) { return Throw<Zorbel::IBeanWrapper*>(); }});
  m_classes.Add("Nameless", {.make = [](auto&) { return MakeWrapper("", {.call = Refuse}); }});
  m_classes.Add("NoObject", {.create = [](auto&) { return nullptr; }});
  m_classes.Add("CreateThrows", {.create = [](auto&) { return Throw<std::unique_ptr<Zorbel::IObject>>(); }});
  m_classes.Add("Refuses", {.call = Refuse});
  m_classes.Add("CallThrows", {.call = [](auto*, auto&, auto*) { return Throw<bool>(); }});
  m_classes.Add("TypesThrow", {.types = [](auto&, auto) { return Throw<Lines>(); }});
  m_classes.Add("NoTypes", {.types = [](auto&, auto) { return Lines{"", ""}; }});
  m_classes.Add("C");
  const std::wstring exception = L"Could not resolve bean 'b', unknown exception was thrown";
  const std::tuple<std::string, std::wstring, int> kFailures[] = {
      // beans, last line, objects made and destroyed
      {"", L"Bean 'b' requested, but not configured", 0},
      {Bean("C' exported='false"), L"Bean 'b' shall be exported from library 'emptyplugin', but not allowed", 0},
      {Bean("NoWrapper"), L"Wrapper maker of class 'NoWrapper' returned no wrapper", 0},
      {Bean("C' factory-bean='f"), L"Factory bean 'f' requested, but not configured", 0},
      {"<bean name='f' class='NoWrapper'/>" + Bean("C' factory-bean='f"), L"", 0},
      {Bean("NoObject"), L"Could not create bean 'b'", 0},
      {Bean("Refuses' autoname='true"), L"Could not auto name bean 'b'", 1},
      {Bean("Refuses", kProperty), L"Could not set property 'P' of bean 'b'", 1},
      {Bean("Refuses' init-method='I"), L"Init method of class 'Refuses' does not exist or is not valid", 1},
      {Bean("Nameless' init-method='I"), L"Init method of class '' does not exist or is not valid", 1},
      {Bean("CallThrows' init-method='I"), L"Init method 'I' of class 'CallThrows' threw exception", 1},
      {Bean("CallThrows' autoname='true"), exception, 1},
      {Bean("CallThrows", kProperty), exception, 1},
      {Bean("CreateThrows"), exception, 0},
      {Bean("MakerThrows"), exception, 0},
      {Bean("Missing"), exception, 0},
      {Bean("TypesThrow", kProperty), exception, 0},
      {Bean("NoTypes", kProperty), exception, 0},
      {Bean("NoWrapper", kProperty), exception, 0},
  };
  for (const auto& [bean, warning, destroyed] : kFailures) {
    m_log.Clear();
    Journal::Take();
    CContainer container = Load("<bean name='good' class='C'/>" + bean);
    EXPECT_EQ(container.GetBean("b"), nullptr) << bean;
    EXPECT_EQ(m_log.Warnings(), WideLines(warning.empty() ? 0 : 1, warning)) << bean;
    EXPECT_TRUE(warning.empty() ||
                Origin() == "Zorbel::CBeanFactoryImpl::GetBeanWrapper in Core/Zorbel/src/CBeanFactoryImpl");
    const Lines journal = Journal::Take();
    const auto isDestruction = [](const std::string& line) { return line[0] == '~'; };
    EXPECT_EQ(std::count_if(journal.begin(), journal.end(), isDestruction), destroyed) << bean;
    EXPECT_NE(container.GetBean("good"), nullptr) << bean;
  }
  EXPECT_EQ(ErrorOf([] { Load(Bean("NoTypes", kProperty)).Exists("b"); }), L"Missing argument type for property 'P'");
  EXPECT_EQ(ErrorOf([] { Load(Bean("NoWrapper", kProperty)).Exists("b"); }),
            L"Wrapper maker of class 'NoWrapper' returned no wrapper");
}

TEST_F(Resolution, MakesTheCallsOfABeanInOrder) {
  std::string name;
  m_classes.Add("D");
  m_classes.Add("F");
  m_classes.Add("a::b::C", {.call =
                                [&](auto*, const std::string& method, const Arguments* values) {
                                  name += method == "SetName" ? *static_cast<const char**>(values->at(0)) : "";
                                  return method != "Init" || values == nullptr;
                                },
                            .types = [](auto& method, auto) { return Lines(method == "P" ? 1 : 0, "int"); }});
  CContainer container =
      Load("<bean name='d' class='D'/><bean name='f' class='F' exported='false'/>" +
           Bean("a::b::C' autoname='true' init-method='Init' exit-method='Exit",
                Argument("<ref bean='d'/>") +
                    "<properties><property name='P'><arguments><argument><ref bean='d'/></argument>"
                    "<argument><value type='int'>1</value></argument></arguments></property>"
                    "<property name='Q'><ref bean='none'/></property></properties>"
                    "<depends-on><bean-name>d</bean-name><bean-name>none</bean-name></depends-on>") +
           "<bean name='made' class='D' factory-bean='f' factory-method='F::Make' autoname='true'/>");
  EXPECT_TRUE(container.Exists("b"));
  EXPECT_EQ(Journal::Take(),
            (Lines{"make D", "make F", "make a::b::C", "types a::b::C.P/2", "types a::b::C.Q/1", "make D"}));
  const Object b = container.GetBean("b");
  EXPECT_EQ(Journal::Take(),
            (Lines{"create D.D/0", "create D.D/0", "create a::b::C.C/1", "~D", "call a::b::C.SetName/1", "create D.D/0",
                   "call a::b::C.P/2", "~D", "call a::b::C.Q/1", "call a::b::C.Init/0"}));
  const SCreation& creation = Cast(b)->creation;
  EXPECT_EQ(name + creation.exitMethod + creation.wrapper->GetClassName(), "bExita::b::C");
  ASSERT_TRUE(creation.dependencies.size() == 2 && creation.dependencies[1] == nullptr);
  EXPECT_EQ(Cast(creation.dependencies[0])->creation.arguments, nullptr);
  const Object made = container.GetBean("made");
  EXPECT_EQ(Journal::Take(), (Lines{"create F.Make/0", "call D.SetName/1"}));
  EXPECT_STREQ(Cast(made)->creation.wrapper->GetClassName(), "F");
}

TEST_F(Resolution, MakesASingletonOnceAndOthersAnewWithOneWrapperForTheirClass) {
  bool works = false;
  const auto answer = [&](auto*, auto&, auto*) { return works; };
  m_classes.Add("C");
  m_classes.Add("Late", {.make = [&, calls = 0](auto& name) mutable {
                  return ++calls == 1 ? nullptr : MakeWrapper(name, {.call = answer});
                }});
  CContainer container = Load(Bean("C' singleton='true") + Dependent("o", "b") +
                              "<bean name='l' class='Late' singleton='true' init-method='Init'/>");
  const Object other = container.GetBean("o");
  const Object first = container.GetBean("b");
  EXPECT_EQ(Cast(other)->creation.dependencies.at(0), first);
  EXPECT_EQ(Cast(other)->creation.wrapper, Cast(first)->creation.wrapper);
  Journal::Take();
  EXPECT_EQ(container.GetBean("b"), first);
  EXPECT_EQ(Journal::Take(), Lines());
  EXPECT_NE(container.GetBean("o"), other);
  EXPECT_EQ(container.GetBean("l"), nullptr);
  works = true;
  EXPECT_NE(container.GetBean("l"), nullptr);
}

TEST_F(Resolution, BreaksCyclesWhereTheyClose) {
  Zorbel::GetLocalLibrary().RegisterTypeID("ICyclic", "cyclic");
  m_classes.Add("C");
  const std::string provides = "<provides><interface>ICyclic</interface></provides>";
  const std::pair<std::string, const wchar_t*> kCycles[] = {
      {Dependent("b", "b"), L"Bean 'b' depends on itself (b -> b)"},
      {Dependent("b", "x") + Dependent("x", "y") + Dependent("y", "x"),
       L"Bean 'x' depends on itself (b -> x -> y -> x)"},
      {Bean("C", Argument("<ref bean='x'/>")) + Dependent("x", "b"), L"Bean 'b' depends on itself (b -> x -> b)"},
      {Bean("C", Argument("<ref service='ICyclic'/>") + provides), L"Bean 'b' depends on itself (b -> b)"},
  };
  for (const auto& [beans, warning] : kCycles) {
    m_log.Clear();
    EXPECT_NE(Load(beans).GetBean("b"), nullptr) << beans;
    EXPECT_EQ(m_log.Warnings(), WideLines{warning}) << beans;
  }
}

TEST_F(Resolution, NestsToTheLimitAndNoDeeper) {
  m_classes.Add("C");
  const std::string last = Numbered("n", kDeepestRecursion + 1);
  const std::string eager = "<bean name='" + last + "' class='C' singleton='true' lazy='false'/>";
  CContainer container = Load(eager + Chain(kDeepestRecursion + 1));
  EXPECT_NE(container.GetBean("n1"), nullptr);
  EXPECT_EQ(m_log.Warnings(), WideLines());
  EXPECT_NE(container.GetBean("n0"), nullptr);
  const std::wstring limit = std::to_wstring(kDeepestRecursion);
  EXPECT_EQ(m_log.Warnings(), WideLines{L"Bean 'n" + limit + L"' requested, but more than " + limit +
                                        L" beans depend on each other in a row"});
}

TEST_F(Resolution, EndsWithAWarningWhereTheStackOfAThreadDoes) {
  m_classes.Add("C");
  const CContainer container = Load("<bean name='n1000' class='C'/>" + Chain(1000));
  for (const std::size_t kibibytes : {96, 256, 512}) {
    m_log.Clear();
    RunOnThread(kibibytes * 1024, [&] { EXPECT_NE(container.GetBean("n0"), nullptr); });
    ASSERT_EQ(m_log.Warnings().size(), 1U);
    const std::wstring warning = m_log.Warnings().front();
    EXPECT_TRUE(warning.ends_with(L" beans depend on each other in a row")) << kibibytes;
    EXPECT_LE(std::stoi(warning.substr(warning.find(L"than ") + 5)), kDeepestRecursion);
  }
}
