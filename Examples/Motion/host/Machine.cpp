#include "Machine.h"

#include <Zorbel/Class.h>

#include <iostream>
#include <memory>

#include "Motion.h"

namespace motion {
namespace {

class CConsoleLogger : public ILogger {
 public:
  void Write(const std::string& text) override { std::cout << "  " << text << '\n'; }
};

class CSimulatedSensor : public ISensor {
 public:
  std::string Read() const override { return "simulated: 99 kPa"; }
};

void ReadSensors(const Zorbel::CContainer& container) {
  for (const auto& sensor : container.GetServices<ISensor>()) {
    std::cout << "  " << sensor->Read() << '\n';
  }
}

}  // namespace

void RegisterInterfaces() {
  Zorbel::RegisterInterface<ILogger>("ILogger");
  Zorbel::RegisterInterface<ISensor>("ISensor");
  Zorbel::RegisterInterface<IController>("IController");
}

void RegisterLogger(Zorbel::CContainer& container) {
  container.RegisterInstance<ILogger>(std::make_shared<CConsoleLogger>());
}

void Drive(const Zorbel::CContainer& container) {
  const auto controller = container.GetService<IController>();
  controller->MoveTo(120, 80);
  controller->MoveTo(300, 10);
  ReadSensors(container);
}

void ReplaceSensor(Zorbel::CContainer& container) {
  const auto simulated = std::make_shared<CSimulatedSensor>();
  container.RegisterInstance<ISensor>(simulated, true);
  std::cout << "  first sensor is " << container.GetService<ISensor>()->Read() << '\n';
  container.ReleaseInstance(simulated);
  std::cout << "  first sensor is " << container.GetService<ISensor>()->Read() << '\n';
}

}  // namespace motion
