#include <Logging/CLogger.h>
#include <Zorbel/CException.h>

#include <utility>

#include "Platform/Thread.h"

namespace Zorbel {
namespace {

const Logging::CLogger logger(L"Zorbel");

}  // namespace

CException::CException(const char* file, unsigned int line, const char* function, const wchar_t* message)
    : m_file(file != nullptr ? file : ""),
      m_function(function != nullptr ? function : ""),
      m_line(line),
      m_message(message != nullptr ? message : L""),
      m_threadId(Platform::CurrentThreadId()) {
  logger.Error(m_file.c_str(), static_cast<int>(m_line), m_function.c_str(), L"%s", m_message.c_str());
}

CException::CException(const char* file, unsigned int line, const char* function)
    : CException(file, line, function, L"Unspecified Zorbel exception") {}

CException::CException(const CException& other) = default;

CException::CException(CException&& other) noexcept
    : IException(other),
      m_file(std::exchange(other.m_file, {})),
      m_function(std::exchange(other.m_function, {})),
      m_line(other.m_line),
      m_message(std::exchange(other.m_message, {})),
      m_threadId(other.m_threadId) {}

CException& CException::operator=(const CException& other) = default;

CException& CException::operator=(CException&& other) noexcept {
  if (this != &other) {
    m_file = std::exchange(other.m_file, {});
    m_function = std::exchange(other.m_function, {});
    m_line = other.m_line;
    m_message = std::exchange(other.m_message, {});
    m_threadId = other.m_threadId;
  }
  return *this;
}

CException::~CException() = default;

std::unique_ptr<IException> CException::Clone() const { return std::make_unique<CException>(*this); }

const char* CException::GetFilename() const { return m_file.c_str(); }

unsigned int CException::GetCodeLine() const { return m_line; }

const char* CException::GetFunctionName() const { return m_function.c_str(); }

unsigned int CException::GetThreadID() const { return m_threadId; }

const wchar_t* CException::GetMessageW() const { return m_message.c_str(); }

}  // namespace Zorbel
