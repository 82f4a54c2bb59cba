// Its static object, or with an argument that of a library, keeps what was made in main.
#include <Zorbel/Zorbel.h>

#include <optional>

#include "Use.h"

extern "C" void Hold(const Objects& objects);

namespace {

// The system ends what a linked library depends on late: a plug-in that is linked to ours would be such a one.
constexpr const char* kUnlinkedPlugin =
    "<library path='makers'><beans><bean name='greeter' class='of::Module'/></beans></library>";

struct SHost {
  ~SHost() {
    if (container) {
      const Objects made = UseEverything();
    }
  }

  SHolder kept{"host"};
  std::optional<Zorbel::CContainer> container;
};

SHost host;

}  // namespace

int main(int count, char**) {
  if (count > 1) {
    Hold(UseEverything(kUnlinkedPlugin));
  } else {
    Objects made = UseEverything();
    host.container.emplace();
    host.container->RegisterService("kept", [] { return std::make_unique<Zorbel::IObject>(); })->SetSingleton();
    made.push_back(host.container->GetService("kept"));
    host.kept.objects = made;
  }
  std::fputs("main\n", stderr);
}
