#include "Support/RecordDocument.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

namespace Test {

void RecordDocument(const std::string& text) {
  const char* folder = std::getenv("ZORBEL_TEST_DOCUMENTS");  // NOLINT(concurrency-mt-unsafe): no test sets variables
  if (folder == nullptr) {
    return;
  }
  const char* kind = text.find(kOdd) != std::string::npos ? "odd" : "regular";
  const std::string name = std::to_string(std::hash<std::string>()(text)) + ".xml";
  std::ofstream(std::filesystem::path(folder) / kind / name, std::ios::binary) << text;
}

}  // namespace Test
