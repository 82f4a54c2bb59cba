#include "Reader/CSourceRecorder.h"

#include <utility>

namespace Zorbel::Internal {

CSourceRecorder::CFile::CFile(CSourceRecorder* recorder, const SOpenFile* file) : m_recorder(recorder) {
  if (m_recorder == nullptr) {
    return;
  }
  const bool included = file != nullptr && file->include != nullptr;
  const SSourceElement* includedBy = included ? m_recorder->ElementOf(*file->include) : nullptr;
  SSourceFile& noted = m_recorder->m_noted.files.emplace_back();
  noted.name = file != nullptr ? file->name : std::wstring();
  noted.includedBy = includedBy;
  m_recorder->m_open.emplace_back().file = &noted;
}

CSourceRecorder::CFile::~CFile() {
  if (m_recorder != nullptr) {
    m_recorder->m_open.pop_back();
  }
}

const char* CSourceRecorder::Index(const SFileText& text) {
  SOpenText& open = m_open.back();
  open.text = text.text;
  open.lines = std::make_unique<XmlParser::CLineIndex>(
      open.text, text.singleBytes ? XmlParser::ECharacters::kSingleBytes : XmlParser::ECharacters::kUtf8);
  return open.text.c_str();
}

const SSourceFile* CSourceRecorder::GetFile() const { return m_open.empty() ? nullptr : m_open.back().file; }

SPlace CSourceRecorder::PlaceAt(std::size_t position) const {
  if (m_open.empty() || !m_open.back().lines || position > m_open.back().text.size()) {
    return {};
  }
  const XmlParser::SLinePlace place = m_open.back().lines->At(position);
  return {static_cast<unsigned int>(place.line), static_cast<unsigned int>(place.column)};
}

SExtent CSourceRecorder::ExtentOf(const XMLRange& range) const { return {PlaceAt(range.begin), PlaceAt(range.end)}; }

SSource CSourceRecorder::SourceOf(const XMLNode& node, const SVariable* variables) {
  return {ElementOf(node), PassOf(variables)};
}

SSource CSourceRecorder::SourceOf(const SLibrary& library, std::size_t bean) const {
  return m_libraries.at(&library)->beans[bean].bean;
}

// An element that many passes of a loop read is noted once.
const SSourceElement* CSourceRecorder::ElementOf(const XMLNode& node) {
  std::vector<const SSourceElement*>& elements = m_open.back().elements;
  const std::size_t position = node.getPosition();
  if (position >= elements.size()) {
    elements.resize(position + 1);
  }
  if (elements[position] == nullptr) {
    elements[position] = Note(node);
  }
  return elements[position];
}

const SSourceElement* CSourceRecorder::Note(const XMLNode& node) {
  SSourceElement& element = m_noted.elements.emplace_back();
  element.file = GetFile();
  element.extent = ExtentOf(node.getRange());
  for (int i = 0; i < node.getAttributeCount(); ++i) {
    element.attributes.push_back({node.getAttributeName(i), ExtentOf(node.getAttributeRange(i))});
  }
  return &element;
}

const SSourcePass* CSourceRecorder::PassOf(const SVariable* variables) {
  if (variables == nullptr) {
    return nullptr;
  }
  if (variables->pass == nullptr) {
    const SSourcePass* outer = PassOf(variables->outer);
    variables->pass = &m_noted.passes.emplace_back(
        SSourcePass{variables->name.GetString(), variables->value.GetString(), ElementOf(*variables->loop), outer});
  }
  return variables->pass;
}

void CSourceRecorder::AddInclude(const XMLNode& node) { m_noted.includes.push_back(SourceOf(node, nullptr)); }

void CSourceRecorder::AddMention(const SLibrary& library, const SSource& source) {
  SLibrarySource*& known = m_libraries[&library];
  if (known == nullptr) {
    known = &m_noted.libraries.emplace_back();
  }
  known->mentions.push_back(source);
}

void CSourceRecorder::AddBean(const SLibrary& library, SBeanSource&& source) {
  m_libraries.at(&library)->beans.push_back(std::move(source));
}

}  // namespace Zorbel::Internal
