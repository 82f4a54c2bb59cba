// What a reader tells those who want to know everything: all problems, and where things come from.

#include <gtest/gtest.h>

#include <map>

#include "Platform/CodePage.h"
#include "Reader/CDocumentReader.h"
#include "Reader/CProblemList.h"
#include "Reader/CSourceRecorder.h"

namespace Zorbel::Internal {
namespace {

using Lines = std::vector<std::string>;
using Files = std::map<std::wstring, std::string>;

/// Files in memory; it knows the interfaces whose names begin with "I".
class CMemory : public IEnvironment {
 public:
  explicit CMemory(const Files& files) : m_files(files) {}

  Platform::EReading ReadFile(const std::wstring& name, std::size_t, std::string& content) override {
    const auto found = m_files.find(name);
    content = found != m_files.end() ? found->second : "";
    return found != m_files.end() ? Platform::EReading::kDone : Platform::EReading::kFailed;
  }
  std::wstring ResolveFileName(const std::wstring& name) override { return name; }
  void BeginInclude() override {}
  void EndInclude() noexcept override {}
  void UseLibrary(const SLibrary&, std::size_t) override {}
  std::optional<CStringT<char>> FindTypeId(const CStringT<char>& name) override {
    return name.GetAt(0) == 'I' ? std::optional(name) : std::nullopt;
  }

 private:
  const Files& m_files;
};

std::string Narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

std::string Text(const SPlace& place) { return std::to_string(place.line) + ":" + std::to_string(place.column); }

std::string Text(const SSourceFile* file, const SExtent& extent, const SSourcePass* pass) {
  std::string text = file != nullptr ? Narrow(file->name) + ":" : "";
  text += Text(extent.begin) + "-" + Text(extent.end);
  for (; pass != nullptr; pass = pass->outer) {
    text.append(" ").append(Narrow(pass->variable)).append("=").append(Narrow(pass->value));
  }
  for (const auto* by = file != nullptr ? file->includedBy : nullptr; by != nullptr; by = by->file->includedBy) {
    text.append(" < ").append(Narrow(by->file->name)).append(":").append(Text(by->extent.begin));
  }
  return text;
}

std::string Text(const SSource& source) { return Text(source.element->file, source.element->extent, source.pass); }

/// A document read from memory, the file "m" and what it includes.
struct SRead {
  explicit SRead(const Files& files) {
    CMemory memory(files);
    CSourceRecorder recorder(sources);
    CDocumentReader(document, memory, problems, &recorder).ReadFile(L"m");
  }

  Lines Problems() const {
    Lines lines;
    for (const SProblem& problem : problems.GetProblems()) {
      lines.push_back(std::string(problem.fault.code) + " " + Text(problem.file, problem.extent, problem.pass));
    }
    return lines;
  }

  SDocument document;
  SDocumentSources sources;
  CProblemList problems;
};

std::string InBeans(const std::string& beans) {
  return std::string("<zorbel><library path='l'><beans>\n").append(beans).append("</beans></library></zorbel>");
}

std::string Utf16(const std::string& text) {
  std::string units = "\xFF\xFE";
  for (const wchar_t c : Platform::Utf8ToWideLossy(text)) {
    units += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
  }
  return units;
}

Lines ListingOf(const SBeanDescription& bean, const SBeanSource& source) {
  Lines lines;
  const auto add = [&](const char* record, const SSource& from) {
    const std::string name(record);
    lines.push_back(name.substr(0, name.find(' ')).append(" ").append(Text(from)));
  };
  add(bean.name, source.bean);
  for (std::size_t i = 0; i < source.constructorArguments.size(); ++i) {
    add(bean.constructorArguments[i].kind, source.constructorArguments[i]);
  }
  for (std::size_t i = 0; i < source.properties.size(); ++i) {
    add(bean.properties[i].name, source.properties[i].property);
    add(bean.properties[i].arguments.at(0).kind, source.properties[i].arguments.at(0));
  }
  for (std::size_t i = 0; i < source.interfaces.size(); ++i) {
    add(source.interfaces[i].name.c_str(), source.interfaces[i].element);
  }
  for (std::size_t i = 0; i < source.dependsOn.size(); ++i) {
    add(bean.dependsOn[i], source.dependsOn[i]);
  }
  return lines;
}

Lines ListingOf(const SRead& read) {
  Lines lines;
  for (const SSource& include : read.sources.includes) {
    lines.push_back("include " + Text(include));
  }
  auto library = read.document.libraries.begin();
  for (const SLibrarySource& source : read.sources.libraries) {
    for (const SSource& mention : source.mentions) {
      lines.push_back(std::string(library->path).append(" ").append(Text(mention)));
    }
    for (std::size_t i = 0; i < source.beans.size(); ++i) {
      const Lines ofBean = ListingOf(library->beans[i], source.beans[i]);
      lines.insert(lines.end(), ofBean.begin(), ofBean.end());
    }
    ++library;
  }
  return lines;
}

}  // namespace

TEST(ProblemList, HasEveryProblemOfADocumentAndItsIncludes) {
  const std::pair<Files, Lines> kDocuments[] = {
      {{{L"m", InBeans("<bean/><bean class='C' lazy='1' singleton='True'/>\n<service class='C'><constructor-arg/>"
                       "<properties><property/><property name='p'><arguments/></property></properties>\n"
                       "<provides><interface/><interface>X</interface></provides></service>")}},
       {"class m:2:1-2:8", "flag m:2:33-2:49", "flag m:2:24-2:32", "arguments m:3:20-3:38", "property-name m:3:50-3:61",
        "value m:3:50-3:61", "arguments m:3:61-3:103", "interface m:4:11-4:23", "unknown-interface m:4:23-4:47"}},
      {{{L"m", InBeans("<bean class='C'><constructor-arg><argument/><argument><value>1</value></argument>\n"
                       "<argument><ref/></argument><argument><bean/></argument></constructor-arg></bean>")}},
       {"value m:2:34-2:45", "value-type m:2:55-2:71", "reference m:3:11-3:17", "class m:3:38-3:45"}},
      {{{L"m",
         InBeans("<for first='x' last='' inc='?'><bean class='%n%'/><bean class='a%'/></for>\n"
                 "<for first='1' last='2' inc='0' substitute='n'><bean/></for><foreach><bean class='%x%'/></foreach>\n"
                 "<for first='1' last='3' substitute='n'><bean class='%x%' lazy='%n%'/>"
                 "<bean class='C' lazy='%x%'><provides><interface>%x%</interface></provides></bean></for>")}},
       {"number m:2:6-2:15", "number m:2:16-2:23", "number m:2:24-2:31", "loop-variable m:2:1-2:75",
        "pattern m:2:57-2:67 =0", "endless-loop m:3:1-3:61", "class m:3:48-3:55 n=1",
        "unknown-variable m:4:46-4:57 n=1", "flag m:4:58-4:68 n=1", "unknown-variable m:4:86-4:96 n=1",
        "unknown-variable m:4:107-4:133 n=1", "loop-variable m:3:61-3:99", "class m:3:76-3:87 ="}},
      {{{L"m", "<zorbel><library/>\n<include/><include path='none'/><include path='m'/><include path='b'/></zorbel>"},
        {L"b", "<zorbel>\n<library path='&x;'>&y;</library></zorbe>"}},
       {"include-path m:2:1-2:11", "file m:2:20-2:31", "include-cycle m:2:42-2:50", "xml b:2:16-2:16 < m:2:52",
        "xml b:2:21-2:21 < m:2:52", "xml b:2:36-2:36 < m:2:52", "library-path m:1:9-1:19"}},
      {{{L"m", "<zorbel>\n<include path='b'/>\n<include path='c'/></zorbel>"},
        {L"b", InBeans("<bean name='b' class='C'/><bean name='d' class='C'/>")},
        {L"c",
         "<zorbel><include path='d'/><library path='&x;'><beans>\n<bean name='b' "
         "class='C'/><bean/></beans></library></zorbel>"},
        {L"d", InBeans("<bean name='d' class='C'/>")}},
       {"xml c:1:43-1:43 < m:3:1", "class c:2:27-2:34 < m:3:1", "overridden-bean d:2:1-2:27 < c:1:9 < m:3:1",
        "overridden-bean c:2:1-2:27 < m:3:1"}},
      {{{L"m", "<zorbel><include path='b'/><include path='c'/><include path='b'/></zorbel>"},
        {L"b", "<other/>"},
        {L"c", "<other/>"}},
       {"xml b:0:0-0:0 < m:1:9", "xml c:0:0-0:0 < m:1:28"}},
      {{{L"m", ""}}, {"xml m:0:0-0:0"}},
      {{{L"n", ""}}, {"file m:0:0-0:0"}},
      {{{L"m", InBeans("<for substitute='%n%'/><foreach set='%v%' substitute='v'><bean class='%v%'/></foreach>")}},
       {"number m:2:1-2:24", "number m:2:1-2:24", "endless-substitution m:2:64-2:75 v=%v%"}},
  };
  for (const auto& [files, problems] : kDocuments) {
    EXPECT_EQ(SRead(files).Problems(), problems);
  }
}

TEST(ProblemList, EndsWhereNobodyReadsOn) {
  const SRead read({{L"m", InBeans(std::string(20'000, '&'))}});
  EXPECT_TRUE(read.problems.GetProblems().size() == CProblemList::kMostProblems && !read.problems.IsComplete());
}

TEST(Sources, TellTheFileThePlaceTheIncludesAndThePassesOfEveryRecord) {
  const Files files{
      {L"m", "<zorbel>\n <include path='s/a'/>\n</zorbel>"},
      {L"s\\a",
       "<zorbel><include path='b'/>\n<library path='l'><beans><for first='2' last='2' substitute='n'>\n"
       "<bean name='a%n%' class='C@k'><constructor-arg><argument><bean class='D'/></argument></constructor-arg>\n"
       "<properties><foreach set='x|y' substitute='v'><property name='%v%%n%'><nullptr/></property></foreach>"
       "</properties>\n<provides><interface>I</interface></provides>"
       "<depends-on><bean-name>d%n%</bean-name></depends-on></bean></for></beans></library></zorbel>"},
      {L"s\\b", InBeans("<bean name='b' class='C'/>\n")}};
  EXPECT_EQ(
      ListingOf(SRead(files)),
      (Lines{"include m:2:2-2:23", "include s\\a:1:9-1:28 < m:2:2", "l s\\b:1:9-3:19 < s\\a:1:9 < m:2:2",
             "l s\\a:2:1-5:129 < m:2:2", "b s\\b:2:1-2:27 < s\\a:1:9 < m:2:2", "unnamed s\\a:3:58-3:75 n=2 < m:2:2",
             "k s\\a:3:1-5:105 n=2 < m:2:2", "a2 s\\a:3:1-5:105 n=2 < m:2:2", "bean s\\a:3:58-3:75 n=2 < m:2:2",
             "x2 s\\a:4:47-4:92 v=x n=2 < m:2:2", "nullptr s\\a:4:71-4:81 v=x n=2 < m:2:2",
             "y2 s\\a:4:47-4:92 v=y n=2 < m:2:2", "nullptr s\\a:4:71-4:81 v=y n=2 < m:2:2",
             "I s\\a:5:11-5:35 n=2 < m:2:2", "d2 s\\a:5:58-5:85 n=2 < m:2:2"}));
}

TEST(Sources, CountCharactersWhateverTheEncoding) {
  std::string text(3000, ' ');
  text += "<zorbel>\n<!--\xC3\xA9\xE2\x82\xAC--><library path='\xC3\xA9' x='1'></library></zorbel>";
  for (const std::string& file : {text, std::string("\xEF\xBB\xBF").append(text), Utf16(text)}) {
    const SRead read({{L"m", file}});
    const SSourceElement& element = *read.sources.libraries.front().mentions.front().element;
    EXPECT_EQ(Text(element.file, element.extent, nullptr), "m:2:10-2:44");
    EXPECT_EQ(Text(nullptr, *element.FindAttribute("x"), nullptr), "2:28-2:33");
  }
}

}  // namespace Zorbel::Internal
