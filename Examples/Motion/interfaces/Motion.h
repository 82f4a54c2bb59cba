#pragma once

#include <Zorbel/IObject.h>

#include <string>

/// What the host and its plug-ins know of each other. Each interface has a type id, under which its services are
/// registered.
namespace motion {

class ILogger : public Zorbel::IObject {
 public:
  static constexpr const char* kTypeId = "motion.ILogger";
  virtual void Write(const std::string& text) = 0;
};

class IAxis : public Zorbel::IObject {
 public:
  virtual const std::string& Name() const = 0;
  virtual double Position() const = 0;  // millimetres
  virtual void MoveTo(double millimetres) = 0;
};

class ISensor : public Zorbel::IObject {
 public:
  static constexpr const char* kTypeId = "motion.ISensor";
  virtual std::string Read() const = 0;
};

class IController : public Zorbel::IObject {
 public:
  static constexpr const char* kTypeId = "motion.IController";
  virtual void MoveTo(double x, double y) = 0;
};

}  // namespace motion
