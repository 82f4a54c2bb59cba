#include <Logging/Logging.h>
#include <Zorbel/CContainer.h>
#include <Zorbel/CException.h>

#include <filesystem>
#include <iostream>
#include <string>

#include "Machine.h"

namespace {

void Heading(const std::string& text) { std::cout << '\n' << text << '\n'; }

// The library's own lines, shown beside those of the machine. They are plain ASCII here.
void ShowLog(const Logging::SRecord& record) {
  std::cout << (record.level == Logging::kLevelError ? "  Zorbel, error: " : "  Zorbel, warning: ");
  for (const wchar_t c : record.text) {
    std::cout << static_cast<char>(c);
  }
  std::cout << '\n';
}

void LoadWithMistake(Zorbel::CContainer& container, const std::filesystem::path& document) {
  try {
    container.Reset(document.wstring().c_str());
  } catch (const Zorbel::CException& error) {
    std::cout << "  refused by " << error.GetFunctionName() << '\n';
  }
}

void RunMachine(Zorbel::CContainer& container, const std::filesystem::path& documents) {
  Heading("Loading machine.xml. The power supply is not lazy: it is there at once.");
  const Zorbel::CContainer machine((documents / "machine.xml").wstring().c_str(), true);

  Heading("Asking for the controller. Its axes are created for it, in this order:");
  const auto controller = machine.GetBean("controller");

  Heading("Asking for the power supply from outside. It is not exported:");
  if (!machine.GetBean("power")) {
    std::cout << "  not handed out\n";
  }

  Heading("Driving the machine through its services:");
  motion::Drive(machine);

  Heading("Replacing a service at run time, and taking it back:");
  motion::ReplaceSensor(container);
}

void RunBench(Zorbel::CContainer& container, const std::filesystem::path& documents) {
  Heading("Resetting with bench.xml. What nobody holds any more goes, what it depends on last:");
  container.Reset();
  motion::RegisterLogger(container);
  const Zorbel::CContainer bench((documents / "bench.xml").wstring().c_str(), true);
  std::cout << "  the controller is " << (bench.Exists("controller") ? "still there" : "gone") << '\n';
  const auto axis = bench.GetBean("axisX");
}

void ShowMistakes(Zorbel::CContainer& container, const std::filesystem::path& documents) {
  Heading("A mistake in a document: no loop around binds the variable \"m\".");
  LoadWithMistake(container, documents / "no-variable.xml");

  Heading("A mistake that shows when the bean is asked for: there is no type \"Double\".");
  LoadWithMistake(container, documents / "unknown-type.xml");
  motion::RegisterLogger(container);
  const auto axis = container.GetBean("slowAxis");
  std::cout << "  the bean is " << (axis ? "there" : "not there, and the program goes on") << '\n';
}

}  // namespace

int main(int, char** arguments) {
  const std::filesystem::path documents = std::filesystem::absolute(arguments[0]).parent_path() / "motion-documents";
  Logging::SetSink(&ShowLog);
  try {
    std::cout << "A machine of two axes and three sensors, configured by documents.\n";
    motion::RegisterInterfaces();
    Zorbel::CContainer container;
    motion::RegisterLogger(container);
    RunMachine(container, documents);
    RunBench(container, documents);
    ShowMistakes(container, documents);
  } catch (const Zorbel::CException&) {
    return 1;  // the log has told
  }
  return 0;
}
