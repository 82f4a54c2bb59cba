#include <Zorbel/Export.h>

#include <cstdio>

#include "Motion.h"
#include "Wrapper.h"

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

  void SetName(const char* name) { m_name = name; }
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

template <class T>
std::unique_ptr<T> Create(const std::string&, const Arguments& arguments, std::function<void(T&)> exit,
                          const std::vector<std::shared_ptr<Zorbel::IObject>>& dependencies) {
  auto logger = arguments.size() == 1 ? Reference<ILogger>(arguments, 0) : nullptr;
  return logger ? std::make_unique<CWithExit<T>>(std::move(exit), dependencies, std::move(logger)) : nullptr;
}

}  // namespace
}  // namespace motion

using motion::Arguments;
using motion::Literal;

ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_motion_CPower_Wrapper() {
  using motion::CPower;
  return new motion::CWrapper<CPower>(
      "motion::CPower", &motion::Create<CPower>,
      {{"SetVolts",
        {{"unsigned int"}, [](CPower& power, const Arguments& a) { power.SetVolts(Literal<unsigned int>(a, 0)); }}},
       {"SwitchOn", {{}, [](CPower& power, const Arguments&) { power.SwitchOn(); }}},
       {"SwitchOff", {{}, [](CPower& power, const Arguments&) { power.SwitchOff(); }}}});
}

ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_motion_CAxis_Wrapper() {
  using motion::CAxis;
  return new motion::CWrapper<CAxis>(
      "motion::CAxis", &motion::Create<CAxis>,
      {{"SetName",
        {{"const char*"}, [](CAxis& axis, const Arguments& a) { axis.SetName(Literal<const char*>(a, 0)); }}},
       {"SetLimits",
        {{"double", "double"},
         [](CAxis& axis, const Arguments& a) { axis.SetLimits(Literal<double>(a, 0), Literal<double>(a, 1)); }}},
       {"SetEncoder",
        {{"int", "bool"},
         [](CAxis& axis, const Arguments& a) { axis.SetEncoder(Literal<int>(a, 0), Literal<bool>(a, 1)); }}},
       {"Home", {{}, [](CAxis& axis, const Arguments&) { axis.Home(); }}},
       {"Park", {{}, [](CAxis& axis, const Arguments&) { axis.Park(); }}}});
}
