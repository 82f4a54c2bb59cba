#include <Zorbel/CContainer.h>

#include <iostream>

#include "Greeter.h"

int main() {
  const Zorbel::CContainer container(R"(
      <zorbel>
        <library path="smallest-plugin">
          <beans>
            <bean name="greeter" class="CGreeter">
              <constructor-arg><argument><value type="const char*">world</value></argument></constructor-arg>
            </bean>
          </beans>
        </library>
      </zorbel>)",
                                     false);
  const auto greeter = container.GetBean<IGreeter>("greeter");
  if (!greeter) {
    std::cerr << "There is nobody to greet you; the lines above say why.\n";  // they are the log's
    return 1;
  }
  std::cout << greeter->Greet() << '\n';
}
