#include "XmlScan.h"

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace XmlParser {
namespace {

/// The lower-case form of each sign that may stand in a name; 0 for those that end one.
struct SFoldTable {
  char folded[256] = {};

  constexpr SFoldTable() {
    for (int c = 0; c < 256; ++c) {
      folded[c] = static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    }
    for (const char c : {' ', '\t', '\r', '\n', '/', '>', '=', '<', '"', '\''}) {
      folded[static_cast<unsigned char>(c)] = '\0';
    }
  }
};

char Folded(char c) {
  static constexpr SFoldTable kTable;
  return kTable.folded[static_cast<unsigned char>(c)];
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

// The text ends with a NUL, which no mark holds.
bool StartsWith(const char* text, std::string_view mark) {
  std::size_t length = 0;
  for (; length < mark.size() && text[length] == mark[length]; ++length) {
  }
  return length == mark.size();
}

// Behind "&".
bool IsReference(const char* text) {
  switch (*text) {
    case '#': return IsNumericReference(text + 1);
    case 'a': return StartsWith(text, "amp;") || StartsWith(text, "apos;");
    case 'g': return StartsWith(text, "gt;");
    case 'l': return StartsWith(text, "lt;");
    case 'q': return StartsWith(text, "quot;");
    default: return false;
  }
}

/// One pass over a document. Behind broken markup it may go astray: the parser proper stops there, and what comes first
/// counts. `TNotes` is told what is passed, and which failures there are: those that it does not take end the pass.
template <class TNotes>
class CScan {
 public:
  explicit CScan(char* text, TNotes notes = {})
      : m_text(text),
        m_next(text),
        m_end(text + std::strlen(text)),
        m_ampersand(Find('&', text, m_end)),
        m_notes(std::move(notes)) {}

  SScan Run() {
    while (*m_next != '\0' && !HasFailed()) {
      if (*m_next == '<') {
        ReadMarkup();
      } else {
        ReadText();
      }
    }
    return m_scan;
  }

 private:
  void ReadText() {
    char* end = Find('<', m_next, m_end);
    if (m_depth > 0) {
      CheckReferences(end);
    }
    m_next = end;
  }

  void ReadMarkup() {
    if (m_next[1] != '!' && m_next[1] != '?') {
      ReadTag();
    } else if (StartsWith(m_next, "<![CDATA[")) {
      SkipPast(9, "]]>");
    } else if (!SkipCommentOrInstruction()) {
      SkipDeclaration();
    }
  }

  void ReadTag() {
    const std::size_t begin = PositionOf(m_next++);
    const bool closing = *m_next == '/';
    m_next += closing ? 1 : 0;
    m_scan.elements += closing ? 0 : 1;
    FoldName();
    bool selfClosing = false;
    while (*m_next != '\0' && *m_next != '>' && *m_next != '<' && !HasFailed()) {
      selfClosing = *m_next == '/';
      ReadInsideTag();
    }
    m_next += *m_next == '>' ? 1 : 0;
    m_depth += closing ? -1 : selfClosing ? 0 : 1;
    m_notes.NoteTag({begin, PositionOf(m_next)}, closing ? ETag::kEnd : selfClosing ? ETag::kSingle : ETag::kStart);
  }

  void ReadInsideTag() {
    if (IsQuote(*m_next)) {
      ReadValue(*m_next);
    } else if (Folded(*m_next) == '\0') {
      ++m_next;
    } else {
      m_notes.NoteName(PositionOf(m_next));
      FoldName();
    }
  }

  void ReadValue(char quote) {
    ++m_next;
    ++m_scan.attributes;
    char* end = Find(quote, m_next, m_end);
    CheckReferences(end);
    m_next = end + (*end == quote ? 1 : 0);
    m_notes.NoteAttributeEnd(PositionOf(m_next));
  }

  void FoldName() {
    for (char folded; (folded = Folded(*m_next)) != '\0'; ++m_next) {
      *m_next = folded;
    }
  }

  // From the next character up to `end`. The "&" found last is kept: most texts end before it.
  void CheckReferences(const char* end) {
    if (m_ampersand < m_next) {
      m_ampersand = Find('&', m_next, m_end);
    }
    while (m_ampersand < end && !HasFailed()) {
      if (!IsReference(m_ampersand + 1)) {
        Fail(eXMLErrorUnknownCharacterEntity, m_ampersand);
      }
      m_ampersand = Find('&', m_ampersand + 1, m_end);
    }
  }

  void Fail(XMLError error, const char* place) {
    const XMLFailure failure = {error, PositionOf(place)};
    if (!m_notes.TakesFailure(failure)) {
      m_scan.failure = failure;
    }
  }

  std::size_t PositionOf(const char* place) const { return static_cast<std::size_t>(place - m_text); }

  bool HasFailed() const { return m_scan.failure.error != eXMLErrorNone; }

  // The first `c` between `begin` and `end`, or `end`.
  static char* Find(char c, char* begin, char* end) {
    void* found = std::memchr(begin, c, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<char*>(found) : end;
  }

  // A document type. The brackets in its opaque parts do not count.
  void SkipDeclaration() {
    int nesting = 0;
    do {
      if (!SkipOpaque()) {
        nesting += *m_next == '<' ? 1 : *m_next == '>' ? -1 : 0;
        ++m_next;
      }
    } while (*m_next != '\0' && nesting > 0);
  }

  bool SkipOpaque() {
    if (IsQuote(*m_next)) {
      const char quote[] = {*m_next, '\0'};
      SkipPast(1, quote);
    } else if (StartsWith(m_next, "<![")) {
      SkipSections();
    } else {
      return SkipCommentOrInstruction();
    }
    return true;
  }

  // Sections may be nested; nothing else in them counts.
  void SkipSections() {
    int nesting = 0;
    do {
      const int step = StartsWith(m_next, "<![") ? 1 : StartsWith(m_next, "]]>") ? -1 : 0;
      nesting += step;
      m_next += step != 0 ? 3 : 1;
    } while (*m_next != '\0' && nesting > 0);
  }

  bool SkipCommentOrInstruction() {
    const bool comment = StartsWith(m_next, "<!--");
    if (!comment && !StartsWith(m_next, "<?")) {
      return false;
    }
    SkipPast(comment ? 4 : 2, comment ? "-->" : "?>");
    return true;
  }

  static bool IsQuote(char c) { return c == '"' || c == '\''; }

  void SkipPast(std::size_t opening, const char* mark) {
    char* end = std::strstr(m_next + opening, mark);
    m_next = end != nullptr ? end + std::strlen(mark) : m_end;
  }

  char* m_text;
  char* m_next;
  char* m_end;
  char* m_ampersand;
  int m_depth = 0;
  SScan m_scan;
  TNotes m_notes;
};

}  // namespace

SScan FoldNames(char* text) { return CScan<CNoNotes>(text).Run(); }

SScan FoldNames(char* text, SPlaces& places, std::vector<XMLFailure>& failures) {
  return CScan(text, CPlaceNotes(places, failures)).Run();
}

}  // namespace XmlParser
