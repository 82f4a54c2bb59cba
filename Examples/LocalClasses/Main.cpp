// A host without any plug-in: its own classes are beans as well. A document declares them for a library that is loaded
// in any case; they are found in the process's local library.
#include <Zorbel/CContainer.h>
#include <Zorbel/Class.h>

#include <iostream>
#include <memory>
#include <string>

namespace app {

/// No base class is needed.
class CStock {
 public:
  void Add(const std::string& article, int count) { std::cout << "stock: " << count << " x " << article << '\n'; }
};

class CShop {
 public:
  CShop(std::shared_ptr<CStock> stock, std::string town) : m_stock(std::move(stock)), m_town(std::move(town)) {}
  void Open() {
    std::cout << "shop in " << m_town << ": opens\n";
    m_stock->Add("lamp", 3);
  }
  void Close() { std::cout << "shop in " << m_town << ": closes\n"; }

 private:
  std::shared_ptr<CStock> m_stock;
  std::string m_town;
};

}  // namespace app

ZORBEL_CLASS(app, CStock) { Constructor<>(); }

ZORBEL_CLASS(app, CShop) {
  Constructor<std::shared_ptr<app::CStock>, std::string>();
  Method("Open", &Class::Open);
  Method("Close", &Class::Close);
}

int main() {
  ZORBEL_REGISTER_CLASS(app, CStock);
  ZORBEL_REGISTER_CLASS(app, CShop);
  const Zorbel::CContainer container(R"(
      <zorbel>
        <library path=")" ZORBEL_HOST_LIBRARY R"(">
          <beans>
            <bean name="stock" class="app::CStock" singleton="true"/>
            <foreach substitute="town" set="Ulm|Bonn">
              <bean name="shop%town%" class="app::CShop" init-method="Open" exit-method="Close">
                <constructor-arg>
                  <argument><ref bean="stock"/></argument>
                  <argument><value type="const char*">%town%</value></argument>
                </constructor-arg>
              </bean>
            </foreach>
          </beans>
        </library>
      </zorbel>)",
                                     false);
  const auto ulm = container.GetBean<app::CShop>("shopUlm");
  const auto bonn = container.GetBean<app::CShop>("shopBonn");
}
