// Documents that nobody wrote in good faith: whatever they are, reading ends soon, in one piece, with checked values.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>

#include "model/profile_document.h"
#include "tests/model/checked_profiles.h"
#include "tests/model/printed_document.h"
#include "tests/model/profile_generator.h"
#include "tests/model/repeated_text.h"
#include "tests/model/test_codecs.h"

namespace kvn::model {
namespace {

bool IsRefused(const std::string& document) {
    return test::Parsed(document, test::kLatin).empty();
}

// Turns a good document into a bad one.
class Mutator {
public:
    explicit Mutator(std::uint32_t seed) : random(seed) {}

    std::string Mutated(std::string document, const std::string& other) {
        const std::size_t count = 1 + Below(4);
        for (std::size_t change = 0; change < count; ++change) Change(document, other);
        return document;
    }

private:
    static constexpr std::array<std::string_view, 28> kPieces{
        "<",     ">",  "</",         "/>",        "&",          "&#x",       "&#x41;",
        ";",     "\"", "'",          "<!--",      "-->",        "]]>",       "<!",
        "<?xml", "?>", "<a>",        "</a>",      "<![CDATA[",  "\r\n",      "<1",
        "=",     "-",  "9999999999", "<profile>", "</profile>", "<data a='", "<Gesture><Key>"};

    void Change(std::string& document, const std::string& other) {
        const std::size_t at = Below(document.size() + 1);
        const std::size_t length = Below(std::min<std::size_t>(document.size() - at, 200) + 1);
        switch (Below(8)) {
            case 0:
                document.resize(at);
                break;
            case 1:
                document.erase(at, length);
                break;
            case 2:
                document.insert(at, document.substr(at, length));
                break;
            case 3:
                document.replace(at, length, other, Below(other.size()), Below(200));
                break;
            case 4:
                document.insert(at, kPieces[Below(kPieces.size())]);
                break;
            case 5:
                document.insert(at, test::Repeated(kPieces[Below(kPieces.size())], Below(300)));
                break;
            case 6:
                document.insert(at, 1, static_cast<char>(random()));
                break;
            default:
                if (at < document.size()) document[at] = static_cast<char>(document[at] ^ (1U << Below(8)));
        }
    }

    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : random() % limit; }

    std::mt19937 random;
};

TEST(HostileDocumentTest, MutatedDocumentsGiveCheckedProfilesOrNone) {
    std::size_t readable = 0;
    for (std::uint32_t seed = 1; seed <= 15; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        test::ProfileGenerator generator(seed, L"\xE9\x4E02\x4E03");
        const std::string document = test::Written(generator.Profiles(), test::kDoubleByte);
        const std::string other = test::Written(generator.Profiles(), test::kLatin);
        Mutator mutator(seed);
        for (int round = 0; round < 100; ++round) {
            const std::string mutated = mutator.Mutated(document, other);
            for (const TextCodec* codec : std::initializer_list<const TextCodec*>{&test::kLatin, &test::kDoubleByte}) {
                const ProfileSet profiles = test::Parsed(mutated, *codec);
                ASSERT_EQ(test::FaultOf(profiles), "") << mutated;
                readable += profiles.empty() ? 0 : 1;
            }
        }
    }
    // Some survive their mutation: more than the way into the refusal is tested.
    EXPECT_GT(readable, 250U);
}

TEST(HostileDocumentTest, EveryTruncationIsRefused) {
    const ProfileSet profiles = test::ProfileGenerator(3, L"\xE9").Profiles();
    const std::string document = test::Written(profiles, test::kLatin);
    const std::size_t end = document.rfind('>');
    for (std::size_t length = 0; length < end; ++length) ASSERT_TRUE(IsRefused(document.substr(0, length))) << length;
    EXPECT_EQ(test::Parsed(document.substr(0, end + 1), test::kLatin), profiles);
}

TEST(HostileDocumentTest, AZeroAnywhereIsRefused) {
    const std::string document = "<data><profile><profname>a</profname></profile></data>";
    for (std::size_t at = 0; at <= document.size(); ++at) {
        std::string hostile = document;
        hostile.insert(at, 1, '\0');
        EXPECT_TRUE(IsRefused(hostile)) << at;
    }
}

TEST(HostileDocumentTest, DeepNestingIsRefused) {
    for (const std::string tag : {"<a>", "<profile>", "<a b='c'>", "<a>x", "<a>\n", "<a><b/>", "<a><!-- -->"}) {
        EXPECT_TRUE(IsRefused(test::Repeated(tag, 100'000))) << tag;
        EXPECT_TRUE(IsRefused("<data><profile/>" + test::Repeated(tag, 100'000))) << tag;
    }
    EXPECT_TRUE(IsRefused(test::Repeated("<a>", 100'000) + test::Repeated("</a>", 100'000)));
}

// TinyXML reads some quoted values past a ">", some ">" in spite of quotes, and takes the next ";" for a reference's
// end.
TEST(HostileDocumentTest, DeepNestingBehindQuotesIsRefused) {
    const std::string deep = test::Repeated("<a>", 100'000);
    EXPECT_TRUE(IsRefused("<?xml version=\"><!--\" ?>" + deep + "-->"));
    EXPECT_TRUE(IsRefused("<?xml version='><![CDATA[' ?>" + deep + "]]>"));
    EXPECT_TRUE(IsRefused("<?xml a=\" version=\"><!--\" ?>" + deep + "-->"));
    EXPECT_TRUE(IsRefused("<?XML encoding=\"?><a b='\"?>" + deep + "'></a>"));
    EXPECT_TRUE(IsRefused("<data>" + test::Repeated("<1 \">" + test::Repeated("<a>", 1000) + "\">", 100) + "</data>"));
    EXPECT_TRUE(IsRefused("<data>" + test::Repeated("< '>" + test::Repeated("<a>", 1000) + "'>", 100) + "</data>"));
}

TEST(HostileDocumentTest, DeepNestingBehindAReferenceIsRefused) {
    const std::string deep = test::Repeated("<a>", 100'000);
    EXPECT_TRUE(IsRefused("<data>&#x<!--x41;" + deep + "--></data>"));
    EXPECT_TRUE(IsRefused("<data>&#<![CDATA[#65;" + deep + "]]></data>"));
    EXPECT_TRUE(IsRefused("<data a=\"&#x\"><!--x41;\">" + deep + "--></data>"));
    EXPECT_TRUE(IsRefused("<?xml version=\"&#x\"?><!--x41;\"?>" + deep + "-->"));
}

TEST(HostileDocumentTest, FloodsOfAttributesAreRefused) {
    std::string attributes;
    for (int number = 0; number < 100'000; ++number) attributes += " a" + std::to_string(number) + "='x'";
    EXPECT_TRUE(IsRefused("<data" + attributes + "><profile/></data>"));
    EXPECT_TRUE(IsRefused("<data" + test::Repeated(" a", 100'000) + "><profile/></data>"));
}

TEST(HostileDocumentTest, AnUnterminatedQuoteIsRefused) {
    const std::string rest(1'000'000, 'x');
    EXPECT_TRUE(IsRefused("<data a=\"" + rest));
    EXPECT_TRUE(IsRefused("<data a='" + rest + "><profile/></data>"));
    EXPECT_TRUE(IsRefused("<data><profile a=\"></profile></data>"));
    EXPECT_TRUE(IsRefused("<data a=x\"y\"><profile/></data>"));
}

TEST(HostileDocumentTest, OverlongReferencesEndSoon) {
    const std::string digits(1'000'000, '1');
    for (const std::string& text :
         {"&#x" + digits + ";", "&#" + digits + ";", "&#x" + digits, test::Repeated("&#x", 300'000),
          test::Repeated("&#x41", 200'000) + ";", test::Repeated("&", 1'000'000)}) {
        EXPECT_EQ(test::FaultOf(
                      test::Parsed("<data><profile><profname>" + text + "</profname></profile></data>", test::kLatin)),
                  "");
        EXPECT_EQ(test::FaultOf(test::Parsed(
                      "<data><profile><profname><![CDATA[" + text + "]]></profname></profile></data>", test::kLatin)),
                  "");
    }
}

TEST(HostileDocumentTest, OneOf50MegabytesIsRefused) {
    constexpr std::size_t kBytes = std::size_t{50} * 1024 * 1024;
    EXPECT_TRUE(IsRefused("<data><profile/></data>" + std::string(kBytes, ' ')));
    EXPECT_TRUE(IsRefused(std::string(kBytes, '<')));
}

TEST(HostileDocumentTest, AHugeTextIsCut) {
    const std::string text(8'000'000, 'x');
    const ProfileSet profiles = test::Parsed(
        "<data><profile><profname>" + text + "</profname><lbutton>1" + text + "</lbutton></profile></data>",
        test::kLatin);
    ASSERT_EQ(profiles.size(), 1U);
    EXPECT_EQ(profiles[0].name, std::wstring(kMaxTextLength, L'x'));
    EXPECT_EQ(profiles[0].settings[SettingField::Left], 1);
}

TEST(HostileDocumentTest, BytesWithoutStructureAreRefused) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(random() % 300, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        EXPECT_EQ(test::FaultOf(test::Parsed(bytes, test::kLatin)), "");
        EXPECT_EQ(test::FaultOf(test::Parsed(bytes, test::kDoubleByte)), "");
    }
}

}  // namespace
}  // namespace kvn::model
