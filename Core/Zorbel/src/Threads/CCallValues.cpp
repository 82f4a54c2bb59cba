#include "Threads/CCallValues.h"

#include <utility>

#include "Threads/ThreadState.h"

namespace Zorbel::Internal {

void CCallValues::Publish() { m_outer = std::exchange(ThisThread().callValues, this); }

void CCallValues::Withdraw() { ThisThread().callValues = m_outer; }

const std::type_info* CCallValues::FindType(const std::vector<void*>& values, std::size_t position) {
  for (const CCallValues* call = ThisThread().callValues; call != nullptr; call = call->m_outer) {
    if (&call->m_values == &values) {
      return call->TypeOf(position);
    }
  }
  return nullptr;
}

}  // namespace Zorbel::Internal
