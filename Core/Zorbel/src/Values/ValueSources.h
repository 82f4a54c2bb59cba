#pragma once

#include <Zorbel/IBeanFactory.h>
#include <Zorbel/IValuePointer.h>

#include <cstddef>
#include <memory>
#include <typeinfo>
#include <utility>

namespace Zorbel {

/// A source that knows what its value is.
class CTypedSource : public IValuePointer {
 public:
  virtual const std::type_info& GetType() const = 0;
};

/// Holds a literal value.
template <class T>
class CValuePointer : public CTypedSource {
 public:
  explicit CValuePointer(T value) : m_value(std::move(value)) {}

  void* GetValue() override { return &m_value; }
  const std::type_info& GetType() const override { return typeid(T); }

 private:
  T m_value;
};

/// Holds the instance of a referenced bean; no value when there is none.
class CBeanPointer : public IValuePointer {
 public:
  void SetObject(std::shared_ptr<IObject> object) { m_object = std::move(object); }

  void* GetValue() override { return m_object ? &m_object : nullptr; }

 private:
  std::shared_ptr<IObject> m_object;
};

/// Holds the instance of an interface's first registration; no value when there is none.
class CServicePointer : public IValuePointer {
 public:
  /// Throws: as `CLocalLibrary::GetTypeID` and `IBeanFactory::GetService`.
  CServicePointer(IBeanFactory* factory, const wchar_t* interfaceName);

  void* GetValue() override { return m_object ? &m_object : nullptr; }

 private:
  std::shared_ptr<IObject> m_object;
};

/// Holds an explicit null: its value is always there, and is empty.
class CNullPointer : public CTypedSource {
 public:
  void* GetValue() override { return &m_object; }
  const std::type_info& GetType() const override { return typeid(std::nullptr_t); }

 private:
  std::shared_ptr<IObject> m_object;
};

}  // namespace Zorbel
