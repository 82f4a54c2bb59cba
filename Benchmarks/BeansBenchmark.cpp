// How the cost of beans grows with their number: each measurement deals with 100,000 beans, first in ten containers of
// 10,000 each, then in one, so that both use as much memory. The last lines tell how many times longer a container with
// ten times the beans takes.

#include <Logging/Logging.h>
#include <Zorbel/Zorbel.h>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

class CProbe : public Zorbel::IObject {};

class CProbeWrapper : public Zorbel::IBeanWrapper {
 public:
  const char* GetClassName() const override { return "Probe"; }
  std::unique_ptr<Zorbel::IObject> CreateInstance(const char*, std::size_t, const std::vector<void*>*,
                                                  std::shared_ptr<const IBeanWrapper>, const char*,
                                                  const std::vector<std::shared_ptr<Zorbel::IObject>>&) const override {
    return std::make_unique<CProbe>();
  }
  bool CallMethod(Zorbel::IObject*, const char*, std::size_t, const std::vector<void*>*) const override { return true; }
  void GetParameterTypes(const char*, std::size_t, std::vector<std::string>&) override {}
};

Zorbel::IBeanWrapper* MakeProbeWrapper() { return new CProbeWrapper; }

constexpr std::int64_t kFew = 10'000;
constexpr std::int64_t kMany = 100'000;

std::vector<std::string> Names(const std::string& prefix, const benchmark::State& state) {
  std::vector<std::string> names;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    names.push_back(prefix + std::to_string(i));
  }
  return names;
}

// The library itself is the module: it exports no wrapper maker, so the class is that of the local library.
std::string Document(const std::vector<std::string>& names, const char* attributes = "") {
  std::string document = "<zorbel><library path='Zorbel'><beans>";
  for (const std::string& name : names) {
    document.append("<bean name='").append(name).append("' class='Probe' ").append(attributes).append("/>");
  }
  return document.append("</beans></library></zorbel>");
}

std::vector<Zorbel::CContainer> Load(const std::string& document, const benchmark::State& state) {
  std::vector<Zorbel::CContainer> containers;
  for (std::int64_t beans = 0; beans < kMany; beans += state.range(0)) {
    containers.emplace_back(document.c_str(), false);
  }
  return containers;
}

void LoadBeans(benchmark::State& state) {
  const std::string document = Document(Names("bean", state));
  for (auto _ : state) {
    std::vector<Zorbel::CContainer> containers = Load(document, state);
    state.PauseTiming();
    containers.clear();
    state.ResumeTiming();
  }
}

/// Measures a use of every bean in containers that are loaded afresh.
template <class F>
void UseOnce(benchmark::State& state, F use) {
  const std::vector<std::string> names = Names("bean", state);
  const std::string document = Document(names);
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<Zorbel::CContainer> containers = Load(document, state);
    state.ResumeTiming();
    for (const Zorbel::CContainer& container : containers) {
      for (const std::string& name : names) {
        use(container, name.c_str());
      }
    }
    state.PauseTiming();
    containers.clear();
    state.ResumeTiming();
  }
}

void AskForExistence(benchmark::State& state) {
  UseOnce(state, [](auto& container, const char* name) { benchmark::DoNotOptimize(container.Exists(name)); });
}

void ResolveBeans(benchmark::State& state) {
  UseOnce(state, [](auto& container, const char* name) { benchmark::DoNotOptimize(container.GetBean(name)); });
}

/// Measures requests for the beans of `asked` from containers of singletons, all of them created.
void AskSingletons(benchmark::State& state, const char* asked) {
  const std::vector<std::string> names = Names(asked, state);
  const std::vector<Zorbel::CContainer> containers =
      Load(Document(Names("bean", state), "singleton='true' lazy='false'"), state);
  for (auto _ : state) {
    for (const Zorbel::CContainer& container : containers) {
      for (const std::string& name : names) {
        benchmark::DoNotOptimize(container.GetFactory()->GetBean(name.c_str(), nullptr));
      }
    }
  }
}

void HitSingletons(benchmark::State& state) { AskSingletons(state, "bean"); }
void AskForUnknownBeans(benchmark::State& state) { AskSingletons(state, "unknown"); }

BENCHMARK(LoadBeans)->Arg(kFew)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(AskForExistence)->Arg(kFew)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(ResolveBeans)->Arg(kFew)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(HitSingletons)->Arg(kFew)->Arg(kMany)->Unit(benchmark::kMillisecond);
BENCHMARK(AskForUnknownBeans)->Arg(kFew)->Arg(kMany)->Unit(benchmark::kMillisecond);

/// Adds the ratios to the usual report.
class CRatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      m_times[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
    }
  }

  void Finalize() override {
    for (const auto& [name, times] : m_times) {
      std::printf("%-20s ten times the beans take %.1f times as long\n", name.c_str(),
                  kMany / kFew * times.back() / times.front());
    }
  }

 private:
  std::map<std::string, std::vector<double>> m_times;  // for the fewer beans first
};

}  // namespace

int main(int argc, char** argv) {
  Logging::SetLevel(Logging::kLevelOff);
  Zorbel::GetLocalLibrary().RegisterFunction("create_Probe_Wrapper", reinterpret_cast<void*>(&MakeProbeWrapper));
  benchmark::Initialize(&argc, argv);
  CRatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}
