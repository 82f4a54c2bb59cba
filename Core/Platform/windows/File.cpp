#include "Platform/File.h"

#include <sys/stat.h>

#include <cstdio>
#include <memory>

#include "LimitedReading.h"
#include "WindowsApi.h"

namespace Platform {
namespace {

struct SHandleCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};

// Devices and pipes have no size.
std::uint64_t SizeOf(std::FILE* file) {
  struct _stat64 status {};
  const bool known = _fstat64(_fileno(file), &status) == 0 && (status.st_mode & _S_IFREG) != 0;
  return known ? static_cast<std::uint64_t>(status.st_size) : 0;
}

}  // namespace

EReading ReadFile(const std::wstring& name, std::size_t limit, std::string& content) {
  std::FILE* opened = nullptr;
  if (_wfopen_s(&opened, name.c_str(), L"rb") != 0 || opened == nullptr) {
    return EReading::kFailed;
  }
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(opened, &std::fclose);
  return ReadLimited(opened, SizeOf(opened), limit, content);
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
