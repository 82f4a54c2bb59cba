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

/// Throws: `CException` when a document is being merged on this thread; another merge would wait for itself.
void RequireNotLoading();

/// Merges a document into a factory, then creates the factory's eager beans; one document of the process at a time.
/// Throws: `CException` as above, when bean code loads while another thread does, and when a bean's name is taken.
void IntegrateResource(CBeanFactoryImpl& factory, CXMLResource& resource);

}  // namespace Internal
}  // namespace Zorbel
