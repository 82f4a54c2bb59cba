// A program that carries its document, fills in what it knows itself, and lets a file in the folder it is
// started from add more.
#include <Zorbel/CContainer.h>
#include <Zorbel/CException.h>
#include <Zorbel/Class.h>

#include <filesystem>
#include <iostream>
#include <string>

namespace app {

class CPort {
 public:
  explicit CPort(unsigned short number) { std::cout << "port " << number << " is open\n"; }
};

std::string Document(int firstPort, int lastPort) {
  return R"(<zorbel><library path=")" ZORBEL_HOST_LIBRARY R"("><beans>
              <for first=")" +
         std::to_string(firstPort) + R"(" last=")" + std::to_string(lastPort) + R"(" substitute="port">
                <bean name="port%port%" class="app::CPort" lazy="false" singleton="true">
                  <constructor-arg><argument><value type="unsigned short">%port%</value></argument></constructor-arg>
                </bean>
              </for>
            </beans></library></zorbel>)";
}

}  // namespace app

ZORBEL_CLASS(app, CPort) { Constructor<unsigned short>(); }

int main() {
  ZORBEL_REGISTER_CLASS(app, CPort);
  try {
    const Zorbel::CContainer ports(app::Document(8080, 8082).c_str(), true);
    if (!std::filesystem::exists("more-ports.xml")) {
      std::cout << "no more-ports.xml here: nothing is added\n";
      return 0;
    }
    const Zorbel::CContainer more(L"more-ports.xml", true);  // into the same factory
  } catch (const Zorbel::CException&) {
    return 1;  // the log has told
  }
}
