// Writing of the profile document, down to its bytes.
#include <gtest/gtest.h>
#include <tinyxml.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "model/profile_document.h"
#include "model/xml_guard.h"
#include "tests/model/printed_document.h"
#include "tests/model/test_codecs.h"

namespace kvn::model {
namespace {

ProfileSet TwoProfiles() {
    ProfileRecord first = DefaultProfileRecord();
    first.name = L"Default";
    first.vid = 2748;
    first.pid = 161;
    first.selectedIndex = 1;

    ProfileRecord second = DefaultProfileRecord();
    second.name = L"Caf\xE9 <\"&'>";
    second.vid = 1;
    second.pid = 2;
    second.selectedIndex = 3;
    second.settings.values.items = {10, 11, 12, 13, 14, 8, 15, 16, 17, 18, -2};
    for (std::size_t slot = 0; slot < kButtonSlotCount; ++slot) {
        second.settings.etcKeys.items[slot].codes = {17, static_cast<KeyCode>('A' + slot), kNoKey};
    }
    second.settings.applications = {{L"Editor", L"C:\\e.exe"}, {L"\x41C\x438r", L"D:\\]]>&#x41;\n"}};
    second.settings.gestures = {{L"UD", 37, L" two\r\nlines ", {{162, 86, kNoKey}}}, {L"L", -1, L"", {}}};
    return {first, second};
}

constexpr char kTwoProfilesPrinted[] =
    R"(<?xml version="1.0" encoding="utf-8" standalone="yes" ?>
<data>
    <vid>2748</vid>
    <pid>161</pid>
    <select_profile>1</select_profile>
    <profile>
        <profname>Default</profname>
        <lbutton>1</lbutton>
        <lbutton_etcKey></lbutton_etcKey>
        <rbutton>2</rbutton>
        <rbutton_etcKey></rbutton_etcKey>
        <tbutton>9</tbutton>
        <tbutton_etcKey></tbutton_etcKey>
        <button4>3</button4>
        <button4_etcKey></button4_etcKey>
        <button5>4</button5>
        <button5_etcKey></button5_etcKey>
        <scrolls>4</scrolls>
        <tiltleft>33</tiltleft>
        <tiltleft_etcKey></tiltleft_etcKey>
        <tiltright>34</tiltright>
        <tiltright_etcKey></tiltright_etcKey>
        <hspeed>5</hspeed>
        <hlotate>5</hlotate>
        <hcount>2</hcount>
    </profile>
    <profile>
        <profname>Caf)"
    "\xE9"
    R"( &lt;&quot;&amp;&apos;&gt;</profname>
        <lbutton>10</lbutton>
        <lbutton_etcKey>Ctrl+A</lbutton_etcKey>
        <rbutton>11</rbutton>
        <rbutton_etcKey>Ctrl+B</rbutton_etcKey>
        <tbutton>12</tbutton>
        <tbutton_etcKey>Ctrl+C</tbutton_etcKey>
        <button4>13</button4>
        <button4_etcKey>Ctrl+D</button4_etcKey>
        <button5>14</button5>
        <button5_etcKey>Ctrl+E</button5_etcKey>
        <scrolls>8</scrolls>
        <tiltleft>15</tiltleft>
        <tiltleft_etcKey>Ctrl+F</tiltleft_etcKey>
        <tiltright>16</tiltright>
        <tiltright_etcKey>Ctrl+G</tiltright_etcKey>
        <hspeed>17</hspeed>
        <hlotate>18</hlotate>
        <hcount>-2</hcount>
        <Application>
            <name>Editor</name>
            <path>C:\e.exe</path>
        </Application>
        <Application>
            <name>
                <![CDATA[&#x41c;&#x438;r]]>
</name>
            <path>D:\]]&gt;&amp;#x41;&#x0A;</path>
        </Application>
        <Gesture>
            <Key>UD</Key>
            <Function>37</Function>
            <Memo> two&#x0D;&#x0A;lines </Memo>
            <EtcKey>Left Ctrl+V</EtcKey>
        </Gesture>
        <Gesture>
            <Key>L</Key>
            <Function>-1</Function>
            <Memo></Memo>
            <EtcKey></EtcKey>
        </Gesture>
    </profile>
</data>
)";

TEST(ProfileWriterTest, PrintsExactlyTheseBytes) {
    EXPECT_EQ(test::Written(TwoProfiles(), test::kLatin), kTwoProfilesPrinted);
}

TEST(ProfileWriterTest, WritesTheElementsOfAProfileInTheirOrder) {
    TiXmlDocument document;
    BuildProfileDocument(TwoProfiles(), test::kLatin, document);
    const TiXmlElement* profile = document.RootElement()->LastChild()->ToElement();
    std::vector<std::string> names;
    for (const TiXmlElement* child = profile->FirstChildElement(); child; child = child->NextSiblingElement()) {
        names.emplace_back(child->Value());
        EXPECT_EQ(child->FirstAttribute(), nullptr);
    }
    const std::vector<std::string> expected{
        "profname",       "lbutton",         "lbutton_etcKey", "rbutton",          "rbutton_etcKey", "tbutton",
        "tbutton_etcKey", "button4",         "button4_etcKey", "button5",          "button5_etcKey", "scrolls",
        "tiltleft",       "tiltleft_etcKey", "tiltright",      "tiltright_etcKey", "hspeed",         "hlotate",
        "hcount",         "Application",     "Application",    "Gesture",          "Gesture"};
    EXPECT_EQ(names, expected);
}

TEST(ProfileWriterTest, EveryValueIsOneTextNode) {
    TiXmlDocument document;
    BuildProfileDocument({DefaultProfileRecord()}, test::kLatin, document);
    const TiXmlElement* profile = document.RootElement()->FirstChildElement("profile");
    for (const TiXmlElement* child = profile->FirstChildElement(); child; child = child->NextSiblingElement()) {
        ASSERT_NE(child->FirstChild(), nullptr) << child->Value();
        EXPECT_NE(child->FirstChild()->ToText(), nullptr) << child->Value();
        EXPECT_EQ(child->FirstChild(), child->LastChild()) << child->Value();
    }
}

TEST(ProfileWriterTest, TheHeadIsTheFirstRecords) {
    ProfileSet profiles = TwoProfiles();
    profiles[0].vid = 65535;
    profiles[0].pid = 0;
    profiles[0].selectedIndex = -5;
    const std::string printed = test::Written(profiles, test::kLatin);
    EXPECT_NE(
        printed.find("<vid>65535</vid>\n    <pid>0</pid>\n    <select_profile>-5</select_profile>\n    <profile>"),
        std::string::npos);
    EXPECT_EQ(printed.find("<vid>1<"), std::string::npos);
}

TEST(ProfileWriterTest, APlainTextIsWrittenInTheBytesOfTheCodePage) {
    ProfileRecord record = DefaultProfileRecord();
    record.name = L"\x4E02\x4E03\x4E00";
    EXPECT_NE(test::Written({record}, test::kDoubleByte).find("<profname>\x81\x5C\x81\x5D\x81\x40</profname>"),
              std::string::npos);
    EXPECT_NE(test::Written({record}, test::kLatin).find("<![CDATA[&#x4e02;&#x4e03;&#x4e00;]]>"), std::string::npos);
}

TEST(ProfileWriterTest, ATextThatOnlyLooksEscapedIsNotMarkedAsEscaped) {
    ProfileRecord record = DefaultProfileRecord();
    record.name = L"&#x41;";
    const std::string printed = test::Written({record}, test::kLatin);
    EXPECT_NE(printed.find("<profname>&amp;#x41;</profname>"), std::string::npos);
    EXPECT_EQ(printed.find("CDATA"), std::string::npos);
}

// What begins with "<" in a document, end tags aside; a CDATA section may hold more of them.
std::size_t ConstructsOf(const std::string& document) {
    std::size_t count = 0;
    for (std::size_t at = document.find('<'); at != std::string::npos; at = document.find('<', at + 1)) {
        if (document[at + 1] == '/') continue;
        ++count;
        if (document.compare(at, 9, "<![CDATA[") == 0) at = document.find("]]>", at);
    }
    return count;
}

TEST(ProfileWriterTest, CountsWhateverItsDocumentHasBesideEndTags) {
    ProfileSet profiles = TwoProfiles();
    profiles[0].settings.applications.assign(3, {L"\x41C\x438r", L"<]]><b>&#x3C;"});
    for (const TextCodec* codec : std::initializer_list<const TextCodec*>{&test::kLatin, &test::kDoubleByte}) {
        TiXmlDocument document;
        const std::size_t count = BuildProfileDocument(profiles, *codec, document);
        EXPECT_EQ(count, ConstructsOf(test::Printed(document)));
    }
}

// So what reading refuses is known before anything is written.
TEST(ProfileWriterTest, ADocumentOfSoManyConstructsAsAreAllowedPassesTheGuardAndOneOfMoreDoesNot) {
    ProfileRecord record = DefaultProfileRecord();
    TiXmlDocument shortest;
    const std::size_t missing = kMaxXmlElements - BuildProfileDocument({record}, test::kLatin, shortest);
    const std::wstring escaped = L"\x41C";
    record.settings.applications.assign(missing / 3, {});
    for (std::size_t more = 0; more < missing % 3; ++more) record.settings.applications[more].name = escaped;
    for (const bool isTooLong : {false, true}) {
        if (isTooLong) record.settings.applications.back().path = escaped;
        TiXmlDocument document;
        EXPECT_EQ(BuildProfileDocument({record}, test::kLatin, document), kMaxXmlElements + (isTooLong ? 1 : 0));
        EXPECT_EQ(PrepareXml(test::Printed(document)).has_value(), !isTooLong);
    }
}

TEST(ProfileWriterTest, AnAbnormalNumberIsWrittenAsItIs) {
    ProfileRecord record = DefaultProfileRecord();
    record.settings[SettingField::Left] = kAbnormalValue;
    record.settings[SettingField::Right] = 12345;
    const std::string printed = test::Written({record}, test::kLatin);
    EXPECT_NE(printed.find("<lbutton>-1</lbutton>"), std::string::npos);
    EXPECT_NE(printed.find("<rbutton>12345</rbutton>"), std::string::npos);
}

}  // namespace
}  // namespace kvn::model
