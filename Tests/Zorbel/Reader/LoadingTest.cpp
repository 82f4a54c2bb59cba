#include <filesystem>
#include <fstream>

#include "ThisPlatform.h"
#include "Zorbel/Beans.h"

using namespace Test;
namespace fs = std::filesystem;

namespace {

/// Documents in a folder of their own.
class Loading : public Beans {
 protected:
  Loading() : m_folder(fs::temp_directory_path() / testing::UnitTest::GetInstance()->current_test_info()->name()) {
    fs::remove_all(m_folder);
    fs::create_directories(m_folder / "sub");
    m_classes.Add("C");
  }
  ~Loading() override { fs::remove_all(m_folder); }

  void Write(const std::string& name, const std::string& text) const {
    std::ofstream(m_folder / name, std::ios::binary) << text;
  }
  /// A document with includes and one bean.
  void Write(const std::string& name, std::initializer_list<std::string> includes, const std::string& bean) const {
    std::string text = "<zorbel>";
    for (const std::string& include : includes) {
      text += "<include path='" + include + "'/>";
    }
    const std::string beans = bean.empty() ? "" : "<bean name='" + bean + "' class='C' lazy='false' autoname='true'/>";
    Write(name, text + "<library path='emptyplugin'><beans>" + beans + "</beans></library></zorbel>");
  }
  std::wstring Name(const std::string& name) const { return (m_folder / name).wstring(); }
  /// The folder as included names begin.
  std::wstring Prefix() const { return (m_folder / "").wstring(); }

  std::wstring Error(const std::string& name) const {
    return ErrorOf([&] { Zorbel::CContainer(Name(name).c_str(), false); });
  }

  const fs::path m_folder;
};

std::string Utf16(const std::string& ascii, const std::string& mark) {
  std::string text = mark;
  for (const char c : ascii) {
    text += {c, '\0'};
  }
  return text;
}

}  // namespace

TEST_F(Loading, NamesTheFileThatCannotBeRead) {
  Write("empty.xml", "");
  Write("broken.xml", "<zorbel>\n <library>");
  Write("nopath.xml", "<zorbel><library/></zorbel>");
  Write("noinclude.xml", "<zorbel><library/><include path=''/></zorbel>");
  Write("outer.xml", {"sub/inner.xml"}, "o");
  Write("sub/inner.xml", {"../missing.xml"}, "i");
  Write("absolute.xml", {"/empty.xml"}, "a");
  Write("large.xml", "<zorbel/>");
  fs::resize_file(m_folder / "large.xml", 1'073'741'825);
  const auto parseError = [&](const std::string& name, const std::wstring& place) {
    return L"Error while parsing file '" + Name(name) + L"': Error when parssing 'zorbel'" + place + L".";
  };
  const std::pair<std::string, std::wstring> kErrors[] = {
      {"missing.xml", L"File '" + Name("missing.xml") + L"' not found"},
      {"sub", L"File '" + Name("sub") + L"' not found"},
      {"large.xml", L"File '" + Name("large.xml") + L"' is larger than 1073741824 bytes"},
      {"empty.xml", parseError("empty.xml", L"")},
      {"broken.xml", parseError("broken.xml", L" at line 2, column 11")},
      {"nopath.xml", L"Error (path not found) when parsing library in file '" + Name("nopath.xml") + L"'"},
      {"noinclude.xml", L"Missing argument 'path' in include tag"},
      {"outer.xml", L"File '" + Prefix() + L"sub\\..\\missing.xml' not found"},
      {"absolute.xml", L"Error while parsing file '" + Prefix() + L"\\empty.xml': Error when parssing 'zorbel'."},
  };
  for (const auto& [name, error] : kErrors) {
    EXPECT_EQ(Error(name), error);
    EXPECT_EQ(m_log.Errors().back(), error);
    EXPECT_EQ(Origin(), std::string("Zorbel::CXMLResource::") +
                            (name == "nopath.xml" ? "parseLibrary" : "CXMLResource") +
                            " in Core/Zorbel/src/CXMLResource");
  }
  EXPECT_EQ(ErrorOf([] { Zorbel::CContainer(L"", false); }), L"File '' not found");
}

TEST_F(Loading, ReadsIncludesFirstInOrderEachRelativeToItsFile) {
  std::string names;
  TestClasses classes;
  classes.Add("C", {.call = [&](auto*, auto&, const Arguments* values) {
                names += std::string(*static_cast<const char**>(values->at(0))) + ";";
                return true;
              }});
  Write("main.xml", {"sub\\a.xml", "sub/b.xml", "common.xml", "sub/../common.xml"}, "main");
  Write("sub/a.xml", {"c.xml"}, "a");
  Write("sub/b.xml", {}, "b");
  Write("sub/c.xml", {"../common.xml"}, "c");
  Write("common.xml", {}, "");
  const Zorbel::CContainer container(Name("main.xml").c_str(), false);
  EXPECT_EQ(names, "c;a;b;main;");
  EXPECT_EQ(m_log.Errors(), WideLines());
}

TEST_F(Loading, RefusesBeansIncludedTwiceButNotOnesOfTheIncludingFile) {
  Write("twice.xml", {"one.xml", "one.xml"}, "main");
  Write("again.xml", {"one.xml"}, "one");
  Write("one.xml", {}, "one");
  EXPECT_EQ(Error("twice.xml"), L"Overriding bean 'one' is not allowed");
  EXPECT_EQ(Error("again.xml"), L"no error");
  // Of several, the first in the order in which the later file names libraries and beans. What a file further out has
  // included does not count yet.
  const auto library = [](const std::string& path, const std::string& bean) {
    return "<library path='" + path + "'><beans><bean name='" + bean + "' class='C'/></beans></library>";
  };
  Write("ab.xml", "<zorbel>" + library("a", "one") + library("b", "two") + "</zorbel>");
  Write("ba.xml", "<zorbel>" + library("b", "two") + library("a", "one") + "</zorbel>");
  Write("c.xml", "<zorbel>" + library("c", "two") + "</zorbel>");
  Write("order.xml", {"ab.xml", "ba.xml"}, "");
  Write("inner.xml", {"one.xml", "ba.xml"}, "");
  Write("outer.xml", {"c.xml", "inner.xml"}, "");
  EXPECT_EQ(Error("order.xml"), L"Overriding bean 'two' is not allowed");
  EXPECT_EQ(Error("outer.xml"), L"Overriding bean 'one' is not allowed");
  EXPECT_EQ(ErrorOf([] { Load("").Reset("<zorbel><include path='nowhere.xml'/></zorbel>"); }), L"no error");
}

TEST_F(Loading, DefinesTheBeansBesideAProvidingOneForEachFileAnew) {
  Zorbel::GetLocalLibrary().RegisterTypeID("ILoad", "load");
  const auto write = [this](const std::string& name, const std::string& includes, const std::string& className) {
    m_classes.Add(className);
    const std::string bean = "' class='" + className + "'>";
    Write(name, "<zorbel>" + includes + "<library path='emptyplugin'><beans><bean name='" + className + bean +
                    "</bean><bean name='p" + className + bean + "<provides><interface>ILoad</interface></provides>" +
                    "</bean></beans></library></zorbel>");
  };
  write("a.xml", "", "A");
  write("b.xml", "", "B");
  write("main.xml", "<include path='a.xml'/><include path='b.xml'/>", "M");
  EXPECT_EQ(Error("main.xml"), L"no error");
  EXPECT_EQ(Journal::Take(), (Lines{"make A", "make B", "make A", "make A", "make B", "make B", "make M"}));
}

TEST_F(Loading, EndsIncludeCyclesAndChainsThatAreTooLong) {
  Write("self.xml", {"self.xml"}, "");
  Write("a.xml", {"sub/b.xml"}, "");
  Write("sub/b.xml", {"../sub/../a.xml"}, "");
  const auto cycle = [](const std::wstring& again, const std::wstring& chain) {
    return L"File '" + again + L"' includes itself (" + chain + L" -> " + again + L")";
  };
  EXPECT_EQ(Error("self.xml"), cycle(Prefix() + L"self.xml", Name("self.xml")));
  const std::wstring inner = Prefix() + L"sub\\b.xml";
  EXPECT_EQ(Error("a.xml"), cycle(Prefix() + L"sub\\..\\sub\\..\\a.xml", Name("a.xml") + L" -> " + inner));
  EXPECT_EQ(Origin(), "Zorbel::CXMLResource::CXMLResource in Core/Zorbel/src/CXMLResource");

  const auto file = [](int number) { return std::to_string(number) + ".xml"; };
  for (int i = 0; i <= kDeepestRecursion; ++i) {
    Write(file(i), {file(i + 1)}, "");
  }
  const std::string deepest = file(kDeepestRecursion + 1);
  Write(deepest, {}, "");
  EXPECT_EQ(Error("1.xml"), L"no error");
  EXPECT_EQ(Error("0.xml"),
            L"File '" + Prefix() + std::wstring(deepest.begin(), deepest.end()) + L"' is included too deeply");
}

TEST_F(Loading, ReadsTheEncodingsOfFiles) {
  const std::string text = Document(Bean("C"));
  // An odd number of bytes is UTF-16 for no system.
  const std::string kFiles[] = {"\xEF\xBB\xBF" + text, text + '\0' + (text.size() % 2 == 0 ? "<<" : "<"),
                                Utf16(text, "\xFF\xFE"), Utf16(text, "\xEF\xFF"), Utf16(text, "")};
  for (const std::string& file : kFiles) {
    Write("file.xml", file);
    EXPECT_TRUE(Zorbel::CContainer(Name("file.xml").c_str(), false).Exists("b"));
  }
  EXPECT_EQ(ErrorOf([&] { Zorbel::CContainer(("\xEF\xBB\xBF" + text).c_str(), false); }), L"no error");
}

TEST_F(Loading, SurvivesADocumentCutOffAnywhere) {
  const std::string text = Document(Bean("C' lazy='false", Argument("<bean class='C'/>") + "<!-- c -->"));
  for (std::size_t length = 1; length < text.size(); ++length) {
    m_log.Clear();
    Write("cut.xml", text.substr(0, length));
    EXPECT_EQ(Error("cut.xml").find(L"Error while parsing file '"), 0U) << length;
    EXPECT_EQ(m_log.Errors().size(), 1U);
  }
  EXPECT_EQ(Journal::Take(), Lines());
}
