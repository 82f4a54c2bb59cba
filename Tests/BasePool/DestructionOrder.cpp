#include <Zorbel/Export.h>

#include <cstdio>
#include <string>

#include "BasePool/CbMap.h"
#include "BasePool/CbSingleton.h"
#include "BasePool/CbStopWatch.h"
#include "BasePool/CbStr.h"

namespace {

void (*report)(const char*) = [](const char* line) { std::puts(line); };

struct SReporting {
  explicit SReporting(const char* text) : line(text) {}
  ~SReporting() { report(line); }
  const char* line;
};

const SReporting firstStatic("~first static");
CbMap<CStringT<wchar_t>, CStringT<char>> map;  // what else a module built on the base library has
const SReporting secondStatic("~second static");

struct SSecond : CbSingleton<SSecond>, SReporting {
  SSecond() : SReporting("~second singleton") {}
};
struct SFirst : CbSingleton<SFirst>, SReporting {
  SFirst() : SReporting("~first singleton") { SSecond::Instance(); }
};

}  // namespace

ZORBEL_PLUGIN_EXPORT void UseSingletons(void (*newReport)(const char*)) {
  report = newReport;
  SFirst::Instance();
  std::wstring text;
  CbStrT<std::wstring>(text).Format(L"%s", CbStopWatch(1).GetElapsedText().c_str());
  map.SetAt(text.c_str(), L" wide ").value.Trim().Format("%d", 1);
}

int main() {
  UseSingletons(report);
  report("main");
}
