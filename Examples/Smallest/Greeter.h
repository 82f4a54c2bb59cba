#pragma once

#include <Zorbel/IObject.h>

#include <string>

/// What host and plug-in share.
struct IGreeter : Zorbel::IObject {
  virtual std::string Greet() const = 0;
};
