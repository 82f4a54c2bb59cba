#pragma once

#include <Zorbel/IBeanWrapper.h>
#include <Zorbel/IObject.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Test {

using Arguments = std::vector<void*>;

struct SCreation {
  std::string method;
  const Arguments* arguments;  // null when there are none
  std::shared_ptr<const Zorbel::IBeanWrapper> wrapper;
  std::string exitMethod;
  std::vector<std::shared_ptr<Zorbel::IObject>> dependencies;
};

/// What the wrapper of a class does; each operation has a default that works.
struct SClass {
  using Create = std::unique_ptr<Zorbel::IObject>(const SCreation&);
  using Call = bool(Zorbel::IObject*, const std::string& method, const Arguments* values);
  using Types = std::vector<std::string>(const std::string& method, std::size_t count);
  using Make = Zorbel::IBeanWrapper*(const std::string& className);

  std::function<Create> create = nullptr;  // a CTestObject
  std::function<Call> call = nullptr;      // true
  std::function<Types> types = nullptr;    // "int" for each
  std::function<Make> make = nullptr;      // a wrapper
};

/// What the wrappers did, in order: "make C", "create C.method/2", "call C.method/0", "types C.method/1", "~C" when a
/// CTestObject is destroyed. Thread: safe.
class Journal {
 public:
  static void Add(const std::string& line);
  static std::vector<std::string> Take();  // returns the lines and forgets them
};

/// The default instance; `Test::Cast` reaches it.
class CTestObject : public Zorbel::IObject {
 public:
  CTestObject(std::string name, SCreation howCreated) : className(std::move(name)), creation(std::move(howCreated)) {}
  ~CTestObject() override { Journal::Add("~" + className); }

  const std::string className;
  SCreation creation;
};

inline CTestObject* Cast(const std::shared_ptr<Zorbel::IObject>& object) {
  return dynamic_cast<CTestObject*>(object.get());
}

/// Registers classes in the local library while it lives, and empties the journal. At most 16 at a time.
class TestClasses {
 public:
  TestClasses();
  ~TestClasses();
  TestClasses(const TestClasses&) = delete;
  TestClasses& operator=(const TestClasses&) = delete;

  void Add(const std::string& className, SClass behaviour = {});

 private:
  std::vector<std::string> m_makers;
};

/// A wrapper as the default maker of a class makes it; that of the empty class name reports none.
Zorbel::IBeanWrapper* MakeWrapper(const std::string& className, SClass behaviour = {});

/// Returns a document that declares `beans` for the module "emptyplugin", which exports no wrapper maker.
std::string Document(const std::string& beans);

}  // namespace Test
