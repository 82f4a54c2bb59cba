#include <Zorbel/Class.h>

#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "Motion.h"

namespace motion {
namespace {

std::string Millimetres(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f mm", value);
  return text;
}

/// The supply that all drives hang on. Beans of other libraries cannot have it: it is not exported.
class CPower : public Zorbel::IObject {
 public:
  explicit CPower(std::shared_ptr<ILogger> logger) : m_logger(std::move(logger)) {}
  void SetVolts(unsigned int volts) { m_volts = volts; }
  void SwitchOn() { m_logger->Write("power: on, " + std::to_string(m_volts) + " V"); }
  void SwitchOff() { m_logger->Write("power: off"); }

 private:
  std::shared_ptr<ILogger> m_logger;
  unsigned int m_volts = 0;
};

class CAxis : public IAxis {
 public:
  explicit CAxis(std::shared_ptr<ILogger> logger) : m_logger(std::move(logger)) {}

  const std::string& Name() const override { return m_name; }
  double Position() const override { return m_position; }
  void MoveTo(double millimetres) override {
    m_position = millimetres < m_first ? m_first : millimetres > m_last ? m_last : millimetres;
    m_logger->Write(m_name + ": at " + Millimetres(m_position) + (m_position != millimetres ? " (the limit)" : ""));
  }

  void SetName(std::string name) { m_name = std::move(name); }
  void SetLimits(double first, double last) {
    m_first = first;
    m_last = last;
  }
  void SetEncoder(int lines, bool inverted) {
    m_encoder = std::to_string(lines) + " lines" + (inverted ? ", inverted" : "");
  }
  void Home() {
    m_position = m_first;
    m_logger->Write(m_name + ": homed, encoder of " + m_encoder);
  }
  void Park() { m_logger->Write(m_name + ": parked"); }

 private:
  std::shared_ptr<ILogger> m_logger;
  std::string m_name;
  std::string m_encoder;
  double m_first = 0;
  double m_last = 0;
  double m_position = 0;
};

}  // namespace
}  // namespace motion

ZORBEL_CLASS(motion, CPower) {
  Constructor<std::shared_ptr<motion::ILogger>>();
  Method("SetVolts", &Class::SetVolts);
  Method("SwitchOn", &Class::SwitchOn);
  Method("SwitchOff", &Class::SwitchOff);
}

ZORBEL_CLASS(motion, CAxis) {
  Constructor<std::shared_ptr<motion::ILogger>>();
  Method("SetName", &Class::SetName);
  Method("SetLimits", &Class::SetLimits);
  Method("SetEncoder", &Class::SetEncoder);
  Method("Home", &Class::Home);
  Method("Park", &Class::Park);
}
