#include "Resolution/LiveInstances.h"
#include "Support/Together.h"
#include "Zorbel/Beans.h"

using namespace Test;

namespace {

using LiveInstances = Beans;
using LiveInstancesThreads = Beans;
using Numbers = std::pair<std::uint64_t, std::uint64_t>;  // live and created instances

Numbers NumbersOf(const char* bean) {
  const auto found = Zorbel::Internal::LiveInstances::Find(bean);
  return found ? Numbers(found->liveInstances, found->createdInstances) : Numbers();
}

}  // namespace

TEST_F(LiveInstances, AreCountedByBeanOnceFullyBuiltUntilTheLastIsReleased) {
  Numbers duringInit(9, 9);
  const auto look = [&](auto*, auto&, auto*) { return duringInit = NumbersOf("f"), false; };
  m_classes.Add("Fails", {.call = look});
  m_classes.Add("C");
  const std::string beans = Bean("C") + "<bean name='s' class='C' singleton='true'/>";
  Zorbel::CContainer container = Load(beans + "<bean name='f' class='Fails' init-method='Init'/>");
  std::vector<Object> objects{container.GetBean("b"), container.GetBean("b"), container.GetBean("b")};
  EXPECT_EQ(NumbersOf("b"), Numbers(3, 3));
  objects = {Load(beans).GetBean("b")};
  EXPECT_EQ(NumbersOf("b"), Numbers(1, 4));
  objects.clear();
  EXPECT_EQ(NumbersOf("b"), Numbers(0, 0));
  container.GetBean("s");
  EXPECT_EQ(NumbersOf("s"), Numbers(1, 1));
  container.GetBean("f");
  EXPECT_TRUE(duringInit == Numbers(0, 0) && NumbersOf("f") == Numbers(0, 0));
  container.Reset();
  EXPECT_EQ(NumbersOf("s"), Numbers(0, 0));
}

TEST_F(LiveInstancesThreads, AreCountedExactly) {
  m_classes.Add("C");
  const Zorbel::CContainer container = Load(Bean("C"));
  const Object kept = container.GetBean("b");
  RunTogether(4, [&](int) {
    for (int i = 0; i < 250; ++i) {
      container.GetBean("b");
    }
  });
  EXPECT_EQ(NumbersOf("b"), Numbers(1, 1001));
}
