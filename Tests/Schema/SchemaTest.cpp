#include <filesystem>
#include <fstream>

#include "Zorbel/Beans.h"

using namespace Test;
namespace fs = std::filesystem;

namespace {

/// The documents that the schema is tested with, given to the reader.
class SchemaDocuments : public Beans {
 protected:
  SchemaDocuments() {
    Zorbel::GetLocalLibrary().RegisterTypeID("ISchema", "schema");
    m_classes.Add("C");
  }

  /// Calls `check` with each document and what comes of loading it.
  template <class F>
  static void Load(const std::string& folder, F check) {
    std::size_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(SCHEMA_DOCUMENTS) / folder)) {
      SCOPED_TRACE(entry.path().filename());
      check(entry.path(), ErrorOf([&] { Zorbel::CContainer(entry.path().wstring().c_str(), false); }));
      ++count;
    }
    EXPECT_GT(count, 0U);
  }
};

/// Returns the comment in a document's first line.
std::wstring FirstComment(const fs::path& document) {
  std::wstring line;
  std::wifstream file(document);
  std::getline(file, line);
  constexpr std::size_t kOpen = 5;
  constexpr std::size_t kClose = 4;
  EXPECT_GT(line.size(), kOpen + kClose);
  return line.substr(kOpen, line.size() - kOpen - kClose);
}

}  // namespace

TEST_F(SchemaDocuments, AreLoadedWhenTheyAreValid) {
  Load("valid", [](const fs::path& /*document*/, const std::wstring& error) { EXPECT_EQ(error, L"no error"); });
}

TEST_F(SchemaDocuments, AreRefusedForTheMistakeInTheirFirstLine) {
  Load("invalid", [](const fs::path& document, const std::wstring& error) {
    EXPECT_NE(error.find(FirstComment(document)), std::wstring::npos) << testing::PrintToString(error);
  });
}
