// Services at run time: makers, ready-made objects, their order, singletons and release functions. No document is
// needed for that.
#include <Zorbel/CContainer.h>

#include <iostream>
#include <memory>
#include <string>
#include <utility>

struct IClock : Zorbel::IObject {
  static constexpr const char* kTypeId = "example.IClock";
  virtual std::string Name() const = 0;
};

class CClock : public IClock {
 public:
  explicit CClock(std::string name) : m_name(std::move(name)) {}
  std::string Name() const override { return m_name; }

 private:
  std::string m_name;
};

void Show(const Zorbel::CContainer& container) {
  const auto clocks = container.GetServices<IClock>();  // in use as long as somebody holds them
  std::cout << container.GetServiceCount(IClock::kTypeId) << " registered:";
  for (const auto& clock : clocks) {
    std::cout << ' ' << clock->Name();
  }
  std::cout << '\n';
}

int main() {
  Zorbel::CContainer container(nullptr);

  const auto quartz = container.RegisterService<IClock>(
      [number = 0]() mutable { return std::make_unique<CClock>("quartz" + std::to_string(++number)); });
  Show(container);
  Show(container);

  std::cout << "As a singleton it is made once more, and no more:\n";
  quartz->SetSingleton();
  Show(container);
  Show(container);

  std::cout << "A ready-made one in front, and away again:\n";
  const auto radio = std::make_shared<CClock>("radio");
  container.RegisterInstance<IClock>(radio, true);
  Show(container);
  container.ReleaseInstance(radio);
  Show(container);

  std::cout << "Objects may have to be given back when nobody uses them any more:\n";
  container.RegisterService<IClock>([] { return std::make_unique<CClock>("rented"); }, true)
      ->SetReleaseFunction([](const Zorbel::IObject*) { std::cout << "the rented clock is given back\n"; });
  Show(container);
}
