#pragma once

#include <Zorbel/CStringT.h>

#include <string>

#include "BasePool/CbMap.h"

namespace Zorbel::Internal {

/// Returns `text` with each pattern "%", modifiers, variable name, "%" replaced by the variable's value. A value is
/// expanded in its turn. The modifiers are "." (removes spaces), "_" (lower case) and "^" (upper case).
/// Throws: `CException` for a lone "%", an unknown variable, or an expansion that does not end.
std::wstring Expand(const std::wstring& text, const CbMap<CStringT<wchar_t>, CStringT<wchar_t>>& variables);

}  // namespace Zorbel::Internal
