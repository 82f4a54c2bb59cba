#include <Zorbel/Zorbel.h>
#include <gtest/gtest.h>

#include "Platform/Module.h"

static_assert(sizeof(CStringT<char>) == sizeof(char*) && sizeof(CStringT<wchar_t>) == sizeof(wchar_t*));
static_assert(sizeof(Zorbel::CContainer) == sizeof(std::shared_ptr<Zorbel::IBeanFactory>));

TEST(BinaryInterface, HasItsOperationsWhereAModuleWithDeclarationsOfItsOwnCallsThem) {
  void* module = Platform::LoadModule("slots");
  ASSERT_NE(module, nullptr);
  const auto callInterfaces =
      reinterpret_cast<const char* (*)(void*, void*)>(Platform::FindFunction(module, "CallInterfaces"));
  const auto called = reinterpret_cast<const char* (*)()>(Platform::FindFunction(module, "CalledOperations"));
  Zorbel::CContainer container(R"(
      <zorbel><library path="slots"><beans>
        <bean name="b" class="C" exit-method="Exit">
          <properties><property name="P"><value type="int">1</value></property></properties>
        </bean>
      </beans></library></zorbel>)",
                               false);
  EXPECT_STREQ(callInterfaces(container.GetFactory().get(), &Zorbel::GetLocalLibrary()), "");
  EXPECT_STREQ(called(), "634");
  container.Reset();
  EXPECT_STREQ(called(), "6341");
}
