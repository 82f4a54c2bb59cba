#pragma once

#include <cstddef>
#include <string>

namespace Platform {

enum class EReading { kDone, kFailed, kTooLarge };

/// Reads the whole file named by the wide `name`, in binary, into `content`. One that cannot be opened or read has
/// failed; one of more than `limit` bytes is too large, and no more than the first byte beyond is read, if any: a
/// device need not end. Both "/" and "\" separate folders in the name. Throws: std::bad_alloc.
EReading ReadFile(const std::wstring& name, std::size_t limit, std::string& content);

/// A text that is equal for two names exactly when they name the same file; the name itself where that cannot be told.
std::wstring ResolveFileName(const std::wstring& name);

}  // namespace Platform
