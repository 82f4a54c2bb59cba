#include "BasePool/CbMap.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

struct SNumber {
  explicit SNumber(int number = 0) : value(number) {}
  ~SNumber() { destroyed.push_back(value); }
  int value;
  static inline std::vector<int> destroyed;
};

using Map = CbMap<CStringT<char>, SNumber>;
using Entries = std::vector<std::pair<std::string, int>>;

Entries InOrder(const Map& map) {
  Entries entries;
  for (const auto* each = map.GetStartPosition(); each != nullptr; each = map.GetNextAssoc(each)) {
    entries.emplace_back(each->key, each->value.value);
    EXPECT_TRUE(each->next == nullptr || (map.IsBefore(*each, *each->next) && !map.IsBefore(*each->next, *each)));
  }
  return entries;
}

// The rules of the order, without the links and without thought for speed.
struct SModel {
  explicit SModel(std::size_t buckets) : size(buckets) {}

  Entries& BucketOf(const std::string& key) {
    std::uint64_t hash = 0;
    for (const char c : key) {
      hash = hash * 33 + static_cast<std::uint64_t>(std::int64_t{static_cast<signed char>(c)});
    }
    return chains[hash % size];
  }
  void Insert(const std::string& key, int value) {
    BucketOf(key).insert(BucketOf(key).begin(), {key, value});
    const Entries order = Order();
    if (order.size() * 4 >= size * 3) {
      size *= 2;
      chains.clear();
      for (const auto& entry : order) {
        BucketOf(entry.first).insert(BucketOf(entry.first).begin(), entry);
      }
    }
  }
  bool Remove(const std::string& key) {
    return std::erase_if(BucketOf(key), [&](const auto& entry) { return entry.first == key; }) != 0;
  }
  Entries Order() const {
    Entries order;
    for (const auto& [bucket, chain] : chains) {
      order.insert(order.end(), chain.begin(), chain.end());
    }
    return order;
  }

  std::size_t size;
  std::map<std::size_t, Entries> chains;  // by bucket
};

void ExpectEqual(const SModel& model, const Map& map) {
  ASSERT_EQ(model.Order(), InOrder(map));
  ASSERT_EQ(model.Order().size(), map.GetCount());
  ASSERT_EQ(model.size, map.GetHashTableSize());
}

}  // namespace

TEST(CbMap, IteratesByBucketAndTheLastInsertedFirst) {
  Map map;
  for (const char* key : {"b", "a", "ab", "ba", "c", "A", "a"}) {  // buckets 98, 97, 99, 3, 99, 65, 97
    ++map.SetAt(key, 0).value.value;
  }
  EXPECT_EQ((Entries{{"ba", 1}, {"A", 1}, {"a", 2}, {"b", 1}, {"c", 1}, {"ab", 1}}), InOrder(map));
}

TEST(CbMap, FollowsTheRulesOfItsOrderThroughInsertionsRemovalsGrowthCopyingAndDestruction) {
  const std::string letters = "abcdefghijklABC\xE4\xFC\xFF";
  std::mt19937 random(7);
  for (const std::uint32_t size : {1U, 2U, 16U, 128U, 1U << 13, 1U << 20}) {  // the last are as a burst leaves them
    std::optional<Map> map(std::in_place, size + size / 2, 3U);               // rounded down
    SModel model(size);
    for (int step = 0; step < 800 && !HasFatalFailure(); ++step) {
      std::string key(1 + random() % 4, letters[random() % letters.size()]);
      key[0] = letters[random() % letters.size()];
      const bool known = map->Lookup(key.c_str()) != nullptr;
      EXPECT_TRUE(known == model.Remove(key) && known == map->RemoveKey(key.c_str())) << key;
      ExpectEqual(model, *map);
      if (random() % 3 != 0) {
        model.Insert(key, step);
        map->SetAt(key.c_str(), step);
        EXPECT_EQ(step, map->SetAt(key.c_str(), -1).value.value);  // found, so left alone
        ExpectEqual(model, *map);
      }
    }
    SModel copy(model.size);
    std::vector<int> numbers;
    for (const auto& [key, value] : model.Order()) {
      copy.Insert(key, value);
      numbers.push_back(value);
    }
    EXPECT_NE(copy.Order(), model.Order());
    ExpectEqual(copy, Map(*map));
    SNumber::destroyed.clear();
    *map = Map();
    ExpectEqual(SModel(128), *map);
    EXPECT_EQ(numbers, SNumber::destroyed);
  }
}

TEST(CbKeyTraits, HashEachKindOfKeyByItsRule) {
  using Narrow = CbKeyTraits<CStringT<char>>;
  using Wide = CbKeyTraits<CStringT<wchar_t>>;
  using Bytes = CbKeyTraits<std::string>;
  EXPECT_EQ(3299U, Narrow::Hash("ab"));
  EXPECT_EQ(std::uint64_t{0} - 28, Narrow::Hash("\xE4"));
  EXPECT_EQ(33U * 0xE4 + 0xFFFF, Wide::Hash(L"\u00E4\uFFFF"));
  EXPECT_EQ((33U * 0xD83D + 0xDE00) * 33U + 'a', Wide::Hash(L"\U0001F600a"));  // a pair of UTF-16 units
  EXPECT_EQ(0xcbf29ce484222325, Bytes::Hash(""));
  EXPECT_EQ(0xaf63dc4c8601ec8c, Bytes::Hash("a"));
  EXPECT_NE(Bytes::Hash(std::string("a\0", 2)), Bytes::Hash("a"));
  const auto* pointer = reinterpret_cast<const void*>(std::uintptr_t{0x0102030405060708});
  EXPECT_EQ(Bytes::Hash("\x08\x07\x06\x05\x04\x03\x02\x01"), CbKeyTraits<const void*>::Hash(pointer));
}
