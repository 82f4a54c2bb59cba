#include "FailingOperations.h"

#include <Logging/CLogger.h>
#include <Logging/Logging.h>
#include <Zorbel/Class.h>

#include <chrono>
#include <fstream>
#include <new>
#include <thread>
#include <utility>

namespace fs = std::filesystem;
using Zorbel::CContainer;
using Zorbel::IObject;
using Object = std::shared_ptr<IObject>;
using Owned = std::unique_ptr<IObject>;

namespace failing {

int living = 0;
int toRelease = 0;

namespace {

CContainer* asked = nullptr;

class CPart : public IPart {
 public:
  explicit CPart(int number) : m_text(std::to_string(number)) {}
  CPart(int number, const std::wstring& label) : CPart(number) {
    Label(label);
    ++toRelease;
  }
  void Take(const IPart& part) { m_text.append("(").append(part.Text()).append(")"); }
  void Label(const std::wstring& label) { m_text.append("+").append(std::to_string(label.size())); }
  void Start() { m_text += " started"; }
  void Stop() {
    --toRelease;
    if (CContainer* container = std::exchange(asked, nullptr)) {
      container->GetBean("loop2");
      asked = container;
    }
  }
  std::string Text() const override { return m_text; }

 private:
  std::string m_text;
};

}  // namespace
}  // namespace failing

ZORBEL_CLASS(failing, CPart) {
  Constructor<int, const std::wstring&>();
  Factory("Make", [](int number) { return std::make_unique<failing::CPart>(number); });
  Method("Take", &Class::Take);
  Method("Label", &Class::Label);
  Method("SetName", [](Class&, const std::string& name) { return name.size(); });
  Method("Start", &Class::Start);
  Method("Stop", &Class::Stop);
  Method("Leave", [](Class&) {});
}

namespace failing {
namespace {

std::string Part(const std::string& attributes, const std::string& content = "") {
  return "<bean " + attributes + " class='failing::CPart' init-method='Start' exit-method='Stop'><constructor-arg>" +
         "<argument><value type='int'>7</value></argument><argument><value type='const wchar_t*'>a label</value>" +
         "</argument></constructor-arg>" + content + "</bean>";
}
std::string Library(const std::string& path, const std::string& beans) {
  return "<library path='" + path + "'><beans>" + beans + "</beans></library>";
}
std::string Document(const std::string& content) { return "<zorbel>" + content + "</zorbel>"; }

const std::string kEager = "singleton='true' lazy='false'";
const std::string kProvides =
    "<provides><interface>IFailing</interface><interface>IFailingOther</interface></provides>";
const std::string kTakes = "<properties><property name='Take'>" + Part("") + "</property></properties>";
const std::string kFirst =
    Library("emptyplugin",
            Part("name='base' singleton='true' autoname='true'", kProvides) +
                Part("name='eager' " + kEager, kTakes + "<depends-on><bean-name>base</bean-name></depends-on>") +
                Part("name='whole'",
                     "<properties><property name='Take'><ref bean='base'/></property><property name='Take'>"
                     "<ref service='IFailing'/></property><foreach set='a|bc' substitute='v'><property "
                     "name='Label'><value type='const wchar_t*'>a longer label, %v%</value></property>"
                     "</foreach></properties>") +
                "<for first='1' last='3' substitute='n'>" + Part("name='loop%n%'") + "</for>" +
                "<bean name='made' class='failing::CPart' factory-method='Make' exit-method='Leave'><constructor-arg>"
                "<argument><value type='int'>1</value></argument></constructor-arg></bean>");
const std::string kSecond =
    Library("makers", Part("name='far' singleton='true'", kProvides)) +
    Library("emptyplugin", Part("name='second'", kProvides) + Part("name='secondEager' " + kEager, kTakes));

const std::string kFirstText = Document(kFirst);
const std::string kSecondText = Document(kSecond);
const std::string kBothText = Document(kFirst + kSecond);

Owned MakePlain() { return std::make_unique<IPart>(); }
Owned MakeCounted() {
  Owned part = MakePlain();
  ++toRelease;
  return part;
}
Owned MakeNull() { return nullptr; }

void Nothing(SWorld&) {}
void FillWith(SWorld& world, const std::string& text, bool integration) {
  world.container.emplace(text.c_str(), integration);
  world.kept = world.container->GetBean("base");
}
void Fill(SWorld& world) { FillWith(world, kFirstText, false); }
void FillBoth(SWorld& world) { world.container.emplace(kBothText.c_str(), false); }
void FillShared(SWorld& world) { FillWith(world, kFirstText, true); }
void FillLarge(SWorld& world) {  // the factory's tables grow for the next entry
  const std::string loop =
      "<for first='1' last='95' substitute='n'><bean name='loop%n%' class='failing::CPart'/></for>";
  FillWith(world, Document(Library("makers", loop)), true);
  while (world.container->GetServiceCount(kOther) < 95) {
    world.container->RegisterService(kOther, &MakePlain);
  }
}
void FillAndRegister(SWorld& world) {
  Fill(world);
  world.container->RegisterInstance(kType, world.instance, true);
  world.container->RegisterInstance(kOther, world.instance);
}
void FillSlowly(SWorld& world) {  // its end takes so long that the text of the time is no short one
  FillShared(world);
  world.container->RegisterInstance(kOther, world.instance);
  const auto dawdle = [](IObject* object) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    delete object;
  };
  world.container->RegisterInstance(kType, Object(new IPart, dawdle));
}
struct SLargeFunction {
  void operator()(const IObject* product) const { toRelease -= product != nullptr ? 1 : 0; }
  void operator()(const Logging::SRecord&) const {}
  std::string text = "takes more room than there is without memory";
};

template <Owned (*maker)(), bool singleton = false>
void RegisterMaker(SWorld& world) {
  Fill(world);
  world.registration = world.container->RegisterService(kOther, maker, true);
  world.registration->SetReleaseFunction(SLargeFunction());
  if (singleton) {
    world.registration->SetSingleton();
  }
}

/// For what tells its failure by its result.
void Require(bool succeeded) {
  if (!succeeded) {
    throw std::bad_alloc();
  }
}

/// Requires that `f` raises an error of its own.
template <class F>
void RequireError(F f) {
  try {
    f();
  } catch (const Zorbel::CException&) {
    return;
  }
  Require(false);
}

void GetBeans(SWorld& world) {
  for (const char* name : kNames) {
    Require(world.container->GetBean(name) != nullptr);
  }
}
void Produce(SWorld& world) {  // as many as tables of the process have to grow for
  world.products.clear();
  while (world.products.size() < 130) {
    world.products.push_back(world.container->GetService(kOther));
  }
}
void ProduceNull(SWorld& world) { Require(world.container->GetService(kOther) == nullptr); }
void RegisterPlain(SWorld& world) { Require(world.container->RegisterService(kOther, &MakePlain, true) != nullptr); }

void Reset(SWorld& world) { world.container->Reset(); }
void ResetWhileExitMethodsAsk(SWorld& world) {
  asked = &*world.container;
  Reset(world);
  asked = nullptr;
}

void WriteToFile(SWorld& world) {
  Logging::SetSink(Logging::RotatingFileSink((world.folder / "lines.log").string().c_str(), 300, 2));
  for (int i = 0; i < 3; ++i) {
    Logging::CLogger(L"failing").Error("file", i, "function", L"%s", L"a text that is longer than a short one");
  }
}

const std::vector<SOperation> kOperations = {
    {"LoadShared", &Nothing, [](SWorld& w) { w.container.emplace(kBothText.c_str(), true); }},
    {"LoadFile", &Nothing, [](SWorld& w) { w.container.emplace(w.File("main.xml").c_str(), false); }},
    {"MergeText", &FillShared, [](SWorld& w) { w.merged.emplace(kSecondText.c_str(), true); }},
    {"MergeIntoLarge", &FillLarge, [](SWorld& w) { w.merged.emplace(kSecondText.c_str(), true); }},
    {"RefuseMerge", &FillShared, [](SWorld& w) { RequireError([&] { w.merged.emplace(kFirstText.c_str(), true); }); }},
    {"RefuseDocument", &FillShared, [](SWorld& w) { RequireError([&] { w.merged.emplace("<zorbel>", true); }); }},
    {"GetBeans", &FillBoth, &GetBeans},
    {"RefuseBean", &Fill, [](SWorld& w) { Require(!w.container->GetBean("none of these, with a long name")); }},
    {"RegisterService", &FillAndRegister, &RegisterPlain},
    {"RegisterIntoLarge", &FillLarge, &RegisterPlain},
    {"RegisterInstance", &Fill, [](SWorld& w) { w.container->RegisterInstance(kOther, w.instance); }},
    {"RefuseInstance", &FillAndRegister,
     [](SWorld& w) { RequireError([&] { w.container->RegisterInstance(kType, w.instance); }); }},
    {"ReleaseInstance", &FillAndRegister, [](SWorld& w) { w.container->ReleaseInstance(w.instance); }},
    {"SetReleaseFunction", &RegisterMaker<&MakeNull>,
     [](SWorld& w) { w.registration->SetReleaseFunction(SLargeFunction()); }},
    {"Produce", &RegisterMaker<&MakeCounted>, &Produce},
    {"ProduceSingleton", &RegisterMaker<&MakeCounted, true>, &Produce},
    {"ProduceNull", &RegisterMaker<&MakeNull>, &ProduceNull},
    {"ProduceNullSingleton", &RegisterMaker<&MakeNull, true>, &ProduceNull},
    {"Reset", &FillSlowly, &Reset},
    {"ResetAsking", &FillShared, &ResetWhileExitMethodsAsk},
    {"ResetToFile", &FillAndRegister, [](SWorld& w) { w.container->Reset(w.File("main.xml").c_str()); }, true},
    {"Destroy", &FillAndRegister, [](SWorld& w) { w.container.reset(); }},
    {"RegisterFunction", &Nothing, [](SWorld&) { ZORBEL_REGISTER_CLASS(failing, CPart); }},
    {"RegisterTypeID", &Nothing,
     [](SWorld&) { Zorbel::GetLocalLibrary().RegisterTypeID("A long class name", kOther); }},
    {"SetSink", &Nothing, [](SWorld&) { Logging::SetSink(SLargeFunction()); }},
    {"SetLevel", &Nothing, [](SWorld&) { Logging::SetLevel(L"new", Logging::kLevelError); }},
    {"WriteToFile", &Nothing, &WriteToFile},
};

}  // namespace

void Prepare(const fs::path& folder) {
  ZORBEL_REGISTER_CLASS(failing, CPart);
  Zorbel::GetLocalLibrary().RegisterTypeID("IFailing", kType);
  Zorbel::GetLocalLibrary().RegisterTypeID("IFailingOther", kOther);
  fs::create_directories(folder / "sub");
  std::ofstream(folder / "main.xml") << Document("<include path='second.xml'/>" + kFirst);
  std::ofstream(folder / "second.xml") << Document("<include path='sub/third.xml'/>" + kSecond);
  std::ofstream(folder / "sub" / "third.xml") << Document("");
}

const std::vector<SOperation>& Operations() { return kOperations; }

}  // namespace failing
