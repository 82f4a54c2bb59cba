#include "XmlTree.h"

#include <pugixml.hpp>

namespace XmlParser {
namespace {

/// Walks the document without recursion: it may be nested to any depth.
class CTreeBuilder {
 public:
  explicit CTreeBuilder(STree& tree) : m_tree(tree) { m_tree.elements.emplace_back(); }

  void Run(const pugi::xml_node& document) {
    m_open.push_back({0, kNone});
    pugi::xml_node node = document.first_child();
    while (node) {
      const bool entered = node.type() == pugi::node_element && AddElement(node);
      node = entered ? node.first_child() : Following(node);
    }
  }

 private:
  struct SOpenElement {
    std::uint32_t element;
    std::uint32_t lastChild;
  };

  // Returns true when the walk goes on inside the element.
  bool AddElement(const pugi::xml_node& node) {
    const auto index = static_cast<std::uint32_t>(m_tree.elements.size());
    SElement& element = m_tree.elements.emplace_back();
    element.name = node.name();
    element.text = TextOf(node);
    AddAttributes(node, element);
    SOpenElement& parent = m_open.back();
    (parent.lastChild == kNone ? m_tree.elements[parent.element].firstChild
                               : m_tree.elements[parent.lastChild].nextSibling) = index;
    parent.lastChild = index;
    if (!node.first_child()) {
      return false;
    }
    m_open.push_back({index, kNone});
    return true;
  }

  pugi::xml_node Following(pugi::xml_node node) {
    while (node && !node.next_sibling()) {
      node = node.parent();
      m_open.pop_back();
    }
    return node.next_sibling();
  }

  void AddAttributes(const pugi::xml_node& node, SElement& element) {
    element.firstAttribute = static_cast<std::uint32_t>(m_tree.attributes.size());
    for (const pugi::xml_attribute& attribute : node.attributes()) {
      m_tree.attributes.push_back({attribute.name(), attribute.value()});
      ++element.attributeCount;
    }
  }

  // Comments leave no node, so pieces that they part are neighbours here.
  const char* TextOf(const pugi::xml_node& node) {
    pugi::xml_node piece = node.first_child();
    while (piece && (piece.type() != pugi::node_pcdata || *piece.value() == '\0')) {
      piece = piece.next_sibling();
    }
    pugi::xml_node next = piece.next_sibling();
    if (!piece || next.type() != pugi::node_pcdata) {
      return piece ? piece.value() : nullptr;
    }
    std::string& text = m_tree.joinedTexts.emplace_back(piece.value());
    for (; next.type() == pugi::node_pcdata; next = next.next_sibling()) {
      text += next.value();
    }
    return text.c_str();
  }

  STree& m_tree;
  std::vector<SOpenElement> m_open;
};

}  // namespace

void BuildTree(const pugi::xml_node& document, STree& tree) { CTreeBuilder(tree).Run(document); }

}  // namespace XmlParser
