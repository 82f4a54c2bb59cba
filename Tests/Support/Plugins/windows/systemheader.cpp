// A module that includes the system's header before or after the library's.
#if defined(SYSTEM_HEADER_FIRST)
#include <windows.h>
#endif

#include <Logging/CLogger.h>
#include <Logging/Logging.h>
#include <Zorbel/Class.h>
#include <Zorbel/Zorbel.h>

#if defined(SYSTEM_HEADER_LAST)
#include <windows.h>
#endif

#include "IReport.h"

namespace order {
namespace {

struct CReport : IReport {
  std::wstring Report() const override {
    try {
      Zorbel::CContainer("<none/>", false);
    } catch (const Zorbel::CException& error) {
      const bool own = error.GetThreadID() == GetCurrentThreadId();
      return std::wstring(error.GetMessageW()) + (own ? L" here" : L" elsewhere");
    }
    return L"no error";
  }
};

/// A wrapper made by hand, whose class has no methods.
class CByHand : public Zorbel::IBeanWrapper {
 public:
  const char* GetClassName() const override { return "by hand"; }
  std::unique_ptr<Zorbel::IObject> CreateInstance(const char*, std::size_t, const std::vector<void*>*,
                                                  std::shared_ptr<const IBeanWrapper>, const char*,
                                                  const std::vector<std::shared_ptr<Zorbel::IObject>>&) const override {
    return std::make_unique<CReport>();
  }
  bool CallMethod(Zorbel::IObject*, const char*, std::size_t, const std::vector<void*>*) const override {
    return false;
  }
  void GetParameterTypes(const char*, std::size_t, std::vector<std::string>&) override {}
};

}  // namespace
}  // namespace order

ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_order_CByHand_Wrapper() { return new order::CByHand; }
ZORBEL_CLASS(order, CReport) { Constructor<>(); }
