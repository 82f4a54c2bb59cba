#include "Zorbel/Beans.h"

using namespace Test;

namespace {

using Reader = Beans;

std::string Nested(int levels, const std::string& open, const std::string& core, const std::string& close) {
  std::string text;
  for (int i = 0; i < levels; ++i) {
    text += open;
  }
  text += core;
  for (int i = 0; i < levels; ++i) {
    text += close;
  }
  return text;
}

std::string NestedLoops(int levels) {
  return Nested(levels, "<foreach substitute='v'>", "<bean name='b' class='C'/>", "</foreach>");
}

std::string NestedBeans(int levels) {
  return Bean(
      "C", Nested(levels, "<constructor-arg><argument><bean class='C'>", "", "</bean></argument></constructor-arg>"));
}

std::string For(const std::string& attributes, const std::string& body = "<bean name='%n%' class='C'/>") {
  return "<for substitute='n' " + attributes + ">" + body + "</for>";
}

std::string Foreach(const std::string& set, const std::string& name) {
  return "<foreach substitute='v' set='" + set + "'><bean name='" + name + "' class='C'/></foreach>";
}

const std::string kReferenceError = "Error while parsing arguments of bean 'b': ";

}  // namespace

TEST_F(Reader, RefusesADocumentForItsFirstMistake) {
  const std::string xmlError = "Error while parsing xml: Error when parssing 'zorbel'";
  const std::string noNumber = "Value of numeric parameter must be numeric";
  const std::string noBool = "Value of bool parameter must be 'true' or 'false'";
  const std::string tooDeep = "Elements are nested too deeply";
  const std::string endless = "Loop over 'n' never ends";
  const std::string tooLong = "Loop over 'n' exceeds 1000000 passes";
  using SMistake = std::tuple<std::string, std::string, std::string>;  // text, message, function
  const SMistake kDocuments[] = {
      {"<zorbel>\n<library>\n</zorbel>", xmlError + " at line 3, column 3.", "CXMLResource"},
      {"<other/>", xmlError + ".", "CXMLResource"},
      {"\xEF\xBB\xBF", xmlError + ".", "CXMLResource"},
      {"<zorbel><library/></zorbel>", "Error (path not found) when parsing library in file ''", "parseLibrary"},
  };
  const SMistake kBeans[] = {
      {"<bean/>", "Missing class name when parsing type ''", "parseBean"},
      {"<foreach substitute='v'><bean name='x' class='%v%'/></foreach>", "Missing class name when parsing type 'x'",
       "parseBean"},
      {Bean("C' singleton='True"), noBool, "StringToBool"},
      {Bean("C' exported='0' lazy='true", "<constructor-arg/>"), noBool, "StringToBool"},
      {Bean("C", "<properties><property/></properties><constructor-arg/>"),
       "Error while parsing constructor arguments of bean 'b': There are no arguments", "parseConstructorArguments"},
      {Bean("C", Argument("")), "Error when parsing arguments of bean 'b': There are no arguments", "parseArgument"},
      {Bean("C", Argument("<value>1</value><nullptr/>")), kReferenceError + "Type is not defined", "parseArgument"},
      {Bean("C", Argument("<ref bean='' service=''/>")),
       kReferenceError + "There is no valid reference bean or service name", "parseArgument"},
      {Bean("C", Argument("<bean/>")), "Class name for unnamed bean not defined", "parseArgument"},
      {Bean("C", "<provides/><properties><property name=''/></properties>"),
       "Error while parsing property: There is no valid attribute 'name'", "parseProperty"},
      {Bean("C", "<properties><property name='P'><arguments/></property></properties>"),
       "Error while parsing property: Missing arguments", "parseProperty"},
      {Bean("C", "<provides><interface> </interface></provides>"),
       "Error while parsing interface: Missing interface name", "parseInterfaces"},
      {Bean("C", "<provides><for/></provides>"), noNumber, "StringToInt"},
      {"<bean name='m' class='Missing'/>" + Bean("C", "<provides><interface>INo</interface></provides>"),
       "Getting wrapper maker failed for class 'Missing'", "processBean"},
      {For("first='1' last='- 2'"), noNumber, "StringToInt"},
      {"<for first='3' last='1' substitute=''/>", "Empty attribute 'substitute' in bean for loop", "ParseContainer"},
      {"<foreach set='a'/>", "Empty attribute 'substitute' in bean foreach loop", "ParseContainer"},
      {For("first='1' last='2' inc='0'"), endless, "ParseContainer"},
      {For("first='1' last='2' inc='-1'"), endless, "ParseContainer"},
      {For("first='2147483600' last='2147483647'"), endless, "ParseContainer"},
      {For("first='0' last='2000000000' inc='1500000000'"), endless, "ParseContainer"},
      {For("first='1' last='1000001'"), tooLong, "ParseContainer"},
      {"<foreach substitute='n' set='" + std::string(1'000'000, '|') + "x'/>", tooLong, "ParseContainer"},
      {Foreach("a", "100%"), "Invalid substitution pattern", "Substitute"},
      {Foreach("50%", "%v%"), "Invalid substitution pattern", "Substitute"},
      {Foreach("a", "%V%"), "Missing substitution", "Substitute"},
      {Foreach("a", "%%v%"), "Missing substitution", "Substitute"},
      {Foreach("a", "%v.%"), "Missing substitution", "Substitute"},
      {"<foreach substitute='w' set='in'>" + Foreach("%w%", "%^v%") + "</foreach>", "Missing substitution",
       "Substitute"},
      {Foreach("%v%", "x%v%"), "Substitution of 'x%v%' does not end", "Substitute"},
      {Foreach("%v%%v%", "%v%"), "Substitution of '%v%' does not end", "Substitute"},
      {NestedLoops(257), tooDeep, "ParseContainer"},
      {NestedBeans(257), tooDeep, "parseArgument"},
  };
  const auto expectRefusal = [this](const std::string& document, const std::string& message, std::string function) {
    m_log.Clear();
    const std::wstring expected(message.begin(), message.end());
    EXPECT_EQ(ErrorOf([&] { Zorbel::CContainer(document.c_str(), false); }), expected) << document;
    EXPECT_EQ(m_log.Errors(), WideLines{expected}) << document;
    const bool free = function == "StringToInt" || function == "StringToBool" || function == "ParseContainer" ||
                      function == "Substitute";
    EXPECT_EQ(Origin(), (free ? "" : "Zorbel::CXMLResource::") + function + " in Core/Zorbel/src/CXMLResource");
  };
  for (const auto& [document, message, function] : kDocuments) {
    expectRefusal(document, message, function);
  }
  for (const auto& [beans, message, function] : kBeans) {
    expectRefusal(Document(beans), message, function);
  }
}

TEST_F(Reader, FindsTheBeansInItsOrderUnderTheirSubstitutedNames) {
  std::string names;
  m_classes.Add("C", {.call = [&](auto*, auto&, const Arguments* values) {
                  names += std::string(*static_cast<const char**>(values->at(0))) + ";";
                  return true;
                }});
  const auto eager = [](std::string text) {
    for (std::size_t at = text.find("class="); at != std::string::npos; at = text.find("class=", at + 30)) {
      text.insert(at, "lazy='false' autoname='true' ");
    }
    return text;
  };
  const std::pair<std::string, std::string> kNames[] = {
      {Foreach("x", "f%v%") + For("first='1' last='1'") + "<service name='s' class='C'/>" + Bean("C"), "b;s;1;fx;"},
      {kOdd + "<BEAN Name='B' class='C'/><bean name='100%' class='C'/><bean name='s%n%' class='C'/>", "B;100%;s%n%;"},
      {For("first='3' last='1' inc='0'") + For("first='1' last='10' inc='4'"), "1;5;9;"},
      {kOdd + For("first=' -2x' last='+2'"), "-2;-1;0;1;2;"},
      {kOdd + For("first='4294967295' last='4294967296'"), "-1;0;"},
      {For("first='1' last='2'",
           Foreach("a|b", "%n%%v%") + For("first='7' last='7'") + "<bean name='o%n%' class='C'/>"),
       "o1;7;1a;1b;o2;7;2a;2b;"},
      {Foreach(" a | b|c", "%v%"), "a;b;c;"},
      {Foreach("a|&#9;|b|", "&lt;%v%&gt;"), "<a>;<>;<b>;"},
      {Foreach("", "&lt;%v%&gt;"), "<>;"},
      {Foreach("Left Arm", "%v%%.v%%_v%%^v%%^_.v%%_^_v%"), "Left ArmLeftArmleft armLEFT ARMLEFTARMLEFT ARM;"},
      {"<foreach substitute='W' set='in'>" + Foreach("%W%-%W%", "%^v%%v%") + "</foreach>", "in-inin-in;"},
      {NestedLoops(256), "b;"},
      {"<bean name='d' class='C'/><bean name='d' class='C'/>", "d;d;"},
  };
  for (const auto& [beans, expected] : kNames) {
    names.clear();
    Load(eager(beans));
    EXPECT_EQ(names, expected) << beans;
  }
  EXPECT_EQ(m_log.Warnings(), WideLines());
}

TEST_F(Reader, TakesTheFirstValueElementOfAnArgument) {
  std::string texts;
  m_classes.Add("C", {.create = [&](const SCreation& creation) {
                  const void* value = creation.arguments->at(0);
                  texts = *static_cast<const char* const*>(value);
                  return MakeObject();
                }});
  const std::string type = "<value type='const char*'>";
  const std::pair<std::string, std::string> kTexts[] = {
      {"<bean class='No'/><ref bean='no'/><nullptr/>" + type + "a</value>" + type + "b</value>", "a"},
      {"<value type='const char*'/>", ""},
      {type + "<![CDATA[data]]></value>", ""},
      {type + " 100% &lt;&#33; </value>", "100% <!"},
      {kOdd + type + "\xC3\xA9\xE2\x82\xAC\xE5\xAD\x97\xFF</value>", "\xE9\x80??"},
  };
  for (const auto& [argument, text] : kTexts) {
    texts = "none";
    EXPECT_NE(Load(Bean("C", Argument(argument))).GetBean("b"), nullptr);
    EXPECT_EQ(texts, text) << argument;
  }
}

TEST_F(Reader, ReadsClassesLibrariesAndMethods) {
  m_classes.Add("C");
  m_classes.Add("@Foo");
  m_classes.Add("a::b::Widget");
  const std::pair<std::string, std::string> kCreations[] = {
      {"@Foo", "create @Foo.@Foo/0"},
      {"C' factory-method='Factory::Create", "create C.Create/0"},
      {"C' factory-method=':x", "create C.:x/0"},
      {"C' factory-method='", "create C./0"},
      {"a::b::Widget", "create a::b::Widget.Widget/0"},
      {"C@emptyplugin", "create C.C/0"},
  };
  for (const auto& [attributes, creation] : kCreations) {
    Load(Bean(attributes)).GetBean("b");
    EXPECT_EQ(Journal::Take().at(1), creation);
  }
  const Zorbel::CContainer other = Load(Bean("C@none@x") + "<bean name='c' class='C'/>");
  EXPECT_TRUE(other.Exists("c"));
  EXPECT_EQ(ErrorOf([&] { other.Exists("b"); }), L"Could not load library 'none@x'");
  EXPECT_EQ(ErrorOf([&] { Load(Bean("C@")).Exists("b"); }), L"Could not load library ''");
}

TEST_F(Reader, NamesTheUnnamedBeans) {
  std::vector<std::string> names;
  m_classes.Add("C", {.call = [&](auto*, auto&, const Arguments* values) {
                  names.emplace_back(*static_cast<const char**>(values->at(0)));
                  return true;
                }});
  const std::string attributes = "class='C' autoname='true' ";
  Load("<foreach substitute='v' set='x'><bean " + attributes + "lazy='false' name=''>" +
       Argument("<bean " + attributes + "name='n' singleton='?' lazy='?' exported='?'>" +
                Argument("<bean " + attributes + "/>") + "</bean>") +
       "</bean></foreach>");
  ASSERT_EQ(names.size(), 3U);
  const std::string hex = "0123456789abcdef";
  EXPECT_EQ(names[2].size(), 36U);
  EXPECT_EQ(names[2].find_first_not_of(hex + "-"), std::string::npos);
  for (const std::string& name : {names[0], names[1]}) {
    EXPECT_EQ(name.substr(0, 13) + name.substr(49), "unnamed bean  C");
    EXPECT_EQ(name.substr(13, 36).find_first_not_of("0123456789ABCDEF-"), std::string::npos);
  }
  EXPECT_NE(names[0], names[1]);
  EXPECT_EQ(m_log.Warnings(), WideLines());
}

TEST_F(Reader, GivesLoopedPropertiesDependenciesAndInterfacesTheirValues) {
  Zorbel::GetLocalLibrary().RegisterTypeID("IReadX", "x");
  m_classes.Add("C", {.types = [](auto&, auto count) { return Lines(count, "int"); }});
  Zorbel::CContainer container =
      Load(kOdd + "<foreach substitute='v' set='x'><bean name='%v%' class='C'><properties>" +
           For("first='1' last='2'", "<property name='P%n%%v%'><value type='int'>%n%</value></property>") +
           "<property name='Q'><value type='int'>0</value></property></properties>"
           "<properties><property name='ignored'/></properties>"
           "<provides><interface>IRead%^v%</interface><foreach substitute='w'><interface/></foreach></provides>"
           "<depends-on><bean-name>d%v%</bean-name><bean-name/></depends-on></bean></foreach>");
  EXPECT_EQ(container.GetServiceCount("x"), 1U);
  Journal::Take();
  const Object x = container.GetBean("x");
  EXPECT_EQ(Journal::Take(), (Lines{"make C", "types C.Q/1", "types C.P1x/1", "types C.P2x/1", "create C.C/0",
                                    "call C.Q/1", "call C.P1x/1", "call C.P2x/1"}));
  EXPECT_EQ(m_log.Warnings(),
            (WideLines{L"Bean 'dx' requested, but not configured", L"Bean '' requested, but not configured"}));
}
