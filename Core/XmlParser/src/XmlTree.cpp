#include "XmlTree.h"

#include <pugixml.hpp>

#include "XmlScan.h"

namespace XmlParser {
namespace {

/// Walks the document once and without recursion: it may be nested to any depth. The parser's own functions are not
/// inlined, and few calls of them matter here.
class CTreeBuilder {
 public:
  explicit CTreeBuilder(STree& tree) : m_tree(tree) { m_tree.elements.emplace_back(); }

  void Run(const pugi::xml_node& document) {
    m_open.push_back({document, 0});
    pugi::xml_node node = document.first_child();
    while (!m_open.empty()) {
      node = Visit(node);
    }
  }

 private:
  enum class EText { kSinglePiece, kJoined, kEnded };

  struct SOpenElement {
    pugi::xml_node node;
    std::uint32_t element;
    std::uint32_t lastChild = kNone;
    EText text = EText::kSinglePiece;
  };

  // Returns the node to go on with, which is none behind the last child of an element.
  pugi::xml_node Visit(const pugi::xml_node& node) {
    switch (node.type()) {
      case pugi::node_null: return Leave();
      case pugi::node_element: AddElement(node); return node.first_child();
      case pugi::node_pcdata: AddText(node.value()); break;
      default: EndText(); break;
    }
    return node.next_sibling();
  }

  pugi::xml_node Leave() {
    const pugi::xml_node left = m_open.back().node;
    m_open.pop_back();
    return left.next_sibling();
  }

  void AddElement(const pugi::xml_node& node) {
    EndText();
    const auto index = static_cast<std::uint32_t>(m_tree.elements.size());
    SElement& element = m_tree.elements.emplace_back();
    element.name = node.name();
    AddAttributes(node, element);
    SOpenElement& parent = m_open.back();
    (parent.lastChild == kNone ? m_tree.elements[parent.element].firstChild
                               : m_tree.elements[parent.lastChild].nextSibling) = index;
    parent.lastChild = index;
    m_open.push_back({node, index});
  }

  void AddAttributes(const pugi::xml_node& node, SElement& element) {
    element.firstAttribute = static_cast<std::uint32_t>(m_tree.attributes.size());
    for (pugi::xml_attribute next = node.first_attribute(); next; next = next.next_attribute()) {
      m_tree.attributes.push_back({next.name(), next.value()});
      ++element.attributeCount;
    }
  }

  // Comments leave no node: a piece that follows another was parted from it by one. The parser trims a text before it
  // resolves references, and only the end once more behind that.
  void AddText(const char* piece) {
    while (IsSpace(*piece)) {
      ++piece;
    }
    SOpenElement& parent = m_open.back();
    const char*& text = m_tree.elements[parent.element].text;
    if (*piece == '\0' || parent.text == EText::kEnded) {
      return;
    }
    text = text == nullptr ? piece : Join(parent, text, piece);
  }

  // The text that grows is always the last one: a child would have ended it.
  const char* Join(SOpenElement& parent, const char* text, const char* piece) {
    if (parent.text != EText::kJoined) {
      parent.text = EText::kJoined;
      m_tree.joinedTexts.emplace_back(text);
    }
    return m_tree.joinedTexts.back().append(piece).c_str();
  }

  void EndText() {
    SOpenElement& parent = m_open.back();
    if (m_tree.elements[parent.element].text != nullptr) {
      parent.text = EText::kEnded;
    }
  }

  STree& m_tree;
  std::vector<SOpenElement> m_open;
};

}  // namespace

void BuildTree(const pugi::xml_node& document, STree& tree) { CTreeBuilder(tree).Run(document); }

}  // namespace XmlParser
