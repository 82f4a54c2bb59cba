#pragma once

#include <string>

#include "Reader/SVariable.h"

namespace Zorbel::Internal {

enum class EExpansion { kDone, kLoneSign, kUnknownVariable, kEndless };

/// Stores in `result` the text with each pattern "%", modifiers, variable name, "%" replaced by the variable's value. A
/// value is expanded in its turn. The modifiers are "." (removes spaces), "_" (lower case) and "^" (upper case). Stops
/// at the first fault, with nothing stored.
EExpansion Expand(const std::wstring& text, const SVariable* variables, std::wstring& result);

}  // namespace Zorbel::Internal
