#pragma once

#include <Zorbel/CContainer.h>

#include <string>

namespace motion {

/// Tells the container what the host has of its own: the type ids of the interfaces.
void RegisterInterfaces();

/// Registers the host's logger as a service of the container.
void RegisterLogger(Zorbel::CContainer& container);

/// Moves the machine and reads its sensors, through services alone.
void Drive(const Zorbel::CContainer& container);

/// Puts a simulated sensor in front of the configured ones, and takes it away again.
void ReplaceSensor(Zorbel::CContainer& container);

}  // namespace motion
