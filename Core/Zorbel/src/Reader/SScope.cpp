#include "Reader/SScope.h"

#include "Threads/ThreadState.h"

namespace Zorbel::Internal {
namespace {

constexpr int kDeepest = 256;  // keeps hostile nesting from exhausting the stack

}  // namespace

bool MayNest(CReading& reading, const SScope& scope, const SWhere& where, const char* function) {
  if (scope.depth < kDeepest && (scope.depth == 0 || !IsStackShort())) {
    return true;
  }
  reading.Report({"nesting", function}, where, L"Elements are nested too deeply");
  return false;
}

}  // namespace Zorbel::Internal
