#pragma once

namespace Zorbel {

class CBeanFactoryImpl;
class CXMLResource;

namespace Internal {

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
