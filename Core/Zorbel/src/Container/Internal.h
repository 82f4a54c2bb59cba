#pragma once

#include <Zorbel/IBeanFactory.h>

#include <memory>

namespace Zorbel {

class CBeanFactoryImpl;
class CXMLResource;

namespace Internal {

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

/// The right to merge documents, which one thread of the process has at a time; a thread that has it may take it again.
class CIntegration {
 public:
  /// Throws: `CException` when a document is being merged on this thread, as another merge would wait for itself, and
  /// when bean code asks while another thread has the right: that thread may be waiting for the factory of the bean.
  CIntegration();
  ~CIntegration();
  CIntegration(const CIntegration&) = delete;
  CIntegration& operator=(const CIntegration&) = delete;

 private:
  const bool m_taken;
};

/// Throws: `CException` when a document is being merged on this thread.
void RequireNotLoading();

/// Merges a document into a factory, then creates the factory's eager beans; one document of the process at a time.
/// Throws: `CException` as `CIntegration`, and when a bean's name is taken; std::range_error when that is no UTF-8;
/// what merging throws.
void IntegrateResource(CBeanFactoryImpl& factory, CXMLResource& resource);

}  // namespace Internal
}  // namespace Zorbel
