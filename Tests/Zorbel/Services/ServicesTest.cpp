#include <stdexcept>

#include "Zorbel/Beans.h"

using namespace Test;

namespace {

class Services : public Beans {
 protected:
  Object Get(unsigned int index = 0) { return m_container.GetService("svc", index); }

  Zorbel::CContainer m_container{nullptr};
};

}  // namespace

TEST_F(Services, AnswerInTheOrderOfTheirRegistrations) {
  Zorbel::GetLocalLibrary().RegisterTypeID("IService", "svc");
  m_classes.Add("C");
  const std::string provides = "<provides><interface>IService</interface></provides>";
  m_container = Load("<bean name='a' class='C' singleton='true'>" + provides + "</bean>" + Bean("C", provides));
  const Object front = MakeObject();
  const Object back = MakeObject();
  m_container.RegisterInstance("svc", front, true);
  m_container.RegisterInstance("svc", back);
  EXPECT_EQ(m_container.GetServiceCount("svc"), 4U);
  EXPECT_EQ(m_container.GetFactory()->GetService("svc"), front);
  EXPECT_NE(Get(1), Get(1));
  EXPECT_EQ(Get(2), m_container.GetBean("a"));
  EXPECT_EQ(Get(3), back);
  EXPECT_TRUE(!Get(4) && !m_container.GetService("none") && !m_container.GetService(nullptr));
  EXPECT_EQ(m_container.GetServiceCount(nullptr), 0U);
}

TEST_F(Services, OfAReadyMadeObjectAreReleasedFromAllTheirInterfacesAtOnce) {
  const Object object = MakeObject();
  const auto registerFor = [&](const char* typeId) { m_container.RegisterInstance(typeId, object); };
  registerFor("svc");
  registerFor("other");
  EXPECT_EQ(ErrorOf([&] { registerFor("svc"); }), L"Service instance is already registered for interface 'svc'");
  m_container.ReleaseInstance(object);
  EXPECT_EQ(m_container.GetServiceCount("svc") + m_container.GetServiceCount("other"), 0U);
  EXPECT_EQ(ErrorOf([&] { m_container.ReleaseInstance(object); }), L"Service instance was not registered");
  EXPECT_EQ(ErrorOf([&] { registerFor(nullptr); }), L"RegisterInstance: the type id is null");
  EXPECT_EQ(ErrorOf([&] { m_container.RegisterService(nullptr, MakeObject); }),
            L"RegisterService: the type id is null");
}

TEST_F(Services, AreNewUntilTheRegistrationIsASingletonThatHasMadeAnObject) {
  int calls = 0;
  Object inner;
  const auto registration = m_container.RegisterService("svc", [&]() -> std::unique_ptr<Zorbel::IObject> {
    switch (++calls) {
      case 3: throw std::runtime_error("not yet");
      case 4: return nullptr;
      case 5: inner = Get();
    }
    return MakeObject();
  });
  EXPECT_FALSE(registration->IsSingleton());
  EXPECT_NE(Get(), Get());
  registration->SetSingleton();
  EXPECT_TRUE(registration->IsSingleton());
  EXPECT_THROW(Get(), std::runtime_error);
  std::vector<const Zorbel::IObject*> released;
  registration->SetReleaseFunction([&](const Zorbel::IObject* object) { released.push_back(object); });
  EXPECT_EQ(Get(), nullptr);
  registration->SetReleaseFunction(nullptr);
  EXPECT_TRUE(released.empty());  // kept until there is something better
  EXPECT_EQ(Get(), inner);
  EXPECT_EQ(released, std::vector<const Zorbel::IObject*>{nullptr});
  m_container.GetFactory()->RegisterService("other", false, nullptr, registration);
  EXPECT_EQ(m_container.GetService("other"), inner);
  EXPECT_EQ(calls, 6);
}

TEST_F(Services, WithoutMakerRaise) {
  m_container.RegisterService("svc", nullptr);
  m_container.RegisterInstance("svc", nullptr);
  for (const unsigned int index : {0U, 1U}) {
    EXPECT_EQ(ErrorOf([&] { Get(index); }), L"No constructor for service type registered");
    EXPECT_EQ(Origin(), "Zorbel::CServiceConfig::GetInstance in Core/Zorbel/src/CServiceConfig");
  }
}

TEST_F(Services, AreReleasedByTheFunctionSetWhenTheyWereMade) {
  const auto registration = m_container.RegisterService("svc", MakeObject);
  const auto add = [](const std::string& name) {
    return [=](const Zorbel::IObject* object) { Journal::Add(name + (object != nullptr ? " object" : " null")); };
  };
  std::vector<Object> objects{Get()};
  registration->SetReleaseFunction(add("first"));
  objects.push_back(Get());
  registration->SetReleaseFunction(add("second"));
  registration->GetReleaseFunction()(nullptr);
  registration->SetReleaseFunction(nullptr);
  EXPECT_FALSE(registration->GetReleaseFunction());
  objects.clear();
  EXPECT_EQ(Journal::Take(), (Lines{"second null", "~S", "first object", "~S"}));
  m_container.RegisterService("null", [] { return nullptr; })->SetReleaseFunction(add("no"));
  EXPECT_EQ(m_container.GetService("null"), nullptr);
  m_container.RegisterInstance("ready", MakeObject())->SetReleaseFunction(add("ready"));
  m_container.Reset();
  EXPECT_EQ(Journal::Take(), (Lines{"no null", "~S"}));
}

TEST_F(Services, MayBeMadeAndReleasedByAReleaseFunctionThatAlsoMayThrow) {
  int depth = 0;
  m_container.RegisterService("svc", MakeObject)->SetReleaseFunction([&](auto*) {
    if (++depth < 3) {
      Get();
    }
    throw std::runtime_error("by the release function");
  });
  Get();
  EXPECT_EQ(Journal::Take(), Lines(3, "~S"));
  EXPECT_EQ(m_log.Warnings(), WideLines(3, L"Release function of a service threw exception"));
}
