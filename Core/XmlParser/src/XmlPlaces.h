#pragma once

#include <cstddef>
#include <vector>

#include "XmlParser/XmlParser.h"

namespace XmlParser {

/// Where things stand in the text: both lists are empty where nobody asks, and go with those of the tree otherwise.
struct SPlaces {
  std::vector<XMLRange> elements;
  std::vector<XMLRange> attributes;
};

enum class ETag { kStart, kSingle, kEnd };

/// What a scan hands its observations to where nobody asks for them: costs nothing.
class CNoNotes {
 public:
  static void NoteName(std::size_t) {}
  static void NoteAttributeEnd(std::size_t) {}
  static void NoteTag(const XMLRange&, ETag) {}
  static bool TakesFailure(const XMLFailure&) { return false; }
};

/// Ownership: the lists are the caller's.
class CPlaceNotes {
 public:
  CPlaceNotes(SPlaces& places, std::vector<XMLFailure>& failures) : m_places(places), m_failures(failures) {
    m_places.elements.emplace_back();  // the document itself
  }

  void NoteName(std::size_t begin) { m_name = begin; }
  void NoteAttributeEnd(std::size_t end) { m_places.attributes.push_back({m_name, end}); }

  void NoteTag(const XMLRange& tag, ETag kind) {
    if (kind == ETag::kEnd) {
      EndElement(tag.end);
      return;
    }
    if (kind == ETag::kStart) {
      m_open.push_back(m_places.elements.size());
    }
    m_places.elements.push_back(tag);
  }

  bool TakesFailure(const XMLFailure& failure) {
    m_failures.push_back(failure);
    return true;
  }

 private:
  // Broken markup may end what never began.
  void EndElement(std::size_t end) {
    if (!m_open.empty()) {
      m_places.elements[m_open.back()].end = end;
      m_open.pop_back();
    }
  }

  SPlaces& m_places;
  std::vector<XMLFailure>& m_failures;
  std::vector<std::size_t> m_open;
  std::size_t m_name = 0;
};

}  // namespace XmlParser
