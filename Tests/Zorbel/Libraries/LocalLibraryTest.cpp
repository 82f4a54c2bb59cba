#include "Zorbel/Beans.h"

using namespace Test;

namespace {

using LocalLibrary = Beans;

Zorbel::ILibraryConfiguration& Local() { return Zorbel::GetLocalLibrary(); }

}  // namespace

TEST_F(LocalLibrary, FindsWhatWasRegisteredLastUnderExactlyThatName) {
  auto& library = dynamic_cast<Zorbel::ILibrary&>(Local());
  int functions[2] = {};
  Local().RegisterFunction("LocalTest", &functions[0]);
  Local().RegisterFunction("LocalTest", &functions[1]);
  EXPECT_EQ(library.GetFunction("LocalTest"), &functions[1]);
  EXPECT_TRUE(!library.GetFunction("localtest") && !library.GetFunction(nullptr) && !library.GetPath());
  EXPECT_TRUE(Local().UnregisterFunction("LocalTest"));
  EXPECT_FALSE(Local().UnregisterFunction("LocalTest") || Local().UnregisterFunction(nullptr));
  EXPECT_EQ(library.GetFunction("LocalTest"), nullptr);
  EXPECT_EQ(ErrorOf([] { Local().RegisterFunction(nullptr, nullptr); }), L"RegisterFunction: the name is null");
}

TEST_F(LocalLibrary, GivesInterfacesTheTypeIdRegisteredLast) {
  m_classes.Add("C");
  const auto provider = [](const std::string& name) {
    return Bean("C", "<provides><interface>" + name + "</interface></provides>");
  };
  EXPECT_EQ(ErrorOf([&] { Load(provider("INever")); }), L"No type id for class 'INever' registered");
  EXPECT_EQ(Origin(), "Zorbel::CLocalLibrary::GetTypeID in Core/Zorbel/src/CLocalLibrary");
  Local().RegisterTypeID("ILate", "late");
  EXPECT_EQ(Load(provider("ILate")).GetServiceCount("late"), 1U);
  Local().RegisterTypeID("ILate", nullptr);
  EXPECT_EQ(Load(provider("ILate")).GetServiceCount(""), 1U);
  EXPECT_EQ(ErrorOf([] { Local().RegisterTypeID(nullptr, "x"); }), L"RegisterTypeID: the class name is null");
}
