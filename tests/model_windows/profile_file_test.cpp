#include "model/profile_file.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <atomic>
#include <clocale>
#include <string>
#include <thread>

#include "model/locale_codec.h"
#include "model/profile_document.h"
#include "model/xml_guard.h"
#include "tests/model_windows/files.h"
#include "tests/support/replaced_import.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::model {
namespace {

ProfileRecord Named(const std::wstring& name) {
    ProfileRecord record = DefaultProfileRecord();
    record.name = name;
    return record;
}

ProfileSet ManyProfiles() {
    ProfileRecord record = Named(L"Games  <\"&'>");
    record.vid = 0x0ABC;
    record.pid = 0x00A1;
    record.selectedIndex = 1;
    record.settings[SettingField::Left] = 36;
    record.settings.etcKeys[ButtonSlot::Left].codes = {162, 86, kNoKey};
    record.settings.applications.assign(3, {L" Editor ", L"C:\\\x41F\x440\\e.exe"});
    record.settings.gestures.assign(3, {L"UD", 37, L"one\r\ntwo", {{17, 90, kNoKey}}});
    return ProfileSet(5, record);
}

// Every test has its own application-data folder.
class ProfileFile : public testing::Test {
protected:
    const std::wstring& Folder() const { return user.ApplicationData(); }
    std::wstring Path() const { return Folder() + L"\\VID0abcPID00a1.xml"; }

private:
    kvn::test::SandboxedUser user;
};

using LoadProfileFileTest = ProfileFile;
using SaveProfileFileTest = ProfileFile;
using SetAsideProfileFileTest = ProfileFile;

TEST_F(LoadProfileFileTest, ReturnsTheNumberOfProfiles) {
    test::WriteBytes(Path(), "<data><vid>70000</vid><profile/><profile><profname>b</profname></profile></data>");
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 2U);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].vid, 4464);
    EXPECT_EQ(list[1].name, L"b");
}

TEST_F(LoadProfileFileTest, AMissingOrBrokenFileEmptiesTheList) {
    ProfileSet list = ManyProfiles();
    EXPECT_EQ(LoadProfileFile(Path(), list), 0U);
    EXPECT_TRUE(list.empty());
    for (const char* bytes : {"", "x", "<data>", "<data></data>", "<data><profile></data>", "\xFF\xFE<\0d\0"}) {
        test::WriteBytes(Path(), bytes);
        list = ManyProfiles();
        EXPECT_EQ(LoadProfileFile(Path(), list), 0U) << bytes;
        EXPECT_TRUE(list.empty()) << bytes;
        EXPECT_EQ(test::ReadBytes(Path()), bytes);
    }
}

TEST_F(LoadProfileFileTest, AFolderInItsPlaceIsNoFile) {
    ASSERT_TRUE(CreateDirectoryW(Path().c_str(), nullptr));
    ProfileSet list = ManyProfiles();
    EXPECT_EQ(LoadProfileFile(Path(), list), 0U);
    EXPECT_TRUE(list.empty());
}

TEST_F(LoadProfileFileTest, AMissingFieldHasTheMachineWideDefault) {
    const kvn::test::SandboxedHive machine(HKEY_LOCAL_MACHINE);
    const DWORD code = 36;
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, kDefaultBindKey, kDefaultCenterValue, REG_DWORD, &code, sizeof code);
    test::WriteBytes(Path(), "<data><profile/><profile><tbutton>5</tbutton></profile></data>");
    ProfileSet list;
    ASSERT_EQ(LoadProfileFile(Path(), list), 2U);
    EXPECT_EQ(list[0], DefaultProfileRecord(36));
    EXPECT_EQ(list[1], DefaultProfileRecord(5));
}

TEST_F(LoadProfileFileTest, KeysMayCarryTheHeadingOfTheStringTable) {
    test::WriteBytes(Path(), "<data><profile><lbutton_etcKey>Arbitrary key[Ctrl+V]</lbutton_etcKey></profile></data>");
    ProfileSet list;
    ASSERT_EQ(LoadProfileFile(Path(), list), 1U);
    EXPECT_EQ(list[0].settings.etcKeys[ButtonSlot::Left].codes, (std::array{17, 86, kNoKey}));
}

TEST_F(LoadProfileFileTest, ReadsWhatAPlainWriterWrote) {
    test::WriteBytes(
        Path(),
        "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\" ?>\r\n<data>\r\n    <vid>2748</vid>\r\n"
        "    <pid>161</pid>\r\n    <select_profile>0</select_profile>\r\n    <profile>\r\n"
        "        <profname>Default</profname>\r\n        <lbutton>36</lbutton>\r\n"
        "        <lbutton_etcKey></lbutton_etcKey>\r\n        <rbutton>2</rbutton>\r\n"
        "        <Application>\r\n            <name>A &amp; B &apos;c&apos;</name>\r\n"
        "            <path>C:\\a b\\c.exe</path>\r\n        </Application>\r\n        <Gesture>\r\n"
        "            <Key>UD</Key>\r\n            <Function>37</Function>\r\n"
        "            <Memo>x&#x0A;y</Memo>\r\n            <EtcKey>Left Ctrl+V</EtcKey>\r\n"
        "        </Gesture>\r\n    </profile>\r\n</data>\r\n");
    ProfileRecord expected = Named(L"Default");
    expected.vid = 2748;
    expected.pid = 161;
    expected.settings[SettingField::Left] = 36;
    expected.settings.applications = {{L"A & B 'c'", L"C:\\a b\\c.exe"}};
    expected.settings.gestures = {{L"UD", 37, L"x\ny", {{162, 86, kNoKey}}}};
    ProfileSet list;
    LoadProfileFile(Path(), list);
    EXPECT_EQ(list, ProfileSet{expected});
}

TEST_F(LoadProfileFileTest, AFileThatCannotBeReadGivesNoProfiles) {
    ASSERT_TRUE(SaveProfileFile(Path(), ManyProfiles()));
    const kvn::test::ReplacedImport<"ReadFile", BOOL(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*)> read(
        GetModuleHandleW(nullptr), [](HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) { return FALSE; });
    ProfileSet list = ManyProfiles();
    EXPECT_EQ(LoadProfileFile(Path(), list), 0U);
    EXPECT_TRUE(list.empty());
}

TEST_F(LoadProfileFileTest, HostileFilesAreRefused) {
    std::string nested;
    for (int depth = 0; depth < 100'000; ++depth) nested += "<a>";
    ProfileSet list;
    for (const std::string& bytes : {nested, "<?xml version=\"><!--\" ?>" + nested + "-->", "<data a='" + nested,
                                     std::string("<data><profile>\0</profile></data>", 34)}) {
        test::WriteBytes(Path(), bytes);
        EXPECT_EQ(LoadProfileFile(Path(), list), 0U);
    }
}

TEST_F(LoadProfileFileTest, LeavesTheHostProgramsLocaleAloneInEveryThread) {
    ASSERT_TRUE(SaveProfileFile(Path(), ManyProfiles()));
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::atomic<bool> done = false;
    std::atomic<bool> changed = false;
    std::thread observer([&] {
        while (!done) {
            if (std::setlocale(LC_ALL, nullptr) != before) changed = true;
        }
    });
    ProfileSet list;
    for (int round = 0; round < 50; ++round) {
        EXPECT_EQ(LoadProfileFile(Path(), list), 5U);
        EXPECT_TRUE(SaveProfileFile(Path(), list));
    }
    done = true;
    observer.join();
    EXPECT_FALSE(changed);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

TEST_F(SaveProfileFileTest, WritesTheBytesThatTinyXmlsOwnSaveWrites) {
    const ProfileSet list = ManyProfiles();
    ASSERT_TRUE(SaveProfileFile(Path(), list));
    TiXmlDocument document;
    BuildProfileDocument(list, LocaleCodec::OfHostProgram(), document);
    const std::wstring other = Folder() + L"\\other.xml";
    ASSERT_TRUE(document.SaveFile(std::string(other.begin(), other.end()).c_str()));
    const std::string bytes = test::ReadBytes(Path());
    EXPECT_EQ(bytes, test::ReadBytes(other));
    EXPECT_TRUE(
        bytes.starts_with("<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\" ?>\r\n<data>\r\n    <vid>"));
    EXPECT_TRUE(bytes.ends_with("    </profile>\r\n</data>\r\n"));
}

TEST_F(SaveProfileFileTest, WhatIsSavedIsLoaded) {
    ProfileSet list;
    ASSERT_TRUE(SaveProfileFile(Path(), ManyProfiles()));
    EXPECT_EQ(LoadProfileFile(Path(), list), 5U);
    EXPECT_EQ(list, ManyProfiles());
}

TEST_F(SaveProfileFileTest, ReplacesALongerFileWhole) {
    test::WriteBytes(Path(), std::string(1'000'000, 'x'));
    ASSERT_TRUE(SaveProfileFile(Path(), {Named(L"short")}));
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
    EXPECT_TRUE(test::ReadBytes(Path()).ends_with("</data>\r\n"));
    EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
}

TEST_F(SaveProfileFileTest, WritesOverWhatAnInterruptedSaveLeft) {
    test::WriteBytes(Path() + L".saving", std::string(1'000'000, 'x'));
    ASSERT_TRUE(SaveProfileFile(Path(), {Named(L"a")}));
    EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
    EXPECT_LT(test::ReadBytes(Path()).size(), 2000U);
}

TEST_F(SaveProfileFileTest, ThousandsOfProfilesProgramsAndGesturesComeBack) {
    ProfileSet list(2000, Named(L"profile"));
    list[7].settings.applications.assign(3000, {L"name", L"path"});
    list[8].settings.gestures.assign(3000, {L"U", 37, L"memo", {{17, 90, kNoKey}}});
    ASSERT_TRUE(SaveProfileFile(Path(), list));
    ProfileSet loaded;
    EXPECT_EQ(LoadProfileFile(Path(), loaded), 2000U);
    EXPECT_TRUE(loaded == list);
}

TEST_F(SaveProfileFileTest, TheFolderMayHaveAnyName) {
    const std::wstring folder = Folder() + L"\\\x41F\x440\x43E\x444\x438\x43B\x44C \x8868 \xD83D\xDE00";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    const std::wstring path = folder + L"\\VID0abcPID00a1.xml";
    ProfileSet list;
    EXPECT_TRUE(SaveProfileFile(path, ManyProfiles()));
    EXPECT_EQ(LoadProfileFile(path, list), 5U);
}

TEST_F(SetAsideProfileFileTest, TakesTheFirstFreeName) {
    for (int number = 1; number <= 3; ++number) {
        const std::string bytes = "broken " + std::to_string(number);
        test::WriteBytes(Path(), bytes);
        EXPECT_TRUE(SetAsideProfileFile(Path()));
        EXPECT_EQ(test::ReadBytes(Folder() + L"\\VID0abcPID00a1.broken-" + std::to_wstring(number) + L".xml"), bytes);
    }
    ASSERT_TRUE(DeleteFileW((Folder() + L"\\VID0abcPID00a1.broken-2.xml").c_str()));
    test::WriteBytes(Path(), "again");
    EXPECT_TRUE(SetAsideProfileFile(Path()));
    EXPECT_EQ(test::ReadBytes(Folder() + L"\\VID0abcPID00a1.broken-2.xml"), "again");
    EXPECT_EQ(test::ReadBytes(Folder() + L"\\VID0abcPID00a1.broken-1.xml"), "broken 1");
    EXPECT_EQ(test::NamesIn(Folder()).size(), 3U);
}

TEST_F(SetAsideProfileFileTest, WithoutAFileThereIsNothingToDo) {
    EXPECT_TRUE(SetAsideProfileFile(Path()));
    EXPECT_TRUE(test::NamesIn(Folder()).empty());
}

TEST_F(SetAsideProfileFileTest, KeepsAFileThatHoldsProfiles) {
    ASSERT_TRUE(SaveProfileFile(Path(), ManyProfiles()));
    EXPECT_FALSE(SetAsideProfileFile(Path()));
    EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
}

}  // namespace
}  // namespace kvn::model
