#include "XmlParser/XmlParser.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "XmlParser/CLineIndex.h"

namespace {

XMLNode Parse(const std::string& text, XMLResults& results) {
  return XMLNode::parseString(text.c_str(), "zorbel", &results);
}

XMLNode Parsed(const std::string& text) {
  XMLResults results{};
  XMLNode root = Parse(text, results);
  EXPECT_EQ(results.error, eXMLErrorNone) << text;
  EXPECT_EQ(results.nLine, 0);
  return root;
}

std::string OrNull(const char* text) { return text != nullptr ? text : "(null)"; }

TEST(XmlParser, FailuresHaveTheirCodeAndPlace) {
  const std::tuple<std::string, XMLError, int, int> cases[] = {
      // with line and column
      {"", eXMLErrorFirstTagNotFound, 0, 0},
      {"only text", eXMLErrorFirstTagNotFound, 0, 0},
      {"<other/><!-- <zorbel/> -->", eXMLErrorFirstTagNotFound, 0, 0},
      {"<zorbel>", eXMLErrorMissingEndTag, 1, 9},
      {"<zorbel>\n\xC3\xA9\xC3\xA9</x></zorbel>", eXMLErrorUnmatchedEndTag, 2, 5},
      {"<zorbel>\n <a b=c/></zorbel>", eXMLErrorUnexpectedToken, 2, 7},
      {"<zorbel><a b='1'c='2'/></zorbel>", eXMLErrorUnexpectedToken, 1, 17},
      {"<zorbel><!-- no end", eXMLErrorUnmatchedEndClearTag, 1, 20},
      {"<zorbel><![CDATA[ no end", eXMLErrorUnmatchedEndClearTag, 1, 25},
      {"<zorbel>\n<a>&nbsp;</a></zorbel>", eXMLErrorUnknownCharacterEntity, 2, 4},
      {"<zorbel><a b='\xC3\xA9 & '/></zorbel>", eXMLErrorUnknownCharacterEntity, 1, 17},
      {"<!DOCTYPE z [<!ENTITY e 'x'>]><zorbel>&e;</zorbel>", eXMLErrorUnknownCharacterEntity, 1, 39},
      {"<zorbel>&#0;</zorbel>", eXMLErrorUnknownCharacterEntity, 1, 9},
      {"<zorbel>&#x110000;</zorbel>", eXMLErrorUnknownCharacterEntity, 1, 9},
      {"<zorbel></a>&x;</zorbel>", eXMLErrorUnmatchedEndTag, 1, 11},  // the first of two
  };
  for (const auto& [text, error, line, column] : cases) {
    XMLResults results{};
    EXPECT_TRUE(Parse(text, results).isEmpty()) << text;
    EXPECT_EQ(std::tuple(results.error, results.nLine, results.nColumn), std::tuple(error, line, column)) << text;
  }
  XMLResults results{};
  EXPECT_TRUE(XMLNode::parseString(nullptr, "zorbel", &results).isEmpty());
  EXPECT_EQ(results.error, eXMLErrorNoElements);
  EXPECT_TRUE(XMLNode::parseString("<zorbel>", "zorbel", nullptr).isEmpty());
}

TEST(XmlParser, TextsAreTrimmedAndOnlyCommentsDoNotPartThem) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {" \t\r\n a b \n", "a b"},
      {" \n ", "(null)"},
      {"", "(null)"},
      {" a <!-- & --> b ", "ab"},
      {"<!-- --> <!-- --> a <!-- -->b<!-- -->c<x/>d", "abc"},
      {" &#32; a&#x9; ", "a"},
      {"&#32;<x/>b", "b"},
      {"a<x/>b", "a"},
      {"<x/> b ", "b"},
      {"<![CDATA[data]]>", "(null)"},
      {"a<![CDATA[data]]>b", "a"},
      {"a<?pi?>b", "a"},
      {"&lt;&amp;&gt;&quot;&apos;&#65;&#x20AC;", "<&>\"'A\xE2\x82\xAC"},
      {"a\r\nb", "a\r\nb"},
      {"\xFF\xE9", "\xFF\xE9"},
  };
  for (const auto& [content, text] : cases) {
    EXPECT_EQ(OrNull(Parsed("<zorbel>" + content + "</zorbel>").getText()), text) << content;
  }
}

TEST(XmlParser, NamesAreFoundWhateverTheirLetterCase) {
  const XMLNode root = Parsed("<?xml version='1.0' encoding='UTF-16'?>& <a/><ZORBEL><Bean/><bEAN/></zorbel> text");
  EXPECT_EQ(root.nChildNode("BEAN"), 2);
  EXPECT_TRUE(root.getChildNode("beans").isEmpty());
  EXPECT_TRUE(root.getChildNode("bean", 2).isEmpty());
}

TEST(XmlParser, NothingInADocumentTypeIsTakenForATag) {
  for (const std::string inside :
       {"<!ENTITY a '>\"&'>", "<!-- ' > -->", "<?a it's > ?>", "<![IGNORE[ ' <![a[ > ]]> \" ]]>"}) {
    EXPECT_FALSE(Parsed("<!DOCTYPE z [" + inside + "]><Zorbel></zorbel>").isEmpty());
  }
}

TEST(XmlParser, TheFirstOfEqualAttributesWinsAndKeepsItsWhiteSpace) {
  const XMLNode root = Parsed("<zorbel Name=' a\r\n\tb ' NAME='2' empty='' quote='&quot;&#10;'/>");
  EXPECT_EQ(OrNull(root.getAttribute("nAME")), " a\r\n\tb ");
  EXPECT_EQ(OrNull(root.getAttribute("empty")), "");
  EXPECT_EQ(OrNull(root.getAttribute("quote")), "\"\n");
  EXPECT_EQ(root.getAttribute("absent"), nullptr);
}

TEST(XmlParser, TheTextEndsAtTheFirstZero) { EXPECT_FALSE(Parsed(std::string("<zorbel/>\0<broken", 17)).isEmpty()); }

TEST(XmlParser, ANodeKeepsItsDocumentAlive) {
  XMLNode child;
  EXPECT_EQ(child.getText(), nullptr);
  child = Parsed("<zorbel><a>text</a></zorbel>").getChildNode("a");
  EXPECT_EQ(OrNull(child.getText()), "text");
}

TEST(XmlParser, WalksVisitTheChildrenOfTheirNamesInOrder) {
  constexpr int kPairs = 200'000;  // time in proportion to their square would be felt
  std::string text = "<zorbel>";
  for (int i = 0; i < kPairs; ++i) {
    text += "<a n='" + std::to_string(i) + "'/><b><a/></b>";
  }
  const XMLNode root = Parsed(text + "</zorbel>");
  int nextA = 0;
  int nextB = 0;
  for (int i = 0; i < kPairs; ++i) {
    ASSERT_EQ(OrNull(root.getChildNode("a", &nextA).getAttribute("n")), std::to_string(i));
    ASSERT_FALSE(root.getChildNode("b", &nextB).isEmpty());
  }
  EXPECT_TRUE(root.getChildNode("a", &nextA).isEmpty() && root.getChildNode("b", &nextB).isEmpty());
}

TEST(XmlParser, RangesAreThoseOfElementsAndAttributes) {
  const std::string start = "<!DOCTYPE a [<!ENTITY a '<a>'>]><b/><zorbel>\xE2\x82\xAC<b><a/></b>";
  const std::tuple<std::string, std::string, std::vector<std::string>> cases[] = {
      // a tag, what belongs to the element behind it, and the attributes
      {"<A/>", "", {}},
      {"<a\n B = '\xC3\xA9>' b=\"/\" />", "", {"B = '\xC3\xA9>'", "b=\"/\""}},
      {"<A b='<'>", "&x;<!-- </a> --><b/><a></a></a\n>", {"b='<'"}},
      {"<a>", "<![CDATA[</a>]]><?b </a>?></a>", {}},
  };
  for (const auto& [tag, rest, attributes] : cases) {
    const std::string text = start + tag + rest + "</zorbel>";
    const auto piece = [&text](XMLRange range) { return text.substr(range.begin, range.end - range.begin); };
    std::vector<XMLFailure> failures;
    const XMLNode node = XMLNode::parseLocated(text.c_str(), "zorbel", failures).getChildNode("a");
    EXPECT_EQ(std::tuple(node.getPosition(), node.getRange().begin), std::tuple(5U, start.size()));
    EXPECT_EQ(piece(node.getRange()), tag + rest);
    ASSERT_EQ(node.getAttributeCount(), static_cast<int>(attributes.size()));
    for (int i = 0; i < node.getAttributeCount(); ++i) {
      EXPECT_EQ(piece(node.getAttributeRange(i)), attributes[i]);
    }
  }
}

TEST(XmlParser, AllFailuresAreToldUpToTheOneThatEndsTheReading) {
  constexpr auto kUtf8 = XmlParser::ECharacters::kUtf8;
  constexpr auto kBytes = XmlParser::ECharacters::kSingleBytes;
  constexpr XMLError kName = eXMLErrorUnknownCharacterEntity;
  const std::tuple<std::string, bool, XmlParser::ECharacters, std::vector<std::tuple<XMLError, int, int>>> cases[] = {
      {"<zorbel a='&x;'>\n\xC3\xA9&<b>&#0;</b></zorbel>", true, kUtf8, {{kName, 1, 12}, {kName, 2, 2}, {kName, 2, 6}}},
      {"<zorbel>\xC3\xA9&x;</a>&y;</zorbel>", false, kBytes, {{kName, 1, 11}, {eXMLErrorUnmatchedEndTag, 1, 16}}},
      {"<a>&x;</a>", false, kUtf8, {{kName, 1, 4}, {eXMLErrorFirstTagNotFound, 0, 0}}},
  };
  for (const auto& [text, isRead, characters, expected] : cases) {
    std::vector<XMLFailure> failures = {{eXMLErrorEmpty, 1000}};  // of another document
    EXPECT_EQ(!XMLNode::parseLocated(text.c_str(), "zorbel", failures).isEmpty(), isRead);
    ASSERT_EQ(failures.size(), expected.size() + 1) << text;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      const auto [line, column] = XmlParser::CLineIndex(text, characters).At(failures[i + 1].position);
      EXPECT_EQ(std::tuple(failures[i + 1].error, line, column), expected[i]) << text;
    }
  }
}

TEST(XmlParser, AnyDepthIsParsedWalkedAndReleased) {
  constexpr int kDepth = 1'000'000;
  std::string text;
  for (int i = 0; i < kDepth; ++i) {
    text += "<zorbel>";
  }
  for (int i = 0; i < kDepth; ++i) {
    text += "</zorbel>";
  }
  int depth = 0;
  for (XMLNode node = Parsed(text); !node.isEmpty(); node = node.getChildNode("zorbel")) {
    ++depth;
  }
  EXPECT_EQ(depth, kDepth);
  std::vector<XMLFailure> failures;
  EXPECT_EQ(XMLNode::parseLocated(text.c_str(), "zorbel", failures).getRange().end, text.size());
}

}  // namespace
