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
  std::cout << container.GetBean<IGreeter>("greeter")->Greet() << '\n';
}
