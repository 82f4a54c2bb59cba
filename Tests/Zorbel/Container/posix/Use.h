#pragma once

#include <Zorbel/IObject.h>

#include <cstdio>
#include <memory>
#include <vector>

using Objects = std::vector<std::shared_ptr<Zorbel::IObject>>;

/// A library whose plug-in module declares its class with the kit.
constexpr const char* kKitPlugin =
    "<library path='kitplugin'><beans><bean name='greeter' class='kit::CGreeter'/></beans></library>";

/// Loads documents, makes beans and services, registers, releases and logs, and ends the process when something of it
/// does not work. Returns objects that the library made, first the bean "greeter" that `plugin` defines.
Objects UseEverything(const char* plugin = kKitPlugin);

/// Tells when it has let go of its objects.
struct SHolder {
  explicit SHolder(const char* text) : name(text) {}
  SHolder(const SHolder&) = delete;
  SHolder& operator=(const SHolder&) = delete;
  ~SHolder() {
    objects.clear();
    std::fprintf(stderr, "~%s\n", name);
  }

  const char* name;
  Objects objects;
};
