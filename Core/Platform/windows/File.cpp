#include "Platform/File.h"

#include <cstdio>
#include <memory>

#include "WindowsApi.h"

namespace Platform {
namespace {

struct SHandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

}  // namespace

std::optional<std::string> ReadFile(const std::wstring& name) {
  std::FILE* opened = nullptr;
  if (_wfopen_s(&opened, name.c_str(), L"rb") != 0 || opened == nullptr) {
    return std::nullopt;
  }
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(opened, &std::fclose);
  std::string content;
  char buffer[64 * 1024];
  while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get())) {
    content.append(buffer, count);
  }
  return std::ferror(file.get()) ? std::nullopt : std::optional(std::move(content));
}

// The system tells the name as it is on disk, whatever the letter case and the separators of the one given.
std::wstring ResolveFileName(const std::wstring& name) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE opened = CreateFileW(name.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) {
    return name;
  }
  const std::unique_ptr<HANDLE, SHandleCloser> handle(opened);
  std::wstring resolved(GetFinalPathNameByHandleW(opened, nullptr, 0, 0), L'\0');
  resolved.resize(GetFinalPathNameByHandleW(opened, resolved.data(), static_cast<DWORD>(resolved.size()), 0));
  return resolved.empty() ? name : resolved;
}

}  // namespace Platform
