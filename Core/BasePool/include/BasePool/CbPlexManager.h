#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include "BasePool/CbCriticalSection.h"
#include "BasePool/CbTypeName.h"

namespace CbPlex {

struct SNoLock {};

/// Raises the allocator error.
[[noreturn]] void RaiseOutOfMemory(unsigned int line, const std::string& function);

}  // namespace CbPlex

/// Hands out storage for single elements from blocks that grow geometrically, and takes it back on a free list: last
/// released, first reused. Storage returns to the system when the manager is destroyed; elements still in use are not
/// destroyed by it.
/// Thread: with `bThreadSafe` 1, elements may be taken and released on any thread.
template <class T, int bThreadSafe, class Counter>
class CbPlexManager {
 public:
  static constexpr Counter kDefaultBlockSize = 128;
  static constexpr float kDefaultGrowthFactor = 1.5F;

  /// Takes the element count of the first block, that of every block (0: they grow), and the factor between successive
  /// blocks. Allocates nothing. Throws: `CbExceptionContainer` when `blockSize` is 0.
  CbPlexManager() : CbPlexManager(kDefaultBlockSize) {}
  explicit CbPlexManager(Counter blockSize, Counter fixedBlockSize = 0, float growthFactor = kDefaultGrowthFactor)
      : m_blockSize(blockSize), m_fixedBlockSize(fixedBlockSize), m_growthFactor(growthFactor) {
    if (blockSize == 0) {
      CbPlex::RaiseOutOfMemory(__LINE__, QualifiedName("CbPlexManager"));
    }
  }

  ~CbPlexManager() { FreeBlocks(m_blocks); }
  CbPlexManager(const CbPlexManager&) = delete;
  CbPlexManager& operator=(const CbPlexManager&) = delete;

  /// Returns storage for one element; the caller constructs it. Throws: `CbExceptionContainer`, or std::bad_alloc where
  /// not even that can be made, with the manager unchanged but for the step of its growth.
  T* getFreeElement() {
    void* element = Take();
    if (element == nullptr) {
      CbPlex::RaiseOutOfMemory(__LINE__, QualifiedName("getFreeElement"));
    }
    return static_cast<T*>(element);
  }

  /// Takes the storage of an element back, which the caller has destroyed.
  void releaseElement(T* element) noexcept {
    const ScopedLock lock(m_lock);
    auto* slot = reinterpret_cast<SSlot*>(element);
    Poison(slot);
    m_free = new (slot) SSlot{m_free};
  }

  /// Exchanges everything with `other`, elements in use included. Only for managers without a lock.
  void Swap(CbPlexManager& other) noexcept {
    static_assert(bThreadSafe == 0, "elements of a shared manager may be released at any time");
    std::swap(m_blocks, other.m_blocks);
    std::swap(m_free, other.m_free);
    std::swap(m_blockSize, other.m_blockSize);
    std::swap(m_fixedBlockSize, other.m_fixedBlockSize);
    std::swap(m_blocksAllocated, other.m_blocksAllocated);
    std::swap(m_growthFactor, other.m_growthFactor);
  }

  Counter GetBlockSize() const { return m_blockSize; }
  Counter GetFixedBlockSize() const { return m_fixedBlockSize; }

 private:
  struct SSlot {
    SSlot* next;
  };
  // Room and alignment for either: an element that is used or one on the free list.
  union UElement {
    SSlot slot;
    alignas(T) std::byte used[sizeof(T)];
  };
  struct SBlock {
    std::byte* storage;
    SBlock* next;
  };
  struct SNoScopedLock {
    explicit SNoScopedLock(CbPlex::SNoLock&) {}
  };
  using Lock = std::conditional_t<bThreadSafe != 0, CbCriticalSection, CbPlex::SNoLock>;
  using ScopedLock = std::conditional_t<bThreadSafe != 0, CbLock, SNoScopedLock>;

  static constexpr std::size_t kElementSize = sizeof(UElement);
  static constexpr std::uint64_t kLargestBlock = 0xFFFFFFFF;  // bytes; a block's size is counted in 32 bits
  static_assert(alignof(T) <= alignof(std::max_align_t));

  static std::string QualifiedName(const char* member) {
    return "CbPlexManager" +
           CbTemplateArguments(CbTypeName<T>::Get() + (bThreadSafe != 0 ? ",1," : ",0,") + CbTypeName<Counter>::Get()) +
           "::" + member;
  }

  void* Take() {
    const ScopedLock lock(m_lock);
    if (m_free == nullptr && !Grow()) {
      return nullptr;
    }
    SSlot* slot = m_free;
    m_free = slot->next;
    return slot;
  }

  bool Grow() {
    std::uint64_t remaining = NextStep();
    ++m_blocksAllocated;
    SBlock* added = nullptr;
    while (remaining > 0) {
      const std::uint64_t most = kLargestBlock / kElementSize;
      const std::uint64_t count = remaining < most ? remaining : most;
      if (!AddBlock(added, static_cast<std::size_t>(count))) {
        FreeBlocks(added);
        m_free = nullptr;
        return false;
      }
      remaining -= count;
    }
    SBlock** end = &added;
    while (*end != nullptr) {
      end = &(*end)->next;
    }
    *end = m_blocks;
    m_blocks = added;
    return m_free != nullptr;
  }

  // The growth happens only when the free list is empty, so what is on it afterwards is the new storage alone.
  bool AddBlock(SBlock*& blocks, std::size_t count) {
    auto* block = new (std::nothrow) SBlock{nullptr, blocks};
    if (block == nullptr) {
      return false;
    }
    blocks = block;
    const std::size_t size = count * kElementSize;
    block->storage = static_cast<std::byte*>(::operator new(size, std::nothrow));
    if (block->storage == nullptr) {
      return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
      m_free = new (block->storage + i * kElementSize) SSlot{m_free};
    }
    return true;
  }

  Counter NextStep() const {
    if (m_fixedBlockSize != 0) {
      return m_fixedBlockSize;
    }
    constexpr auto kMost = static_cast<float>(std::numeric_limits<Counter>::max());
    Counter size = m_blockSize;
    for (Counter step = 0; step < m_blocksAllocated; ++step) {
      const float grown = static_cast<float>(size) * m_growthFactor;
      if (grown >= kMost) {
        return std::numeric_limits<Counter>::max();
      }
      size = static_cast<Counter>(grown);
    }
    return size;
  }

  static void FreeBlocks(SBlock* block) noexcept {
    while (block != nullptr) {
      SBlock* next = block->next;
      ::operator delete(block->storage);
      delete block;
      block = next;
    }
  }

  // In debug builds, code that still uses a released element reads nonsense and fails early.
  static void Poison([[maybe_unused]] SSlot* slot) noexcept {
#ifndef NDEBUG
    constexpr int kReleased = 0xDD;
    std::memset(static_cast<void*>(slot), kReleased, kElementSize);
#endif
  }

  [[no_unique_address]] Lock m_lock;
  SBlock* m_blocks = nullptr;
  SSlot* m_free = nullptr;
  Counter m_blockSize;
  Counter m_fixedBlockSize;
  Counter m_blocksAllocated = 0;
  float m_growthFactor;
};
