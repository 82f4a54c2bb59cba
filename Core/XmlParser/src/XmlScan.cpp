#include "XmlScan.h"

#include <cstdint>
#include <cstring>
#include <string_view>

namespace XmlParser {
namespace {

constexpr std::string_view kNamedEntities[] = {"amp;", "lt;", "gt;", "quot;", "apos;"};

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

/// The signs that end a name.
struct SNameEnds {
  bool ends[256] = {};

  constexpr SNameEnds() {
    for (const char c : {'\0', ' ', '\t', '\r', '\n', '/', '>', '=', '<', '"', '\''}) {
      ends[static_cast<unsigned char>(c)] = true;
    }
  }
};

bool IsNameEnd(char c) {
  static constexpr SNameEnds kNameEnds;
  return kNameEnds.ends[static_cast<unsigned char>(c)];
}

int DigitOf(char c, int base) {
  const char lower = Lower(c);
  const int digit = lower >= '0' && lower <= '9' ? lower - '0' : lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : base;
  return digit < base ? digit : -1;
}

// Behind "&#". A number that names no character is no reference to one.
bool IsNumericReference(const char* text) {
  constexpr std::uint32_t kLastCodePoint = 0x10FFFF;
  const int base = *text == 'x' ? 16 : 10;
  text += base == 16 ? 1 : 0;
  std::uint32_t value = 0;
  for (int digit; (digit = DigitOf(*text, base)) >= 0 && value <= kLastCodePoint; ++text) {
    value = value * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
  }
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  return *text == ';' && value != 0 && value <= kLastCodePoint && !surrogate;
}

// Behind "&".
bool IsReference(const char* text) {
  if (*text == '#') {
    return IsNumericReference(text + 1);
  }
  for (const std::string_view entity : kNamedEntities) {
    if (std::strncmp(text, entity.data(), entity.size()) == 0) {
      return true;
    }
  }
  return false;
}

/// One pass over a document. Stops where the markup is broken: the parser proper reports that.
class CScan {
 public:
  explicit CScan(char* text) : m_text(text), m_next(text), m_end(text + std::strlen(text)) {}

  std::size_t Run() {
    while (*m_next != '\0' && m_bad == kNoPosition) {
      if (*m_next == '<') {
        ReadMarkup();
      } else {
        ReadText();
      }
    }
    return m_bad;
  }

 private:
  void ReadText() {
    char* end = Find('<');
    if (m_depth > 0) {
      CheckReferences(end);
    }
    m_next = end;
  }

  void ReadMarkup() {
    if (m_next[1] != '!' && m_next[1] != '?') {
      ReadTag();
    } else if (StartsWith("<!--")) {
      SkipPast(4, "-->");
    } else if (StartsWith("<![CDATA[")) {
      SkipPast(9, "]]>");
    } else if (StartsWith("<?")) {
      SkipPast(2, "?>");
    } else {
      SkipDeclaration();
    }
  }

  void ReadTag() {
    ++m_next;
    const bool closing = *m_next == '/';
    m_next += closing ? 1 : 0;
    FoldName();
    bool selfClosing = false;
    while (*m_next != '\0' && *m_next != '>' && *m_next != '<' && m_bad == kNoPosition) {
      selfClosing = *m_next == '/';
      ReadInsideTag();
    }
    m_next += *m_next == '>' ? 1 : 0;
    m_depth += closing ? -1 : selfClosing ? 0 : 1;
  }

  void ReadInsideTag() {
    if (*m_next == '"' || *m_next == '\'') {
      ReadValue(*m_next);
    } else if (IsNameEnd(*m_next)) {
      ++m_next;
    } else {
      FoldName();
    }
  }

  void ReadValue(char quote) {
    ++m_next;
    char* end = Find(quote);
    CheckReferences(end);
    m_next = end + (*end == quote ? 1 : 0);
  }

  void FoldName() {
    for (; !IsNameEnd(*m_next); ++m_next) {
      *m_next = Lower(*m_next);
    }
  }

  // From the next character up to `end`.
  void CheckReferences(const char* end) {
    for (const char* next = m_next; m_bad == kNoPosition; ++next) {
      next = static_cast<const char*>(std::memchr(next, '&', static_cast<std::size_t>(end - next)));
      if (next == nullptr) {
        return;
      }
      if (!IsReference(next + 1)) {
        m_bad = static_cast<std::size_t>(next - m_text);
      }
    }
  }

  // The next `c`, or the end of the text.
  char* Find(char c) const {
    void* found = std::memchr(m_next, c, static_cast<std::size_t>(m_end - m_next));
    return found != nullptr ? static_cast<char*>(found) : m_end;
  }

  // A document type with its internal subset, in which quoted texts and comments may hold any sign.
  void SkipDeclaration() {
    int nesting = 0;
    do {
      if (StartsWith("<!--")) {
        SkipPast(4, "-->");
        continue;
      }
      if (*m_next == '"' || *m_next == '\'') {
        const char quote[] = {*m_next, '\0'};
        SkipPast(1, quote);
        continue;
      }
      nesting += *m_next == '<' ? 1 : *m_next == '>' ? -1 : 0;
      m_next += *m_next != '\0' ? 1 : 0;
    } while (*m_next != '\0' && nesting > 0);
  }

  bool StartsWith(std::string_view mark) const { return std::strncmp(m_next, mark.data(), mark.size()) == 0; }

  void SkipPast(std::size_t opening, const char* mark) {
    char* end = std::strstr(m_next + opening, mark);
    m_next = end != nullptr ? end + std::strlen(mark) : m_end;
  }

  char* m_text;
  char* m_next;
  char* m_end;
  int m_depth = 0;
  std::size_t m_bad = kNoPosition;
};

}  // namespace

std::size_t FoldNames(char* text) { return CScan(text).Run(); }

}  // namespace XmlParser
