#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

/// A set of bucket numbers that finds the nearest one below another in a few steps, however sparse it is: a tree of
/// 64-bit words, in which each bit of an inner word tells whether the word below it has any. The root is word 0, and
/// the children of word n are the 64 words from 64 n + 1; only the lowest level, which stands for the buckets, ends
/// where they do. Of few buckets no set is kept: to look at one after the other is as fast.
/// Thread: guarded by its owner.
class CbOccupancy {
 public:
  static constexpr std::uint32_t kFewBuckets = 128;

  CbOccupancy() = default;

  /// Takes the number of buckets. Allocates nothing for few. Throws: std::bad_alloc.
  explicit CbOccupancy(std::uint32_t buckets) {
    if (buckets <= kFewBuckets) {
      return;
    }
    const std::size_t leaves = (std::size_t{buckets} + kBits - 1) / kBits;
    for (std::size_t width = 1; width < leaves; width *= kBits) {
      m_firstLeaf = FirstChild(m_firstLeaf);
    }
    m_words = std::make_unique<std::uint64_t[]>(m_firstLeaf + leaves);
  }

  bool IsKept() const noexcept { return m_words != nullptr; }

  /// Do nothing where no set is kept.
  void Insert(std::uint32_t bucket) noexcept {
    if (!IsKept()) {
      return;
    }
    SPosition at = PositionOf(bucket);
    while (std::exchange(m_words[at.word], m_words[at.word] | at.Bit()) == 0 && at.word != 0) {
      at = Parent(at.word);
    }
  }

  void Remove(std::uint32_t bucket) noexcept {
    if (!IsKept()) {
      return;
    }
    SPosition at = PositionOf(bucket);
    while ((m_words[at.word] &= ~at.Bit()) == 0 && at.word != 0) {
      at = Parent(at.word);
    }
  }

  /// Returns the highest one below `bucket`. Requires: there is one, and the set is kept.
  std::uint32_t LastBelow(std::uint32_t bucket) const noexcept {
    SPosition at = PositionOf(bucket);
    std::uint64_t found;
    while ((found = m_words[at.word] & (at.Bit() - 1)) == 0) {
      at = Parent(at.word);
    }
    while (at.word < m_firstLeaf) {
      at.word = FirstChild(at.word) + Highest(found);
      found = m_words[at.word];
    }
    return static_cast<std::uint32_t>((at.word - m_firstLeaf) * kBits + Highest(found));
  }

 private:
  static constexpr std::size_t kBits = 64;  // of a word

  struct SPosition {
    std::uint64_t Bit() const { return std::uint64_t{1} << bit; }

    std::size_t word;
    std::size_t bit;
  };

  SPosition PositionOf(std::uint32_t bucket) const { return {m_firstLeaf + bucket / kBits, bucket % kBits}; }
  static SPosition Parent(std::size_t word) { return {(word - 1) / kBits, (word - 1) % kBits}; }
  static std::size_t FirstChild(std::size_t word) { return word * kBits + 1; }
  static std::size_t Highest(std::uint64_t bits) {
    return kBits - 1 - static_cast<std::size_t>(std::countl_zero(bits));
  }

  std::unique_ptr<std::uint64_t[]> m_words;
  std::size_t m_firstLeaf = 0;
};
