#pragma once

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cwctype>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <Zorbel/Export.h>
#include <Zorbel/detail/text/CodePage.h>
#include <Zorbel/detail/text/PrintFormat.h>

namespace Zorbel::detail {

inline constexpr std::size_t kLongestText = INT_MAX - 1;  // characters, apart from the terminator

/// The capacity for a text of `length` characters that grows to `needed`: twice its length, so that appending one by
/// one stays cheap, up to the longest text.
constexpr std::size_t GrownCapacity(std::size_t length, std::size_t needed) {
  const std::size_t doubled = length < kLongestText / 2 ? 2 * length : kLongestText;
  return needed > doubled ? needed : doubled;
}

}  // namespace Zorbel::detail

/// Raised by `CStringT::Format` for a null format, or one that cannot be carried out.
class CStringFormatError : public std::invalid_argument {
 public:
  CStringFormatError() : std::invalid_argument("text cannot be formatted") {}
};

/// A reference-counted string of `char` or `wchar_t`, copied on write. An object is one pointer wide, and that pointer
/// is to its characters, so code that expects a `const C*` may read it as one.
/// Texts of the other width are converted by the thread's ANSI code page; characters it lacks become its substitute.
/// A null text is the empty one, whatever length goes with it; a negative length counts as 0. Positions and lengths
/// count characters of `C`; a position not found is -1. The longest text has `INT_MAX` - 1 characters.
/// Throws: std::bad_alloc, std::length_error, and what is said at `Format`.
/// Thread: copies that share their characters may be used, changed and destroyed on different threads; one object
/// belongs to one thread at a time, as usual.
template <class C>
class CStringT {
  static_assert(std::is_same_v<C, char> || std::is_same_v<C, wchar_t>, "a CStringT is narrow or wide");

 public:
  using Other = std::conditional_t<std::is_same_v<C, char>, wchar_t, char>;
  using View = std::basic_string_view<C>;

  CStringT() noexcept : m_text(Nil()) {}
  CStringT(std::nullptr_t) noexcept : m_text(Nil()) {}
  CStringT(const C* text) : m_text(MakeText(ViewOf(text))) {}
  CStringT(const C* text, int length) : m_text(MakeText(text != nullptr ? View(text, StartAt(length)) : View())) {}
  CStringT(const Other* text) : m_text(MakeText(Convert(text))) {}
  CStringT(const CStringT& other) noexcept : m_text(Share(other.m_text)) {}
  CStringT(CStringT&& other) noexcept : m_text(std::exchange(other.m_text, Nil())) {}
  explicit CStringT(const CStringT<Other>& other) : CStringT(other.GetString()) {}
  ~CStringT() { Drop(m_text); }

  CStringT& operator=(const CStringT& other) noexcept {
    CStringT(other).Swap(*this);
    return *this;
  }
  CStringT& operator=(CStringT&& other) noexcept {
    CStringT(std::move(other)).Swap(*this);
    return *this;
  }
  CStringT& operator=(const C* text) {
    CStringT(text).Swap(*this);
    return *this;
  }
  CStringT& operator=(const Other* text) {
    CStringT(text).Swap(*this);
    return *this;
  }
  CStringT& operator=(std::nullptr_t) noexcept {
    Empty();
    return *this;
  }

  /// Ownership: the characters belong to the string, end with a terminator and stay valid until it is changed.
  operator const C*() const noexcept { return m_text; }
  const C* GetString() const noexcept { return m_text; }
  int GetLength() const noexcept { return HeadOf(m_text)->length; }
  bool IsEmpty() const noexcept { return GetLength() == 0; }
  C GetAt(int position) const noexcept { return m_text[position]; }
  C operator[](int position) const noexcept { return m_text[position]; }

  void Empty() noexcept { CStringT().Swap(*this); }
  void Swap(CStringT& other) noexcept { std::swap(m_text, other.m_text); }

  /// Compares character by character up to the terminator. Returns a value below, equal to or above 0.
  int Compare(const C* other) const noexcept { return View(m_text).compare(ViewOf(other)); }

  int Find(C c, int start = 0) const noexcept { return Position(Whole().find(c, StartAt(start))); }
  int Find(const C* text, int start = 0) const noexcept { return Position(Whole().find(ViewOf(text), StartAt(start))); }
  int ReverseFind(C c) const noexcept { return Position(Whole().rfind(c)); }

  CStringT Left(int count) const { return Mid(0, count); }
  CStringT Mid(int first, int count = INT_MAX) const {
    const std::size_t start = StartAt(first);
    return CStringT(Whole().substr(start < Whole().size() ? start : Whole().size(), StartAt(count)));
  }
  CStringT Right(int count) const { return Mid(GetLength() - std::clamp(count, 0, GetLength())); }

  CStringT& operator+=(const CStringT& text) { return Append(text.Whole()); }
  CStringT& operator+=(const C* text) { return Append(ViewOf(text)); }
  CStringT& operator+=(const Other* text) { return Append(Convert(text)); }
  CStringT& operator+=(C c) { return Append(View(&c, 1)); }

  /// Replaces each occurrence of `text`, searched from the left. Returns how many there were.
  int Replace(const C* text, const C* replacement) {
    const View wanted = ViewOf(text);
    int count = 0;
    std::basic_string<C> result;
    std::size_t done = 0;
    for (std::size_t at; !wanted.empty() && (at = Whole().find(wanted, done)) != View::npos; ++count) {
      result.append(Whole().substr(done, at - done)).append(ViewOf(replacement));
      done = at + wanted.size();
    }
    if (count != 0) {
      *this = CStringT(View(result.append(Whole().substr(done))));
    }
    return count;
  }
  int Replace(C c, C replacement) {
    const C wanted[] = {c, 0};
    const C inserted[] = {replacement, 0};
    return Replace(wanted, inserted);
  }

  /// Removes each `c`. Returns how many there were.
  int Remove(C c) {
    const C wanted[] = {c, 0};
    const C nothing[] = {0};
    return Replace(wanted, nothing);
  }

  /// Remove white space (space, tab, line feed, vertical tab, form feed, carriage return) at the ends.
  CStringT& Trim() { return TrimRight().TrimLeft(); }
  CStringT& TrimLeft() {
    const std::size_t first = Whole().find_first_not_of(kWhiteSpace);
    return *this = CStringT(first == View::npos ? View() : Whole().substr(first));
  }
  CStringT& TrimRight() { return *this = CStringT(Whole().substr(0, Whole().find_last_not_of(kWhiteSpace) + 1)); }

  /// Convert by the C library's locale.
  CStringT& MakeLower() {
    return Transform([](std::wint_t c) { return std::towlower(c); });
  }
  CStringT& MakeUpper() {
    return Transform([](std::wint_t c) { return std::towupper(c); });
  }

  /// Replaces the text by the formatted one, with the printf rules of the string's width: `%s` takes a text of that
  /// width, `%S` one of the other. Throws: `CStringFormatError`, leaving the text alone.
  void Format(const C* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::basic_string<C> result;
    const bool done = Zorbel::detail::PrintFormatter<C>::Format(result, format, arguments);
    va_end(arguments);
    AssignFormatted(done, result);
  }
  void FormatV(const C* format, va_list arguments) {
    std::basic_string<C> result;
    AssignFormatted(Zorbel::detail::PrintFormatter<C>::Format(result, format, arguments), result);
  }

  friend bool operator==(const CStringT& a, const CStringT& b) noexcept { return a.Compare(b.m_text) == 0; }
  friend bool operator==(const CStringT& a, const C* b) noexcept { return a.Compare(b) == 0; }
  friend bool operator==(const C* a, const CStringT& b) noexcept { return b.Compare(a) == 0; }
  friend bool operator!=(const CStringT& a, const CStringT& b) noexcept { return !(a == b); }
  friend bool operator!=(const CStringT& a, const C* b) noexcept { return !(a == b); }
  friend bool operator!=(const C* a, const CStringT& b) noexcept { return !(a == b); }
  friend bool operator<(const CStringT& a, const CStringT& b) noexcept { return a.Compare(b.m_text) < 0; }
  friend bool operator>(const CStringT& a, const CStringT& b) noexcept { return b < a; }
  friend bool operator<=(const CStringT& a, const CStringT& b) noexcept { return !(b < a); }
  friend bool operator>=(const CStringT& a, const CStringT& b) noexcept { return !(a < b); }
  friend bool operator<(const CStringT& a, const C* b) noexcept { return a.Compare(b) < 0; }
  friend bool operator>(const CStringT& a, const C* b) noexcept { return a.Compare(b) > 0; }
  friend bool operator<=(const CStringT& a, const C* b) noexcept { return !(a > b); }
  friend bool operator>=(const CStringT& a, const C* b) noexcept { return !(a < b); }
  friend bool operator<(const C* a, const CStringT& b) noexcept { return b > a; }
  friend bool operator>(const C* a, const CStringT& b) noexcept { return b < a; }
  friend bool operator<=(const C* a, const CStringT& b) noexcept { return b >= a; }
  friend bool operator>=(const C* a, const CStringT& b) noexcept { return b <= a; }

  friend CStringT operator+(CStringT a, const CStringT& b) { return std::move(a += b); }
  friend CStringT operator+(CStringT a, const C* b) { return std::move(a += b); }
  friend CStringT operator+(const C* a, const CStringT& b) { return CStringT(a) += b; }
  friend CStringT operator+(CStringT a, C b) { return std::move(a += b); }
  friend CStringT operator+(C a, const CStringT& b) { return CStringT(&a, 1) += b; }

 private:
  struct SHead {
    std::atomic<int> references;
    int length;
    int capacity;
  };
  struct SNil {
    SHead head;
    C terminator;
  };

  // Space, tab, line feed, vertical tab, form feed, carriage return.
  ZORBEL_LOCAL static constexpr C kWhiteSpace[] = {0x20, 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0};
  static constexpr int kNeverFreed = -1;

  explicit CStringT(View text) : m_text(MakeText(text)) {}

  /// The characters of every empty string of a module. They are not counted: empty strings of different modules mix.
  ZORBEL_LOCAL static C* Nil() noexcept {
    static SNil nil{{{kNeverFreed}, 0, 0}, 0};
    return &nil.terminator;
  }

  static constexpr std::size_t kTextOffset = (sizeof(SHead) + sizeof(C) - 1) / sizeof(C) * sizeof(C);

  static SHead* HeadOf(C* text) noexcept {
    return reinterpret_cast<SHead*>(reinterpret_cast<char*>(text) - kTextOffset);
  }

  static C* Allocate(std::size_t capacity) {
    if (capacity > Zorbel::detail::kLongestText) {
      throw std::length_error("string is too long");
    }
    return MakeHead(::operator new(SizeFor(capacity)), capacity);
  }

  /// Where there is no memory for what further growth would like, what is needed has to do.
  static C* AllocateToGrow(std::size_t length, std::size_t needed) {
    const std::size_t wanted = Zorbel::detail::GrownCapacity(length, needed);
    void* block = wanted > needed ? ::operator new(SizeFor(wanted), std::nothrow) : nullptr;
    return block != nullptr ? MakeHead(block, wanted) : Allocate(needed);
  }

  static constexpr std::size_t SizeFor(std::size_t capacity) { return kTextOffset + (capacity + 1) * sizeof(C); }

  static C* MakeHead(void* block, std::size_t capacity) noexcept {
    new (block) SHead{{1}, 0, static_cast<int>(capacity)};
    return reinterpret_cast<C*>(static_cast<char*>(block) + kTextOffset);
  }

  static void SetText(C* target, std::size_t at, View text) noexcept {
    std::char_traits<C>::copy(target + at, text.data(), text.size());
    target[at + text.size()] = 0;
    HeadOf(target)->length = static_cast<int>(at + text.size());
  }

  static C* MakeText(View text) {
    if (text.empty()) {
      return Nil();
    }
    C* made = Allocate(text.size());
    SetText(made, 0, text);
    return made;
  }

  static C* Share(C* text) noexcept {
    if (HeadOf(text)->references.load(std::memory_order_relaxed) != kNeverFreed) {
      HeadOf(text)->references.fetch_add(1, std::memory_order_relaxed);
    }
    return text;
  }

  static void Drop(C* text) noexcept {
    if (text == Nil()) {
      return;
    }
    SHead* head = HeadOf(text);
    if (head->references.load(std::memory_order_relaxed) != kNeverFreed &&
        head->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
      head->~SHead();
      ::operator delete(head);
    }
  }

  bool IsShared() const noexcept { return HeadOf(m_text)->references.load(std::memory_order_acquire) != 1; }

  CStringT& Append(View text) {
    const auto length = static_cast<std::size_t>(GetLength());
    if (!IsShared() && length + text.size() <= static_cast<std::size_t>(HeadOf(m_text)->capacity)) {
      SetText(m_text, length, text);
    } else if (!text.empty()) {
      const std::size_t needed = length + text.size();
      CStringT grown;
      grown.m_text = AllocateToGrow(length, needed);
      SetText(grown.m_text, 0, Whole());
      SetText(grown.m_text, length, text);
      Swap(grown);
    }
    return *this;
  }

  template <class F>
  CStringT& Transform(F convert) {
    const auto convertOne = [&](wchar_t c) { return static_cast<wchar_t>(convert(static_cast<std::wint_t>(c))); };
    std::basic_string<C> result(Whole());
    if constexpr (std::is_same_v<C, wchar_t>) {
      std::transform(result.begin(), result.end(), result.begin(), convertOne);
    } else {
      result = TransformNarrow(Zorbel::detail::CodePage::Widen(result), convertOne);
    }
    return *this = CStringT(View(result));
  }

  // A character whose counterpart the code page lacks stays as it is.
  template <class F>
  static std::string TransformNarrow(std::wstring text, F convert) {
    using Zorbel::detail::CodePage;
    for (wchar_t& c : text) {
      const std::wstring converted(1, convert(c));
      c = CodePage::Widen(CodePage::Narrow(converted)) == converted ? converted[0] : c;
    }
    return CodePage::Narrow(text);
  }

  void AssignFormatted(bool done, const std::basic_string<C>& result) {
    if (!done) {
      throw CStringFormatError();
    }
    *this = CStringT(ViewOf(result.c_str()));
  }

  static std::basic_string<C> Convert(const Other* text) {
    if (text == nullptr) {
      return {};
    }
    if constexpr (std::is_same_v<C, wchar_t>) {
      return Zorbel::detail::CodePage::Widen(text);
    } else {
      return Zorbel::detail::CodePage::Narrow(text);
    }
  }

  static View ViewOf(const C* text) noexcept { return text != nullptr ? View(text) : View(); }
  View Whole() const noexcept { return {m_text, static_cast<std::size_t>(GetLength())}; }
  static std::size_t StartAt(int position) noexcept { return position > 0 ? static_cast<std::size_t>(position) : 0; }
  static int Position(std::size_t position) noexcept {
    return position == View::npos ? -1 : static_cast<int>(position);
  }

  C* m_text;
};
