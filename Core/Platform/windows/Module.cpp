#include "Platform/Module.h"

#include "WindowsApi.h"

namespace Platform {
namespace {

std::wstring ErrorText(DWORD code) {
  constexpr DWORD kMode = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  wchar_t buffer[512];
  std::wstring text(buffer, FormatMessageW(kMode, nullptr, code, 0, buffer, 512, nullptr));
  text.erase(text.find_last_not_of(L' ') + 1);
  const std::wstring number = L"error " + std::to_wstring(code);
  return text.empty() ? number : text + L" (" + number + L")";
}

}  // namespace

// The system's own search applies: a bare name is looked for beside the executable first, and gets ".dll" when it has
// no extension.
void* LoadModule(const std::string& path, std::wstring* whyNot) {
  void* module = path.empty() ? nullptr : LoadLibraryA(path.c_str());
  const DWORD error = GetLastError();
  if (module == nullptr && whyNot != nullptr) {
    *whyNot = path.empty() ? L"the path is empty" : ErrorText(error);
  }
  return module;
}

void* FindFunction(void* module, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

}  // namespace Platform
