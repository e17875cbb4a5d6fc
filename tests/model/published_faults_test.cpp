// The published faults of TinyXML 2.6.2. Its sources are patched, so the bare parser survives them, and the guard keeps
// them from the parser anyway. Without the patches the parser would loop until the test's time is up, or fail an
// assertion.
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <string>
#include <vector>

#include "tests/model/printed_document.h"
#include "tests/model/test_codecs.h"

namespace kvn::model {
namespace {

using namespace std::string_literals;

using Documents = std::vector<std::string>;

// CVE-2021-42260: a lead byte 0xEF among the last two bytes, when the parser computes the place of an error in UTF-8.
const Documents kCutLeadBytes{
    "<a \xEF>",          "<a \xEF/",  "<a \xEF<",    "<a b='c' \xEF>",       "<a>\n<b \xEF>",       "<a x\xEF>",
    "<?xml?>  <a \xEF>", "<a><\xEF ", "<data \xEF>", "\t<data>\n\t<p \xEF/", "<data><profile \xEF>"};

// CVE-2023-34194: a declaration that ends in white space, at the end of the document or at a zero.
const Documents kCutDeclarations{"<?xml   ",
                                 "<?xml \n\t",
                                 "<?xml version='1.0' ",
                                 "<?xml version=\"1.0\" encoding=\"utf-8\" \r\n",
                                 " <?xml encoding='x'   ",
                                 "<?xml standalone='yes' \t",
                                 "<?xml a ",
                                 "<a><?xml  ",
                                 "<?xml version='1.0' \0 ?><data/>"s};

// The settings of a careful reader, and TinyXML's defaults, with which errors have rows and columns.
struct ParserSetup {
    TiXmlEncoding encoding;
    int tabSize;
};

class PublishedFaultTest : public testing::TestWithParam<ParserSetup> {
protected:
    static bool IsBroken(const std::string& document) {
        TiXmlDocument parsed;
        parsed.SetTabSize(GetParam().tabSize);
        parsed.Parse(document.c_str(), nullptr, GetParam().encoding);
        return parsed.Error() || parsed.RootElement() == nullptr;
    }
};

TEST_P(PublishedFaultTest, ALeadByteWithoutItsCharacterEndsTheParse) {
    for (const std::string& document : kCutLeadBytes) EXPECT_TRUE(IsBroken(document)) << document;
}

TEST_P(PublishedFaultTest, ADeclarationThatEndsInWhiteSpaceEndsTheParse) {
    for (const std::string& document : kCutDeclarations) EXPECT_TRUE(IsBroken(document)) << document;
}

INSTANTIATE_TEST_SUITE_P(Parsers, PublishedFaultTest,
                         testing::Values(ParserSetup{TIXML_ENCODING_LEGACY, 0}, ParserSetup{TIXML_ENCODING_LEGACY, 4},
                                         ParserSetup{TIXML_ENCODING_UTF8, 0}, ParserSetup{TIXML_ENCODING_UTF8, 4},
                                         ParserSetup{TIXML_ENCODING_UNKNOWN, 4}));

TEST(PublishedFaultLoadingTest, NoTriggerIsLoaded) {
    const test::LatinCodec latin;
    const test::DoubleByteCodec doubleByte;
    for (const Documents& documents : {kCutLeadBytes, kCutDeclarations}) {
        for (const std::string& trigger : documents) {
            for (const std::string& document : {trigger, "<data><profile/>" + trigger, "\xEF\xBB\xBF" + trigger}) {
                EXPECT_TRUE(test::Parsed(document, latin).empty()) << document;
                EXPECT_TRUE(test::Parsed(document, doubleByte).empty()) << document;
            }
        }
    }
}

// A complete declaration is replaced by blanks before the parser sees it, with everything in it.
TEST(PublishedFaultLoadingTest, ADeclarationNeverReachesTheParser) {
    const test::LatinCodec latin;
    for (const std::string declaration :
         {"<?xml  >", "<?xml version='1.0' \t>", "<?xml \xEF>", "<?xml version=>", "<?xml version=\"\xEF\" ?>"}) {
        EXPECT_EQ(test::Parsed(declaration + "<data><profile/></data>", latin).size(), 1U) << declaration;
    }
}

}  // namespace
}  // namespace kvn::model
