#include "BasePool/CbExceptionContainer.h"

#include <Logging/CLogger.h>

#include "Platform/Thread.h"

namespace {

const Logging::CLogger logger(L"Exception");

}  // namespace

CbExceptionContainer::CbExceptionContainer(const char* file, unsigned int line, const char* function)
    : m_file(file != nullptr ? file : ""),
      m_line(line),
      m_function(function != nullptr ? function : ""),
      m_threadId(Platform::CurrentThreadId()) {
  logger.Error(m_file.c_str(), static_cast<int>(m_line), m_function.c_str(), L"Out of memory");
}
