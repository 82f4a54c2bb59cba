#include <Zorbel/Class.h>

#include "Greeter.h"

class CGreeter : public IGreeter {
 public:
  explicit CGreeter(std::string name) : m_name(std::move(name)) {}
  std::string Greet() const override { return "Hello, " + m_name + "!"; }

 private:
  std::string m_name;
};

ZORBEL_CLASS(CGreeter) { Constructor<std::string>(); }
