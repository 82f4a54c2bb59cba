#pragma once

#include <Zorbel/CStringT.h>

#include <cstddef>
#include <string>

#include "BasePool/CbStr.h"
#include "Document/Sources.h"
#include "Reader/CLoadLimits.h"
#include "Reader/Expansion.h"
#include "Reader/IEnvironment.h"
#include "Reader/Problem.h"
#include "Reader/SVariable.h"
#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

class CSourceRecorder;

/// Where the reader looks: at an element, or one of its attributes, in a pass of the loops around it.
struct SWhere {
  const XMLNode& node;
  const SVariable* variables = nullptr;
  const char* attribute = nullptr;
};

/// A byte of the file being read.
struct STextPosition {
  std::size_t position = kNoXmlPosition;
};

/// What all parts of a reader share while they read a document with its includes.
class CReading {
 public:
  /// `sources` is null when nobody asks where things come from.
  CReading(IEnvironment& world, IProblemHandler& problems, CSourceRecorder* sources)
      : environment(world), m_problems(problems), m_sources(sources) {}

  /// Tells of a problem, with the texts in place of each `%s` of the format. Returns when the reader is to go on.
  /// `where` is one of the structures above, or the source of a record.
  template <class Where, class... Texts>
  void Report(const SFault& fault, const Where& where, const wchar_t* format, const Texts&... texts) {
    std::wstring text;
    CbStrT<std::wstring>(text).Format(format, texts.c_str()...);
    Tell(fault, where, text);
  }

  /// Returns a bean's name for a text.
  std::wstring NameOf(const CStringT<char>& bean) { return m_problems.NameOf(bean); }

  /// Returns the text, which may be null, with the values of variables in it; as it stands when that cannot be done.
  CStringT<wchar_t> Substitute(const char* text, const SWhere& where);

  /// Likewise, in the narrow form of names.
  CStringT<char> SubstituteNarrow(const char* text, const SWhere& where);

  /// Returns the value of an attribute, likewise; empty when it is absent.
  CStringT<char> NarrowAttribute(const XMLNode& node, const char* attribute, const SVariable* variables) {
    const char* text = node.getAttribute(attribute);
    return text != nullptr ? SubstituteNarrow(text, {node, variables, attribute}) : CStringT<char>();
  }

  /// Returns how many texts could not be had so far. What depends on such a one is not told, too.
  unsigned int CountFailedTexts() const { return m_failedTexts; }

  /// Returns where a record that is read from `node` comes from. Requires: somebody asks.
  SSource SourceOf(const XMLNode& node, const SVariable* variables);

  /// Null when nobody asks where things come from.
  CSourceRecorder* GetSources() const { return m_sources; }

  IEnvironment& environment;
  CLoadLimits limits;

 private:
  // Apart from the above: a problem would take its room on the stack at every element that nests.
  template <class Where>
  void Tell(const SFault& fault, const Where& where, std::wstring& text);
  void Locate(SProblem& problem, const SWhere& where) const;
  void Locate(SProblem& problem, const STextPosition& where) const;
  static void Locate(SProblem& problem, const SSource& where);
  void ReportExpansion(EExpansion outcome, const std::wstring& text, const SWhere& where);

  IProblemHandler& m_problems;
  CSourceRecorder* m_sources;
  unsigned int m_failedTexts = 0;
  unsigned int m_endlessTexts = 0;
};

}  // namespace Zorbel::Internal
