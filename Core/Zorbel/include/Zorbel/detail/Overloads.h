#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <Zorbel/CException.h>
#include <Zorbel/CStringT.h>
#include <Zorbel/IObject.h>
#include <Zorbel/detail/CallLog.h>
#include <Zorbel/detail/Parameter.h>

namespace Zorbel::Kit {

using Arguments = std::vector<void*>;

/// A function that documents may name, with what it takes to call it.
template <class F>
struct SFunction {
  std::string name;
  std::vector<SParameter> parameters;
  F call;
};

/// Returns whether a call can tell these parameter lists of equal length apart: by a reference. The values of literals
/// arrive without their type, so those have to agree, or one would be read as the other.
inline bool CanBeToldApart(const std::vector<SParameter>& one, const std::vector<SParameter>& other) {
  bool differ = false;
  for (std::size_t i = 0; i < one.size(); ++i) {
    if (*one[i].stores != *other[i].stores) {
      return false;
    }
    differ = differ || (one[i].isReference && one[i].typeName != other[i].typeName);
  }
  return differ;
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
      if (known.name == function.name && known.parameters.size() == function.parameters.size() &&
          !CanBeToldApart(known.parameters, function.parameters)) {
        const std::string text = Text(function.name) + " is declared twice with " +
                                 std::to_string(function.parameters.size()) +
                                 " parameters that a call cannot tell apart";
        throw CException("Zorbel/Class", __LINE__, "Zorbel::CDeclaration", CStringT<wchar_t>(text.c_str()));
      }
    }
    m_functions.push_back(std::move(function));
  }

  /// Returns the first function of that name and number of parameters, or null.
  const Function* Find(const char* name, std::size_t count) const {
    const auto found = std::find_if(m_functions.begin(), m_functions.end(), [&](const Function& function) {
      return function.name == name && function.parameters.size() == count;
    });
    return found != m_functions.end() ? &*found : nullptr;
  }

  /// Returns the first function of that name which takes the arguments; null, with a line in the log, when there is
  /// none.
  const Function* Select(const char* origin, const char* name, const Arguments& arguments) const {
    const Function* first = Find(name, arguments.size());
    if (first == nullptr) {
      Warn(origin, CStringT<wchar_t>(WhyNone(name, arguments.size()).c_str()));
      return nullptr;
    }
    for (const Function& function : m_functions) {
      if (function.name == name && function.parameters.size() == arguments.size() &&
          Misfit(function, arguments) == arguments.size()) {
        return &function;
      }
    }
    Warn(origin, CStringT<wchar_t>(WhyNot(*first, arguments).c_str()));
    return nullptr;
  }

  std::string Text(const std::string& name) const {
    return m_kind + (" '" + name + "' of class '" + m_className + "'");
  }

 private:
  // Returns the position of the first argument that does not suit; their number when all do.
  static std::size_t Misfit(const Function& function, const Arguments& arguments) {
    std::size_t position = 0;
    while (position < arguments.size() && function.parameters[position].fit(arguments[position]) == EFit::suits) {
      ++position;
    }
    return position;
  }

  std::string WhyNone(const char* name, std::size_t count) const {
    std::string counts;
    for (const Function& function : m_functions) {
      if (function.name == name) {
        counts += (counts.empty() ? "" : " or ") + std::to_string(function.parameters.size());
      }
    }
    return counts.empty() ? Text(name) + " does not exist"
                          : Text(name) + " takes " + counts + " arguments, not " + std::to_string(count);
  }

  std::string WhyNot(const Function& function, const Arguments& arguments) const {
    const std::size_t position = Misfit(function, arguments);
    const SParameter& parameter = function.parameters[position];
    const std::string argument = "Argument " + std::to_string(position + 1) + " of " + Lower(Text(function.name));
    if (parameter.fit(arguments[position]) == EFit::missing) {
      return argument + " is missing, expected '" + parameter.typeName + "'";
    }
    const auto& object = *static_cast<const std::shared_ptr<IObject>*>(arguments[position]);
    return argument + " is a '" + ClassNameOf(*object) + "', expected '" + parameter.typeName + "'";
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
