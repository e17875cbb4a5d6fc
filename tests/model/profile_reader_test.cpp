// Reading of the profile document: what each element gives, and what stands for an element that is missing or bad.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "model/profile_document.h"
#include "tests/model/printed_document.h"
#include "tests/model/test_codecs.h"

namespace kvn::model {
namespace {

ProfileSet Read(const std::string& document) {
    return test::Parsed(document, test::kLatin);
}

ProfileRecord ReadOne(const std::string& profileContent) {
    const ProfileSet profiles = Read("<data><profile>" + profileContent + "</profile></data>");
    EXPECT_EQ(profiles.size(), 1U);
    return profiles.empty() ? ProfileRecord() : profiles.front();
}

std::int32_t ReadSetting(SettingField field, const std::string& text) {
    const std::string element = RowOf(field).fileElement;
    return ReadOne('<' + element + '>' + text + "</" + element + '>').settings[field];
}

std::wstring ReadName(const std::string& text) {
    return ReadOne("<profname>" + text + "</profname>").name;
}

TEST(ProfileReaderTest, ReadsEveryElementOfAProfile) {
    const ProfileSet profiles = Read(R"(<?xml version="1.0" encoding="utf-8" standalone="yes" ?>
<data>
    <vid>2748</vid>
    <pid>161</pid>
    <select_profile>1</select_profile>
    <profile>
        <profname>Games</profname>
        <lbutton>10</lbutton> <lbutton_etcKey>A</lbutton_etcKey>
        <rbutton>11</rbutton> <rbutton_etcKey>B</rbutton_etcKey>
        <tbutton>12</tbutton> <tbutton_etcKey>C</tbutton_etcKey>
        <button4>13</button4> <button4_etcKey>D</button4_etcKey>
        <button5>14</button5> <button5_etcKey>E</button5_etcKey>
        <scrolls>8</scrolls>
        <tiltleft>15</tiltleft> <tiltleft_etcKey>F</tiltleft_etcKey>
        <tiltright>16</tiltright> <tiltright_etcKey>Left Ctrl+G</tiltright_etcKey>
        <hspeed>17</hspeed> <hlotate>18</hlotate> <hcount>19</hcount>
        <Application><name>Editor</name><path>C:\e.exe</path></Application>
        <Application><name>Viewer</name><path>C:\v.exe</path></Application>
        <Gesture><Key>UD</Key><Function>37</Function><Memo>note</Memo><EtcKey>Ctrl+Z</EtcKey></Gesture>
    </profile>
</data>)");
    ProfileRecord expected = DefaultProfileRecord();
    expected.vid = 2748;
    expected.pid = 161;
    expected.selectedIndex = 1;
    expected.name = L"Games";
    expected.settings.values.items = {10, 11, 12, 13, 14, 8, 15, 16, 17, 18, 19};
    for (KeyCode slot = 0; slot < 6; ++slot)
        expected.settings.etcKeys[static_cast<ButtonSlot>(slot)].codes[0] = 'A' + slot;
    expected.settings.etcKeys[ButtonSlot::TiltRight].codes = {162, 'G', kNoKey};
    expected.settings.applications = {{L"Editor", L"C:\\e.exe"}, {L"Viewer", L"C:\\v.exe"}};
    expected.settings.gestures = {{L"UD", 37, L"note", {{17, 'Z', kNoKey}}}};
    EXPECT_EQ(profiles, ProfileSet{expected});
}

TEST(ProfileReaderTest, AMissingElementLeavesTheFreshRecordsValue) {
    ProfileRecord fresh = DefaultProfileRecord(36);
    const ProfileSet profiles = ParseProfileDocument("<data><profile><lbutton>5</lbutton></profile><profile/></data>",
                                                     fresh, {test::kLatin, L"Arbitrary key"});
    ASSERT_EQ(profiles.size(), 2U);
    EXPECT_EQ(profiles[1], fresh);
    fresh.settings[SettingField::Left] = 5;
    EXPECT_EQ(profiles[0], fresh);
}

TEST(ProfileReaderTest, SelectionAfterTheProfilesLeavesThemTheDefault) {
    const ProfileSet profiles = Read(
        "<data><vid>1</vid><profile/><select_profile>1</select_profile><profile/><pid>2</pid><vid>3</vid><profile/></"
        "data>");
    ASSERT_EQ(profiles.size(), 3U);
    EXPECT_EQ(profiles[0].selectedIndex, 0);
    EXPECT_EQ(profiles[1].selectedIndex, 1);
    EXPECT_EQ(profiles[2].selectedIndex, 1);
    EXPECT_EQ(profiles[0].vid, 1);
    EXPECT_EQ(profiles[2].vid, 3);
    EXPECT_EQ(profiles[1].pid, 0);
    EXPECT_EQ(profiles[2].pid, 2);
}

TEST(ProfileReaderTest, AVidOf70000IsStoredModulo65536) {
    const ProfileSet profiles = Read("<data><vid>70000</vid><pid>-1</pid><profile/></data>");
    ASSERT_EQ(profiles.size(), 1U);
    EXPECT_EQ(profiles[0].vid, 4464);
    EXPECT_EQ(profiles[0].pid, 65535);
}

TEST(ProfileReaderTest, AnIdWithoutDigitsIsZero) {
    for (const std::string text : {"", " ", "x", "-", "+", "99999999999999999999", "<b>7</b>"}) {
        const ProfileSet profiles = Read("<data><vid>7</vid><vid>" + text + "</vid><select_profile>7</select_profile>" +
                                         "<select_profile>" + text + "</select_profile><profile/></data>");
        ASSERT_EQ(profiles.size(), 1U) << text;
        EXPECT_EQ(profiles[0].vid, 0) << text;
        EXPECT_EQ(profiles[0].selectedIndex, 0) << text;
    }
}

TEST(ProfileReaderTest, TheSelectionIsNotChecked) {
    for (const std::int32_t index : {-1, 99, 2147483647, -2147483647 - 1}) {
        const ProfileSet profiles =
            Read("<data><select_profile>" + std::to_string(index) + "</select_profile><profile/></data>");
        ASSERT_EQ(profiles.size(), 1U);
        EXPECT_EQ(profiles[0].selectedIndex, index);
    }
}

TEST(ProfileReaderTest, ANumberIsReadLikeTheCLibraryDoes) {
    EXPECT_EQ(ReadSetting(SettingField::Left, " \t\n\v\f\r7"), 7);
    EXPECT_EQ(ReadSetting(SettingField::Left, "+7"), 7);
    EXPECT_EQ(ReadSetting(SettingField::Left, "007"), 7);
    EXPECT_EQ(ReadSetting(SettingField::Left, "7.9"), 7);
    EXPECT_EQ(ReadSetting(SettingField::Left, "7 apples"), 7);
    EXPECT_EQ(ReadSetting(SettingField::Left, "0x10"), 0);
    EXPECT_EQ(ReadSetting(SettingField::FlyingRevolutionCount, " -2,5"), -2);
}

TEST(ProfileReaderTest, ABadNumberIsAbnormal) {
    for (const std::string text : {"", " ", "x", "x7", "+", "-", "+-2", "-+2", "--2", "- 7", "+ 7", "2147483648",
                                   "-2147483649", "99999999999999999999999", "<b>7</b>", "<!-- -->7"}) {
        for (const SettingFieldRow& row : kSettingFields) {
            EXPECT_EQ(ReadSetting(row.field, text), kAbnormalValue) << row.fileElement << ' ' << text;
        }
    }
}

TEST(ProfileReaderTest, HorizontalScrollSpeedRunsFromOneToEight) {
    EXPECT_EQ(ReadSetting(SettingField::HorizontalScrollSpeed, "0"), -1);
    EXPECT_EQ(ReadSetting(SettingField::HorizontalScrollSpeed, "1"), 1);
    EXPECT_EQ(ReadSetting(SettingField::HorizontalScrollSpeed, "8"), 8);
    EXPECT_EQ(ReadSetting(SettingField::HorizontalScrollSpeed, "9"), -1);
}

TEST(ProfileReaderTest, OnlyTheNumberOfRevolutionsReadsMinusTwo) {
    for (const SettingFieldRow& row : kSettingFields) {
        const bool isCount = row.field == SettingField::FlyingRevolutionCount;
        EXPECT_EQ(ReadSetting(row.field, "-2"), isCount ? -2 : -1) << row.fileElement;
        EXPECT_EQ(ReadSetting(row.field, "55"), -1) << row.fileElement;
        EXPECT_EQ(ReadSetting(row.field, "-1"), -1) << row.fileElement;
        if (row.field == SettingField::HorizontalScrollSpeed) continue;
        EXPECT_EQ(ReadSetting(row.field, "0"), 0) << row.fileElement;
        EXPECT_EQ(ReadSetting(row.field, "54"), 54) << row.fileElement;
    }
}

TEST(ProfileReaderTest, AcceptsTheCodesThatNoChooserOffers) {
    for (const std::string code : {"35", "46", "49", "50", "52"}) {
        EXPECT_EQ(std::to_string(ReadSetting(SettingField::Center, code)), code);
    }
}

TEST(ProfileReaderTest, AnApplicationWithoutChildrenAddsNothing) {
    const auto applications =
        ReadOne(
            "<Application/><Application></Application><Application> </Application><Application>text</Application>"
            "<Application><!-- --></Application>")
            .settings.applications;
    EXPECT_TRUE(applications.empty());
}

TEST(ProfileReaderTest, AnApplicationWithOnlyAPathHasAnEmptyName) {
    const auto applications = ReadOne(
                                  "<Application><path>C:\\a.exe</path></Application><Application><name/></Application>"
                                  "<Application><other/></Application>")
                                  .settings.applications;
    EXPECT_EQ(applications, (std::vector<ApplicationEntry>{{L"", L"C:\\a.exe"}, {}, {}}));
}

TEST(ProfileReaderTest, AGestureNeedsAChildToo) {
    const auto gestures = ReadOne("<Gesture/><Gesture> </Gesture><Gesture><Key>U</Key></Gesture>").settings.gestures;
    EXPECT_EQ(gestures, (std::vector<GestureEntry>{{L"U", 0, L"", {}}}));
}

TEST(ProfileReaderTest, TheFunctionOfAGestureIsNotChecked) {
    for (const std::int32_t code : {-1, 55, 1000000, -2147483647 - 1}) {
        const auto gestures =
            ReadOne("<Gesture><Function>" + std::to_string(code) + "</Function></Gesture>").settings.gestures;
        ASSERT_EQ(gestures.size(), 1U);
        EXPECT_EQ(gestures[0].function, code);
    }
    EXPECT_EQ(ReadOne("<Gesture><Function>x</Function></Gesture>").settings.gestures[0].function, -1);
}

TEST(ProfileReaderTest, KeysMayCarryTheHeading) {
    const ProfileRecord record = ReadOne(
        "<lbutton_etcKey>Arbitrary key[Left Ctrl+V]</lbutton_etcKey><rbutton_etcKey>Ctrl+Hyper+Alt</rbutton_etcKey>"
        "<Gesture><EtcKey>Arbitrary key[F1]</EtcKey></Gesture>");
    EXPECT_EQ(record.settings.etcKeys[ButtonSlot::Left].codes, (std::array{162, 86, -2}));
    EXPECT_EQ(record.settings.etcKeys[ButtonSlot::Right].codes, (std::array{17, -2, 18}));
    EXPECT_EQ(record.settings.gestures[0].etcKey.codes, (std::array{112, -2, -2}));
}

TEST(ProfileReaderTest, KeysSurviveAFormatter) {
    const ProfileRecord record = ReadOne(
        "<lbutton_etcKey>\n            Left Ctrl+V\n        </lbutton_etcKey>"
        "<rbutton_etcKey> Ctrl + Alt </rbutton_etcKey>"
        "<Gesture><EtcKey>\r\n\tF1\r\n</EtcKey></Gesture>");
    EXPECT_EQ(record.settings.etcKeys[ButtonSlot::Left].codes, (std::array{162, 86, -2}));
    EXPECT_EQ(record.settings.etcKeys[ButtonSlot::Right].codes, (std::array{17, 18, -2}));
    EXPECT_EQ(record.settings.gestures[0].etcKey.codes, (std::array{112, -2, -2}));
}

TEST(ProfileReaderTest, AnInstructionOrALongTagBreaksNothing) {
    const ProfileRecord record =
        ReadOne("<?editor indent=\"4\"?><profname>mine<?mark?>!</profname><?if (a > b) ?><lbutton note='" +
                std::string(10'000, 'x') + "'>12</lbutton>");
    EXPECT_EQ(record.name, L"mine");
    EXPECT_EQ(record.settings[SettingField::Left], 12);
}

TEST(ProfileReaderTest, NamesAreCaseSensitiveAndUnknownOnesIgnored) {
    const ProfileSet profiles = Read(
        "<data><Vid>9</Vid><Profile/><other><profile/></other><profile><LBUTTON>9</LBUTTON><gesture><Key>U</Key></"
        "gesture>"
        "<data/><vid>9</vid></profile></data>");
    EXPECT_EQ(profiles, ProfileSet{DefaultProfileRecord()});
}

TEST(ProfileReaderTest, TheRootMayHaveAnyName) {
    EXPECT_EQ(Read("<anything><profile/></anything>").size(), 1U);
    EXPECT_EQ(Read("<!-- first --><profile><profile/></profile>").size(), 1U);
}

TEST(ProfileReaderTest, TheLastOfSeveralElementsCounts) {
    EXPECT_EQ(ReadOne("<profname>a</profname><profname>b</profname><lbutton>5</lbutton><lbutton>x</lbutton>").name,
              L"b");
    EXPECT_EQ(ReadOne("<lbutton>5</lbutton><lbutton>6</lbutton>").settings[SettingField::Left], 6);
}

TEST(ProfileReaderTest, ABrokenDocumentGivesNoProfiles) {
    for (const char* document :
         {"", " ", "x", "<", "<?xml", "<?xml ?>", "<data>", "<data><profile/>", "<data><profile></data>",
          "<data><profile/></date>", "<data a='1' a='2'><profile/></data>", "x<data><profile/></data>",
          "\xEF\xBB\xBF<data><profile/></data>", "<data><profile/></data", "<data><profile/><", "<!-- -->"}) {
        EXPECT_TRUE(Read(document).empty()) << document;
    }
}

TEST(ProfileReaderTest, ADocumentWithoutProfilesGivesNone) {
    EXPECT_TRUE(Read("<data></data>").empty());
    EXPECT_TRUE(Read("<data><vid>1</vid></data>").empty());
    EXPECT_TRUE(Read("<data/><profile/>").empty());
}

TEST(ProfileReaderTest, WhatFollowsTheRootIsIgnored) {
    EXPECT_EQ(Read("<data><profile/></data>junk").size(), 1U);
    EXPECT_EQ(Read("<data><profile/></data><data><profile/><profile/></data>").size(), 1U);
}

TEST(ProfileReaderTest, ATextIsKeptAsItStands) {
    EXPECT_EQ(ReadName("  two  blanks  "), L"  two  blanks  ");
    EXPECT_EQ(ReadName("   "), L"   ");
    EXPECT_EQ(ReadName("one\r\ntwo"), L"one\ntwo");
    EXPECT_EQ(ReadName("&lt;&amp;&gt;&quot;&apos;"), L"<&>\"'");
    EXPECT_EQ(ReadName("&amp;#x41;"), L"&#x41;");
    EXPECT_EQ(ReadName("&#x41;&#66;"), L"AB");
    EXPECT_EQ(ReadName("\xE9\xFF"), L"\xE9\xFF");
    EXPECT_EQ(ReadName(""), L"");
}

TEST(ProfileReaderTest, ASectionHoldsAnEscapedText) {
    EXPECT_EQ(ReadName("<![CDATA[&#x416;]]>"), L"\x416");
    EXPECT_EQ(ReadName("\n            <![CDATA[ a&#x416; ]]>\n"), L" a\x416 ");
    EXPECT_EQ(ReadName("<![CDATA[&amp;&lt;]]>"), L"&amp;&lt;");
}

TEST(ProfileReaderTest, AByteThatIsNoCharacterShowsAsSuch) {
    EXPECT_EQ(ReadName("a\x85z"), L"a\xFFFDz");
    const ProfileSet profiles =
        test::Parsed("<data><profile><profname>a\x81</profname></profile></data>", test::kDoubleByte);
    ASSERT_EQ(profiles.size(), 1U);
    EXPECT_EQ(profiles[0].name, L"a\xFFFD");
}

TEST(ProfileReaderTest, OnlyAFirstChildThatIsTextCounts) {
    EXPECT_EQ(ReadName("<b>x</b>y"), L"");
    EXPECT_EQ(ReadName("<!-- x -->y"), L"");
    EXPECT_EQ(ReadName("x<b>y</b>z"), L"x");
}

TEST(ProfileReaderTest, ATextKeepsItsFirst1024Characters) {
    EXPECT_EQ(ReadName(std::string(1024, 'x')), std::wstring(1024, L'x'));
    EXPECT_EQ(ReadName(std::string(1025, 'x')), std::wstring(1024, L'x'));
    EXPECT_EQ(ReadName(std::string(1'000'000, 'x')), std::wstring(1024, L'x'));
    std::string references;
    for (int count = 0; count < 1100; ++count) references += "&#xd83d;";
    EXPECT_EQ(ReadName("<![CDATA[" + references + "]]>"), std::wstring(1024, static_cast<wchar_t>(0xD83D)));
}

}  // namespace
}  // namespace kvn::model
