#include "model/xml_guard.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>

#include "tests/model/repeated_text.h"

namespace kvn::model {
namespace {

std::string Nested(std::size_t depth) {
    return test::Repeated("<a>", depth) + "x" + test::Repeated("</a>", depth);
}

std::size_t DepthOf(const TiXmlNode& node) {
    std::size_t deepest = 0;
    for (const TiXmlNode* child = node.FirstChild(); child; child = child->NextSibling()) {
        deepest = std::max(deepest, DepthOf(*child) + (child->ToElement() ? 1 : 0));
    }
    return deepest;
}

// Pieces of markup in any order: most of them mislead a parser about where tags end.
std::string MarkupSoup(std::mt19937& random) {
    static const std::string kDeep = test::Repeated("<a>", 40);
    static const std::string kEnds = test::Repeated("</a>", 40);
    static const std::array<std::string_view, 33> kPieces{
        "<!-->", kEnds,  "<?",  "?>",        "<?xml ", kDeep, kDeep, kDeep,  kDeep, "</a>", "<a>",
        "<a b=", "<!--", "-->", "<![CDATA[", "]]>",    "<!",  "<1 ", "<",    ">",   ">",    ">",
        "\"",    "\"",   "'",   "'",         "=",      "/>",  "&#x", "x41;", "&#",  "#65;", "x "};
    static const std::array<std::string_view, 4> kStarts{"", "<a>", "<?xml ", "<?xml version="};
    std::string soup(kStarts[random() % kStarts.size()]);
    for (std::size_t pieces = 2 + random() % 14; pieces > 0; --pieces) soup += kPieces[random() % kPieces.size()];
    return soup;
}

TEST(PrepareXmlTest, LetsTinyXmlNestNoDeeperThanAllowed) {
    TiXmlBase::SetCondenseWhiteSpace(false);
    std::mt19937 random(11);
    std::size_t deepDocuments = 0;
    for (int round = 0; round < 100'000; ++round) {
        const std::string soup = MarkupSoup(random);
        const auto prepared = PrepareXml(soup);
        if (!prepared) continue;
        TiXmlDocument document;
        document.Parse(prepared->c_str(), nullptr, TIXML_ENCODING_LEGACY);
        const std::size_t depth = DepthOf(document);
        ASSERT_LE(depth, kMaxXmlDepth) << soup;
        deepDocuments += depth >= 40 ? 1 : 0;
    }
    EXPECT_GT(deepDocuments, 1000U);
}

TEST(PrepareXmlTest, LeavesAnOrdinaryDocumentAsItIs) {
    const std::string document =
        "<data>\n    <name a=\"1>2\" b='>'>x &lt; y</name>\n    <!-- <a> -->\n    <empty />\n</data>\n";
    EXPECT_EQ(PrepareXml(document), document);
}

TEST(PrepareXmlTest, MakesEveryLineEndASingleLineFeed) {
    EXPECT_EQ(PrepareXml("<a>x\r\ny\rz\nw\r\r\n\n</a>\r\n"), "<a>x\ny\nz\nw\n\n\n</a>\n");
    EXPECT_EQ(PrepareXml("<a>x</a>\r"), "<a>x</a>\n");
}

TEST(PrepareXmlTest, PutsATextOfWhiteSpaceOnlyInASection) {
    EXPECT_EQ(PrepareXml("<a> </a>"), "<a><![CDATA[ ]]></a>");
    EXPECT_EQ(PrepareXml("<a>  \t\n</a>"), "<a><![CDATA[  \t\n]]></a>");
    EXPECT_EQ(PrepareXml("<a>x</a><b> </b><c>y</c><d>  </d>"),
              "<a>x</a><b><![CDATA[ ]]></b><c>y</c><d><![CDATA[  ]]></d>");
}

TEST(PrepareXmlTest, ResolvesTheReferencesOfAWhiteText) {
    EXPECT_EQ(PrepareXml("<a>&#x09;&#x0A; &#x0B;&#x0C;&#x0D;</a>"), "<a><![CDATA[\t\n \v\f\r]]></a>");
}

TEST(PrepareXmlTest, LeavesOtherTextsAlone) {
    for (const char* document : {"<a></a>", "<a>x</a>", "<a> x</a>", "<a>x </a>", "<a> <b/></a>", "<a> <!-- --></a>",
                                 "<a>&#x41;</a>", "<a> &#x20;</a>", "<a/> <b/>"}) {
        EXPECT_EQ(PrepareXml(document), document);
    }
}

TEST(PrepareXmlTest, RefusesAnEmptyDocument) {
    EXPECT_FALSE(PrepareXml(""));
}

TEST(PrepareXmlTest, RefusesAZero) {
    EXPECT_FALSE(PrepareXml(std::string("<a>\0</a>", 8)));
    EXPECT_FALSE(PrepareXml(std::string("<a></a>\0", 8)));
    EXPECT_FALSE(PrepareXml(std::string("\0", 1)));
}

TEST(PrepareXmlTest, RefusesADocumentThatIsTooLarge) {
    std::string document = "<a>";
    document.resize(kMaxXmlBytes - 4, 'x');
    document += "</a>";
    EXPECT_TRUE(PrepareXml(document));
    EXPECT_FALSE(PrepareXml(document + "\n"));
    EXPECT_FALSE(PrepareXml(std::string(std::size_t{50} * 1024 * 1024, '<')));
}

TEST(PrepareXmlTest, RefusesWhatIsNestedTooDeeply) {
    EXPECT_TRUE(PrepareXml(Nested(kMaxXmlDepth)));
    EXPECT_FALSE(PrepareXml(Nested(kMaxXmlDepth + 1)));
    EXPECT_FALSE(PrepareXml(Nested(100'000)));
    EXPECT_FALSE(PrepareXml(test::Repeated("<a>", 100'000)));
    EXPECT_FALSE(PrepareXml(test::Repeated("<a b='c'>", 100'000)));
    EXPECT_FALSE(PrepareXml(test::Repeated("<_\n>", 100'000)));
    EXPECT_FALSE(PrepareXml(test::Repeated("<\xE9>", 100'000)));
}

TEST(PrepareXmlTest, AnElementWithoutContentIsNestedToo) {
    const auto nestedAround = [](const std::string& content, std::size_t depth) {
        return test::Repeated("<a>", depth) + content + test::Repeated("</a>", depth);
    };
    for (const std::string element : {"<a/>", "<a />", "<a b='/'/>", "<a/><a/>"}) {
        EXPECT_TRUE(PrepareXml(nestedAround(element, kMaxXmlDepth - 1))) << element;
        EXPECT_FALSE(PrepareXml(nestedAround(element, kMaxXmlDepth))) << element;
    }
}

TEST(PrepareXmlTest, AnEndWithinQuotesDoesNotEndATag) {
    for (const std::string tag : {"<a b='/>'>", "<a b=\"/>\">", "<a b='\"/>'>", "<a b=\"'/>\">"}) {
        EXPECT_TRUE(PrepareXml(test::Repeated(tag, kMaxXmlDepth))) << tag;
        EXPECT_FALSE(PrepareXml(test::Repeated(tag, kMaxXmlDepth + 1))) << tag;
    }
}

TEST(PrepareXmlTest, AllowsAsManySiblingsAsThereAre) {
    EXPECT_TRUE(PrepareXml("<a>" + test::Repeated("<b>x</b>", 100'000) + "</a>"));
    EXPECT_TRUE(PrepareXml("<a>" + test::Repeated("<b/>", 100'000) + "</a>"));
    EXPECT_TRUE(PrepareXml("<a>" + test::Repeated("<b c='/>' />", 100'000) + "</a>"));
}

TEST(PrepareXmlTest, EndTagsWithoutAStartDoNotMakeRoomForDeeperNesting) {
    for (const std::size_t endTags : {1U, 2U, 1000U}) {
        EXPECT_FALSE(PrepareXml(test::Repeated("</a>", endTags) + Nested(kMaxXmlDepth + 1))) << endTags;
        EXPECT_TRUE(PrepareXml(test::Repeated("</a>", endTags) + Nested(kMaxXmlDepth))) << endTags;
    }
}

TEST(PrepareXmlTest, DoesNotCountWhatCommentsAndSectionsHold) {
    EXPECT_TRUE(PrepareXml("<a><!--" + test::Repeated("<b>", 1000) + "--></a>"));
    EXPECT_TRUE(PrepareXml("<a><![CDATA[" + test::Repeated("<b>", 1000) + "]]></a>"));
    EXPECT_TRUE(PrepareXml("<a b='" + test::Repeated("<b>", 1000) + "'></a>"));
}

TEST(PrepareXmlTest, CountsWhatOnlySeemsToBeInsideOfAComment) {
    const std::string deep = Nested(100);
    EXPECT_FALSE(PrepareXml("<a b='<!--'>" + deep + "</a><!-- -->"));
    EXPECT_FALSE(PrepareXml("<![CDATA[<!--]]>" + deep + "<!-- -->"));
    EXPECT_FALSE(PrepareXml("<!DOCTYPE \"<!--\">" + deep + "<!-- -->"));
    EXPECT_FALSE(PrepareXml("<!-- <![CDATA[ -->" + deep + "<!-- ]]> -->"));
}

// For TinyXML a tag without a name ends at the first ">", whatever quotes are in it.
TEST(PrepareXmlTest, CountsWhatOnlySeemsToBeQuotedInATagWithoutAName) {
    for (const std::string start : {"<1 \">", "< \">", "<- '>", "<=\">", "<1 a=\">"}) {
        const std::string quote = start.find('"') != std::string::npos ? "\"" : "'";
        EXPECT_FALSE(PrepareXml("<a>" + start + test::Repeated("<a>", 100) + quote + '>')) << start;
    }
}

TEST(PrepareXmlTest, RefusesACharacterReferenceThatIsNotOne) {
    for (const char* document :
         {"<a>&#</a>;", "<a>&#x41</a>", "<a>&#x</a>x41;", "<a>&#x<!--x41;--></a>", "<a>&#<![CDATA[#65;]]></a>",
          "<a b=\"&#x\">x41;\"></a>", "<a>&#xg;</a>", "<a>&#X41;</a>", "<a/>&#", "&#x<a/>x41;"}) {
        EXPECT_FALSE(PrepareXml(document)) << document;
    }
    for (const char* document : {"<a>&#x41;&#65; &;&amp;</a>", "<a b='&#x41;'>x</a>", "<a>x<!-- &# --></a>",
                                 "<a><![CDATA[&#x]]></a>", "<a>x&#x41;</a>&#65;"}) {
        EXPECT_EQ(PrepareXml(document), document);
    }
}

TEST(PrepareXmlTest, BlanksTheDeclarationOut) {
    EXPECT_EQ(PrepareXml("<?xml version=\"1.0\"?>\n<a>x</a>"), std::string(21, ' ') + "\n<a>x</a>");
    EXPECT_EQ(PrepareXml("<?a b?><?c?><a>x</a>"), std::string(12, ' ') + "<a>x</a>");
}

TEST(PrepareXmlTest, RefusesATagWithoutEnd) {
    for (const char* document :
         {"<", "<a", "<a b=\"", "<a b=\"x", "<a b='x\">", "</", "</a", "<!", "<!--", "<!-- >", "<![CDATA[",
          "<![CDATA[]>", "<?", "<?xml", "<a><", "<a></a><b", "<a <b></b></a>", "<a b=<c></a>"}) {
        EXPECT_FALSE(PrepareXml(document)) << document;
    }
}

TEST(PrepareXmlTest, RefusesATagWithTooManyAttributes) {
    for (const std::string attribute : {" b='c'", " b=c", " b = \"c\""}) {
        const auto tag = [&](std::size_t count) { return "<a" + test::Repeated(attribute, count) + "></a>"; };
        EXPECT_TRUE(PrepareXml(tag(kMaxXmlAttributes))) << attribute;
        EXPECT_FALSE(PrepareXml(tag(kMaxXmlAttributes + 1))) << attribute;
        EXPECT_FALSE(PrepareXml(tag(100'000))) << attribute;
    }
}

TEST(PrepareXmlTest, CountsAttributesAsElements) {
    const std::string tag = "<b" + test::Repeated(" c='d'", 199) + "/>";
    EXPECT_TRUE(PrepareXml("<a>" + test::Repeated(tag, kMaxXmlElements / 200 - 1) + "</a>"));
    EXPECT_FALSE(PrepareXml("<a>" + test::Repeated(tag, kMaxXmlElements / 200) + "</a>"));
}

TEST(PrepareXmlTest, AllowsALongTag) {
    const std::string value(1'000'000, 'x');
    const std::string blanks(1'000'000, ' ');
    for (const std::string& document : {"<a b='" + value + "'>x</a>", "<a b=\"" + value + "=\">x</a>",
                                        "<a" + blanks + ">x</a>", "<a><" + value + "/></a>"}) {
        EXPECT_EQ(PrepareXml(document), document);
    }
    EXPECT_TRUE(PrepareXml("<a b='" + test::Repeated("=", 1000) + "'>x</a>"));
    EXPECT_FALSE(PrepareXml("<a b='" + value));
}

TEST(PrepareXmlTest, RefusesTooManyConstructsOfEveryKind) {
    for (const std::string construct : {"<b/>", "<b></b>", "<1>", "<!>", "<!---->", "<![CDATA[]]>"}) {
        EXPECT_TRUE(PrepareXml("<a>" + test::Repeated(construct, kMaxXmlElements / 2) + "</a>")) << construct;
        EXPECT_FALSE(PrepareXml("<a>" + test::Repeated(construct, kMaxXmlElements + 1) + "</a>")) << construct;
    }
}

TEST(PrepareXmlTest, BlanksTheInsideOfAnInstructionInAnElement) {
    EXPECT_EQ(PrepareXml("<a><?xml v=\"1\"?></a>"), "<a><!" + std::string(10, ' ') + "></a>");
    EXPECT_EQ(PrepareXml("<a>x<?b?>y</a>"), "<a>x<!  >y</a>");
    EXPECT_EQ(PrepareXml("<a>x<?>y</a>"), "<a>x<!>y</a>");
}

TEST(PrepareXmlTest, AnInstructionEndsAtItsQuestionMark) {
    EXPECT_EQ(PrepareXml("<a><?b if (c > d) ?></a>"), "<a><!" + std::string(14, ' ') + "></a>");
    EXPECT_EQ(PrepareXml("<?b c > d ?><a>x</a>"), std::string(12, ' ') + "<a>x</a>");
    EXPECT_EQ(PrepareXml("<a><?b>x<c>y</c><?d?></a>"), "<a><! >x<c>y</c><!  ></a>");
    EXPECT_EQ(PrepareXml("<a><?b>?</a>"), "<a><! >?</a>");
}

TEST(PrepareXmlTest, ACommentDoesNotEndWhereItsStartOverlapsItsEnd) {
    const std::string deep = test::Repeated("<a>", 60);
    const std::string ends = test::Repeated("</a>", 60);
    for (const std::string start : {"<!-->", "<!--->", "<![CDATA[>", "<![CDATA[]>"}) {
        const std::string end = start.starts_with("<!--") ? "-->" : "]]>";
        EXPECT_FALSE(PrepareXml(test::Repeated(deep + start + ends + end, 6))) << start;
        EXPECT_TRUE(PrepareXml("<a>" + start + deep + deep + end + "</a>")) << start;
        EXPECT_FALSE(PrepareXml("<a>" + start + "</a>")) << start;
    }
}

}  // namespace
}  // namespace kvn::model
