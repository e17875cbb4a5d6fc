// Export and import, by options and by the icon's menu.
#include <windows.h>

#include <shlobj.h>

#include <filesystem>
#include <string>

#include "platform/service_protocol.h"
#include "platform/special_folder.h"
#include "platform/unique_resource.h"
#include "service/page/window_numbers.h"
#include "tests/service/program.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/owning_types.h"
#include "tests/support/real_input.h"
#include "tests/support/waiting.h"
#include "tests/support/written_profiles.h"

namespace kvn::service_test {
namespace {

constexpr char kHead[] = "<vid>17185</vid><pid>34661</pid><select_profile>0</select_profile>";
const Arguments kMouse{L"--mouse", L"4321:8765:5:0"};

class TransferTest : public ServiceProgramTest {
protected:
    void SetUp() override {
        ServiceProgramTest::SetUp();
        std::filesystem::create_directories(folder);
        RemoveProfiles();
    }
    void TearDown() override {
        ServiceProgramTest::TearDown();
        RemoveProfiles();
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    static std::wstring Settings() { return platform::SpecialFolder(CSIDL_APPDATA) + L"\\KORVEN\\Tarsel3\\"; }
    static std::wstring ProfileFile() { return Settings() + L"VID4321PID8765.xml"; }
    static std::wstring KeptFile() { return Settings() + L"VID4321PID8765.before-import-1.xml"; }
    static void RemoveProfiles() {
        for (const std::wstring& path : {ProfileFile(), KeptFile()}) DeleteFileW(path.c_str());
    }
    static void Publish() { test::PublishMouse({.vid = 0x4321, .pid = 0x8765}); }

    static std::string Text(const std::string& profile, const std::string& head = kHead) {
        return "<data>" + head + test::ProfileText(profile) + "</data>";
    }
    std::wstring File(const std::wstring& name) const { return folder + L'\\' + name; }
    std::wstring WriteFile(const std::string& text) const {
        test::WriteFileText(File(L"in.xml"), text);
        return File(L"in.xml");
    }

private:
    const std::wstring folder =
        std::filesystem::temp_directory_path().wstring() + L"kvn-transfer-" + std::to_wstring(GetCurrentProcessId());
};

bool Has(const Outcome& outcome, const std::string& text) {
    return outcome.output.find(text) != std::string::npos;
}

TEST_F(TransferTest, ExportAndImportNeedNoService) {
    Publish();
    const Outcome imported = Run({L"--import", WriteFile(Text("Moved"))});
    EXPECT_EQ(imported.exitCode, 0U) << imported.output;
    const Outcome exported = Run({L"--export", File(L"out.xml")});
    EXPECT_EQ(exported.exitCode, 0U) << exported.output;
    EXPECT_EQ(test::ElementIn(test::ReadFileText(File(L"out.xml")), 0, "profname"), "Moved");
    EXPECT_EQ(Window(), nullptr);
}

TEST_F(TransferTest, TheRunningServiceHasTakenOverWhenTheImportEnds) {
    test::WriteFileText(ProfileFile(), Text("Earlier"));
    StartService(kMouse);
    EXPECT_EQ(Status()["profile"], "Earlier");
    for (const char* const name : {"Moved", "Moved again", "And again"}) {
        const Outcome outcome = Run({L"--import", WriteFile(Text(name))});
        EXPECT_EQ(outcome.exitCode, 0U) << outcome.output;
        EXPECT_EQ(Status()["profile"], name);
        DeleteFileW(KeptFile().c_str());
    }
}

TEST_F(TransferTest, AnotherServiceIsNotifiedOfAnImportAsByThePage) {
    Publish();
    const test::UniqueWindow other(CreateWindowExW(0, L"STATIC", platform::kServiceName, WS_POPUP, 0, 0, 0, 0, nullptr,
                                                   nullptr, nullptr, nullptr));
    constexpr auto kMessage = static_cast<UINT>(platform::ServiceMessage::SettingsChanged);
    const auto wasTold = [&] {
        MSG message{};
        return PeekMessageW(&message, other.Get(), kMessage, kMessage, PM_REMOVE) != FALSE;
    };
    EXPECT_EQ(Run({L"--import", WriteFile("<html/>")}).exitCode, 1U);
    EXPECT_FALSE(wasTold());
    EXPECT_EQ(Run({L"--import", WriteFile(Text("Moved"))}).exitCode, 0U);
    EXPECT_TRUE(wasTold());
}

TEST_F(TransferTest, NamesAreRelativeToTheCallersFolder) {
    Publish();
    WriteFile(Text("Moved"));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(File({}));
    const Outcome imported = Run({L"--import", L"in.xml"});
    const Outcome exported = Run({L"--export", L"out.xml"});
    std::filesystem::current_path(before);
    EXPECT_EQ(imported.exitCode, 0U) << imported.output;
    EXPECT_EQ(exported.exitCode, 0U) << exported.output;
    EXPECT_TRUE(test::FileExists(File(L"out.xml")));
}

TEST_F(TransferTest, NothingToExportEndsWithOne) {
    Publish();
    const Outcome outcome = Run({L"--export", File(L"out.xml")});
    EXPECT_EQ(outcome.exitCode, 1U);
    EXPECT_TRUE(Has(outcome, "nothing to export")) << outcome.output;
}

TEST_F(TransferTest, ABadFileEndsWithOneAndIsNamed) {
    Publish();
    test::WriteFileText(ProfileFile(), Text("Earlier"));
    const std::string bad = "<data>" + std::string(kHead) + test::ProfileText("Work", {{"lbutton", "99"}}) + "</data>";
    const Outcome outcome = Run({L"--import", WriteFile(bad)});
    EXPECT_EQ(outcome.exitCode, 1U);
    EXPECT_TRUE(Has(outcome, "lbutton of profile 'Work' is out of range: '99'.\n")) << outcome.output;
    EXPECT_EQ(test::ReadFileText(ProfileFile()), Text("Earlier"));
    EXPECT_FALSE(test::FileExists(KeptFile()));
}

TEST_F(TransferTest, AFileOfAnotherModelEndsWithThreeUnlessItIsConfirmed) {
    Publish();
    const std::wstring file = WriteFile(Text("Foreign", "<vid>1</vid><pid>2</pid>"));
    const Outcome refused = Run({L"--import", file});
    EXPECT_EQ(refused.exitCode, 3U);
    EXPECT_TRUE(Has(refused, "0001:0002") && Has(refused, "4321:8765") && Has(refused, "--yes")) << refused.output;
    EXPECT_FALSE(test::FileExists(ProfileFile()));
    EXPECT_EQ(Run({L"--yes", L"--import", file}).exitCode, 0U);
    EXPECT_EQ(test::ElementIn(test::ReadFileText(ProfileFile()), -1, "vid"), "17185");
}

TEST_F(TransferTest, TheyStandAlone) {
    Publish();
    const std::wstring file = WriteFile(Text("Moved"));
    for (const Arguments& arguments : {Arguments{L"--yes"},
                                       {L"--export", File(L"out.xml"), L"--yes"},
                                       {L"--import", file, L"--pause"},
                                       {L"--import", file, L"--export", File(L"out.xml")},
                                       {L"--export", File(L"out.xml"), L"--status"},
                                       {L"--import", file, L"--mouse", L"none"},
                                       {L"--quit", L"--import", file},
                                       {L"--import", L""},
                                       {L"--export"}}) {
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.exitCode, 2U) << outcome.output;
        EXPECT_TRUE(Has(outcome, "--")) << outcome.output;
    }
    EXPECT_FALSE(test::FileExists(ProfileFile()));
    EXPECT_FALSE(test::FileExists(File(L"out.xml")));
}

// Every dialog of the service's process counts: the service has no others.
class TransferMenuTest : public TransferTest {
protected:
    static HWND AwaitDialog() {
        return test::Await("a dialog", [] { return Dialog(); });
    }
    static void AwaitNoDialog() {
        test::Await("the dialog's end", [] { return Dialog() == nullptr; });
    }

    static void Choose(WORD key) {
        PostMessageW(Window(), service::kTrayMessage, 1, WM_CONTEXTMENU);
        test::Await("the menu's keys", [] {
            const HWND menu = FindWindowW(L"#32768", nullptr);
            return menu != nullptr && IsWindowVisible(menu) && GetForegroundWindow() == Window();
        });
        test::PressKey(key);
    }

    // The name field is the edit field of a combo box, or in newer dialogs of a combo box within another, always with
    // the same id.
    static HWND NameField(HWND dialog) {
        constexpr int kCombo = 0x47C;
        constexpr int kEdit = 0x480;
        HWND field = GetDlgItem(dialog, kEdit);
        for (HWND inner = GetDlgItem(dialog, kCombo); inner != nullptr; inner = GetDlgItem(inner, kCombo))
            field = inner;
        return field;
    }

    static void ConfirmFile(const std::wstring& path) {
        const HWND dialog = AwaitDialog();
        const HWND field = test::Await("the field for the name", [=] { return NameField(dialog); });
        SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        test::Await("the dialog's end", [=] { return !IsWindowVisible(dialog); });
    }

    static void AnswerBox(int button) {
        const HWND box = test::Await("a message box", [=]() -> HWND {
            const HWND dialog = Dialog();
            return dialog != nullptr && GetDlgItem(dialog, button) != nullptr && NameField(dialog) == nullptr ? dialog
                                                                                                              : nullptr;
        });
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        test::Await("the box's end", [=] { return !IsWindowVisible(box); });
    }
};

TEST_F(TransferMenuTest, ExportWritesTheChosenFileWhileTheServiceGoesOn) {
    test::WriteFileText(ProfileFile(), Text("Mine"));
    StartService(kMouse);
    Choose('E');
    AwaitDialog();
    EXPECT_EQ(Status()["profile"], "Mine");
    ConfirmFile(File(L"out.xml"));
    const auto nameInFile = [this] {
        const std::wstring file = File(L"out.xml");
        return test::FileExists(file) ? test::ElementIn(test::ReadFileText(file), 0, "profname") : "";
    };
    EXPECT_TRUE(test::ComesTrue([&] { return nameInFile() == "Mine"; })) << nameInFile();
    AwaitNoDialog();
}

TEST_F(TransferMenuTest, ImportAsksAboutAFileOfAnotherModel) {
    StartService(kMouse);
    WriteFile(Text("Foreign", "<vid>1</vid><pid>2</pid>"));
    Choose('I');
    ConfirmFile(File(L"in.xml"));
    AnswerBox(IDNO);
    AwaitNoDialog();
    EXPECT_FALSE(test::FileExists(ProfileFile()));
    Choose('I');
    ConfirmFile(File(L"in.xml"));
    AnswerBox(IDYES);
    EXPECT_TRUE(test::ComesTrue([this] { return Status()["profile"] == "Foreign"; }));
}

TEST_F(TransferMenuTest, ABadFileIsNamedInABox) {
    StartService(kMouse);
    WriteFile("<html/>");
    Choose('I');
    ConfirmFile(File(L"in.xml"));
    AnswerBox(IDOK);
    AwaitNoDialog();
    EXPECT_EQ(Status()["profile"], "Default");
}

TEST_F(TransferMenuTest, TheServiceEndsWhileADialogIsOpen) {
    StartService(kMouse);
    Choose('I');
    AwaitDialog();
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
    EXPECT_EQ(ExitCodeOfService(), 0U);
    EXPECT_EQ(RunningProcesses(), 0);
}

}  // namespace
}  // namespace kvn::service_test
