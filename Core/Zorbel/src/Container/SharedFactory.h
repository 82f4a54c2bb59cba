#pragma once

#include <Zorbel/IBeanFactory.h>

#include <memory>

namespace Zorbel::Internal {

/// Returns the process's shared factory, made when there is none, or a factory of its own.
/// Throws: `CException` when no factory results.
std::shared_ptr<IBeanFactory> CreateFactory(bool integrated);

/// True for the factory that integrated containers share at present.
bool IsSharedFactory(const IBeanFactory* factory);

/// Has a container refer to `next`, or to nothing, in place of the factory that it holds. When that is the factory's
/// last owner, the factory's objects are released first, while the container still is good for every operation.
void Replace(std::shared_ptr<IBeanFactory>& held, std::shared_ptr<IBeanFactory> next) noexcept;

/// Has a container that is being destroyed refer to nothing, likewise.
void LetGo(std::shared_ptr<IBeanFactory>& held) noexcept;

}  // namespace Zorbel::Internal
