#include "Values/CTypeManager.h"

#include <Zorbel/CStringT.h>

#include <memory>

#include "BasePool/CbMap.h"
#include "BasePool/CbNeverDestroyed.h"
#include "Errors/Raise.h"
#include "Values/LiteralConversion.h"
#include "Values/ObjectType.h"
#include "Values/ValueSources.h"

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

using Types = CbMap<CStringT<char>, std::unique_ptr<IType>>;

template <class T, auto conversion>
void Add(Types& types, const char* name) {
  types.SetAt(Normalised(name)).value = std::make_unique<BasicType<T, conversion>>();
}

void AddIntegers(Types& types) {
  Add<signed char, &Literal::ToInt>(types, "int8_t");
  Add<unsigned char, &Literal::ToInt>(types, "unsigned char");
  Add<unsigned char, &Literal::ToInt>(types, "uint8_t");
  Add<short, &Literal::ToInt>(types, "short");
  Add<short, &Literal::ToInt>(types, "int16_t");
  Add<unsigned short, &Literal::ToInt>(types, "unsigned short");
  Add<unsigned short, &Literal::ToInt>(types, "uint16_6");
  Add<int, &Literal::ToInt>(types, "int");
  Add<int, &Literal::ToInt>(types, "int32_t");
  Add<unsigned int, &Literal::ToInt>(types, "unsigned int");
  Add<unsigned int, &Literal::ToInt>(types, "uint32_t");
  Add<long, &Literal::ToInt>(types, "long");
  Add<unsigned long, &Literal::ToUnsigned>(types, "unsigned long");
}

void AddOthers(Types& types) {
  Add<float, &Literal::ToDouble>(types, "float");
  Add<double, &Literal::ToDouble>(types, "double");
  Add<CStringT<char>, &Unchanged>(types, "char*");
  Add<CStringT<char>, &Unchanged>(types, "const char*");
  Add<CStringT<wchar_t>, &Unchanged>(types, "wchar_t*");
  Add<CStringT<wchar_t>, &Unchanged>(types, "const wchar_t*");
}

Types MakeBasicTypes() {
  Types types;
  Add<bool, &Literal::ToBool>(types, "bool");
  Add<char, &Literal::ToChar>(types, "char");
  AddIntegers(types);
  AddOthers(types);
  return types;
}

// The same for all factories of the process, from the first use on.
const Types& BasicTypes() {
  static const CbNeverDestroyed<const Types> types(MakeBasicTypes());
  return *types;
}

}  // namespace

IType* CTypeManager::FindTypeBean(const char* typeName) const {
  if (ObjectType::IsReference(typeName)) {
    return &m_objectType;
  }
  const Types& types = BasicTypes();
  const std::unique_ptr<IType>* found = types.Lookup(typeName);
  if (found == nullptr) {
    found = types.Lookup(Normalised(typeName));
  }
  if (found == nullptr) {
    Internal::Raise({"Core/Zorbel/src/CTypeManager", "Zorbel::CTypeManager::FindTypeBean"},
                    L"Could not find type bean '%s'", Utf8ToWide(typeName));
  }
  return found->get();
}

}  // namespace Zorbel
