#pragma once

#include <cstddef>
#include <typeinfo>
#include <vector>

namespace Zorbel::Internal {

/// The values of a call that this thread is about to make. While it lives, the code that is called may ask what they
/// are; it knows them by the address of their vector. Those of one thread end in the reverse order in which they began.
class CCallValues {
 public:
  virtual ~CCallValues() = default;
  CCallValues(const CCallValues&) = delete;
  CCallValues& operator=(const CCallValues&) = delete;

  std::size_t GetCount() const { return m_values.size(); }

  /// Null when there are none.
  const std::vector<void*>* GetValues() const { return m_values.empty() ? nullptr : &m_values; }

  /// Returns the type of a value of one of this thread's calls, or null when `values` belongs to none.
  static const std::type_info* FindType(const std::vector<void*>& values, std::size_t position);

 protected:
  CCallValues() = default;

  /// The last step of building and the first of the end: nobody asks for values that are not whole.
  void Publish();
  void Withdraw();

  std::vector<void*> m_values;

 private:
  virtual const std::type_info* TypeOf(std::size_t position) const = 0;

  const CCallValues* m_outer = nullptr;
};

}  // namespace Zorbel::Internal
