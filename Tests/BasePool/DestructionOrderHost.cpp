#include <cstdio>

extern "C" void UseSingletons(void (*report)(const char*));

namespace {

struct SReporting {
  ~SReporting() { std::puts("~program's static"); }
};

const SReporting programsStatic;

}  // namespace

int main() {
  UseSingletons([](const char* line) { std::puts(line); });
  std::puts("main");
}
