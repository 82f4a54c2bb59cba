#pragma once

#include <string>

namespace Test {

/// A comment that marks a document which loads although the schema refuses it.
inline const std::string kOdd = "<!--odd-->";

/// Writes the document into the folder that the environment's ZORBEL_TEST_DOCUMENTS names, if any: below "odd" when it
/// is marked, else below "regular". Equal documents are written once. Thread: safe.
void RecordDocument(const std::string& text);

}  // namespace Test
