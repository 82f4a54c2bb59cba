#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <Zorbel/Export.h>
#include <Zorbel/IObject.h>

namespace Zorbel {

/// Gives the container access to one class: creates its instances and calls their methods by name.
///
/// A plug-in module exports, for each class, a *wrapper maker*: a function without parameters that returns a new
/// wrapper (`IBeanWrapper*`), named "create_" + class name with "::" replaced by "_" + "_Wrapper". Define it with
/// `ZORBEL_PLUGIN_EXPORT`. A class of the host is registered under the same name with `GetLocalLibrary`.
///
/// Arguments arrive as a count and a vector of that many addresses; the vector is null when the count is 0. Each
/// element points at a value of the type named in the configuration: a basic type's value (for the string types a
/// `CStringT<char>` or `CStringT<wchar_t>`), or a `std::shared_ptr<IObject>` for a reference, empty for a configured
/// null. An element that is itself null means that the value is missing: a reference that yielded no object.
/// Ownership: the values live until the call returns; copy what is to be kept.
///
/// Thread: called on whichever thread resolves a bean, with the factory's lock held; one wrapper serves all beans of
/// its class in a factory. Makers and `GetParameterTypes` are called too, without a lock and on several threads at a
/// time, while a document is read in which a bean provides an interface; wrappers made there go when it is
/// loaded. Exceptions may be thrown: the bean then fails with a warning in the log; from a maker or `GetParameterTypes`
/// they reach whoever loads the document or calls `IBeanFactory::Exists`.
class ZORBEL_INTERFACE IBeanWrapper {
 public:
  IBeanWrapper() = default;
  IBeanWrapper(const IBeanWrapper&) = delete;
  IBeanWrapper& operator=(const IBeanWrapper&) = delete;
  virtual ~IBeanWrapper() = default;

  /// Returns the wrapped class's name, for messages. Ownership: the wrapper's.
  virtual const char* GetClassName() const = 0;

  /// Creates an instance with the creation method `method`: the class's unqualified name for its constructor, or the
  /// configured factory method. `wrapper` is this very wrapper. `exitMethod` (empty for none, never null) is to be
  /// called before the object is destroyed, and `dependencies` are to live until then; both are the returned object's
  /// affair. An element of `dependencies` is empty when its bean could not be had.
  /// Returns: the object, or null when it could not be created.
  virtual std::unique_ptr<IObject> CreateInstance(const char* method, std::size_t argumentCount,
                                                  const std::vector<void*>* arguments,
                                                  std::shared_ptr<const IBeanWrapper> wrapper, const char* exitMethod,
                                                  const std::vector<std::shared_ptr<IObject>>& dependencies) const = 0;

  /// Calls the method or property setter `method` of `object`. "SetName" is called with one element that points at a
  /// `const char*` when the bean is auto-named.
  /// Returns: false when there is no such method or the call could not be made; the bean then fails.
  virtual bool CallMethod(IObject* object, const char* method, std::size_t argumentCount,
                          const std::vector<void*>* arguments) const = 0;

  /// Fills `types` (given empty) with the parameter types of the creation method `method` that takes `argumentCount`
  /// arguments. The container never calls it; tools do. The default reports nothing.
  virtual void GetCreationParameterTypes([[maybe_unused]] const char* method,
                                         [[maybe_unused]] std::size_t argumentCount,
                                         [[maybe_unused]] std::vector<std::string>& types) {}

  /// Fills `types` (given empty) with the parameter types of `method` when called with `argumentCount` arguments, in
  /// order. Each configured value that is no reference, an explicit null included, needs a type that is not empty;
  /// references are not counted.
  virtual void GetParameterTypes(const char* method, std::size_t argumentCount, std::vector<std::string>& types) = 0;
};

}  // namespace Zorbel
