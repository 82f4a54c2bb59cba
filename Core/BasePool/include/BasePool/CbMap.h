#pragma once

#include <bit>
#include <cstdint>
#include <memory>
#include <utility>

#include "BasePool/CbKeyTraits.h"
#include "BasePool/CbOccupancy.h"
#include "BasePool/CbPlexManager.h"

namespace CbMapTypes {

/// An element of a `CbMap`; its address is constant until it is removed.
template <class K, class V>
struct SAssociation {
  K key;
  V value;
  SAssociation* next;          ///< in iteration order; null for the last
  SAssociation* nextInBucket;  ///< null for the last of its chain
  std::uint64_t hash;
};

}  // namespace CbMapTypes

template <class K, class V>
struct CbTypeName<CbMapTypes::SAssociation<K, V>> {
  static std::string Get() {
    return "struct CbMapTypes::SAssociation" + CbTemplateArguments(CbTypeName<K>::Get() + "," + CbTypeName<V>::Get());
  }
};

/// A hash map with exact keys and a defined order: by bucket, and within a bucket the last inserted first; growing
/// reverses the order within the new buckets. Copying, destroying and walking follow that order.
/// A map that never had an entry owns no storage; one that had keeps its table and its blocks, which a burst makes
/// larger but leaves no slower to work with. Thread: guarded by its owner; reading alone needs no guard.
template <class K, class V>
class CbMap {
  using Pool = CbPlexManager<CbMapTypes::SAssociation<K, V>, 0, unsigned int>;

 public:
  using SAssoc = CbMapTypes::SAssociation<K, V>;
  using Traits = CbKeyTraits<K>;
  using Query = typename Traits::Query;

  static constexpr std::uint32_t kDefaultTableSize = 128;

  /// `hashTableSize` is rounded down to a power of two. Throws: `CbExceptionContainer` when `blockSize` is 0.
  CbMap() : CbMap(kDefaultTableSize) {}
  explicit CbMap(std::uint32_t hashTableSize, unsigned int blockSize = Pool::kDefaultBlockSize,
                 unsigned int fixedBlockSize = 0, float growthFactor = Pool::kDefaultGrowthFactor)
      : m_pool(blockSize, fixedBlockSize, growthFactor),
        m_hashTableSize(std::bit_floor(hashTableSize == 0 ? 1 : hashTableSize)) {}

  /// The copy inserts the entries in the other's order, which need not become its own.
  CbMap(const CbMap& other)
      : CbMap(other.m_hashTableSize,
              other.m_pool.GetFixedBlockSize() != 0 ? other.m_pool.GetFixedBlockSize() : other.m_pool.GetBlockSize()) {
    for (const SAssoc* source = other.GetStartPosition(); source != nullptr; source = GetNextAssoc(source)) {
      SetAt(source->key, source->value);
    }
  }

  CbMap(CbMap&& other) noexcept : CbMap() { Swap(other); }
  CbMap& operator=(const CbMap&) = delete;
  CbMap& operator=(CbMap&& other) noexcept {
    CbMap(std::move(other)).Swap(*this);
    return *this;
  }

  ~CbMap() {
    for (SAssoc* association = GetStartPosition(); association != nullptr;) {
      std::destroy_at(std::exchange(association, association->next));
    }
  }

  void Swap(CbMap& other) noexcept {
    m_pool.Swap(other.m_pool);
    std::swap(m_table, other.m_table);
    std::swap(m_count, other.m_count);
    std::swap(m_hashTableSize, other.m_hashTableSize);
    std::swap(m_headBucket, other.m_headBucket);
  }

  /// Returns the value under `key`, or null. Valid until the key is removed.
  V* Lookup(Query key) { return m_count == 0 ? nullptr : Lookup(key, Traits::Hash(key)); }
  const V* Lookup(Query key) const { return const_cast<CbMap*>(this)->Lookup(key); }

  /// As above, for a caller who has the key's hash already.
  V* Lookup(Query key, std::uint64_t hash) {
    SAssoc* found = Find(key, hash);
    return found != nullptr ? &found->value : nullptr;
  }

  /// Returns the association of `key`, a `K` or what a `K` is asked with; a new one has a value made from `arguments`.
  /// Throws: `CbExceptionContainer`, std::bad_alloc, what copying throws; the map is then as before.
  template <class Key, class... Args>
  SAssoc& SetAt(const Key& key, Args&&... arguments) {
    const Query query = key;
    const std::uint64_t hash = Traits::Hash(query);
    if (SAssoc* found = Find(query, hash)) {
      return *found;
    }
    // All that can fail comes before anything changes.
    EnsureTable();
    STable grown = MakeGrownTable();
    SAssoc* made = Make(key, hash, std::forward<Args>(arguments)...);
    Link(made);
    ++m_count;
    if (grown.heads) {
      Rehash(std::move(grown));
    }
    return *made;
  }

  /// Returns whether an association was removed.
  bool RemoveKey(Query key) noexcept {
    if (m_count == 0) {
      return false;
    }
    const std::uint64_t hash = Traits::Hash(key);
    SAssoc* previous = nullptr;
    SAssoc* removed = m_table.heads[BucketOf(hash)];
    while (removed != nullptr && !Matches(*removed, key, hash)) {
      previous = std::exchange(removed, removed->nextInBucket);
    }
    if (removed == nullptr) {
      return false;
    }
    Unlink(removed, previous);
    --m_count;
    Destroy(removed);
    return true;
  }

  std::uint32_t GetCount() const { return m_count; }
  std::uint32_t GetHashTableSize() const { return m_hashTableSize; }

  /// Walk the map: the first association or null, then the one behind `association` or null.
  SAssoc* GetStartPosition() const { return m_headBucket == kNoBucket ? nullptr : m_table.heads[m_headBucket]; }
  static SAssoc* GetNextAssoc(const SAssoc* association) { return association->next; }

  /// Returns whether a walk meets `a` before `b`, both of this map. Costs no more than the chain of one bucket.
  bool IsBefore(const SAssoc& a, const SAssoc& b) const {
    if (BucketOf(a.hash) != BucketOf(b.hash)) {
      return BucketOf(a.hash) < BucketOf(b.hash);
    }
    const SAssoc* behind = a.nextInBucket;
    while (behind != nullptr && behind != &b) {
      behind = behind->nextInBucket;
    }
    return behind != nullptr;
  }

 private:
  struct STable {
    STable() = default;
    explicit STable(std::uint32_t size) : heads(std::make_unique<SAssoc*[]>(size)), occupied(size) {}

    std::unique_ptr<SAssoc*[]> heads;
    CbOccupancy occupied;  // the buckets whose heads are not null
  };

  static constexpr std::uint32_t kNoBucket = 0xFFFFFFFF;

  std::uint32_t BucketOf(std::uint64_t hash) const { return static_cast<std::uint32_t>(hash) & (m_hashTableSize - 1); }

  static bool Matches(const SAssoc& association, Query key, std::uint64_t hash) {
    return association.hash == hash && Traits::Equal(association.key, key);
  }

  SAssoc* Find(Query key, std::uint64_t hash) const {
    if (m_count == 0) {
      return nullptr;
    }
    SAssoc* candidate = m_table.heads[BucketOf(hash)];
    while (candidate != nullptr && !Matches(*candidate, key, hash)) {
      candidate = candidate->nextInBucket;
    }
    return candidate;
  }

  void EnsureTable() {
    if (!m_table.heads) {
      m_table = STable(m_hashTableSize);
    }
  }

  // A table of twice the size when one more association fills three quarters of this one; else one without storage.
  STable MakeGrownTable() const {
    const bool full = (std::uint64_t{m_count} + 1) * 4 >= std::uint64_t{m_hashTableSize} * 3;
    return full ? STable(m_hashTableSize * 2) : STable();
  }

  // Takes the key as it was given: strings share their characters with their copies.
  template <class Key, class... Args>
  SAssoc* Make(const Key& key, std::uint64_t hash, Args&&... arguments) {
    SAssoc* storage = m_pool.getFreeElement();
    try {
      return new (storage) SAssoc{K(key), V(std::forward<Args>(arguments)...), nullptr, nullptr, hash};
    } catch (...) {
      m_pool.releaseElement(storage);
      throw;
    }
  }

  void Link(SAssoc* made) noexcept {
    const std::uint32_t bucket = BucketOf(made->hash);
    if (bucket <= m_headBucket) {
      LinkAsHead(made, bucket);
    } else {
      SAssoc* before = LastBelow(bucket);
      made->next = before->next;
      before->next = made;
      PushFront(made, bucket);
    }
  }

  // The bucket of no head is above all others, so the first association of a map comes here as well.
  void LinkAsHead(SAssoc* made, std::uint32_t bucket) noexcept {
    made->next = GetStartPosition();
    m_headBucket = bucket;
    PushFront(made, bucket);
  }

  void PushFront(SAssoc* made, std::uint32_t bucket) noexcept {
    made->nextInBucket = std::exchange(m_table.heads[bucket], made);
    m_table.occupied.Insert(bucket);
  }

  // The last association of the nearest non-empty bucket below `bucket`, which is above the head.
  SAssoc* LastBelow(std::uint32_t bucket) const noexcept {
    SAssoc* last = m_table.heads[NearestBelow(bucket)];
    while (last->nextInBucket != nullptr) {
      last = last->nextInBucket;
    }
    return last;
  }

  // Most often it is the very next one, which is seen sooner than the set is asked.
  std::uint32_t NearestBelow(std::uint32_t bucket) const noexcept {
    --bucket;
    if (m_table.heads[bucket] == nullptr && m_table.occupied.IsKept()) {
      return m_table.occupied.LastBelow(bucket);
    }
    while (m_table.heads[bucket] == nullptr) {
      --bucket;
    }
    return bucket;
  }

  // Each bucket splits in two: the one of its number, and the one half the new table further on. They are filled side
  // by side, which visits each association once.
  void Rehash(STable grown) noexcept {
    const STable old = std::exchange(m_table, std::move(grown));
    const std::uint32_t oldSize = std::exchange(m_hashTableSize, m_hashTableSize * 2);
    SHalf lower;
    SHalf upper;
    for (std::uint32_t bucket = m_headBucket; bucket < oldSize; ++bucket) {
      SAssoc* lastOfLower = nullptr;
      SAssoc* lastOfUpper = nullptr;
      for (SAssoc* association = old.heads[bucket]; association != nullptr;) {
        SAssoc* moved = std::exchange(association, association->nextInBucket);
        const std::uint32_t target = BucketOf(moved->hash);
        SAssoc*& last = target == bucket ? lastOfLower : lastOfUpper;
        last = last != nullptr ? last : moved;
        moved->next = m_table.heads[target];
        moved->nextInBucket = std::exchange(m_table.heads[target], moved);
      }
      AppendBucket(lower, bucket, lastOfLower);
      AppendBucket(upper, bucket + oldSize, lastOfUpper);
    }
    lower.Append(upper.first, upper.last);
    m_headBucket = BucketOf(lower.first->hash);
  }

  // A run of associations in iteration order.
  struct SHalf {
    void Append(SAssoc* firstAdded, SAssoc* lastAdded) noexcept {
      if (firstAdded == nullptr) {
        return;
      }
      (last != nullptr ? last->next : first) = firstAdded;
      last = lastAdded;
    }

    SAssoc* first = nullptr;
    SAssoc* last = nullptr;  // its `next` is null
  };

  void AppendBucket(SHalf& half, std::uint32_t bucket, SAssoc* last) noexcept {
    if (last != nullptr) {
      m_table.occupied.Insert(bucket);
      half.Append(m_table.heads[bucket], last);
    }
  }

  void Unlink(SAssoc* removed, SAssoc* previousInChain) noexcept {
    const std::uint32_t bucket = BucketOf(removed->hash);
    if (previousInChain != nullptr) {
      previousInChain->next = removed->next;
      previousInChain->nextInBucket = removed->nextInBucket;
      return;
    }
    if (bucket != m_headBucket) {
      LastBelow(bucket)->next = removed->next;
    } else if (m_count == 1) {
      m_headBucket = kNoBucket;
    } else if (removed->nextInBucket == nullptr) {
      m_headBucket = BucketOf(removed->next->hash);
    }
    m_table.heads[bucket] = removed->nextInBucket;
    if (removed->nextInBucket == nullptr) {
      m_table.occupied.Remove(bucket);
    }
  }

  void Destroy(SAssoc* association) noexcept {
    std::destroy_at(association);
    m_pool.releaseElement(association);
  }

  Pool m_pool;
  STable m_table;
  std::uint32_t m_count = 0;
  std::uint32_t m_hashTableSize;
  std::uint32_t m_headBucket = kNoBucket;
};
