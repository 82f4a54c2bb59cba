#include "Platform/File.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "Platform/Utf8.h"

namespace Platform {
namespace {

std::string DiskName(const std::wstring& name) {
  std::string result = WideToUtf8(name);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

bool IsFolder(std::FILE* file) {
  struct stat status {};
  return fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::optional<std::string> ReadFile(const std::wstring& name) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(DiskName(name).c_str(), "rb"), &std::fclose);
  if (!file || IsFolder(file.get())) {
    return std::nullopt;
  }
  std::string content;
  char buffer[64 * 1024];
  while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get())) {
    content.append(buffer, count);
  }
  return std::ferror(file.get()) ? std::nullopt : std::optional(std::move(content));
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
