#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "Support/Together.h"
#include "Zorbel/Beans.h"

using namespace Test;
using Zorbel::CContainer;

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 200;

std::string Singletons(const std::string& prefix, const std::string& attributes = "") {
  std::string beans;
  for (int i = 0; i < kRounds; ++i) {
    beans += Numbered("<bean name='" + prefix, i) + "' class='C' singleton='true' " + attributes + "/>";
  }
  return beans;
}

/// A class "C" that counts its instances, and "H", whose instances run a function of the test when they are made.
class FactoryThreads : public Beans {
 protected:
  FactoryThreads() {
    m_classes.Add("C", {.create = [this](auto&) { return MakeSlowly(); }});
    m_classes.Add("H", {.create = [this](auto&) { return std::function(m_hook)(), MakeObject(); }});
  }

  // Gives other threads the time to make a second one.
  std::unique_ptr<Zorbel::IObject> MakeSlowly() {
    std::this_thread::sleep_for(std::chrono::microseconds(++m_created % 16 == 0 ? 500 : 0));
    return MakeObject();
  }

  std::function<void()> m_hook;
  std::atomic<int> m_created{0};
};

}  // namespace

TEST_F(FactoryThreads, CreateSingletonsAndSingletonServicesOnce) {
  CContainer container = Load(Singletons("s"));
  for (int i = 0; i < kRounds; ++i) {
    container.RegisterService("svc", [this] { return MakeSlowly(); })->SetSingleton();
  }
  std::vector<Object> seen[kThreads];
  RunTogether(kThreads, [&](int thread) {
    for (int i = 0; i < kRounds; ++i) {
      seen[thread].push_back(container.GetBean(Numbered("s", i).c_str()));
      seen[thread].push_back(container.GetService("svc", static_cast<unsigned int>(i)));
    }
  });
  EXPECT_EQ(m_created, 2 * kRounds);
  for (const auto& objects : seen) {
    EXPECT_EQ(objects, seen[0]);
  }
}

TEST_F(FactoryThreads, HandOutKeptServicesWhileABeanIsMade) {
  m_classes.Add("P");
  Zorbel::GetLocalLibrary().RegisterTypeID("IProvided", "provided");
  CContainer container = Load("<bean name='h' class='H'/><bean name='p' class='P' singleton='true'>" +
                              std::string("<provides><interface>IProvided</interface></provides></bean>"));
  container.RegisterService("made", MakeObject)->SetSingleton();
  container.RegisterInstance("ready", MakeObject());
  const std::vector<Object> kept = {container.GetService("provided"), container.GetService("made"),
                                    container.GetService("ready")};
  std::vector<Object> seen;
  m_hook = [&] {
    std::thread([&] {
      for (const char* typeId : {"provided", "made", "ready"}) {
        seen.push_back(container.GetService(typeId));
      }
    }).join();
  };
  container.GetBean("h");
  EXPECT_EQ(seen, kept);
  EXPECT_EQ(std::count(kept.begin(), kept.end(), nullptr), 0);
}

TEST_F(FactoryThreads, AttachToOneSharedFactoryAndLoadIntoItOneAfterTheOther) {
  std::atomic<int> refused{0};
  RunTogether(kThreads, [](int) {
    for (int i = 0; i < kRounds; ++i) {
      const CContainer first;
      EXPECT_EQ(first.GetFactory(), CContainer().GetFactory());
    }
  });
  const CContainer shared;
  RunTogether(kThreads, [&](int thread) {
    const std::string document = Document(Singletons(Numbered("t", thread) + "_", "lazy='false'"));
    EXPECT_EQ(CContainer(document.c_str(), true).GetFactory(), shared.GetFactory());
    refused += ErrorOf([] { CContainer(Document(Singletons("x")).c_str(), true); }) != L"no error";
  });
  EXPECT_EQ(refused, kThreads - 1);
  EXPECT_EQ(m_created, kThreads * kRounds);
}

TEST_F(FactoryThreads, MayDoAnythingAtAnyTime) {
  Zorbel::GetLocalLibrary().RegisterTypeID("IThreads", "svc");
  Logging::SetLevel(Logging::kLevelOff);
  const std::string document =
      Document("<bean name='p' class='C' singleton='true'><provides><interface>IThreads</interface></provides></bean>" +
               Bean("C", Argument("<ref service='IThreads'/>")));
  CContainer container(document.c_str(), false);
  const std::function<void()> kOperations[] = {
      [&] { container.GetBean("b"); },
      [&] { container.Reset(document.c_str()); },
      [&] { container.GetService("svc", container.GetServiceCount("svc") / 2); },
      [&] { container.Exists("b"); },
      [&] { container.RegisterService("svc", MakeObject)->SetReleaseFunction([](auto*) {}); },
      [&, object = Object(MakeObject())] {
        container.RegisterInstance("svc", object, true);
        ErrorOf([&] { container.ReleaseInstance(object); });  // a reset may have been faster
      },
  };
  RunTogether(6, [&](int thread) {
    for (int i = 0; i < kRounds; ++i) {
      kOperations[thread]();
    }
  });
  EXPECT_NE(container.GetBean("b"), nullptr);
}

TEST_F(FactoryThreads, LoadFromBeanCodeUnlessTheyOrAnotherThreadLoad) {
  const CContainer container = Load("<bean name='h' class='H'/>");
  WideLines errors;
  const auto load = [&] { errors.push_back(ErrorOf([] { CContainer("", true); })); };
  m_hook = load;
  container.GetBean("h");
  Load("<bean name='e' class='H' lazy='false'/>");

  std::promise<void> loading;
  std::promise<void> tried;
  RunTogether(2, [&](int thread) {
    if (thread == 0) {
      m_hook = [&] {
        m_hook = [&] { load(), tried.set_value(); };
        loading.set_value();
        tried.get_future().wait();
      };
      Load("<bean name='e' class='H' lazy='false'/>");
    } else {
      loading.get_future().wait();
      container.GetBean("h");
    }
  });
  EXPECT_EQ(errors, (WideLines{L"no error", L"Configuration is being loaded on this thread",
                               L"Configuration is being loaded by another thread"}));
}

TEST_F(FactoryThreads, RunReleaseFunctionsOneAfterTheOtherAlsoWhenTheyCallTheFactory) {
  CContainer container = Load("<bean name='c' class='C'/>");
  std::atomic<int> inside{0};
  int overlaps = 0;
  int released = 0;
  container.RegisterService("svc", MakeObject)->SetReleaseFunction([&](auto*) {
    overlaps += inside++ != 0;
    container.GetBean("c");
    --inside;
    ++released;
  });
  RunTogether(kThreads, [&](int) {
    for (int i = 0; i < kRounds; ++i) {
      container.GetService("svc");
    }
  });
  EXPECT_EQ(overlaps, 0);
  EXPECT_EQ(released, kThreads * kRounds);
}

TEST_F(FactoryThreads, ReleaseServicesWhileAReleaseFunctionWaitsForTheFactory) {
  CContainer container = Load("<bean name='h' class='H'/><bean name='c' class='C'/>");
  std::promise<void> releasing;
  std::promise<void> resolving;
  int released = 0;  // release functions run one after the other
  container.RegisterService("svc", MakeObject)->SetReleaseFunction([&](auto*) {
    if (++released == 1) {
      releasing.set_value();
      resolving.get_future().wait();
      EXPECT_NE(container.GetBean("c"), nullptr);
    }
  });
  m_hook = [&] {
    resolving.set_value();
    container.GetService("svc");
  };
  RunTogether(kThreads, [&](int thread) {
    if (thread == 1) {
      releasing.get_future().wait();
      container.GetBean("h");
    }
    for (int i = 0; i < kRounds; ++i) {
      container.GetService("svc");
    }
  });
  EXPECT_EQ(released, kThreads * kRounds + 1);
}

TEST_F(FactoryThreads, ReleaseServicesInASinkWhileAReleaseFunctionAsksForAKeptOne) {
  CContainer container = Load("");
  const Object ready = MakeObject();
  Object seen;
  std::promise<void> releasing;
  container.RegisterInstance("ready", ready);
  container.RegisterService("plain", MakeObject)->SetReleaseFunction([](auto*) {});
  container.RegisterService("asking", MakeObject)->SetReleaseFunction([&](auto*) {
    releasing.set_value();
    seen = container.GetService("ready");
  });
  Object plain = container.GetService("plain");
  Object asking = container.GetService("asking");
  std::thread other;
  Logging::SetSink([&](const auto&) {
    other = std::thread([&] { asking.reset(); });
    releasing.get_future().wait();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    plain.reset();
  });
  EXPECT_THROW(container.RegisterInstance("ready", ready), Zorbel::CException);
  other.join();
  EXPECT_EQ(seen, ready);
}
