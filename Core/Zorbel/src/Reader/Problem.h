#pragma once

#include <string>

#include "Document/Sources.h"

namespace Zorbel::Internal {

/// A kind of problem: a short name that stays, and the operation that finds it, at a line of the code.
struct SFault {
  constexpr SFault(const char* name, const char* qualifiedFunction, unsigned int codeLine = __builtin_LINE())
      : code(name), function(qualifiedFunction), line(codeLine) {}

  const char* code;
  const char* function;
  unsigned int line;
};

/// Something wrong in a document.
struct SProblem {
  explicit SProblem(const SFault& kind) : fault(kind) {}

  SFault fault;
  std::wstring text;
  // Known to those who ask for sources:
  const SSourceFile* file = nullptr;
  SExtent extent;
  const char* attribute = nullptr;    ///< of the element there, which may lack it; null for none
  const SSourcePass* pass = nullptr;  ///< of the loops around it, innermost first
};

/// What becomes of the problems that a reader finds.
class IProblemHandler {
 public:
  virtual ~IProblemHandler() = default;

  /// When it returns, the reader goes on with the next element that makes sense. What it throws ends the reading.
  virtual void Handle(const SProblem& problem) = 0;

  /// Returns a bean's name for a text. What it throws, because the name is no UTF-8, ends the reading.
  virtual std::wstring NameOf(const char* bean) = 0;
};

}  // namespace Zorbel::Internal
