#pragma once

#include <algorithm>
#include <set>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include <Zorbel/CException.h>
#include <Zorbel/CStringT.h>
#include <Zorbel/ICallArguments.h>
#include <Zorbel/IObject.h>
#include <Zorbel/detail/kit/CallLog.h>
#include <Zorbel/detail/kit/Parameter.h>

namespace Zorbel::Kit {

inline constexpr const char* kOverloadsFile = "Zorbel/detail/Overloads";

/// The arguments of one call, with their types where the container tells them.
class CArguments {
 public:
  /// `values` is null for none.
  explicit CArguments(const std::vector<void*>* values) : m_values(values) {}

  std::size_t GetCount() const { return m_values != nullptr ? m_values->size() : 0; }

  SValue operator[](std::size_t position) const {
    const ICallArguments* types = CallArguments();
    return {(*m_values)[position], types != nullptr ? types->GetType(*m_values, position) : nullptr};
  }

 private:
  const std::vector<void*>* m_values;
};

/// A function that documents may name, with what it takes to call it.
template <class F>
struct SFunction {
  std::string name;
  std::vector<SParameter> parameters;
  F call;
};

/// Returns whether a call can tell these parameter lists of equal length apart.
inline bool CanBeToldApart(const std::vector<SParameter>& one, const std::vector<SParameter>& other) {
  return !std::equal(one.begin(), one.end(), other.begin(), [](const SParameter& a, const SParameter& b) {
    return *a.stores == *b.stores && (!a.isReference || a.typeName == b.typeName);
  });
}

/// The functions of one kind that a class declares; several may have one name.
template <class F>
class COverloads {
 public:
  using Function = SFunction<F>;

  /// `kind` begins the messages: "Method" or "Creation method".
  COverloads(const char* kind, const std::string& className) : m_kind(kind), m_className(className) {}

  /// Throws: `CException` when a call could not tell the function from one declared before.
  void Add(Function function) {
    for (const Function& known : m_functions) {
      if (Is(known, function.name, function.parameters.size()) &&
          !CanBeToldApart(known.parameters, function.parameters)) {
        const std::string text = Text(function.name) + " is declared twice with " +
                                 std::to_string(function.parameters.size()) +
                                 " parameters that a call cannot tell apart";
        throw CException(kOverloadsFile, __LINE__, "Zorbel::CDeclaration", Decoded(text));
      }
    }
    m_functions.push_back(std::move(function));
  }

  /// Returns the first function of that name and number of parameters, or null.
  const Function* Find(const std::string& name, std::size_t count) const {
    const auto found = std::find_if(m_functions.begin(), m_functions.end(),
                                    [&](const Function& function) { return Is(function, name, count); });
    return found != m_functions.end() ? &*found : nullptr;
  }

  /// Likewise, with a line in the log when there is none.
  const Function* Expect(const char* origin, const std::string& name, std::size_t count) const {
    const Function* found = Find(name, count);
    if (found == nullptr) {
      Warn({kOverloadsFile, __LINE__, origin}, [&] { return WhyNone(name, count); });
    }
    return found;
  }

  /// Returns the first function of that name which takes the arguments; null, with a line in the log, when there is
  /// none.
  const Function* Select(const char* origin, const std::string& name, const CArguments& arguments) const {
    const Function* closest = Expect(origin, name, arguments.GetCount());
    if (closest == nullptr) {
      return nullptr;
    }
    std::size_t fitting = 0;
    for (const Function& function : m_functions) {
      if (!Is(function, name, arguments.GetCount())) {
        continue;
      }
      const std::size_t position = FirstMisfit(function, arguments);
      if (position == arguments.GetCount()) {
        return &function;
      }
      if (position > fitting) {
        fitting = position;
        closest = &function;
      }
    }
    Warn({kOverloadsFile, __LINE__, origin}, [&] { return WhyNot(*closest, arguments[fitting], fitting); });
    return nullptr;
  }

  std::string Text(const std::string& name) const {
    return m_kind + (" '" + name + "' of class '" + m_className + "'");
  }

 private:
  static bool Is(const Function& function, const std::string& name, std::size_t count) {
    return function.parameters.size() == count && function.name == name;
  }

  // Returns the position of the first argument that does not suit; their number when all do.
  static std::size_t FirstMisfit(const Function& function, const CArguments& arguments) {
    std::size_t position = 0;
    while (position < arguments.GetCount() && function.parameters[position].fit(arguments[position]) == EFit::suits) {
      ++position;
    }
    return position;
  }

  std::string WhyNone(const std::string& name, std::size_t count) const {
    std::set<std::size_t> counts;
    for (const Function& function : m_functions) {
      if (function.name == name) {
        counts.insert(function.parameters.size());
      }
    }
    std::string list;
    for (const std::size_t known : counts) {
      list += (list.empty() ? "" : " or ") + std::to_string(known);
    }
    return list.empty() ? Text(name) + " does not exist"
                        : Text(name) + " takes " + list + " arguments, not " + std::to_string(count);
  }

  std::string WhyNot(const Function& function, const SValue& value, std::size_t position) const {
    const SParameter& parameter = function.parameters[position];
    const std::string argument = "Argument " + std::to_string(position + 1) + " of " + Lower(Text(function.name));
    const std::string expected = ", expected '" + parameter.typeName + "'";
    return parameter.fit(value) == EFit::missing ? argument + " is missing" + expected
                                                 : argument + " is a '" + ActualType(value) + "'" + expected;
  }

  static std::string ActualType(const SValue& value) {
    if (!value.CanBe(typeid(std::shared_ptr<IObject>))) {
      return LiteralName(*value.type);
    }
    return ClassNameOf(**static_cast<const std::shared_ptr<IObject>*>(value.pointer));
  }

  static std::string Lower(std::string text) {
    text.front() = static_cast<char>(text.front() - 'A' + 'a');
    return text;
  }

  const char* m_kind;
  const std::string& m_className;
  std::vector<Function> m_functions;
};

}  // namespace Zorbel::Kit
