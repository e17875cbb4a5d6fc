// The command line, from outside.
#include <windows.h>

#include <shlobj.h>

#include <string>

#include "platform/service_protocol.h"
#include "platform/special_folder.h"
#include "service/resources/service_texts.h"
#include "service/resources/service_version.h"
#include "service/tray/try_window.h"
#include "tests/service/program.h"
#include "tests/support/owning_types.h"
#include "tests/support/platform.h"
#include "tests/support/waiting.h"
#include "tests/support/written_profiles.h"

namespace kvn::service_test {
namespace {

class ServiceOptionsTest : public ServiceProgramTest {};

TEST_F(ServiceOptionsTest, HelpAndVersionNeedNoService) {
    const Outcome help = Run({L"--help"});
    EXPECT_EQ(help.exitCode, 0U);
    for (const char* const option : {"--quit", "--pause", "--resume", "--settings", "--status", "--export", "--import",
                                     "--yes", "--profile", "--try", "--mouse", "--log", "--version"}) {
        EXPECT_NE(help.output.find(option), std::string::npos) << option;
    }
    EXPECT_EQ(help.output.find("--watch"), std::string::npos);
    EXPECT_NE(Run({L"--version"}).output.find(service::Utf8(service::kVersion)), std::string::npos);
    EXPECT_EQ(Window(), nullptr);
}

// The console of this program, or a new one.
class Console {
public:
    Console() {
        CONSOLE_SCREEN_BUFFER_INFO info{};
        GetConsoleScreenBufferInfo(output.Get(), &info);
        start = {0, info.dwCursorPosition.Y};
    }
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console() {
        if (isOwn) FreeConsole();
    }

    // The text that has been written to the line since then.
    std::wstring Line() const {
        std::wstring line(60, L' ');
        DWORD read = 0;
        ReadConsoleOutputCharacterW(output.Get(), line.data(), static_cast<DWORD>(line.size()), start, &read);
        return line.substr(0, line.find_last_not_of(L' ') + 1);
    }

private:
    // Wine's console for a Unix terminal cannot be read.
    static bool Alloc() {
        if (test::RunsUnderWine()) FreeConsole();
        return AllocConsole() != FALSE;
    }

    bool isOwn = Alloc();
    platform::UniqueFile output{CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr)};
    COORD start{};
};

TEST_F(ServiceOptionsTest, WithoutAnOutputTheTextIsOnTheConsoleOfTheCaller) {
    const Console console;
    EXPECT_EQ(RunWithoutOutput({L"--version"}), 0U);
    EXPECT_EQ(console.Line(), std::wstring(L"KvnMouseApl ") + service::kVersion);
}

TEST_F(ServiceOptionsTest, BadOptionsAreNamedAndEndWithTwo) {
    struct Row {
        Arguments arguments;
        std::string named;
    };
    const Row rows[]{{{L"--bogus"}, "--bogus"},
                     {{L"stray"}, "stray"},
                     {{L"--log"}, "--log"},
                     {{L"--export", L"--yes"}, "--export"},
                     {{L"--status=1"}, "--status=1"},
                     {{L"--mouse", L"1234:5678"}, "1234:5678"},
                     {{L"--log", L"C:\\no such folder\\log.txt"}, "no such folder"},
                     {{L"--quit", L"--pause"}, "--quit"}};
    for (const Row& row : rows) {
        const Outcome outcome = Run(row.arguments);
        EXPECT_EQ(outcome.exitCode, 2U) << row.named;
        EXPECT_NE(outcome.output.find(row.named), std::string::npos) << outcome.output;
    }
}

TEST_F(ServiceOptionsTest, WhatNeedsAServiceEndsWithOneWhenNoneRuns) {
    for (const Arguments& arguments :
         {Arguments{L"--status"}, {L"--pause"}, {L"--resume"}, {L"--profile", L"auto"}, {L"--profile", L"Default"}}) {
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.exitCode, 1U);
        EXPECT_NE(outcome.output, "");
    }
    EXPECT_EQ(Window(), nullptr);
}

TEST_F(ServiceOptionsTest, QuitSucceedsWhenNoServiceRuns) {
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
}

TEST_F(ServiceOptionsTest, StatusHasItsLinesInTheirOrder) {
    StartService();
    const Outcome outcome = Run({L"--status"});
    EXPECT_EQ(outcome.exitCode, 0U);
    std::string keys;
    for (std::size_t start = 0, end = 0; (end = outcome.output.find('\n', start)) != std::string::npos;
         start = end + 1) {
        keys += outcome.output.substr(start, outcome.output.find('=', start) - start) + ' ';
    }
    EXPECT_EQ(keys, "version vid pid buttons tilt profile why paused hook reinstalled presses actions switches ");
    EXPECT_NE(outcome.output.find("vid=1234\npid=5678\nbuttons=7\ntilt=1\n"), std::string::npos) << outcome.output;
    EXPECT_NE(outcome.output.find("why=selected\npaused=no\n"), std::string::npos) << outcome.output;
}

TEST_F(ServiceOptionsTest, ASecondStartReachesTheRunningServiceAndEnds) {
    StartService();
    const DWORD first = ServiceProcess();
    EXPECT_EQ(Run({}).exitCode, 0U);
    EXPECT_EQ(Run({L"--pause"}).exitCode, 0U);
    EXPECT_EQ(Status()["paused"], "yes");
    EXPECT_EQ(Run({L"--resume"}).exitCode, 0U);
    EXPECT_EQ(Status()["paused"], "no");
    EXPECT_EQ(Run({L"--mouse", L"abcd:00ef:5:0"}).exitCode, 0U);
    EXPECT_EQ(Status()["vid"] + ':' + Status()["pid"], "abcd:00ef");
    EXPECT_EQ(ServiceProcess(), first);
}

TEST_F(ServiceOptionsTest, SeveralOptionsAreCarriedOutBeforeTheStatusIsPrinted) {
    StartService();
    const std::string output = Run({L"--status", L"--pause", L"--profile", L"Default"}).output;
    EXPECT_NE(output.find("why=forced\npaused=yes\n"), std::string::npos) << output;
}

TEST_F(ServiceOptionsTest, AProfileIsOneOfTheMouseThatIsNamedAlongWithIt) {
    const std::wstring file = platform::SpecialFolder(CSIDL_APPDATA) + L"\\KORVEN\\Tarsel3\\VID4321PID8765.xml";
    test::WriteFileText(file, test::ProfileFileText({test::ProfileText("Only here")}));
    StartService();
    const Outcome outcome = Run({L"--mouse", L"4321:8765:5:0", L"--profile", L"Only here", L"--status"});
    DeleteFileW(file.c_str());
    EXPECT_EQ(outcome.exitCode, 0U);
    EXPECT_NE(outcome.output.find("profile=Only here\nwhy=forced\n"), std::string::npos) << outcome.output;
}

HWND TryWindow() {
    const HWND window = FindWindowW(service::kTryWindowClass, nullptr);
    return window != nullptr && IsWindowVisible(window) ? window : nullptr;
}

TEST_F(ServiceOptionsTest, TryStartsTheServiceAndASecondOneBringsTheWindowToTheFront) {
    StartService({L"--mouse", L"1234:5678:7:1", L"--try"});
    const HWND window = test::Await("the window", TryWindow);
    EXPECT_EQ(Run({L"--try"}).exitCode, 0U);
    test::Await("the window in front", [=] { return GetForegroundWindow() == window; });
    EXPECT_EQ(FindWindowExW(nullptr, window, service::kTryWindowClass, nullptr), nullptr);
}

TEST_F(ServiceOptionsTest, TheServiceEndsWhileTheButtonsAreTried) {
    StartService();
    EXPECT_EQ(Run({L"--try"}).exitCode, 0U);
    test::Await("the window", TryWindow);
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
    EXPECT_EQ(ExitCodeOfService(), 0U);
    EXPECT_EQ(TryWindow(), nullptr);
}

TEST_F(ServiceOptionsTest, AnUnknownProfileEndsWithOneAndChangesNothing) {
    StartService();
    const Outcome outcome = Run({L"--profile", L"Nobody's"});
    EXPECT_EQ(outcome.exitCode, 1U);
    EXPECT_NE(outcome.output.find("Nobody's"), std::string::npos);
    EXPECT_EQ(Status()["why"], "selected");
}

TEST_F(ServiceOptionsTest, AForcedProfileStaysUntilAutomaticIsChosen) {
    StartService();
    EXPECT_EQ(Run({L"--profile", L"Default"}).exitCode, 0U);
    EXPECT_EQ(Status()["why"], "forced");
    EXPECT_EQ(Run({L"--profile", L"auto"}).exitCode, 0U);
    EXPECT_EQ(Status()["why"], "selected");
}

TEST_F(ServiceOptionsTest, QuitWaitsUntilServiceAndWatcherHaveEnded) {
    StartService();
    test::Await("the watcher", [this] { return RunningProcesses() == 2; });
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
    EXPECT_EQ(RunningProcesses(), 0);
    EXPECT_EQ(ExitCodeOfService(), 0U);
    EXPECT_EQ(Window(), nullptr);
}

LRESULT CALLBACK Ignore(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(ServiceOptionsTest, AWindowOfTheServicesNameThatIsNotItsOwnKeepsItFromStarting) {
    constexpr wchar_t kClassName[] = L"KvnSomebodyElse";
    const test::RegisteredClass registered(kClassName, Ignore);
    const test::UniqueWindow other(CreateWindowExW(0, kClassName, platform::kServiceName, WS_POPUP, 0, 0, 0, 0, nullptr,
                                                   nullptr, nullptr, nullptr));
    for (const Arguments& arguments : {Arguments{}, {L"--status"}, kSample}) {
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.exitCode, 1U);
        EXPECT_NE(outcome.output.find("KvnMouseApl"), std::string::npos) << outcome.output;
    }
}

}  // namespace
}  // namespace kvn::service_test
