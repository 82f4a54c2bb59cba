#include "CTypeManager.h"

#include "LiteralConversion.h"
#include "ObjectType.h"
#include "Raise.h"
#include "ValueSources.h"

namespace Zorbel {
namespace {

/// Values of `T`, which `conversion` makes from texts. A number is cut to the width of `T`.
template <class T, auto conversion>
class BasicType : public IType {
 public:
  std::shared_ptr<IValuePointer> CreateValuePointer(IBeanFactory*, const char*, const wchar_t* value,
                                                    const SLibrary*) override {
    return std::make_shared<CValuePointer<T>>(static_cast<T>(conversion(value)));
  }
};

const wchar_t* Unchanged(const wchar_t* text) { return text; }

CStringT<char> Normalised(const char* typeName) {
  CStringT<char> key(typeName);
  key.Remove(' ');
  return key;
}

}  // namespace

template <class T, auto conversion>
void CTypeManager::Add(const char* name) {
  m_types.SetAt(Normalised(name)).value = std::make_unique<BasicType<T, conversion>>();
}

CTypeManager::CTypeManager() {
  Add<bool, &Literal::ToBool>("bool");
  Add<char, &Literal::ToChar>("char");
  AddIntegers();
  AddOthers();
}

void CTypeManager::AddIntegers() {
  Add<signed char, &Literal::ToInt>("int8_t");
  Add<unsigned char, &Literal::ToInt>("unsigned char");
  Add<unsigned char, &Literal::ToInt>("uint8_t");
  Add<short, &Literal::ToInt>("short");
  Add<short, &Literal::ToInt>("int16_t");
  Add<unsigned short, &Literal::ToInt>("unsigned short");
  Add<unsigned short, &Literal::ToInt>("uint16_6");
  Add<int, &Literal::ToInt>("int");
  Add<int, &Literal::ToInt>("int32_t");
  Add<unsigned int, &Literal::ToInt>("unsigned int");
  Add<unsigned int, &Literal::ToInt>("uint32_t");
  Add<long, &Literal::ToInt>("long");
  Add<unsigned long, &Literal::ToUnsigned>("unsigned long");
}

void CTypeManager::AddOthers() {
  Add<float, &Literal::ToDouble>("float");
  Add<double, &Literal::ToDouble>("double");
  Add<CStringT<char>, &Unchanged>("char*");
  Add<CStringT<char>, &Unchanged>("const char*");
  Add<CStringT<wchar_t>, &Unchanged>("wchar_t*");
  Add<CStringT<wchar_t>, &Unchanged>("const wchar_t*");
}

IType* CTypeManager::FindTypeBean(const char* typeName) const {
  if (ObjectType::IsReference(typeName)) {
    return m_objectType.get();
  }
  const std::unique_ptr<IType>* found = m_types.Lookup(typeName);
  if (found == nullptr) {
    found = m_types.Lookup(Normalised(typeName));
  }
  if (found == nullptr) {
    Internal::Raise({"Core/Zorbel/src/CTypeManager", "Zorbel::CTypeManager::FindTypeBean"},
                    L"Could not find type bean '%s'", Utf8ToWide(typeName));
  }
  return found->get();
}

}  // namespace Zorbel
