#include <Zorbel/Export.h>

#include "Motion.h"
#include "Wrapper.h"

namespace motion {
namespace {

/// Turns a raw count into a reading. Each sensor has one of its own.
class CScale : public Zorbel::IObject {
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

  void SetName(const char* name) { m_name = name; }
  void SetScale(std::shared_ptr<CScale> scale) { m_scale = std::move(scale); }
  void SetRaw(short raw) { m_raw = raw; }

 private:
  std::string m_kind;
  std::string m_name;
  std::shared_ptr<CScale> m_scale = std::make_shared<CScale>(1.0F, "counts");
  int m_raw = 0;
};

/// Makes sensors of the kinds it knows: the wrapper of this class creates beans of another.
std::unique_ptr<Zorbel::IObject> MakeSensor(const std::string& method, const Arguments& arguments) {
  if (method == "Thermometer" && arguments.empty()) {
    return std::make_unique<CSensor>("thermometer");
  }
  return nullptr;
}

}  // namespace
}  // namespace motion

using motion::Arguments;
using motion::Literal;

ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_motion_CScale_Wrapper() {
  using motion::CScale;
  const auto create = [](const std::string&, const Arguments& a, const auto&, const auto&) {
    return a.size() == 2 ? std::make_unique<CScale>(Literal<float>(a, 0), motion::Text(a, 1)) : nullptr;
  };
  return new motion::CWrapper<CScale>("motion::CScale", create, {});
}

ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_motion_CSensor_Wrapper() {
  using motion::CSensor;
  const auto create = [](const std::string&, const Arguments& a, const auto&, const auto&) {
    return a.size() == 1 ? std::make_unique<CSensor>(motion::Text(a, 0)) : nullptr;
  };
  return new motion::CWrapper<CSensor>(
      "motion::CSensor", create,
      {{"SetName",
        {{"const char*"}, [](CSensor& sensor, const Arguments& a) { sensor.SetName(Literal<const char*>(a, 0)); }}},
       {"SetScale",
        {{"motion::CScale"},
         [](CSensor& sensor, const Arguments& a) { sensor.SetScale(motion::Reference<motion::CScale>(a, 0)); }}},
       {"SetRaw", {{"short"}, [](CSensor& sensor, const Arguments& a) { sensor.SetRaw(Literal<short>(a, 0)); }}}});
}

ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_motion_CSensorFactory_Wrapper() {
  const auto create = [](const std::string& method, const Arguments& a, const auto&, const auto&) {
    return motion::MakeSensor(method, a);
  };
  return new motion::CWrapper<Zorbel::IObject>("motion::CSensorFactory", create, {});
}
