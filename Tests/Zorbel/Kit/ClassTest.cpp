#include <Zorbel/Class.h>

#include <climits>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>

#include "Zorbel/Beans.h"

using namespace Test;

namespace kit {
namespace {

std::string made;  // what the calls received

enum class EMode : short { slow = 3, fast };

struct IPart : Zorbel::IObject {
  static constexpr const char* kTypeId = "kit.IPart";
  virtual std::string Text() const = 0;
};
struct INamed : Zorbel::IObject {
  virtual void SetName(std::string_view name) { m_name = name; }
  std::string m_name;
};

/// Reaches `IObject` by two ways, cannot be copied, and inherits its naming.
class CPart : public IPart, public INamed {
 public:
  explicit CPart(const std::string& text) : m_text(text) {}
  CPart(const CPart&) = delete;
  CPart& operator=(const CPart&) = delete;
  ~CPart() override { Journal::Add("~" + m_text); }
  std::string Text() const override { return m_text + m_name; }
  void Stop() noexcept { Journal::Add("stop " + m_text); }

 private:
  const std::string m_text;
};

/// No object of the container, no virtual function, and final.
class CPlain final {
 public:
  explicit CPlain(int number) : m_number(number) {}
  ~CPlain() { Journal::Add("~plain"); }
  void Stop() & { Journal::Add("stop plain"); }
  void SetName(const std::wstring&) const noexcept {}
  int Number() const { return m_number; }

 private:
  int m_number;
};

struct SBase {
  void Inherited(const char* text) { made += text; }
};

/// Takes everything that a parameter can be.
class CWhole : public SBase {
 public:
  CWhole() { made += "default;"; }
  CWhole(const std::shared_ptr<IPart>& part, EMode mode) {
    made += (part ? part->Text() : "none") + std::to_string(static_cast<int>(mode)) + ";";
  }
  CWhole(std::shared_ptr<CPlain> plain, EMode) { made += "plain " + std::to_string(plain->Number()) + ";"; }
  explicit CWhole(int number) {
    if (number < 0) {
      throw std::invalid_argument("negative \xE2\x82\xAC");
    }
  }
  static std::unique_ptr<CWhole> Make(std::optional<std::shared_ptr<IPart>> part) {
    made += part ? "part;" : "no part;";
    return std::make_unique<CWhole>();
  }

  void SetNumbers(bool b, char c, signed char s, unsigned char u, const short& t, unsigned short r) {
    made += std::to_string(b) + c + std::to_string(s + u + t + r) + ";";
  }
  void SetMore(unsigned int i, long l, unsigned long u, float f, double d) {
    made += std::to_string(static_cast<double>(i) + static_cast<double>(l) + static_cast<double>(u) + f + d) + ";";
  }
  void SetTexts(std::string a, const std::string_view& b, const char* c, CStringT<char> d) {
    made += a + std::string(b) + c + d.GetString() + ";";
  }
  void SetWide(const std::wstring& a, std::wstring_view b, const wchar_t* c, const CStringT<wchar_t>& d) {
    made += a == L"\u20AC" && b == a && c == a && d.GetString() == a ? "wide;" : "not wide;";
  }
  void SetPart(const IPart& part) noexcept { made += "needs " + part.Text() + ";"; }
  void SetPart(std::shared_ptr<const IPart> part, int) const { made += part ? "has;" : "has none;"; }
  void SetEither(int number) { made += "number " + std::to_string(number) + ";"; }
  void SetEither(const std::string& text) { made += "text " + text + ";"; }
  void SetMaybe(std::optional<int> number, std::optional<std::string> text) {
    made += std::to_string(number.value_or(-1)) + text.value_or("none") + ";";
  }
  void Fail() { throw Zorbel::CException("file", 1, "function", L"refused"); }
  void FailOddly() { throw 1; }
};

std::unique_ptr<CPart> MakePart(const char* text) { return *text != '\0' ? std::make_unique<CPart>(text) : nullptr; }

/// Only ever made by another class.
struct CDoor {
  ~CDoor() { Journal::Add("~door"); }
  void Close() { Journal::Add("close door"); }
};

std::unique_ptr<IPart> MakeHiddenPart() { return std::make_unique<CPart>("hidden"); }

/// Counts how often it is asked for its text.
struct SAskedError : std::exception {
  const char* what() const noexcept override { return ++asked, "asked"; }
  static inline int asked = 0;
};

class Ambiguous {
 public:
  void Set(const char*) {}
  void Set(const std::string&) {}
};

}  // namespace
}  // namespace kit

ZORBEL_CLASS(kit, CPart) {
  Constructor<std::string>();
  Method("SetName", &Class::SetName);
  Method("Stop", &Class::Stop);
}

ZORBEL_CLASS(kit, CDoor) { Method("Close", &Class::Close); }

ZORBEL_CLASS(kit, CPlain) {
  Constructor<int>();
  Method("Stop", &Class::Stop);
  Method("SetName", &Class::SetName);
}

ZORBEL_CLASS(kit, CWhole) {
  Constructor<>();
  Constructor<const std::shared_ptr<kit::IPart>&, kit::EMode>();
  Constructor<std::shared_ptr<kit::CPlain>, kit::EMode>();
  Constructor<int>();
  Factory("Make", &Class::Make);
  Factory("MakePart", &kit::MakePart);
  Factory("MakeHiddenPart", &kit::MakeHiddenPart);
  Factory("MakeDoor", [] { return std::make_unique<kit::CDoor>(); });
  Factory("MakePlain", [](int number) { return std::make_unique<kit::CPlain>(number); });
  Method("Inherited", &Class::Inherited);
  Method("SetNumbers", &Class::SetNumbers);
  Method("SetMore", &Class::SetMore);
  Method("SetTexts", &Class::SetTexts);
  Method("SetWide", &Class::SetWide);
  Method("SetPart", Zorbel::Overload<const kit::IPart&>(&Class::SetPart));
  Method("SetPart", Zorbel::Overload<std::shared_ptr<const kit::IPart>, int>(&Class::SetPart));
  Method("SetEither", Zorbel::Overload<int>(&Class::SetEither));
  Method("SetEither", Zorbel::Overload<const std::string&>(&Class::SetEither));
  Method("SetMaybe", &Class::SetMaybe);
  Method("Lambda", [](Class&, int value) { kit::made += std::to_string(value) + ";"; });
  Method("Fail", &Class::Fail);
  Method("FailOddly", &Class::FailOddly);
  Method("StopPart", [](kit::CPart& part) { part.Stop(); });
  Method("FailAsked", [](Class&) { throw kit::SAskedError(); });
  Method("FailPart", [](kit::CPart&) { throw std::runtime_error("at exit"); });
}

ZORBEL_CLASS(kit, Ambiguous) {
  Method("Set", Zorbel::Overload<const char*>(&Class::Set));
  Method("Set", Zorbel::Overload<const std::string&>(&Class::Set));
}

namespace {

class DeclaredClass : public Beans {
 protected:
  DeclaredClass() {
    ZORBEL_REGISTER_CLASS(kit, CPart);
    ZORBEL_REGISTER_CLASS(kit, CPlain);
    ZORBEL_REGISTER_CLASS(kit, CWhole);
    ZORBEL_REGISTER_CLASS(kit, Ambiguous);
    Zorbel::RegisterInterface<kit::IPart>("IKitPart");
    kit::made.clear();
  }

  static std::string Value(const std::string& type, const std::string& text) {
    return "<argument><value type='" + type + "'>" + text + "</value></argument>";
  }
  static std::string Property(const std::string& name, const std::string& arguments) {
    return "<properties><property name='" + name + "'><arguments>" + arguments + "</arguments></property></properties>";
  }
  static std::string Ref(const std::string& bean) { return "<argument><ref bean='" + bean + "'/></argument>"; }

  /// Beans "part" and "plain", and "b" of the class that takes everything.
  static std::string Whole(const std::string& attributes, const std::string& content) {
    return "<bean name='part' class='kit::CPart' autoname='true' singleton='true'><constructor-arg>" +
           Value("char*", "P-") + "</constructor-arg></bean><bean name='plain' class='kit::CPlain'><constructor-arg>" +
           Value("int", "7") + "</constructor-arg></bean>" + Bean("kit::CWhole" + attributes, content);
  }
};

std::string Constructed(const std::string& arguments) { return "<constructor-arg>" + arguments + "</constructor-arg>"; }

}  // namespace

TEST_F(DeclaredClass, ReceivesEveryKindOfParameter) {
  const std::string null = "<argument><nullptr/></argument>";
  const std::string mode = Value("short", "4");
  const std::tuple<std::string, std::string, std::string> kBeans[] = {
      {"", "", "default;"},
      {"", Constructed(Ref("part") + mode), "P-part4;"},
      {"", Constructed(null + mode), "none4;"},
      {"", Constructed(Ref("nobody") + mode), "none4;"},
      {"", Constructed(Ref("plain") + mode), "plain 7;"},
      {"' factory-method='Make", Constructed(Ref("part")), "part;default;"},
      {"' factory-method='Make", Constructed(Ref("nobody")), "no part;default;"},
      {"", Property("Inherited", Value("char*", "base")), "default;base"},
      {"",
       Property("SetNumbers", Value("bool", "true") + Value("char", "x") + Value("int8_t", "-1") +
                                  Value("uint8_t", "255") + Value("short", "-300") + Value("uint16_6", "60000")),
       "default;1x59954;"},
      {"",
       Property("SetMore", Value("uint32_t", "1") + Value("long", "-2") + Value("unsigned long", "3") +
                               Value("float", "0.5") + Value("double", "0.25")),
       "default;2.750000;"},
      {"", Property("SetTexts", Value("char*", "a") + Value("char*", "b") + Value("char*", "c") + Value("char*", "d")),
       "default;abcd;"},
      {"",
       Property("SetWide", Value("wchar_t*", "\xE2\x82\xAC") + Value("wchar_t*", "\xE2\x82\xAC") +
                               Value("wchar_t*", "\xE2\x82\xAC") + Value("wchar_t*", "\xE2\x82\xAC")),
       "default;wide;"},
      {"", Property("SetPart", Ref("part")), "default;needs P-part;"},
      {"", Property("SetPart", null + Value("int", "1")), "default;has none;"},
      {"", Property("Lambda", Value("int", "5")), "default;5;"},
      {"", Property("SetEither", Value("int32_t", "5")), "default;number 5;"},
      {"", Property("SetEither", Value("const char *", "five")), "default;text five;"},
      {"", Property("SetMaybe", null + null), "default;-1none;"},
      {"", Property("SetMaybe", Value("int", "1") + Value("char*", "one")), "default;1one;"},
      {"' init-method='Fail", "", "default;"},
  };
  for (const auto& [attributes, content, expected] : kBeans) {
    kit::made.clear();
    Load(Whole(attributes, content)).GetBean("b");
    EXPECT_EQ(kit::made, expected) << attributes << content;
  }
}

TEST_F(DeclaredClass, TellsWhyACallIsNotMade) {
  const std::string of = " of class 'kit::CWhole'";
  const std::string expected = ", expected 'std::shared_ptr<kit::(anonymous namespace)::IPart>'";
  const std::string created = "Could not create bean 'b'";
  const std::string null = "<argument><nullptr/></argument>";
  const std::string part = "kit::(anonymous namespace)::CPart";
  const std::string gaveUp = "Could not resolve bean 'b', unknown exception was thrown";
  const std::tuple<std::string, std::string, std::string, std::string> kFailures[] = {
      {"", Constructed(Value("int", "1") + Value("int", "1") + Value("int", "1")),
       "Creation method 'CWhole'" + of + " takes 0 or 1 or 2 arguments, not 3", created},
      {"' factory-method='No", "", "Creation method 'No'" + of + " does not exist", created},
      {"' exit-method='No", "", "Exit method 'No'" + of + " does not exist or takes arguments", created},
      {"' init-method='No", "", "Method 'No'" + of + " does not exist",
       "Init method of class 'kit::CWhole' does not exist or is not valid"},
      {"", Property("SetPart", Ref("nobody")), "Argument 1 of method 'SetPart'" + of + " is missing" + expected,
       "Could not set property 'SetPart' of bean 'b'"},
      {"", Property("SetPart", Ref("plain") + Value("int", "1")),
       "Argument 1 of method 'SetPart'" + of + " is a 'kit::(anonymous namespace)::CPlain'" + expected,
       "Could not set property 'SetPart' of bean 'b'"},
      {"' init-method='Fail", "", "Method 'Fail'" + of + " threw exception: refused",
       "Init method 'Fail' of class 'kit::CWhole' threw exception"},
      {"' init-method='FailOddly", "", "Method 'FailOddly'" + of + " threw exception: unknown exception",
       "Init method 'FailOddly' of class 'kit::CWhole' threw exception"},
      {"", Constructed(Value("int", "-1")), "Creation method 'CWhole'" + of + " threw exception: negative \xE2\x82\xAC",
       gaveUp},
      {"", Constructed(Value("double", "1")),
       "Argument 1 of creation method 'CWhole'" + of + " is a 'double', expected 'int'", created},
      {"", Constructed(Ref("part") + Value("char*", "4")),
       "Argument 2 of creation method 'CWhole'" + of + " is a 'const char*', expected 'short'", created},
      {"", Property("No", Value("int", "1")), "Method 'No'" + of + " does not exist", gaveUp},
      {"", Property("Inherited", Value("char*", "1") + Value("char*", "2")),
       "Method 'Inherited'" + of + " takes 1 arguments, not 2", gaveUp},
      {"", Property("SetEither", null), "Argument 1 of method 'SetEither'" + of + " is missing, expected 'int'",
       "Could not set property 'SetEither' of bean 'b'"},
      {"", Property("Inherited", Ref("part")),
       "Argument 1 of method 'Inherited'" + of + " is a '" + part + "', expected 'const char*'",
       "Could not set property 'Inherited' of bean 'b'"},
      {"", Property("Inherited", null), "Argument 1 of method 'Inherited'" + of + " is missing, expected 'const char*'",
       "Could not set property 'Inherited' of bean 'b'"},
      {"' factory-method='MakePart", Constructed(Value("char*", "")), "", created},
      {"' init-method='Fail' factory-method='MakePart", Constructed(Value("char*", "P")),
       "Method 'Fail'" + of + " cannot be called on a '" + part + "'",
       "Init method of class 'kit::CWhole' does not exist or is not valid"},
  };
  std::map<std::string, std::set<int>> places;  // lines that speak, by file
  for (const auto& [attributes, content, reason, warning] : kFailures) {
    const Zorbel::CContainer container = Load(Whole(attributes, content));
    container.GetBean("part");
    m_log.Clear();
    EXPECT_EQ(container.GetBean("b"), nullptr);
    WideLines lines = m_log.Warnings();
    if (content.find("nobody") != std::string::npos) {
      lines.erase(lines.begin());
    }
    WideLines expectedLines{Zorbel::Kit::Decoded(reason).GetString(), Zorbel::Kit::Decoded(warning).GetString()};
    expectedLines.erase(expectedLines.begin(), expectedLines.begin() + (reason.empty() ? 1 : 0));
    EXPECT_EQ(lines, expectedLines);
    for (const Logging::SRecord& line : m_log.Records()) {
      const bool ofTheKit = Zorbel::Kit::Decoded(reason).GetString() == line.text;
      EXPECT_EQ(line.channel, ofTheKit ? L"Zorbel.Kit" : L"Zorbel") << reason;
      if (ofTheKit) {
        places[line.file].insert(line.line);
      }
    }
    m_log.Clear();
  }
  EXPECT_EQ(places.size(), 3U);
  for (const char* header : {"ClassRecord", "ClassWrapper", "Overloads"}) {
    EXPECT_EQ(places[std::string("Zorbel/detail/") + header].size(), 2U) << header;
  }
  Load(Bean("kit::CPlain' autoname='true", Constructed(Value("int", "7")))).GetBean("b");
  EXPECT_EQ(
      m_log.Warnings(),
      (WideLines{L"Argument 1 of method 'SetName' of class 'kit::CPlain' is a 'const char*', expected 'const wchar_t*'",
                 L"Could not auto name bean 'b'"}));
  EXPECT_EQ(
      ErrorOf([] { Load(Bean("kit::Ambiguous")).Exists("b"); }),
      L"Method 'Set' of class 'kit::Ambiguous' is declared twice with 1 parameters that a call cannot tell apart");
}

TEST_F(DeclaredClass, BuildsNoLineThatIsNotWritten) {
  for (const int level : {Logging::kLevelError, Logging::kLevelWarning}) {
    Logging::SetLevel(L"Zorbel.Kit", level);
    kit::SAskedError::asked = 0;
    Load(Bean("kit::CWhole' init-method='FailAsked")).GetBean("b");
    EXPECT_EQ(kit::SAskedError::asked, level == Logging::kLevelWarning ? 1 : 0);
  }
}

TEST_F(DeclaredClass, ReportsItsParameterTypesToTools) {
  const auto wrapper = std::unique_ptr<Zorbel::IBeanWrapper>(create_kit_CWhole_Wrapper());
  const auto typesOf = [&](auto get, const char* method, std::size_t count) {
    Lines types;
    ((*wrapper).*get)(method, count, types);
    return types;
  };
  const auto ofCall = &Zorbel::IBeanWrapper::GetParameterTypes;
  const auto ofCreation = &Zorbel::IBeanWrapper::GetCreationParameterTypes;
  const std::string part = "std::shared_ptr<kit::(anonymous namespace)::IPart>";
  EXPECT_EQ(typesOf(ofCall, "SetMore", 5), (Lines{"unsigned int", "long", "unsigned long", "float", "double"}));
  EXPECT_EQ(typesOf(ofCall, "SetPart", 2), (Lines{part, "int"}));
  EXPECT_EQ(typesOf(ofCreation, "CWhole", 2), (Lines{part, "short"}));
  EXPECT_TRUE(typesOf(ofCall, "SetMore", 4).empty() && typesOf(ofCreation, "No", 0).empty());
}

TEST_F(DeclaredClass, RunsItsExitMethodOnceWhileItsDependenciesLive) {
  m_classes.Add("D");
  const std::string depends = "<bean name='d' class='D'/>";
  const std::string on = "<depends-on><bean-name>d</bean-name></depends-on>";
  const std::pair<std::string, Lines> kExits[] = {
      {Bean("kit::CPart' exit-method='Stop", Constructed(Value("char*", "x")) + on), {"stop x", "~x", "~D"}},
      {Bean("kit::CPart", Constructed(Value("char*", "x")) + on), {"~x", "~D"}},
      {Bean("kit::CPlain' exit-method='Stop", Constructed(Value("int", "1")) + on), {"stop plain", "~plain", "~D"}},
      {Bean("kit::CWhole' exit-method='StopPart' factory-method='MakePart", Constructed(Value("char*", "x")) + on),
       {"stop x", "~x", "~D"}},
      {Bean("kit::CWhole' exit-method='Stop' factory-method='MakeHiddenPart", on), {"stop hidden", "~hidden", "~D"}},
      {Bean("kit::CPart' exit-method='Stop' factory-method='MakeHiddenPart' factory-bean='f", on) +
           "<bean name='f' class='kit::CWhole'/>",
       {"stop hidden", "~hidden", "~D"}},
      {Bean("kit::CWhole' exit-method='Close' factory-method='MakeDoor", on), {"close door", "~door", "~D"}},
      {Bean("kit::CWhole' exit-method='FailPart' factory-method='MakePart", Constructed(Value("char*", "x"))), {"~x"}},
  };
  for (const auto& [beans, expected] : kExits) {
    Object object = Load(beans + depends).GetBean("b");
    ASSERT_NE(object, nullptr) << beans;
    Journal::Take();
    object.reset();
    EXPECT_EQ(Journal::Take(), expected) << beans;
  }
  EXPECT_EQ(m_log.Warnings(), WideLines{L"Exit method 'FailPart' of class 'kit::CWhole' threw exception: at exit"});
}

TEST_F(DeclaredClass, IsHandedOutAsAnyOfItsBases) {
  Zorbel::CContainer container =
      Load(Whole("", "") + "<bean name='p2' class='kit::CWhole' factory-method='MakePlain'>" +
           Constructed(Value("int", "9")) + "</bean>");
  EXPECT_EQ(container.GetBean<kit::IPart>("part")->Text(), "P-part");
  EXPECT_EQ(container.GetBean<kit::CPlain>("plain")->Number(), 7);
  EXPECT_EQ(container.GetBean<kit::CPlain>("p2")->Number(), 9);
  EXPECT_NE(container.GetBean<kit::SBase>("b"), nullptr);
  EXPECT_EQ(container.GetBean<kit::SBase>("part"), nullptr);
  EXPECT_EQ(container.GetBean<kit::IPart>("plain"), nullptr);
  container.RegisterInstance<kit::IPart>(container.GetBean<kit::IPart>("part"));
  container.ReleaseInstance(container.GetBean("part"));
  EXPECT_EQ(container.GetServiceCount(kit::IPart::kTypeId), 0U);
}

TEST_F(DeclaredClass, ServesItsInterfaceByType) {
  Zorbel::CContainer container(nullptr);
  EXPECT_EQ(container.GetService<kit::IPart>(), nullptr);
  const auto add = [&](const char* text, bool front) {
    container.RegisterService<kit::IPart>([text] { return std::make_unique<kit::CPart>(text); }, front);
  };
  add("second", false);
  add("first", true);
  const auto ready = std::make_shared<kit::CPart>("third");
  container.RegisterInstance<kit::IPart>(ready);
  container.RegisterInstance(kit::IPart::kTypeId, MakeObject());
  std::string texts;
  for (const auto& part : container.GetServices<kit::IPart>()) {
    texts += part->Text() + ";";
  }
  EXPECT_EQ(texts, "first;second;third;");
  EXPECT_EQ(container.GetService<kit::IPart>()->Text(), "first");
}

TEST_F(DeclaredClass, OfAModuleIsFoundWithItsInterfaceAndItsStampChecked) {
  const auto load = [](const std::string& library, const std::string& bean) {
    const std::string document =
        "<zorbel><library path='" + library + "'><beans>" + bean + "</beans></library></zorbel>";
    return Zorbel::CContainer(document.c_str(), false);
  };
  const std::string provider = Bean("kit::CGreeter", "<provides><interface>IKitGreeter</interface></provides>");
  EXPECT_NE(load("kitplugin", provider).GetService("kit.IGreeter"), nullptr);

  const std::wstring error = ErrorOf([&] { load("foreignstamp", Bean("C")).Exists("b"); });
  EXPECT_EQ(error.find(L"Library 'foreignstamp' was built for another binary interface (module: interface 99, "), 0U);
  EXPECT_NE(error.find(L", Zorbel 9.8.7, "), std::wstring::npos);
  EXPECT_NE(error.find(L"; library: interface 1, "), std::wstring::npos);
  EXPECT_EQ(Origin(), "Zorbel::CDynamicLibrary::CDynamicLibrary in Core/Zorbel/src/CDynamicLibrary");

  EXPECT_EQ(ErrorOf([&] { load("shortstamp", Bean("C")).Exists("b"); }), L"Getting wrapper maker failed for class 'C'");
}
