#include <Zorbel/Zorbel.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "Support/LogCapture.h"

namespace fs = std::filesystem;

namespace {

std::string Read(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<fs::path> Files(const fs::path& folder, const std::string& extension) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == extension) {
      files.push_back(entry.path());
    }
  }
  return files;
}

bool ContainsQuoted(const std::string& document, const std::string& text) {
  const std::size_t at = document.find(text);
  return at != std::string::npos && document[at - 1] == '`' && document[at + text.size()] == '`';
}

// The wide literals of a source that are sentences: they begin with a capital and have a space.
std::vector<std::string> Messages(const std::string& code) {
  std::vector<std::string> messages;
  for (std::size_t at = code.find("L\""); at != std::string::npos; at = code.find("L\"", at)) {
    at += 2;
    std::string text = code.substr(at, code.find('"', at) - at);
    at += text.size() + 1;
    if (text.find(' ') != std::string::npos && text.front() >= 'A' && text.front() <= 'Z') {
      messages.push_back(std::move(text));
    }
  }
  return messages;
}

std::wstring ErrorOfLoading(const fs::path& file) {
  const Test::LogCapture log;
  try {
    const Zorbel::CContainer container(file.wstring().c_str(), false);
  } catch (const Zorbel::CException& error) {
    return error.GetMessageW();
  } catch (const std::range_error& error) {
    return CStringT<wchar_t>(error.what()).GetString();
  }
  return {};
}

}  // namespace

TEST(Docs, DocumentsLoadAndMistakesAreRefusedWithTheMessageShown) {
  Zorbel::GetLocalLibrary().RegisterTypeID("ILamp", "house.ILamp");
  const std::vector<fs::path> documents = Files(BLOCKS, ".xml");
  EXPECT_GE(documents.size(), 7U);
  for (const fs::path& document : documents) {
    EXPECT_EQ(ErrorOfLoading(document), L"") << document;
  }
  const std::vector<fs::path> mistakes = Files(MISTAKES, ".xml");
  EXPECT_GE(mistakes.size(), 2U);
  for (const fs::path& mistake : mistakes) {
    const std::string text = Read(mistake);
    const std::string message = text.substr(5, text.find(" -->") - 5);
    EXPECT_EQ(ErrorOfLoading(mistake), std::wstring(message.begin(), message.end())) << mistake;
  }
}

TEST(Docs, ShowBeansThatCanBeMade) {
  const ::Test::LogCapture log;
  Zorbel::CContainer container;
  for (const fs::path& document : Files(fs::path(BLOCKS) / "documents", ".xml")) {
    container = Zorbel::CContainer(document.wstring().c_str(), true);
  }
  for (const char* name :
       {"desk", "lamp1", "lamp3", "lamp5", "Dimmer_DININGROOM", "Dimmer_HALL", "everywhere", "room"}) {
    EXPECT_TRUE(container.GetBean(name)) << name;
  }
  EXPECT_EQ(log.Warnings(), std::vector<std::wstring>());
}

TEST(Docs, ShowNamesThatAreFoundInTheCodePageAndCannotBeToldOfWhenRepeated) {
  const fs::path document = fs::path(BLOCKS) / "documents/characters-1.xml";
  const Zorbel::CContainer container(document.wstring().c_str(), true);
  for (const CStringT<char>& name : {CStringT<char>(L"K\u00FCche"), CStringT<char>(L"\u0436\u0434")}) {
    EXPECT_TRUE(container.Exists(name)) << name.GetString();
  }
  EXPECT_TRUE(container.Exists("lamp f\xC3\xBCr"));
  EXPECT_THROW(Zorbel::CContainer(document.wstring().c_str(), true), std::range_error);
}

TEST(Docs, TellOfEveryMessage) {
  const std::string documented = Read(fs::path(ROOT) / "Docs/messages.md");
  std::size_t found = 0;
  for (const char* folder : {"Core/Zorbel/src", "Core/Zorbel/include", "Core/BasePool"}) {
    for (const fs::path& source :
         Files(fs::path(ROOT) / folder, std::string(folder).ends_with("include") ? ".h" : ".cpp")) {
      const std::vector<std::string> messages = Messages(Read(source));
      found += messages.size();
      for (const std::string& text : messages) {
        EXPECT_TRUE(ContainsQuoted(documented, text)) << text << " in " << source;
      }
    }
  }
  EXPECT_GT(found, 50U);
}
