#include "Platform/Module.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <climits>
#include <vector>

namespace Platform {
namespace {

// Lazily bound symbols of a plug-in would end the process at their first call; bound now, they fail the load.
constexpr int kLoadMode = RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE;

std::string ExecutableDirectory() {
  char buffer[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer);
  if (length <= 0) {
    return {};
  }
  const std::string path(buffer, static_cast<std::size_t>(length));
  return path.substr(0, path.rfind('/') + 1);
}

std::vector<std::string> FileNames(const std::string& name) {
  if (name.find('.') != std::string::npos) {
    return {name};
  }
  return {name, "lib" + name + ".so"};
}

void* LoadBareName(const std::string& name) {
  const std::string directory = ExecutableDirectory();
  for (const std::string& prefix : {directory, std::string()}) {
    for (const std::string& file : FileNames(name)) {
      if (void* module = dlopen((prefix + file).c_str(), kLoadMode)) {
        return module;
      }
    }
  }
  return nullptr;
}

}  // namespace

void* LoadModule(const std::string& path) {
  if (path.empty()) {
    return nullptr;  // dlopen would hand out the program itself
  }
  return path.find('/') == std::string::npos ? LoadBareName(path) : dlopen(path.c_str(), kLoadMode);
}

// The look-up goes on in the libraries that the module depends on; what is found there is not the module's.
void* FindFunction(void* module, const char* name) {
  void* function = dlsym(module, name);
  Dl_info info{};
  void* owner = nullptr;
  link_map* own = nullptr;
  const bool known = function != nullptr && dladdr1(function, &info, &owner, RTLD_DL_LINKMAP) != 0 &&
                     dlinfo(module, RTLD_DI_LINKMAP, &own) == 0;
  return known && owner == own ? function : nullptr;
}

}  // namespace Platform
