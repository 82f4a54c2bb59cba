#include "Machine.h"

#include <Zorbel/ILibrary.h>

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
  for (unsigned int i = 0; i < container.GetServiceCount(ISensor::kTypeId); ++i) {
    std::cout << "  " << container.GetService<ISensor>(ISensor::kTypeId, i)->Read() << '\n';
  }
}

}  // namespace

void RegisterInterfaces() {
  Zorbel::ILibraryConfiguration& library = Zorbel::GetLocalLibrary();
  library.RegisterTypeID("ILogger", ILogger::kTypeId);
  library.RegisterTypeID("ISensor", ISensor::kTypeId);
  library.RegisterTypeID("IController", IController::kTypeId);
}

void RegisterLogger(Zorbel::CContainer& container) {
  container.RegisterInstance(ILogger::kTypeId, std::make_shared<CConsoleLogger>());
}

void Drive(const Zorbel::CContainer& container) {
  const auto controller = container.GetService<IController>(IController::kTypeId);
  controller->MoveTo(120, 80);
  controller->MoveTo(300, 10);
  ReadSensors(container);
}

void ReplaceSensor(Zorbel::CContainer& container) {
  const auto simulated = std::make_shared<CSimulatedSensor>();
  container.RegisterInstance(ISensor::kTypeId, simulated, true);
  std::cout << "  first sensor is " << container.GetService<ISensor>(ISensor::kTypeId)->Read() << '\n';
  container.ReleaseInstance(simulated);
  std::cout << "  first sensor is " << container.GetService<ISensor>(ISensor::kTypeId)->Read() << '\n';
}

}  // namespace motion
