#include "Factory/CBeanFactoryImpl.h"
#include "Zorbel/Beans.h"

using namespace Test;

namespace {

using Factory = Beans;

}  // namespace

TEST_F(Factory, TakesOverAnotherOnlyWhenItIsEmptied) {
  Zorbel::CBeanFactoryImpl target;
  EXPECT_EQ(ErrorOf([&] { target = Zorbel::CBeanFactoryImpl(); }), L"Internal error");
  EXPECT_EQ(Origin(), "Zorbel::CBeanFactoryImpl::operator = in Core/Zorbel/src/CBeanFactoryImpl");
  EXPECT_FALSE(target.Exists("b"));
}
