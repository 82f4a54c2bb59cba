// How the cost of services grows with their number: the time of one operation where so many instances are registered,
// all for one interface or for an interface each. The counter "each" is that time.

#include <Logging/Logging.h>
#include <Zorbel/Zorbel.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using Object = std::shared_ptr<Zorbel::IObject>;

enum EOrder { forward, reverse, shuffled };

/// Instances and the interfaces that they are registered for.
class CInstances {
 public:
  CInstances(std::int64_t count, bool oneInterface) {
    for (std::int64_t i = 0; i < count; ++i) {
      m_objects.push_back(std::make_shared<Zorbel::IObject>());
      m_interfaces.push_back("interface" + std::to_string(oneInterface ? 0 : i));
    }
  }

  void Register() {
    for (std::size_t i = 0; i < m_objects.size(); ++i) {
      m_container.RegisterInstance(m_interfaces[i].c_str(), m_objects[i]);
    }
  }

  void Release(const std::vector<Object>& objects) {
    for (const Object& object : objects) {
      m_container.ReleaseInstance(object);
    }
  }

  std::vector<Object> InOrder(EOrder order) const {
    std::vector<Object> objects = m_objects;
    if (order == reverse) {
      std::reverse(objects.begin(), objects.end());
    } else if (order == shuffled) {
      std::shuffle(objects.begin(), objects.end(), std::mt19937());
    }
    return objects;
  }

  Zorbel::CContainer& Container() { return m_container; }

 private:
  Zorbel::CContainer m_container{nullptr};
  std::vector<Object> m_objects;
  std::vector<std::string> m_interfaces;
};

void CountEach(benchmark::State& state) {
  state.counters["each"] = benchmark::Counter(
      static_cast<double>(state.range(0)), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void RegisterInstances(benchmark::State& state, bool oneInterface) {
  CInstances instances(state.range(0), oneInterface);
  for (auto _ : state) {
    instances.Register();
    state.PauseTiming();
    instances.Container().Reset();
    state.ResumeTiming();
  }
  CountEach(state);
}

void ReleaseInstances(benchmark::State& state, bool oneInterface, EOrder order) {
  CInstances instances(state.range(0), oneInterface);
  const std::vector<Object> objects = instances.InOrder(order);
  for (auto _ : state) {
    state.PauseTiming();
    instances.Register();
    state.ResumeTiming();
    instances.Release(objects);
  }
  CountEach(state);
}

void AskByIndex(benchmark::State& state) {
  CInstances instances(state.range(0), true);
  instances.Register();
  for (auto _ : state) {
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      benchmark::DoNotOptimize(instances.Container().GetService("interface0", static_cast<unsigned int>(i)));
    }
  }
  CountEach(state);
}

void Numbers(benchmark::internal::Benchmark* measurement) {
  measurement->Arg(10)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK_CAPTURE(RegisterInstances, one_interface, true)->Apply(Numbers);
BENCHMARK_CAPTURE(RegisterInstances, interface_each, false)->Apply(Numbers);
BENCHMARK_CAPTURE(ReleaseInstances, one_interface_forward, true, forward)->Apply(Numbers);
BENCHMARK_CAPTURE(ReleaseInstances, one_interface_reverse, true, reverse)->Apply(Numbers);
BENCHMARK_CAPTURE(ReleaseInstances, one_interface_shuffled, true, shuffled)->Apply(Numbers);
BENCHMARK_CAPTURE(ReleaseInstances, interface_each_forward, false, forward)->Apply(Numbers);
BENCHMARK_CAPTURE(ReleaseInstances, interface_each_reverse, false, reverse)->Apply(Numbers);
BENCHMARK_CAPTURE(ReleaseInstances, interface_each_shuffled, false, shuffled)->Apply(Numbers);
BENCHMARK(AskByIndex)->Apply(Numbers);

}  // namespace

int main(int argc, char** argv) {
  Logging::SetLevel(Logging::kLevelOff);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
