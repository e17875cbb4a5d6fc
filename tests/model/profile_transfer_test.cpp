// What an export holds and an import takes.
#include "model/profile_transfer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "model/ascii_codec.h"
#include "tests/model/printed_document.h"
#include "tests/model/profile_generator.h"
#include "tests/model/repeated_text.h"
#include "tests/model/test_codecs.h"

namespace kvn::model {
namespace {

const AsciiCodec kAscii;

using Import = std::variant<ProfileSet, ImportProblem>;

Import Imported(const std::string& document, const TextCodec& codec = test::kLatin) {
    return ParseImport(document, DefaultProfileRecord(), {codec, test::kArbitraryKeyText});
}

ImportProblem ProblemIn(const std::string& document) {
    const Import import = Imported(document);
    const auto* const problem = std::get_if<ImportProblem>(&import);
    EXPECT_NE(problem, nullptr) << document;
    return problem == nullptr ? ImportProblem{} : *problem;
}

bool IsTaken(const std::string& document) {
    return std::holds_alternative<ProfileSet>(Imported(document));
}

std::string Profile(const std::string& name, const std::string& rest = {}) {
    return "<profile><profname>" + name + "</profname>" + rest + "</profile>";
}

std::string Document(const std::string& profiles, const std::string& head = "<select_profile>0</select_profile>") {
    return "<data><vid>1</vid><pid>2</pid>" + head + profiles + "</data>";
}

SettingValues Defaults() {
    return InitialValuesOf(DefaultProfileRecord());
}

// Profiles with the texts that are hardest to keep, as the page could have them.
ProfileSet SomeProfiles(std::uint32_t seed, const std::wstring& alphabet) {
    test::ProfileGenerator generator(seed, alphabet);
    ProfileSet profiles = Exportable(generator.Profiles(), Defaults());
    for (std::size_t index = 0; index < profiles.size(); ++index) {
        std::wstring& name = profiles[index].name;
        name = std::wstring(1, static_cast<wchar_t>(L'A' + index)) + name.substr(0, kMaxTextLength - 1);
        profiles[index].selectedIndex = profiles.front().selectedIndex;
    }
    return profiles;
}

ProfileRecord NamedProfile(const std::wstring& name) {
    ProfileRecord record = DefaultProfileRecord();
    record.name = name;
    return record;
}

TEST(ProfileTransferTest, AnExportIsInAsciiAndReadAlikeUnderEveryCodePage) {
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        const ProfileSet profiles = SomeProfiles(seed, L"\xE9\xFC\x4E00\x4E01\x5C");
        ASSERT_FALSE(WhyNotImportable(profiles)) << seed;
        const std::string document = test::Written(profiles, kAscii);
        ASSERT_TRUE(std::ranges::all_of(document, [](char byte) { return byte > 0; })) << seed;
        for (const TextCodec* const codec :
             {static_cast<const TextCodec*>(&test::kLatin), static_cast<const TextCodec*>(&test::kDoubleByte),
              static_cast<const TextCodec*>(&kAscii)}) {
            const Import import = Imported(document, *codec);
            ASSERT_TRUE(std::holds_alternative<ProfileSet>(import)) << seed;
            EXPECT_EQ(std::get<ProfileSet>(import), profiles) << seed;
        }
    }
}

TEST(ProfileTransferTest, AProfileFileIsTakenInItsOwnCodePage) {
    for (const TextCodec* const codec :
         {static_cast<const TextCodec*>(&test::kLatin), static_cast<const TextCodec*>(&test::kDoubleByte)}) {
        const ProfileSet profiles = SomeProfiles(7, L"\xE9\xFC\x4E00\x4E01");
        const Import import = Imported(test::Written(profiles, *codec), *codec);
        ASSERT_TRUE(std::holds_alternative<ProfileSet>(import));
        EXPECT_EQ(std::get<ProfileSet>(import), profiles);
    }
}

TEST(ProfileTransferTest, EveryNumberIsHeldAgainstItsRangeAndNamed) {
    for (const SettingFieldRow& row : kSettingFields) {
        const std::string name = row.fileElement;
        const auto document = [&](const std::string& number) {
            return Document(Profile("First") + Profile("Work", '<' + name + '>' + number + "</" + name + '>'));
        };
        for (const std::string& number :
             {std::to_string(row.maximum + 1), std::to_string(row.minimum - 1), std::string("-3"), std::string("99999"),
              std::string("99999999999"), std::string("x"), std::string(), std::string("<b>1</b>")}) {
            const ImportProblem problem = ProblemIn(document(number));
            EXPECT_EQ(problem.fault, ImportFault::NumberBad) << name << number;
            EXPECT_EQ(problem.element, std::wstring(name.begin(), name.end()));
            EXPECT_EQ(problem.profile, 2U);
            EXPECT_EQ(problem.profileName, L"Work");
            const std::string shown = number.starts_with('<') ? std::string() : number;
            EXPECT_EQ(problem.value, std::wstring(shown.begin(), shown.end()));
        }
        for (const int number : {row.minimum, row.maximum}) EXPECT_TRUE(IsTaken(document(std::to_string(number))));
        EXPECT_EQ(IsTaken(document("-2")), row.mayBeUnset) << name;
    }
}

TEST(ProfileTransferTest, AGesturesFunctionIsHeldAgainstItsRangeToo) {
    const auto document = [](const std::string& number) {
        return Document(Profile(
            "A", "<Gesture><Key>U</Key></Gesture><Gesture><Key>D</Key><Function>" + number + "</Function></Gesture>"));
    };
    for (const char* const number : {"-1", "55", "", "six"}) {
        const ImportProblem problem = ProblemIn(document(number));
        EXPECT_EQ(problem.fault, ImportFault::NumberBad);
        EXPECT_EQ(problem.element, L"Gesture[2]/Function");
    }
    EXPECT_TRUE(IsTaken(document("0")));
    EXPECT_TRUE(IsTaken(document("54")));
}

TEST(ProfileTransferTest, IdsAndSelectionAreHeldAgainstTheirRanges) {
    const auto document = [](const std::string& vid, const std::string& pid, const std::string& selected) {
        return "<data><vid>" + vid + "</vid><pid>" + pid + "</pid><select_profile>" + selected + "</select_profile>" +
               Profile("A") + Profile("B") + "</data>";
    };
    EXPECT_TRUE(IsTaken(document("65535", "0", "1")));
    EXPECT_EQ(ProblemIn(document("65536", "0", "0")).element, L"vid");
    EXPECT_EQ(ProblemIn(document("-1", "0", "0")).element, L"vid");
    EXPECT_EQ(ProblemIn(document("0", "70000", "0")).element, L"pid");
    EXPECT_EQ(ProblemIn(document("0", "0", "2")).element, L"select_profile");
    EXPECT_EQ(ProblemIn(document("0", "0", "-1")).element, L"select_profile");
    EXPECT_EQ(ProblemIn(document("0", "0", "2")).profile, 0U);
}

TEST(ProfileTransferTest, IdsAndSelectionCountWhereverTheyStand) {
    const Import import = Imported("<data>" + Profile("A") + Profile("B") +
                                   "<select_profile>1</select_profile><pid>9</pid><vid>8</vid></data>");
    ASSERT_TRUE(std::holds_alternative<ProfileSet>(import));
    const ProfileRecord& first = std::get<ProfileSet>(import).front();
    EXPECT_EQ(first.vid, 8);
    EXPECT_EQ(first.pid, 9);
    EXPECT_EQ(first.selectedIndex, 1);
}

TEST(ProfileTransferTest, WhatMustBeThereIsMissed) {
    EXPECT_EQ(ProblemIn("<data><pid>1</pid>" + Profile("A") + "</data>").element, L"vid");
    EXPECT_EQ(ProblemIn("<data><vid>1</vid>" + Profile("A") + "</data>").element, L"pid");
    for (const std::string& nameless : {std::string("<profile></profile>"), Profile("")}) {
        const ImportProblem problem = ProblemIn(Document(Profile("A") + nameless));
        EXPECT_EQ(problem.fault, ImportFault::Missing);
        EXPECT_EQ(problem.element, L"profname");
        EXPECT_EQ(problem.profile, 2U);
    }
}

TEST(ProfileTransferTest, WhatIsMissingOtherwiseIsThatOfANewProfile) {
    const Import import = Imported(Document(Profile("A"), {}));
    ASSERT_TRUE(std::holds_alternative<ProfileSet>(import));
    EXPECT_EQ(std::get<ProfileSet>(import).front().settings, DefaultProfileRecord().settings);
}

TEST(ProfileTransferTest, AnElementThatMayBeThereOnceIsRefusedTwice) {
    for (const std::string& element : {std::string("lbutton"), std::string("hcount"), std::string("lbutton_etcKey")}) {
        const std::string one = '<' + element + ">1</" + element + '>';
        const ImportProblem problem = ProblemIn(Document(Profile("A", one + one)));
        EXPECT_EQ(problem.fault, ImportFault::Twice);
        EXPECT_EQ(problem.element, std::wstring(element.begin(), element.end()));
    }
    EXPECT_EQ(ProblemIn(Document(Profile("A"), "<vid>1</vid>")).fault, ImportFault::Twice);
    EXPECT_EQ(ProblemIn(Document(Profile("A", "<profname>B</profname>"))).fault, ImportFault::Twice);
    EXPECT_EQ(ProblemIn(Document(Profile("A", "<Gesture><Key>U</Key><Key>D</Key></Gesture>"))).element,
              L"Gesture[1]/Key");
}

TEST(ProfileTransferTest, TextsThatWouldBeCutAreRefused) {
    const std::string longest(kMaxTextLength, 'x');
    EXPECT_TRUE(IsTaken(Document(Profile(longest))));
    EXPECT_TRUE(IsTaken(Document(Profile("<![CDATA[" + test::Repeated("&#xd83d;", kMaxTextLength) + "]]>"))));
    EXPECT_EQ(ProblemIn(Document(Profile(longest + 'x'))).fault, ImportFault::TextTooLong);
    EXPECT_EQ(ProblemIn(Document(Profile(std::string(100'000, 'x')))).element, L"profname");
    EXPECT_EQ(ProblemIn(Document(Profile("<![CDATA[" + test::Repeated("&#x416;", kMaxTextLength + 1) + "]]>"))).fault,
              ImportFault::TextTooLong);
    const std::string program = "<Application><name>n</name><path>" + longest + "x</path></Application>";
    EXPECT_EQ(ProblemIn(Document(Profile("A", program))).element, L"Application[1]/path");
    EXPECT_EQ(ProblemIn(Document(Profile("A", "<lbutton_etcKey>" + longest + "x</lbutton_etcKey>"))).element,
              L"lbutton_etcKey");
}

TEST(ProfileTransferTest, ListsHaveThePagesLimit) {
    const std::string program = "<Application><name>n</name><path>p</path></Application>";
    const std::string gesture = "<Gesture><Key>U</Key></Gesture>";
    EXPECT_TRUE(IsTaken(Document(Profile("A", test::Repeated(program, 100) + test::Repeated(gesture, 100)))));
    EXPECT_EQ(ProblemIn(Document(Profile("A", test::Repeated(program, 101)))).element, L"Application");
    EXPECT_EQ(ProblemIn(Document(Profile("A", test::Repeated(gesture, 101)))).element, L"Gesture");
    std::string profiles;
    for (int number = 1; number <= 100; ++number) profiles += Profile(std::to_string(number));
    EXPECT_TRUE(IsTaken(Document(profiles)));
    const ImportProblem problem = ProblemIn(Document(profiles + Profile("one more")));
    EXPECT_EQ(problem.fault, ImportFault::TooManyItems);
    EXPECT_EQ(problem.element, L"profile");
}

TEST(ProfileTransferTest, AProfilesNameIsItsOwn) {
    const ImportProblem problem = ProblemIn(Document(Profile("A") + Profile("B") + Profile("A")));
    EXPECT_EQ(problem.fault, ImportFault::NameIsTaken);
    EXPECT_EQ(problem.profileName, L"A");
    EXPECT_TRUE(IsTaken(Document(Profile("A") + Profile("a"))));
    const std::string compared(255, 'x');
    EXPECT_EQ(ProblemIn(Document(Profile(compared + '1') + Profile(compared + '2'))).fault, ImportFault::NameIsTaken);
}

TEST(ProfileTransferTest, ForeignDocumentsAreRefused) {
    for (const std::string& document :
         {std::string("<html><body/></html>"), std::string("<data></data>"), std::string("<data><vid>1</vid></data>"),
          "<Data>" + Profile("A") + "</Data>", Document(Profile("A")) + Document(Profile("B")),
          "<!DOCTYPE data SYSTEM \"http://example.com/x.dtd\">" + Document(Profile("A")),
          "<!ENTITY a \"b\">" + Document(Profile("A"))}) {
        EXPECT_EQ(ProblemIn(document).fault, ImportFault::Foreign) << document;
    }
}

TEST(ProfileTransferTest, BrokenAndHostileDocumentsAreRefused) {
    const std::string entities = "<!DOCTYPE data [<!ENTITY a \"b\"><!ENTITY c \"&a;&a;\">]>" + Document(Profile("&c;"));
    for (const std::string& document :
         {std::string(), std::string("settings"), std::string("\0<data/>", 8), entities,
          Document(Profile("A", test::Repeated("<a>", 100'000))), Document(Profile("A", "<lbutton>&#1</lbutton>")),
          std::string("\xFF\xFE<\0d\0", 6), Document(test::Repeated("<a/>", 600'000) + Profile("A"))}) {
        EXPECT_EQ(ProblemIn(document).fault, ImportFault::Broken) << document.substr(0, 100);
    }
}

TEST(ProfileTransferTest, AFileThatWasCutOffIsRefusedWhereverThatWas) {
    std::string document = test::Written({NamedProfile(L"\xE9"), NamedProfile(L"B")}, kAscii);
    document.resize(document.find_last_of('>') + 1);
    ASSERT_TRUE(IsTaken(document));
    for (std::size_t length = 0; length < document.size(); ++length) {
        ASSERT_FALSE(IsTaken(document.substr(0, length))) << length;
    }
}

TEST(ProfileTransferTest, AnEditorsMarkBeforeAsciiIsNoFault) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_TRUE(IsTaken(mark + Document(Profile("A"))));
    EXPECT_EQ(ProblemIn(mark + Document(Profile("\xC3\xA9"))).fault, ImportFault::Broken);
}

TEST(ProfileTransferTest, WhatIsExportedCanBeImported) {
    ProfileSet profiles{NamedProfile(L"A"), NamedProfile(L"B")};
    profiles[0].selectedIndex = 5;
    profiles[1].settings[SettingField::Left] = kAbnormalValue;
    profiles[1].settings.gestures = {{L"U", 99, {}, {}}, {L"D", kAbnormalValue, {}, {}}, {L"L", 54, {}, {}}};
    EXPECT_TRUE(WhyNotImportable(profiles));

    const ProfileSet exported = Exportable(profiles, Defaults());
    EXPECT_FALSE(WhyNotImportable(exported));
    EXPECT_EQ(exported[0].selectedIndex, 0);
    EXPECT_EQ(exported[1].settings[SettingField::Left], kFunctionLeftClick);
    EXPECT_EQ(exported[1].settings.gestures[0].function, kFunctionNone);
    EXPECT_EQ(exported[1].settings.gestures[1].function, kFunctionNone);
    EXPECT_EQ(exported[1].settings.gestures[2].function, 54);
}

}  // namespace
}  // namespace kvn::model
