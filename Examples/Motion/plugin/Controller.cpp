#include <Zorbel/Export.h>

#include "Motion.h"
#include "Wrapper.h"

namespace motion {
namespace {

class CController : public IController {
 public:
  explicit CController(std::shared_ptr<ILogger> logger) : m_logger(std::move(logger)) {}

  void MoveTo(double x, double y) override {
    m_axes.at(0)->MoveTo(x);
    m_axes.at(1)->MoveTo(y);
  }

  void SetAxes(std::shared_ptr<IAxis> x, std::shared_ptr<IAxis> y) { m_axes = {std::move(x), std::move(y)}; }
  void Start() { m_logger->Write("controller: ready with " + m_axes.at(0)->Name() + " and " + m_axes.at(1)->Name()); }
  void Stop() { m_logger->Write("controller: stopped"); }

 private:
  std::shared_ptr<ILogger> m_logger;
  std::vector<std::shared_ptr<IAxis>> m_axes;
};

}  // namespace
}  // namespace motion

using motion::Arguments;

ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_motion_CController_Wrapper() {
  using motion::CController;
  using motion::IAxis;
  const auto create = [](const std::string&, const Arguments& a, auto exit, const auto& dependencies) {
    auto logger = a.size() == 1 ? motion::Reference<motion::ILogger>(a, 0) : nullptr;
    return logger ? std::make_unique<motion::CWithExit<CController>>(std::move(exit), dependencies, std::move(logger))
                  : nullptr;
  };
  return new motion::CWrapper<CController>(
      "motion::CController", create,
      {{"SetAxes",
        {{"motion::IAxis", "motion::IAxis"},
         [](CController& controller, const Arguments& a) {
           controller.SetAxes(motion::Reference<IAxis>(a, 0), motion::Reference<IAxis>(a, 1));
         }}},
       {"Start", {{}, [](CController& controller, const Arguments&) { controller.Start(); }}},
       {"Stop", {{}, [](CController& controller, const Arguments&) { controller.Stop(); }}}});
}
