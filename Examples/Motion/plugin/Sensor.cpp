#include <Zorbel/Class.h>

#include <memory>
#include <string>
#include <utility>

#include "Motion.h"

namespace motion {
namespace {

/// Turns a raw count into a reading. Each sensor has one of its own.
class CScale {
 public:
  CScale(float factor, std::string unit) : m_factor(factor), m_unit(std::move(unit)) {}
  std::string Apply(int raw) const {
    return std::to_string(static_cast<int>(static_cast<float>(raw) * m_factor)) + " " + m_unit;
  }

 private:
  float m_factor;
  std::string m_unit;
};

class CSensor : public ISensor {
 public:
  explicit CSensor(std::string kind) : m_kind(std::move(kind)) {}

  std::string Read() const override { return m_name + " (" + m_kind + "): " + m_scale->Apply(m_raw); }

  void SetName(std::string name) { m_name = std::move(name); }
  void SetScale(std::shared_ptr<CScale> scale) { m_scale = std::move(scale); }
  void SetRaw(short raw) { m_raw = raw; }

 private:
  std::string m_kind;
  std::string m_name;
  std::shared_ptr<CScale> m_scale = std::make_shared<CScale>(1.0F, "counts");
  int m_raw = 0;
};

/// Makes sensors of the kinds it knows: this class's wrapper creates beans of another.
class CSensorFactory {
 public:
  static std::unique_ptr<CSensor> Thermometer() { return std::make_unique<CSensor>("thermometer"); }
};

}  // namespace
}  // namespace motion

ZORBEL_CLASS(motion, CScale) { Constructor<float, std::string>(); }

ZORBEL_CLASS(motion, CSensor) {
  Constructor<std::string>();
  Method("SetName", &Class::SetName);
  Method("SetScale", &Class::SetScale);
  Method("SetRaw", &Class::SetRaw);
}

ZORBEL_CLASS(motion, CSensorFactory) { Factory("Thermometer", &Class::Thermometer); }
