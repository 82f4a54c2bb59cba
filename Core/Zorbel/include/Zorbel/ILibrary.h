#pragma once

#include <Zorbel/Export.h>

namespace Zorbel {

/// Where the container finds wrapper makers: a loaded plug-in module, or the process's own local library.
/// Thread: look-ups may run on any number of threads at once.
class ZORBEL_INTERFACE ILibrary {
 public:
  ILibrary() = default;
  ILibrary(const ILibrary&) = delete;
  ILibrary& operator=(const ILibrary&) = delete;
  virtual ~ILibrary() = default;

  /// Returns the path the library was loaded from, as configured; null for the local library.
  virtual const char* GetPath() = 0;

  /// Returns the address of the function exported or registered under exactly `name`, or null.
  virtual void* GetFunction(const char* name) = 0;
};

/// The registration side of the local library: what the host, or a plug-in already loaded, adds to the process.
/// Names are compared exactly and copied. Thread: every operation may be called from any thread at any time.
class ZORBEL_INTERFACE ILibraryConfiguration {
 public:
  ILibraryConfiguration() = default;
  ILibraryConfiguration(const ILibraryConfiguration&) = delete;
  ILibraryConfiguration& operator=(const ILibraryConfiguration&) = delete;
  virtual ~ILibraryConfiguration() = default;

  /// Registers a wrapper maker (see `IBeanWrapper`) under its composed name, replacing an earlier one.
  /// Throws: `CException` when `name` is null.
  virtual void RegisterFunction(const char* name, void* function) = 0;

  /// Returns: true when an entry was removed, false when there was none.
  virtual bool UnregisterFunction(const char* name) = 0;

  /// Registers the type id of a class or interface, replacing an earlier one. A null `typeId` is the empty one.
  /// Throws: `CException` when `className` is null.
  virtual void RegisterTypeID(const char* className, const char* typeId) = 0;
};

/// Returns the process's local library; it lives until the library is unloaded. Register what a document needs before
/// loading it.
ZORBEL_API ILibraryConfiguration& GetLocalLibrary();

}  // namespace Zorbel
