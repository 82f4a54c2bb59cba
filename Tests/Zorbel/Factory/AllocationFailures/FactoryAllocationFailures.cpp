// Each allocation of each operation fails in turn: alone, or with all that come behind it.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <limits>
#include <pugixml.hpp>

#include "BasePool/CbExceptionContainer.h"
#include "FailingOperations.h"
#include "Platform/Thread.h"
#include "Resolution/LiveInstances.h"
#include "Support/FailingAllocations.h"
#include "Support/LogCapture.h"

namespace fs = std::filesystem;
namespace Allocations = Test::Allocations;
using failing::SOperation;
using failing::SWorld;
using Lines = std::vector<std::string>;
using Object = std::shared_ptr<Zorbel::IObject>;

namespace {

// What can be seen from outside. Changes nothing but what is built on request.
std::string StateOf(const SWorld& world) {
  std::string state;
  if (!world.container) {
    return state;
  }
  for (const char* name : failing::kNames) {
    state.append(world.container->Exists(name) ? name : "-").append(" ");
  }
  for (const char* type : {failing::kType, failing::kOther}) {
    state += std::to_string(world.container->GetServiceCount(type)) + ' ';
  }
  return state + (world.kept != nullptr && world.container->GetBean("base") == world.kept ? "same " : "other ");
}

std::string TextOf(const std::function<Object()>& get) {
  try {
    const auto part = Zorbel::ObjectCast<failing::IPart>(get());
    return part ? part->Text() + ' ' : "null ";
  } catch (const Zorbel::CException&) {
    return "error ";
  }
}

// That, and everything at work.
std::string ContentOf(const SWorld& world) {
  std::string content = StateOf(world);
  for (const char* name : failing::kNames) {
    content += TextOf([&] { return world.container ? world.container->GetBean(name) : nullptr; });
  }
  for (const char* type : {failing::kType, failing::kOther}) {
    for (unsigned int i = 0; world.container && i < world.container->GetServiceCount(type); ++i) {
      content += TextOf([&] { return world.container->GetService(type, i); });
    }
  }
  return content;
}

enum class EEnd { succeeded, failed, raisedOther };

EEnd Attempt(const SOperation& operation, SWorld& world) {
  try {
    operation.run(world);
    return EEnd::succeeded;
  } catch (const std::bad_alloc&) {
    return EEnd::failed;
  } catch (const CbExceptionContainer&) {
    return EEnd::failed;
  } catch (...) {
    return EEnd::raisedOther;
  }
}

/// A way of failing.
struct SMode {
  bool onwards;
  bool looks;         // at the state before the operation and behind it
  bool cold = false;  // what is made once in a process is in the making: nothing is done but the operation
};

struct STrial {
  bool memoryFailed = false;
  EEnd end = EEnd::raisedOther, repeated = EEnd::succeeded;
  std::string before, after, content;
  int leaked = 0;

  static int Memory(const std::string& text) { return text.capacity() > std::string().capacity() ? 1 : 0; }
  int Memory() const { return Memory(before) + Memory(after) + Memory(content); }
};

class FactoryAllocationFailures : public testing::TestWithParam<SOperation> {
 protected:
  FactoryAllocationFailures()
      : m_folder(fs::temp_directory_path() / ("failing" + std::to_string(Platform::CurrentThreadId()))) {
    pugi::set_memory_management_functions(&Allocations::Allocate, &Allocations::Free);
    failing::Prepare(m_folder);
  }
  ~FactoryAllocationFailures() override { fs::remove_all(m_folder); }

  STrial Try(std::size_t succeeding, const SMode& mode) const {
    const int before = Allocations::Live();
    STrial trial;
    failing::living = failing::toRelease = 0;
    Run(static_cast<int>(succeeding), mode, trial);
    const bool counts = !mode.cold && Allocations::AreSharedByModules();
    trial.leaked = counts ? Allocations::Live() - before - trial.Memory() : 0;
    trial.leaked += failing::living + failing::toRelease;
    for (const char* name : failing::kNames) {
      trial.leaked += Zorbel::Internal::LiveInstances::Find(name) ? 1 : 0;
    }
    return trial;
  }

  static std::string FaultOf(const STrial& trial, const STrial& expected) {
    const bool emptied = GetParam().mayEmpty && trial.after == "- - - - - - - - - 0 0 other ";
    if (trial.end == EEnd::raisedOther || trial.repeated != EEnd::succeeded) {
      return trial.end == EEnd::raisedOther ? "raises something else" : "cannot be repeated";
    }
    if (trial.after != (trial.end == EEnd::succeeded ? expected.after : trial.before) && !emptied) {
      return "leaves " + trial.after;
    }
    return trial.content != expected.content ? "ends in " + trial.content : trial.leaked != 0 ? "leaks" : "";
  }

 private:
  void Run(int succeeding, const SMode& mode, STrial& trial) const {
    const ::Test::LogCapture log(Logging::kLevelInformation);
    SWorld world;
    world.folder = m_folder;
    GetParam().prepare(world);
    trial.before = mode.looks ? StateOf(world) : "";
    Allocations::FailAfter(succeeding, mode.onwards);
    trial.end = Attempt(GetParam(), world);
    trial.memoryFailed = Allocations::Restore();
    trial.after = mode.looks ? StateOf(world) : "";
    if (!mode.cold) {
      trial.repeated = trial.end == EEnd::succeeded ? trial.end : Attempt(GetParam(), world);
      trial.content = ContentOf(world);
    }
  }

  fs::path m_folder;
};

}  // namespace

TEST_P(FactoryAllocationFailures, HappenAsAWholeOrNotAtAll) {
  Lines faults;
  std::size_t places = 0;
  for (const SMode mode : {SMode{false, false, true}, {false, false}, {false, true}, {true, false}, {true, true}}) {
    if (!mode.cold) {
      Try(std::numeric_limits<int>::max(), mode);
    }
    std::vector<STrial> trials;
    do {
      trials.push_back(Try(trials.size(), mode));
    } while (trials.back().memoryFailed);
    for (std::size_t i = 0; i < trials.size(); ++i) {
      if (const std::string fault = FaultOf(trials[i], trials.back()); !fault.empty()) {
        faults.push_back(std::to_string(i) + (mode.onwards ? " and all behind it: " : ": ") + fault);
      }
    }
    places += trials.size() - 1;
  }
  EXPECT_EQ(Lines(), faults) << "of " << places << " allocations";
}

INSTANTIATE_TEST_SUITE_P(Of, FactoryAllocationFailures, testing::ValuesIn(failing::Operations()),
                         [](const auto& tested) { return tested.param.name; });
