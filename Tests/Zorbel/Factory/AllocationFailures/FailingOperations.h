#pragma once

#include <Zorbel/Zorbel.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace failing {

extern int living;     // parts
extern int toRelease;  // beans whose exit method, and products whose release function is still to be called

struct IPart : Zorbel::IObject {
  static constexpr const char* kTypeId = "failing.IPart";
  IPart() { ++living; }
  ~IPart() override { --living; }
  virtual std::string Text() const { return "part"; }
};

inline constexpr const char* kType = IPart::kTypeId;
inline constexpr const char* kOther = "failing.IOther, whose type id is longer than a short text";
inline constexpr const char* kNames[] = {"base", "eager", "whole",  "loop1",      "loop3",
                                         "made", "far",   "second", "secondEager"};

/// What an operation works on.
struct SWorld {
  std::optional<Zorbel::CContainer> container, merged;
  std::shared_ptr<Zorbel::IObject> kept;  // a bean of the container before the operation
  std::shared_ptr<Zorbel::IObject> instance = std::make_shared<IPart>();  // to be registered
  std::shared_ptr<Zorbel::ITypeRegistration> registration;                // of a service
  std::vector<std::shared_ptr<Zorbel::IObject>> products;
  std::filesystem::path folder;

  std::wstring File(const char* name) const { return (folder / name).wstring(); }
};

struct SOperation {
  const char* name;
  void (*prepare)(SWorld&);
  void (*run)(SWorld&);
  bool mayEmpty = false;  // the container, when it fails
};

inline void PrintTo(const SOperation& operation, std::ostream* stream) { *stream << operation.name; }

/// Makes the classes known that the operations need, and writes their files.
void Prepare(const std::filesystem::path& folder);

/// Operations of the library, which either happen or change nothing.
const std::vector<SOperation>& Operations();

}  // namespace failing
