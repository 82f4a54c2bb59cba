// Threads that wait for each other, or that bring the end of a factory about at the same time.

#include <algorithm>
#include <atomic>
#include <optional>
#include <random>
#include <thread>

#include "Support/Together.h"
#include "Zorbel/Beans.h"

using namespace Test;
using Zorbel::CContainer;

// Factories are locked in circles here, which are no deadlocks, as the lock finds them itself.
ZORBEL_PLUGIN_EXPORT const char* __tsan_default_suppressions();
const char* __tsan_default_suppressions() { return "deadlock:CFactoryMutex"; }

namespace {

constexpr int kFactories = 4;
constexpr int kRounds = 300;

/// Containers each of which has the beans "plain", "r" and "w"; an "r" runs `m_hook` with the container's number when
/// it is made, a "w" runs `m_word` when it goes.
class WaitingThreads : public Beans {
 protected:
  WaitingThreads() {
    m_classes.Add("C");
    m_classes.Add("W", {.create = [this](auto&) { return std::make_unique<CLastWord>(m_word); }});
    for (int i = 0; i < kFactories; ++i) {
      m_classes.Add(Numbered("R", i), {.create = [=, this](auto&) { return std::function(m_hook)(i), MakeObject(); }});
      m_containers.emplace_back(nullptr);
    }
    Fill();
  }

  void Fill() {
    for (int i = 0; i < kFactories; ++i) {
      m_containers[i].Reset(Document(Content(i)).c_str());
      m_containers[i].RegisterService("svc", MakeObject)->SetSingleton();
      m_containers[i].RegisterService("null", [] { return nullptr; })->SetSingleton();
    }
  }

  static std::string Content(int number, const std::string& prefix = "") {
    return "<bean name='" + prefix + "plain' class='C'/><bean name='" + prefix + "w' class='W' singleton='true'/>" +
           "<bean name='" + prefix + "r" + Numbered("' class='R", number) + "'/>";
  }

  std::function<void(int)> m_hook;
  std::function<void()> m_word = [] {};
  std::vector<CContainer> m_containers;
};

struct SRequest {
  const char* name;
  bool (*ask)(CContainer&);
};

const SRequest kRequests[] = {
    {"bean", [](auto& container) { return container.GetBean("plain") != nullptr; }},
    {"existence", [](auto& container) { return container.Exists("plain"); }},
    {"singleton service", [](auto& container) { return container.GetService("null") == nullptr; }},
    {"registration", [](auto& container) { return container.RegisterService("late", MakeObject) != nullptr; }},
    {"clearing", [](auto& container) { return container.Reset(), true; }},
};

const std::wstring kWaiting = L"threads that wait for each other (";

bool TellsOfWaiting(const std::wstring& line) { return line.find(kWaiting) != std::wstring::npos; }

}  // namespace

TEST_F(WaitingThreads, InARingAreToldOnceAndComeToTheirEnd) {
  for (const SRequest& request : kRequests) {
    for (const int count : {2, 3, kFactories}) {
      Fill();
      m_log.Clear();
      std::atomic<int> missing = count;
      std::atomic<int> answered{0};
      m_hook = [&](int number) {
        for (--missing; missing > 0;) {
          std::this_thread::yield();
        }
        ErrorOf([&] { answered += request.ask(m_containers[(number + 1) % count]); });
      };
      RunTogether(count, [&](int thread) { EXPECT_NE(m_containers[thread].GetBean("r"), nullptr); });
      EXPECT_EQ(answered, count - 1) << request.name << count;
      const WideLines lines = request.name == kRequests[0].name ? m_log.Warnings() : m_log.Errors();
      ASSERT_EQ(lines.size(), 1U) << request.name;
      EXPECT_TRUE(TellsOfWaiting(lines[0])) << request.name;
      EXPECT_EQ(std::count(lines[0].begin(), lines[0].end(), L','), count - 1) << request.name;
    }
  }
}

TEST_F(WaitingThreads, AreToldOnlyInCircles) {
  Logging::SetLevel(Logging::kLevelWarning);
  std::atomic<int> refused{0};
  thread_local std::mt19937 random;
  thread_local int depth = 0;
  m_hook = [&](int) {
    if (++depth < kFactories) {
      const SRequest& request = kRequests[random() % 4];
      CContainer& asked = m_containers[random() % kFactories];
      refused +=
          ErrorOf([&] { random() % 2 != 0 ? request.ask(asked) : asked.GetBean("r") != nullptr; }) != L"no error";
    }
    --depth;
  };
  RunTogether(6, [&](int thread) {
    random.seed(static_cast<unsigned int>(thread));
    for (int i = 0; i < kRounds; ++i) {
      m_containers[random() % kFactories].GetBean("r");
    }
  });
  const WideLines errors = m_log.Errors();
  EXPECT_EQ(errors.size(), static_cast<std::size_t>(refused));
  EXPECT_TRUE(std::all_of(errors.begin(), errors.end(), TellsOfWaiting));
  for (const std::wstring& line : m_log.Warnings()) {
    EXPECT_TRUE(TellsOfWaiting(line) || line == L"Bean 'r' depends on itself (r -> r)" ||
                line.find(L"-> r)") != line.npos)
        << line.c_str();
  }
}

TEST_F(WaitingThreads, ForASinkAreServedThereByItsThread) {
  const CContainer shared(Document(Content(0)).c_str(), true);
  CContainer container;
  const Object object = MakeObject();
  container.RegisterInstance("svc", object);
  container.RegisterService("none", nullptr)->SetSingleton();
  container.RegisterService("throws", MakeObject)->SetReleaseFunction([](auto*) { throw 1; });
  int lines = 0;
  Logging::SetSink([&](const auto&) {
    RunTogether(1, [&, line = ++lines](int) {
      EXPECT_NE(container.GetBean("plain"), nullptr);
      EXPECT_EQ(container.GetService("svc"), object);
      container.RegisterInstance("other", MakeObject());
      container.RegisterService("released", MakeObject)->SetReleaseFunction([](auto*) {});
      EXPECT_NE(container.GetService("released"), nullptr);
      CContainer(Document(Content(0, Numbered("n", line))).c_str(), true);
    });
  });
  const std::function<void()> kErrors[] = {
      [&] { container.RegisterInstance("svc", object); },      [&] { container.ReleaseInstance(MakeObject()); },
      [&] { CContainer(Document(Content(0)).c_str(), true); }, [&] { container.RegisterInstance(nullptr, object); },
      [&] { container.RegisterService(nullptr, MakeObject); }, [&] { container.GetService("none"); }};
  for (const auto& error : kErrors) {
    EXPECT_NE(ErrorOf(error), L"no error");
  }
  container.GetService("throws");
  EXPECT_EQ(lines, 7);
}

TEST_F(WaitingThreads, WhoseResetIsRefusedHaveLostNothing) {
  CContainer& own = m_containers[0];
  const std::string document = Document(Content(0));
  const Object kept = own.GetService("svc");
  WideLines errors;
  const auto reset = [&](int) { errors.push_back(ErrorOf([&] { own.Reset(document.c_str()); })); };
  m_hook = [&](int) {
    m_hook = reset;
    RunTogether(1, [&](int) { own.GetBean("r"); });
    EXPECT_TRUE(own.Exists("plain") && own.GetService("svc") == kept);
  };
  Load("<bean name='eager' class='R1' lazy='false'/>");
  m_word = [&] { errors.push_back(ErrorOf([] { CContainer("", true); })); };
  own.GetBean("w");
  own.GetBean("r");
  EXPECT_EQ(errors, (WideLines{L"Configuration is being loaded by another thread", L"no error", L"no error"}));
  EXPECT_TRUE(own.Exists("plain") && own.GetService("svc") == nullptr);
}

TEST_F(WaitingThreads, LetGoOfOneFactoryAtTheSameTime) {
  Logging::SetLevel(Logging::kLevelOff);
  std::atomic<int> lost{0};
  for (int i = 0; i < kRounds; ++i) {
    CContainer first(Document(Content(0)).c_str(), true);
    const auto service = [] { return CContainer().GetService("svc"); };
    first.RegisterInstance("svc", MakeObject());
    m_word = [&] { lost += service() == nullptr; };
    first.GetBean("w");
    std::optional<CContainer> containers[2] = {first, first};
    first = CContainer(nullptr);
    RunTogether(2, [&](int thread) { containers[thread].reset(); });
  }
  EXPECT_EQ(lost, 0);
}

TEST_F(WaitingThreads, MayAttachToAndLeaveOneFactoryAtAnyTime) {
  Logging::SetLevel(Logging::kLevelOff);
  m_word = [] { CContainer().GetBean("plain"); };
  m_hook = [](int) { CContainer(CContainer()).Exists("r"); };
  Journal::Take();
  RunTogether(kFactories, [&](int thread) {
    std::mt19937 random(static_cast<unsigned int>(thread));
    CContainer mine[2];
    const std::function<void(CContainer&, CContainer&)> kOperations[] = {
        [](auto& one, auto& two) { one = two; },
        [](auto& one, auto& two) { one = std::move(two); },
        [](auto& one, auto&) { one = CContainer(); },
        [](auto& one, auto&) { one = CContainer(nullptr); },
        [](auto& one, auto&) { one.GetBean("w"), one.GetBean("r"); },
        [](auto& one, auto&) { CContainer(one).Exists("w"); },
        [](auto&, auto&) { ErrorOf([] { CContainer(Document(Content(0)).c_str(), true); }); },
        [](auto& one, auto&) { ErrorOf([&] { one.Reset(Document(Content(1)).c_str()); }); },
        [](auto& one, auto&) { ErrorOf([&] { one.RegisterInstance("svc", MakeObject()), one.GetService("svc"); }); },
        [](auto& one, auto&) {
          const auto held = one.GetFactory();
          one = CContainer(nullptr);
        }};
    for (int i = 0; i < 4 * kRounds; ++i) {
      kOperations[random() % std::size(kOperations)](mine[i % 2], mine[random() % 2]);
    }
  });
  EXPECT_FALSE(CContainer().Exists("plain"));
}
