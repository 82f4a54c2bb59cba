#include "Support/TestClasses.h"

#include <Zorbel/CStringT.h>
#include <Zorbel/ILibrary.h>

#include <array>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace Test {
namespace {

constexpr std::size_t kSlots = 16;  // a wrapper maker is a plain function, so there is one for each slot

struct SSlot {
  std::string className;
  SClass behaviour;
};

std::array<SSlot, kSlots> slots;
std::mutex journalMutex;
std::vector<std::string> journal;

std::string Call(const std::string& className, const char* method, std::size_t count) {
  return className + "." + method + "/" + std::to_string(count);
}

class CTestWrapper : public Zorbel::IBeanWrapper {
 public:
  explicit CTestWrapper(const SSlot& slot) : m_name(slot.className), m_class(slot.behaviour) {}

  const char* GetClassName() const override { return m_name.empty() ? nullptr : m_name.c_str(); }

  std::unique_ptr<Zorbel::IObject> CreateInstance(
      const char* method, std::size_t argumentCount, const Arguments* arguments,
      std::shared_ptr<const IBeanWrapper> wrapper, const char* exitMethod,
      const std::vector<std::shared_ptr<Zorbel::IObject>>& dependencies) const override {
    Journal::Add("create " + Call(m_name, method, argumentCount));
    SCreation creation{method, arguments, std::move(wrapper), exitMethod, dependencies};
    return m_class.create ? m_class.create(creation) : std::make_unique<CTestObject>(m_name, std::move(creation));
  }

  bool CallMethod(Zorbel::IObject* object, const char* method, std::size_t argumentCount,
                  const Arguments* arguments) const override {
    Journal::Add("call " + Call(m_name, method, argumentCount));
    return !m_class.call || m_class.call(object, method, arguments);
  }

  void GetParameterTypes(const char* method, std::size_t argumentCount, std::vector<std::string>& types) override {
    Journal::Add("types " + Call(m_name, method, argumentCount));
    types = m_class.types ? m_class.types(method, argumentCount) : std::vector<std::string>(argumentCount, "int");
  }

 private:
  const std::string m_name;
  const SClass m_class;
};

template <std::size_t slot>
Zorbel::IBeanWrapper* Make() {
  Journal::Add("make " + slots[slot].className);
  return slots[slot].behaviour.make ? slots[slot].behaviour.make(slots[slot].className) : new CTestWrapper(slots[slot]);
}

template <std::size_t... slot>
constexpr std::array<Zorbel::IBeanWrapper* (*)(), sizeof...(slot)> Makers(std::index_sequence<slot...>) {
  return {&Make<slot>...};
}

std::string MakerName(const std::string& className) {
  CStringT<char> name(className.c_str());
  name.Replace("::", "_");
  return "create_" + std::string(name.GetString()) + "_Wrapper";
}

}  // namespace

void Journal::Add(const std::string& line) {
  const std::lock_guard lock(journalMutex);
  journal.push_back(line);
}

std::vector<std::string> Journal::Take() {
  const std::lock_guard lock(journalMutex);
  return std::exchange(journal, {});
}

TestClasses::TestClasses() { Journal::Take(); }

TestClasses::~TestClasses() {
  for (const std::string& maker : m_makers) {
    Zorbel::GetLocalLibrary().UnregisterFunction(maker.c_str());
  }
  slots.fill({});
}

void TestClasses::Add(const std::string& className, SClass behaviour) {
  const std::size_t slot = m_makers.size();
  slots.at(slot) = {className, std::move(behaviour)};
  m_makers.push_back(MakerName(className));
  constexpr auto kMakers = Makers(std::make_index_sequence<kSlots>());
  Zorbel::GetLocalLibrary().RegisterFunction(m_makers.back().c_str(), reinterpret_cast<void*>(kMakers[slot]));
}

Zorbel::IBeanWrapper* MakeWrapper(const std::string& className, SClass behaviour) {
  return new CTestWrapper({className, std::move(behaviour)});
}

std::string Document(const std::string& beans) {
  return "<zorbel><library path=\"emptyplugin\"><beans>" + beans + "</beans></library></zorbel>";
}

}  // namespace Test
