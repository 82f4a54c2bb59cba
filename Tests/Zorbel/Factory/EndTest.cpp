// What code sees while the factory that made it goes.

#include <optional>

#include "Zorbel/Beans.h"

using namespace Test;
using Zorbel::CContainer;

namespace {

/// A container with the singleton "s" of a class whose destructor runs a function of the test.
class End : public Beans {
 protected:
  End() {
    m_classes.Add("C");
    m_classes.Add("W", {.create = [this](auto&) { return std::make_unique<CLastWord>([this] { Speak(); }); }});
    m_container.emplace(m_document.c_str(), false);
  }
  ~End() override {
    m_word = [] {};
  }

  void Speak() {
    const std::function<void()> word = m_word;  // which may be replaced meanwhile
    word();
  }

  const std::string m_document =
      Document(Bean("C' singleton='true") + "<bean name='s' class='W' singleton='true' lazy='false'/>");
  std::optional<CContainer> m_container;
  std::function<void()> m_word = [] {};
};

struct SWay {
  const char* name;
  void (*end)(std::optional<CContainer>&);
};

const SWay kWays[] = {
    {"destroyed", [](auto& container) { container.reset(); }},
    {"copied over",
     [](auto& container) {
       const CContainer other(nullptr);
       *container = other;
     }},
    {"moved over", [](auto& container) { *container = CContainer(nullptr); }},
    {"reset", [](auto& container) { container->Reset(); }},
    {"filled anew", [](auto& container) { container->Reset("<zorbel/>"); }},
};

}  // namespace

TEST_F(End, LetsBeansFindEverythingAndServicesNothing) {
  for (const SWay& way : kWays) {
    m_container.emplace(m_document.c_str(), false);
    CContainer* const container = &*m_container;
    const Object logger = MakeObject();
    container->RegisterInstance("logger", logger);
    Lines seen;
    const auto look = [&] {
      const bool found = container->GetBean("b") && container->Exists("b") && CContainer(*container).Exists("b");
      seen.push_back(std::string(found ? "bean " : "no bean ") + (container->GetService("logger") ? "logger" : "none"));
      container->RegisterInstance("late", MakeObject());
    };
    container->RegisterInstance("last", std::make_shared<CLastWord>(look));
    m_word = look;
    const std::shared_ptr<Zorbel::IBeanFactory> factory = way.end == kWays[3].end ? container->GetFactory() : nullptr;
    way.end(m_container);
    EXPECT_EQ(seen, (Lines{"bean logger", "no bean none"})) << way.name;
    EXPECT_EQ(logger.use_count(), 1) << way.name;
    EXPECT_TRUE(!factory || factory->GetServiceCount("late") == 0) << way.name;
    m_word = [] {};
  }
}

TEST_F(End, ForgetsWhatIsLoadedMeanwhile) {
  CContainer* const container = &*m_container;
  const auto load = [&] { container->Reset(Document(Bean("C")).c_str()); };
  container->RegisterInstance("last", std::make_shared<CLastWord>(load));
  container->Reset();
  EXPECT_FALSE(container->Exists("b"));
  load();
  EXPECT_TRUE(container->Exists("b"));
}

TEST_F(End, LetsServicesOfTheSharedFactoryBeFoundByBeans) {
  for (const bool held : {false, true}) {
    std::optional<CContainer> container(std::in_place, m_document.c_str(), true);
    container->RegisterInstance("logger", MakeObject());
    Object found;
    m_word = [&] { found = CContainer().GetService("logger"); };
    std::shared_ptr<Zorbel::IBeanFactory> factory = held ? container->GetFactory() : nullptr;
    container.reset();
    EXPECT_EQ(found == nullptr, held);
    factory.reset();
    EXPECT_NE(found, nullptr);
    EXPECT_EQ(CContainer().GetServiceCount("logger"), 0U);
  }
}

TEST_F(End, ComesAlsoWhenDestructorsGoOnMakingObjects) {
  for (const bool reset : {true, false}) {
    m_container.emplace(m_document.c_str(), false);
    int beans = 0;
    int services = 0;
    CContainer* const container = &*m_container;
    m_word = [&] { ++beans, container->GetBean("s"); };
    std::function<void()> registerAnother = [&] {
      ++services;
      container->RegisterInstance("svc", std::make_shared<CLastWord>(registerAnother));
    };
    registerAnother();
    reset ? container->Reset() : m_container.reset();
    EXPECT_EQ(beans, 101);
    EXPECT_EQ(services, 102);
    EXPECT_TRUE(!reset || (container->GetServiceCount("svc") == 0 && !container->Exists("s")));
    registerAnother = [] {};
  }
}

TEST_F(End, MayBeBroughtAboutAtAnyMoment) {
  for (const bool drop : {false, true}) {
    std::weak_ptr<Zorbel::IBeanFactory> factory;
    TestClasses classes;
    classes.Add("I", {.call = [&](auto*, auto&, auto*) {
                  drop ? m_container.reset() : m_container->Reset();
                  return !factory.expired();
                }});
    m_container = Load(Bean("I' singleton='true' init-method='Init") + "<bean name='d' class='I'/>");
    factory = m_container->GetFactory();
    EXPECT_NE(m_container->GetBean("b"), nullptr);
    EXPECT_EQ(factory.expired(), drop);
    EXPECT_TRUE(drop || m_container->GetBean("b") == nullptr);
  }
  auto* services = new CContainer(nullptr);
  for (int i = 0; i < 2; ++i) {
    services->RegisterService("svc", [&]() -> std::unique_ptr<Zorbel::IObject> {
      delete std::exchange(services, nullptr);
      return MakeObject();
    });
  }
  EXPECT_EQ(services->GetServices("svc").size(), 2U);
}

TEST_F(End, MayTakeTheContainerWithItThatIsAssignedTo) {
  m_word = [&] { m_container.reset(); };
  CContainer next(nullptr);
  const std::weak_ptr<Zorbel::IBeanFactory> assigned = next.GetFactory();
  *m_container = std::move(next);
  EXPECT_TRUE(!m_container && assigned.expired());
}

TEST_F(End, LetsTheDestructorOfAFailedBeanCallBack) {
  m_classes.Add("F",
                {.create = [this](auto&) { return std::make_unique<CLastWord>([this] { m_container->GetBean("b"); }); },
                 .call = [](auto*, auto&, auto*) { return false; }});
  m_container = Load(Bean("F' init-method='Init"));
  m_container->GetBean("b");
  EXPECT_EQ(m_log.Warnings().back(), L"Bean 'b' depends on itself (b -> b)");
}
