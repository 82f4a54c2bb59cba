#pragma once

#include <memory>

#include <Zorbel/Export.h>

/// What every error of the library and of its base library can tell: where it was raised, and on which thread.
/// Catch it by reference. Thread: an exception belongs to the thread that raises it; a copy may be read on any.
/// Ownership: returned texts belong to the exception and stay valid until it is assigned to or destroyed.
class ZORBEL_INTERFACE IException {
 public:
  IException() = default;
  IException(const IException&) = default;
  IException& operator=(const IException&) = default;
  virtual ~IException() = default;

  /// Returns a new copy of the same class; the caller owns it.
  virtual std::unique_ptr<IException> Clone() const = 0;

  /// Returns the source file of the raising code; never null.
  virtual const char* GetFilename() const = 0;

  /// Returns the source line of the raising code, counted from 1.
  virtual unsigned int GetCodeLine() const = 0;

  /// Returns the qualified name of the raising function; never null.
  virtual const char* GetFunctionName() const = 0;

  /// Returns the system's id of the thread that raised the exception, also in copies made elsewhere.
  virtual unsigned int GetThreadID() const = 0;
};
