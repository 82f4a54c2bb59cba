#pragma once

#include <Zorbel/Zorbel.h>
#include <gtest/gtest.h>

#include "Support/LogCapture.h"
#include "Support/RecordDocument.h"
#include "Support/TestClasses.h"

namespace Test {

using Lines = std::vector<std::string>;
using WideLines = std::vector<std::wstring>;
using Object = std::shared_ptr<Zorbel::IObject>;

/// A bean "b"; `attributes` begins with its class.
inline std::string Bean(const std::string& attributes, const std::string& content = "") {
  return "<bean name='b' class='" + attributes + "'>" + content + "</bean>";
}
inline std::string Argument(const std::string& value) {
  return "<constructor-arg><argument>" + value + "</argument></constructor-arg>";
}
inline std::string Numbered(std::string name, int number) { return name.append(std::to_string(number)); }

/// A container of the document `text`, which loads without error or throws.
inline Zorbel::CContainer LoadText(const std::string& text, bool integration) {
  Zorbel::CContainer container(text.c_str(), integration);
  RecordDocument(text);
  return container;
}
/// A stand-alone container with beans of the module "emptyplugin".
inline Zorbel::CContainer Load(const std::string& beans) { return LoadText(Document(beans), false); }

inline std::unique_ptr<Zorbel::IObject> MakeObject() { return std::make_unique<CTestObject>("S", SCreation{}); }

/// Calls back when it is destroyed.
class CLastWord : public Zorbel::IObject {
 public:
  explicit CLastWord(std::function<void()> word) : m_word(std::move(word)) {}
  ~CLastWord() override { m_word(); }

 private:
  std::function<void()> m_word;
};

/// Returns the message of the error that `f` raises, if it does.
template <class F>
std::wstring ErrorOf(F f) {
  try {
    f();
  } catch (const Zorbel::CException& error) {
    return error.GetMessageW();
  }
  return L"no error";
}

/// Classes of the test's own and a captured log.
class Beans : public testing::Test {
 protected:
  /// Function and file of the last line of the log.
  std::string Origin() const { return m_log.Records().back().function + " in " + m_log.Records().back().file; }

  LogCapture m_log;
  TestClasses m_classes;
};

}  // namespace Test
