#include "Platform/File.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "LimitedReading.h"
#include "Platform/Utf8.h"

namespace Platform {
namespace {

std::string DiskName(const std::wstring& name) {
  std::string result = WideToUtf8(name);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

// Devices and pipes have no size.
std::uint64_t SizeOf(std::FILE* file) {
  struct stat status {};
  const bool known = fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
  return known ? static_cast<std::uint64_t>(status.st_size) : 0;
}

}  // namespace

// A folder can be opened, but not read.
EReading ReadFile(const std::wstring& name, std::size_t limit, std::string& content) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(DiskName(name).c_str(), "rb"), &std::fclose);
  return file ? ReadLimited(file.get(), SizeOf(file.get()), limit, content) : EReading::kFailed;
}

std::wstring ResolveFileName(const std::wstring& name) {
  const std::unique_ptr<char, void (*)(void*)> resolved(realpath(DiskName(name).c_str(), nullptr), &std::free);
  if (!resolved) {
    return name;
  }
  // Only compared, never shown: one wide character for each byte keeps different names different.
  const std::string path = resolved.get();
  std::wstring key(path.size(), L'\0');
  std::transform(path.begin(), path.end(), key.begin(), [](char c) { return static_cast<unsigned char>(c); });
  return key;
}

}  // namespace Platform
