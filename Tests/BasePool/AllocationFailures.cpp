#include <Support/FailingAllocations.h>
#include <Support/LogCapture.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <new>
#include <string>
#include <vector>

#include "BasePool/CbExceptionContainer.h"
#include "BasePool/CbMap.h"
#include "BasePool/CbPlexManager.h"
#include "Support/Together.h"

namespace Allocations = Test::Allocations;
using Test::RunTogether;

namespace {

using Map = CbMap<CStringT<wchar_t>, CStringT<wchar_t>>;
using Pool = CbPlexManager<double, 0, unsigned int>;

const std::string kText =
    "class ATL::CStringT<wchar_t,class ATL::StrTraitATL<wchar_t,class ATL::ChTraitsCRT<wchar_t> > >";
const std::string kMapPool =
    "CbPlexManager<struct CbMapTypes::SAssociation<" + kText + "," + kText + " >,0,unsigned int>::";

std::wstring Entries(const Map& map) {
  std::wstring entries = std::to_wstring(map.GetCount());
  for (const auto* each = map.GetStartPosition(); each != nullptr; each = map.GetNextAssoc(each)) {
    entries += L' ' + std::wstring(each->key) + L'=' + each->value.GetString();
  }
  return entries;
}

// Runs `operation` with the allocation failing that comes after `succeeding` others. Expects that what it throws is the
// general error, or the allocator's with one line in the log. Returns whether it succeeded.
template <class F>
bool Succeeds(int succeeding, F operation, const std::string& function) {
  const Test::LogCapture log;
  Allocations::FailAfter(succeeding);
  try {
    operation();
    Allocations::Restore();
    return true;
  } catch (const std::bad_alloc&) {
    EXPECT_TRUE(log.Records().empty());
  } catch (const CbExceptionContainer& error) {
    const auto clone = error.Clone();
    const Logging::SRecord line = log.Records().at(0);
    EXPECT_NE(nullptr, dynamic_cast<const CbExceptionContainer*>(clone.get()));
    EXPECT_EQ("Core/BasePool/CbPlexManager|" + function, clone->GetFilename() + ("|" + line.function));
    EXPECT_EQ(function + line.file, clone->GetFunctionName() + std::string(clone->GetFilename()));
    EXPECT_EQ(std::pair(clone->GetCodeLine(), clone->GetThreadID()), std::pair(unsigned(line.line), line.threadId));
    EXPECT_EQ(L"1 Exception: Out of memory",
              std::to_wstring(log.Records().size()) + L" " + line.channel + L": " + line.text);
  }
  return false;
}

// Lets each allocation of `operation` fail, until it succeeds. Returns how many did.
template <class F>
int FailEachAllocation(const Map& unchanged, F operation) {
  const std::wstring before = Entries(unchanged);
  int failures = 0;
  while (!Succeeds(failures, operation, kMapPool + "getFreeElement")) {
    EXPECT_EQ(before, Entries(unchanged));
    ++failures;
  }
  return failures;
}

}  // namespace

TEST(CbMap, IsUnchangedByAnInsertionOrCopyWhoseMemoryFails) {
  Map map(4, 1);
  for (const wchar_t* key : {L"1", L"2", L"3", L"4", L"5", L"6"}) {  // grows twice
    EXPECT_LE(2, FailEachAllocation(map, [&] { map.SetAt(key, key); }));
  }
  EXPECT_EQ(L"6 1=1 2=2 3=3 4=4 5=5 6=6", Entries(map));
  EXPECT_LE(13, FailEachAllocation(map, [&] { EXPECT_EQ(Entries(map), Entries(Map(map))); }));
}

TEST(CbMap, AllocatesNothingWithoutEntriesAndReusesTheStorageOfTheLastRemoved) {
  const int before = Allocations::Count();
  CbMap<std::string, int> map;
  EXPECT_FALSE(map.Lookup("a") != nullptr || map.RemoveKey("a"));
  EXPECT_EQ(before, Allocations::Count());
  const void* first = &map.SetAt("a");
  const void* second = &map.SetAt("b");
  EXPECT_TRUE(map.RemoveKey("a") && map.RemoveKey("b"));
  EXPECT_EQ(second, &map.SetAt("c"));
  EXPECT_EQ(first, &map.SetAt("d"));
}

TEST(CStringT, GrowsToWhatIsNeededWhereThereIsNoMemoryForMore) {
  CStringT<char> text = "1234";
  const auto append = [&] { text += '5'; };
  EXPECT_TRUE(Succeeds(0, append, ""));
  EXPECT_EQ(text, "12345");
  EXPECT_EQ(Allocations::FailedSize() - 3, Allocations::LastSize());  // room for 8 was not to be had
}

TEST(CbPlexManager, GrowsInBlocksByItsFactorOrOfItsFixedSize) {
  const auto expectBlocks = [](Pool pool, std::initializer_list<std::size_t> counts) {
    for (const std::size_t count : counts) {
      double* last = pool.getFreeElement();
      EXPECT_EQ(count * sizeof(double), Allocations::LastSize());
      const int before = Allocations::Count();
      for (std::size_t i = 1; i < count; ++i) {
        ASSERT_EQ(--last, pool.getFreeElement());
      }
      EXPECT_EQ(before, Allocations::Count());
    }
  };
  expectBlocks(Pool(), {128, 192, 288, 432, 648, 972, 1458, 2187, 3280, 4920});
  expectBlocks(Pool(1000), {1000, 1500, 2250, 3375, 5062});
  expectBlocks(Pool(3, 7), {7, 7, 7});
}

TEST(CbPlexManager, CountsTheBytesOfABlockInThirtyTwoBits) {
  Pool pool(1, 0, 1e30F);
  pool.getFreeElement();
  const auto take = [&] { pool.getFreeElement(); };
  EXPECT_FALSE(Succeeds(1, take, "CbPlexManager<double,0,unsigned int>::getFreeElement"));  // behind the block's record
  EXPECT_EQ(0xFFFFFFF8, Allocations::FailedSize());
}

TEST(CbPlexManager, WithoutABlockSizeIsAnError) {
  const auto make = [] { Map(1, 0); };
  EXPECT_FALSE(Succeeds(-1, make, kMapPool + "CbPlexManager"));
}

TEST(CbPlexManager, LeavesRoomForALinkInElementsOfAnySize) {
  CbPlexManager<std::array<char, 9>, 0, unsigned int> pool(3);
  EXPECT_NE(nullptr, pool.getFreeElement());
  EXPECT_EQ(3 * 2 * sizeof(void*), Allocations::LastSize());
}

TEST(CbPlexManagerThreads, TakeAndReleaseElementsOfOneSharedManager) {
  CbPlexManager<std::uintptr_t, 1, unsigned int> pool(2);
  std::atomic<int> mismatches = 0;
  RunTogether(2, [&](std::uintptr_t mark) {
    std::vector<std::uintptr_t*> mine;
    for (int i = 0; i < 3000; ++i) {
      mine.push_back(new (pool.getFreeElement()) std::uintptr_t(mark));
      if (i % 3 != 0) {
        pool.releaseElement(mine.back());
        mine.pop_back();
      }
    }
    mismatches += static_cast<int>(std::count_if(mine.begin(), mine.end(), [&](auto* each) { return *each != mark; }));
  });
  EXPECT_EQ(0, mismatches);
}
