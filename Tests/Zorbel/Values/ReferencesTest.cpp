#include <ThisPlatform.h>

#include "Zorbel/Beans.h"

using namespace Test;

namespace {

using References = Beans;

}  // namespace

TEST_F(References, ArriveAsSharedPointersOrAsMissing) {
  Zorbel::GetLocalLibrary().RegisterTypeID("IKnown", "known");
  Zorbel::GetLocalLibrary().RegisterTypeID("IEmpty", "empty");
  std::vector<void*> values;
  std::vector<Object> objects;
  m_classes.Add("C");
  m_classes.Add("User", {.create = [&](const SCreation& creation) {
                  values = *creation.arguments;
                  for (void* value : values) {
                    objects.push_back(value != nullptr ? *static_cast<Object*>(value) : nullptr);
                  }
                  return nullptr;
                }});
  Zorbel::CContainer container = Load(
      "<bean name='c' class='C' singleton='true'/><bean name='u' class='User'><constructor-arg>"
      "<argument><ref bean='c'/></argument><argument><ref service='IKnown'/></argument>"
      "<argument><bean class='C'/></argument><argument><nullptr/></argument>"
      "<argument><ref bean='none'/></argument><argument><ref service='IEmpty'/></argument></constructor-arg></bean>" +
      Bean("C", Argument("<ref service='IUnregistered'/>")));
  const Object c = container.GetBean("c");
  container.RegisterInstance("known", c);
  container.GetBean("u");
  ASSERT_EQ(objects.size(), 6U);
  EXPECT_TRUE(objects[0] == c && objects[1] == c && objects[2] && objects[2] != c && !objects[3]);
  EXPECT_TRUE(values[3] != nullptr && values[4] == nullptr && values[5] == nullptr);
  EXPECT_EQ(container.GetBean("b"), nullptr);
  EXPECT_EQ(m_log.Errors(), WideLines{L"No type id for class 'IUnregistered' registered"});
  EXPECT_EQ(m_log.Warnings(), (WideLines{L"Bean 'none' requested, but not configured", L"Could not create bean 'u'",
                                         L"Could not resolve bean 'b', unknown exception was thrown"}));
}

TEST_F(References, AreMadeOnBehalfOfTheBeansLibraryAndDependenciesOfTheRequesters) {
  std::vector<bool> given;
  m_classes.Add("C");
  m_classes.Add("User", {.create = [&](const SCreation& creation) {
                  given.push_back(creation.arguments->at(0) != nullptr);
                  given.push_back(creation.dependencies.at(0) != nullptr);
                  return std::make_unique<CTestObject>("User", creation);
                }});
  const std::string rest = Argument("<ref bean='x'/>") + "<depends-on><bean-name>x</bean-name></depends-on></bean>";
  Zorbel::CContainer container = Load("<bean name='x' class='C' exported='false'/><bean name='inside' class='User'>" +
                                      rest + "<bean name='outside' class='User@" + ModuleFile("emptyplugin") + "'>" +
                                      rest + Bean("C", Argument("<ref bean='inside'/>")));
  for (const char* name : {"inside", "outside", "b"}) {
    container.GetBean(name);
  }
  EXPECT_EQ(given, (std::vector<bool>{true, false, false, false, true, true}));
  EXPECT_EQ(m_log.Warnings(), WideLines(3, L"Bean 'x' shall be exported from library 'emptyplugin', but not allowed"));
}
