#include "BasePool/CbSingleton.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

#include "Platform/Module.h"
#include "Support/Together.h"
#include "TestModule.h"

using Test::RunTogether;

namespace {

struct SSlow : CbSingleton<SSlow> {
  SSlow() { std::this_thread::sleep_for(std::chrono::milliseconds(20 * ++constructed)); }
  static inline std::atomic<int> constructed = 0;
};

struct SInner : CbSingleton<SInner> {};
struct SOuter : CbSingleton<SOuter> {
  SInner& inner = SInner::Instance();
};

struct SThrowingOnce : CbSingleton<SThrowingOnce> {
  SThrowingOnce() { ++attempts == 1 ? throw std::runtime_error("first") : 0; }
  static inline int attempts = 0;
};

std::vector<std::string> lines;

}  // namespace

TEST(CbSingletonThreads, RacingForTheFirstUseGetOneInstance) {
  std::vector<SSlow*> got(8);
  RunTogether(8, [&](std::size_t i) { got[i] = &SSlow::Instance(); });
  EXPECT_EQ(std::vector(8, &SSlow::Instance()), got);
  EXPECT_EQ(1, SSlow::constructed);
}

TEST(CbSingleton, MayAskForAnotherWhileItIsMade) { EXPECT_EQ(&SInner::Instance(), &SOuter::Instance().inner); }

TEST(CbSingleton, IsTriedAgainAfterItsConstructorThrewAndLeavesTheLockFree) {
  EXPECT_THROW(SThrowingOnce::Instance(), std::runtime_error);
  RunTogether(1, [](std::size_t) { SThrowingOnce::Instance(); });
  EXPECT_EQ(2, SThrowingOnce::attempts);
}

TEST(CbSingleton, IsDestroyedAtUnloadInReverseOrderOfUseBeforeStaticObjects) {
  void* module = OpenModule(UNLOADED_MODULE);
  ASSERT_NE(nullptr, module);
  using Use = void(void (*report)(const char*));
  reinterpret_cast<Use*>(Platform::FindFunction(module, "UseSingletons"))(
      [](const char* line) { lines.push_back(line); });
  EXPECT_TRUE(IsModuleMapped(UNLOADED_MODULE) && lines.empty());
  CloseModule(module);
  EXPECT_FALSE(IsModuleMapped(UNLOADED_MODULE));
  EXPECT_EQ((std::vector<std::string>{"~second singleton", "~first singleton", "~second static", "~first static"}),
            lines);
}
