// Knows the library through the product alone that it opens and uses. With the library's path as a further argument it
// closes the product again, which stays in the process only where it was the first to open the library; then it keeps
// only objects whose class is not the product's.
#include <dlfcn.h>

#include "Use.h"

namespace {

SHolder holder("opener");

void Keep(const Objects& made, bool isClosed) {
  holder.objects.insert(holder.objects.end(), made.begin(), isClosed ? made.begin() + 1 : made.end());
}

}  // namespace

int main(int count, char** arguments) {
  const bool isClosed = count > 2 && dlopen(arguments[2], RTLD_NOW | RTLD_LOCAL) != nullptr;
  for (int round = 0; round < 3; ++round) {
    void* product = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    Objects made;
    reinterpret_cast<void (*)(Objects&)>(dlsym(product, "UseProduct"))(made);
    Keep(made, isClosed);
    made.clear();
    if (isClosed) {
      dlclose(product);
      std::fputs(dlopen(arguments[1], RTLD_NOW | RTLD_NOLOAD) == nullptr ? "closed\n" : "still open\n", stderr);
    }
  }
}
