#include <Zorbel/Class.h>

#include <memory>
#include <utility>
#include <vector>

#include "Motion.h"

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

ZORBEL_CLASS(motion, CController) {
  Constructor<std::shared_ptr<motion::ILogger>>();
  Method("SetAxes", &Class::SetAxes);
  Method("Start", &Class::Start);
  Method("Stop", &Class::Stop);
}
