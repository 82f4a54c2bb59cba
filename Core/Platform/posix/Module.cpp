#include "Platform/Module.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <system_error>
#include <vector>

#include "Platform/CodePage.h"

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

// Why the attempts at one module failed. That a file is not there is worth telling only of the last one, when there is
// nothing else: a name is tried at places where it need not be.
class CReasons {
 public:
  void Add(const std::string& file, const char* reason) {
    const std::string text = reason != nullptr ? reason : "";
    if (IsAbsence(file, text)) {
      m_absence = text;
    } else if (m_others.find(text) == std::string::npos) {
      m_others += (m_others.empty() ? "" : "; ") + text;
    }
  }

  std::wstring Text() const { return Utf8ToWideLossy(m_others.empty() ? m_absence : m_others); }

 private:
  // A file that a found one needs may be absent as well, which is quite another matter.
  static bool IsAbsence(const std::string& file, const std::string& reason) {
    return reason.starts_with(file + ':') && reason.ends_with(std::generic_category().message(ENOENT));
  }

  std::string m_absence;
  std::string m_others;
};

void* Open(const std::string& file, CReasons& reasons) {
  void* module = dlopen(file.c_str(), kLoadMode);
  if (module == nullptr) {
    reasons.Add(file, dlerror());  // NOLINT(concurrency-mt-unsafe): the text is the thread's own
  }
  return module;
}

std::vector<std::string> FileNames(const std::string& name) {
  if (name.find('.') != std::string::npos) {
    return {name};
  }
  return {name, "lib" + name + ".so"};
}

void* LoadBareName(const std::string& name, CReasons& reasons) {
  const std::string directory = ExecutableDirectory();
  for (const std::string& prefix : {directory, std::string()}) {
    for (const std::string& file : FileNames(name)) {
      if (void* module = Open(prefix + file, reasons)) {
        return module;
      }
    }
  }
  return nullptr;
}

}  // namespace

void* LoadModule(const std::string& path, std::wstring* whyNot) {
  CReasons reasons;
  void* module = nullptr;
  if (path.empty()) {
    reasons.Add(path, "the path is empty");  // dlopen would hand out the program itself
  } else {
    module = path.find('/') == std::string::npos ? LoadBareName(path, reasons) : Open(path, reasons);
  }
  if (module == nullptr && whyNot != nullptr) {
    *whyNot = reasons.Text();
  }
  return module;
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
