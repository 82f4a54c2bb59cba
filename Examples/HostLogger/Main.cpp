// The library's lines go into the host's own logger: a sink gets each line with its origin. The host also lets the
// library say more, for one channel alone.
#include <Logging/Logging.h>
#include <Zorbel/CContainer.h>
#include <Zorbel/CException.h>

#include <iostream>
#include <string>

namespace {

/// Stands for the logger that the host has anyway.
class CHostLogger {
 public:
  void Write(const char* severity, const std::string& text) { std::cout << '[' << severity << "] " << text << '\n'; }
};

std::string Narrow(const std::wstring& text) {
  std::string narrow;
  for (const wchar_t c : text) {
    narrow += c < 128 ? static_cast<char>(c) : '?';
  }
  return narrow;
}

const char* Severity(int level) {
  return level >= Logging::kLevelError ? "ERROR" : level == Logging::kLevelWarning ? "WARN " : "INFO ";
}

}  // namespace

int main() {
  CHostLogger logger;
  Logging::SetSink([&logger](const Logging::SRecord& record) {
    const std::string text = Narrow(record.text);  // elapsed times differ from run to run: they are left out here
    logger.Write(Severity(record.level), Narrow(record.channel) + ": " + text.substr(0, text.find("... (")));
  });
  Logging::SetLevel(L"Zorbel", Logging::kLevelInformation);

  Zorbel::CContainer container("<zorbel/>", false);
  container.GetBean("lamp");
  container.Reset();
  try {
    container.Reset("<zorbel><library/></zorbel>");
  } catch (const Zorbel::CException& error) {
    logger.Write("HOST ", std::string("raised by ") + error.GetFunctionName());
  }
  Logging::SetSink(nullptr);
}
