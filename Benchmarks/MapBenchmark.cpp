// What the operations of a map cost: with few and many entries, and after a burst of a million entries that are gone,
// which has to leave no trace. Each measurement tells the time of one operation.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "BasePool/CbMap.h"

namespace {

using Map = CbMap<std::string, int>;

constexpr std::int64_t kNone = 0;
constexpr std::int64_t kBurst = 1'000'000;
constexpr std::size_t kLiving = 10;

std::vector<std::string> Keys(std::int64_t count) {
  std::vector<std::string> keys;
  for (std::int64_t i = 0; i < count; ++i) {
    keys.push_back("key" + std::to_string(i));
  }
  std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
  return keys;
}

void Insert(Map& map, const std::vector<std::string>& keys) {
  for (const std::string& key : keys) {
    map.SetAt(key, 1);
  }
}

void Remove(Map& map, const std::vector<std::string>& keys) {
  for (const std::string& key : keys) {
    benchmark::DoNotOptimize(map.RemoveKey(key));
  }
}

void CountOperations(benchmark::State& state, std::size_t each) {
  using benchmark::Counter;
  const auto operations = static_cast<double>(state.iterations()) * static_cast<double>(each);
  state.counters["each"] = Counter(operations, Counter::kIsRate | Counter::kInvert);
}

/// Makes and drops one entry after the other while ten live, in a map that once held as many as the argument tells.
void MakeAndDropAfter(benchmark::State& state) {
  Map map;
  const std::vector<std::string> burst = Keys(state.range(0));
  Insert(map, burst);
  Remove(map, burst);
  std::vector<std::string> dropped = Keys(1'000);
  for (std::size_t i = 0; i < kLiving; ++i) {
    map.SetAt(dropped.back());
    dropped.pop_back();
  }
  for (auto _ : state) {
    for (const std::string& key : dropped) {
      map.SetAt(key, 1);
      map.RemoveKey(key);
    }
  }
  CountOperations(state, dropped.size());
}

/// Makes and drops as many entries as the argument tells.
void FillAndEmpty(benchmark::State& state) {
  const std::vector<std::string> keys = Keys(state.range(0));
  for (auto _ : state) {
    Map map;
    Insert(map, keys);
    Remove(map, keys);
  }
  CountOperations(state, keys.size());
}

void FillAndDestroy(benchmark::State& state) {
  const std::vector<std::string> keys = Keys(state.range(0));
  for (auto _ : state) {
    Map map;
    Insert(map, keys);
  }
  CountOperations(state, keys.size());
}

void LookUp(benchmark::State& state) {
  const std::vector<std::string> keys = Keys(state.range(0));
  Map map;
  Insert(map, keys);
  for (auto _ : state) {
    for (const std::string& key : keys) {
      benchmark::DoNotOptimize(map.Lookup(key));
    }
  }
  CountOperations(state, keys.size());
}

void Walk(benchmark::State& state) {
  const std::vector<std::string> keys = Keys(state.range(0));
  Map map;
  Insert(map, keys);
  for (auto _ : state) {
    for (const Map::SAssoc* each = map.GetStartPosition(); each != nullptr; each = Map::GetNextAssoc(each)) {
      benchmark::DoNotOptimize(each->value);
    }
  }
  CountOperations(state, keys.size());
}

BENCHMARK(MakeAndDropAfter)->Arg(kNone)->Arg(kBurst);
BENCHMARK(FillAndEmpty)->Arg(1'000)->Arg(100'000);
BENCHMARK(FillAndDestroy)->Arg(1'000)->Arg(100'000);
BENCHMARK(LookUp)->Arg(1'000)->Arg(100'000);
BENCHMARK(Walk)->Arg(1'000)->Arg(100'000);

}  // namespace

BENCHMARK_MAIN();
