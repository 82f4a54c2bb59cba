// A module with its own wrapper makers: one works, one returns no wrapper.
#include <Zorbel/Export.h>
#include <Zorbel/IBeanWrapper.h>

namespace {

class CWrapper : public Zorbel::IBeanWrapper {
 public:
  const char* GetClassName() const override { return "of::Module"; }

  std::unique_ptr<Zorbel::IObject> CreateInstance(
      const char* /*method*/, std::size_t /*argumentCount*/, const std::vector<void*>* /*arguments*/,
      std::shared_ptr<const IBeanWrapper> /*wrapper*/, const char* /*exitMethod*/,
      const std::vector<std::shared_ptr<Zorbel::IObject>>& /*dependencies*/) const override {
    return std::make_unique<Zorbel::IObject>();
  }

  bool CallMethod(Zorbel::IObject* /*object*/, const char* /*method*/, std::size_t /*argumentCount*/,
                  const std::vector<void*>* /*arguments*/) const override {
    return false;
  }

  void GetParameterTypes(const char* /*method*/, std::size_t /*argumentCount*/,
                         std::vector<std::string>& /*types*/) override {}
};

}  // namespace

ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_of_Module_Wrapper() { return new CWrapper; }
ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_NoWrapper_Wrapper() { return nullptr; }
