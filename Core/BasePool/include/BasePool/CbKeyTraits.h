#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string>
#include <string_view>

#include <Zorbel/CStringT.h>

/// How `CbMap` hashes and compares keys of type `K`, and the type that it is asked with: a plain text, so that a
/// look-up builds no string.
template <class K>
struct CbKeyTraits;

namespace CbHash {

inline constexpr std::uint64_t kFnvBasis = 0xcbf29ce484222325;
inline constexpr std::uint64_t kFnvPrime = 0x100000001b3;
inline constexpr std::uint64_t kMultiplier = 33;

inline std::uint64_t Fnv1a(const void* data, std::size_t size) {
  const auto* bytes = static_cast<const unsigned char*>(data);
  std::uint64_t hash = kFnvBasis;
  for (std::size_t i = 0; i < size; ++i) {
    hash = (hash ^ bytes[i]) * kFnvPrime;
  }
  return hash;
}

}  // namespace CbHash

template <>
struct CbKeyTraits<CStringT<char>> {
  using Query = const char*;

  static std::uint64_t Hash(Query key) {
    std::uint64_t hash = 0;
    for (; *key != 0; ++key) {
      hash = hash * CbHash::kMultiplier + static_cast<std::uint64_t>(static_cast<signed char>(*key));
    }
    return hash;
  }
  static bool Equal(const CStringT<char>& a, Query b) { return std::strcmp(a, b) == 0; }
};

/// Counts UTF-16 units also where a wide character holds a whole code point.
template <>
struct CbKeyTraits<CStringT<wchar_t>> {
  using Query = const wchar_t*;

  static std::uint64_t Hash(Query key) {
    constexpr std::uint64_t kFirstSupplementary = 0x10000;
    std::uint64_t hash = 0;
    const auto add = [&hash](std::uint64_t unit) { hash = hash * CbHash::kMultiplier + unit; };
    for (; *key != 0; ++key) {
      const std::uint64_t c = static_cast<char32_t>(*key);
      if (c < kFirstSupplementary) {
        add(c);
      } else {
        add(0xD800 + ((c - kFirstSupplementary) >> 10));
        add(0xDC00 + ((c - kFirstSupplementary) & 0x3FF));
      }
    }
    return hash;
  }
  static bool Equal(const CStringT<wchar_t>& a, Query b) { return std::wcscmp(a, b) == 0; }
};

template <>
struct CbKeyTraits<std::string> {
  using Query = std::string_view;

  static std::uint64_t Hash(Query key) { return CbHash::Fnv1a(key.data(), key.size()); }
  static bool Equal(const std::string& a, Query b) { return a == b; }
};

template <class T>
struct CbKeyTraits<T*> {
  using Query = T*;

  // Low byte first is the byte order of the systems that the library runs on.
  static std::uint64_t Hash(Query key) { return CbHash::Fnv1a(&key, sizeof(void*)); }
  static bool Equal(T* a, Query b) { return a == b; }
};
