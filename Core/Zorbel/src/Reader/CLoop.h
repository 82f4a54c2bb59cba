#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "Reader/CReading.h"
#include "Reader/SScope.h"
#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

/// The passes of a loop element. One whose attributes are wrong, when the reader goes on nevertheless, has a single
/// pass, so that its body is looked at.
class CLoop {
 public:
  CLoop(const CLoop&) = delete;
  CLoop& operator=(const CLoop&) = delete;

  /// What the body sees in the present pass.
  const SScope& GetBody() const { return m_body; }

 protected:
  CLoop(CReading& reading, const XMLNode& node, const SScope& scope);
  ~CLoop() = default;

  /// To be called before the first pass.
  void ReadVariable(const wchar_t* errorWithoutName);
  void RequireFewPasses(std::int64_t passes);
  void RequireShallow(const SScope& scope);

  /// To be called before each pass. False when no more may run.
  bool BeginPass();

  template <class... Texts>
  void Report(const SFault& fault, const char* attribute, const wchar_t* format, const Texts&... texts) {
    m_faulty = true;
    m_reading.Report(fault, SWhere{m_node, m_variable.outer, attribute}, format, texts...);
  }

  const XMLNode& m_node;
  SVariable m_variable;
  bool m_faulty = false;

 private:
  CReading& m_reading;
  SScope m_body;
  bool m_tooDeep = false;
};

/// Counts from a number to another one.
class CForLoop : public CLoop {
 public:
  CForLoop(CReading& reading, const XMLNode& node, const SScope& scope);

  /// Begins the next pass. False when there is none.
  bool Next();

 private:
  int ReadNumber(const char* attribute);

  std::int64_t m_next = 0;
  std::int64_t m_last = 0;
  std::int64_t m_step = 1;
};

/// Takes the items of a list.
class CForeachLoop : public CLoop {
 public:
  CForeachLoop(CReading& reading, const XMLNode& node, const SScope& scope);

  /// Begins the next pass. False when there is none.
  bool Next();

 private:
  std::string_view TakeItem();

  std::string_view m_items;
  bool m_atEnd = false;
};

/// Reads a loop element, whose body is a container like the one that it stands in, as its pass sees it.
using BodyReader = std::function<void(const XMLNode& loop, const SScope& body)>;

/// Runs the counted loops of a container, then those over lists.
void RunLoops(CReading& reading, const XMLNode& container, const SScope& scope, const BodyReader& readBody);

}  // namespace Zorbel::Internal
