// The finished service among other processes: starts at the same moment, the end of the session, messages that nobody
// should send.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "platform/service_protocol.h"
#include "service/lifecycle/processes.h"
#include "service/lifecycle/watcher.h"
#include "service/page/service_window.h"
#include "service/page/window_numbers.h"
#include "tests/support/started_process.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using platform::UniqueKernelObject;

constexpr wchar_t kOptions[] = L"--mouse beef:0001:5:1";
constexpr UINT kAnswerMilliseconds = 5'000;

class ServiceProcessTest : public testing::Test {
protected:
    ~ServiceProcessTest() override {
        Start(L"--quit");
        AwaitEnds();
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\KORVEN\\MouseUtility");
    }

    void Start(const std::wstring& options) {
        const std::wstring program = service::ProgramFolder() + L"service\\KvnMouseApl.exe";
        processes.push_back(std::move(test::StartProcess(L'"' + program + L"\" " + options).process));
        ASSERT_TRUE(processes.back());
    }
    void AwaitEnds() const {
        for (const UniqueKernelObject& process : processes) {
            EXPECT_EQ(WaitForSingleObject(process.Get(), kPatienceMilliseconds), WAIT_OBJECT_0);
        }
    }
    static HWND AwaitWindow() {
        return Await("the service", [] { return service::FindRunningService(); });
    }
    static bool Answers() {
        const HWND window = service::FindRunningService();
        DWORD_PTR answer = 0;
        return SendMessageTimeoutW(window, static_cast<UINT>(platform::ServiceMessage::Probe), 0, 0, SMTO_NORMAL,
                                   kPatienceMilliseconds, &answer) != 0 &&
               answer == 1;
    }
    static bool HasEnded(const UniqueKernelObject& process) {
        return WaitForSingleObject(process.Get(), 0) == WAIT_OBJECT_0;
    }

    std::vector<UniqueKernelObject> processes;
};

TEST_F(ServiceProcessTest, OfSeveralStartsAtOnceOneIsTheService) {
    constexpr int kStarts = 4;
    for (int start = 0; start < kStarts; ++start) Start(kOptions);
    const auto countEnded = [&] { return std::ranges::count_if(processes, HasEnded); };
    EXPECT_TRUE(ComesTrue([&] { return countEnded() == kStarts - 1; }));
    EXPECT_TRUE(Answers());
    for (const UniqueKernelObject& process : processes) {
        DWORD exitCode = 0;
        GetExitCodeProcess(process.Get(), &exitCode);
        EXPECT_TRUE(!HasEnded(process) || exitCode == 0);
    }
}

TEST_F(ServiceProcessTest, TheEndOfTheSessionEndsServiceAndWatcher) {
    Start(kOptions);
    const HWND window = AwaitWindow();
    EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
    SendMessageW(window, WM_ENDSESSION, FALSE, 0);
    EXPECT_TRUE(Answers());
    SendMessageW(window, WM_ENDSESSION, TRUE, 0);
    AwaitEnds();
    EXPECT_EQ(service::FindRunningService(), nullptr);
    EXPECT_TRUE(service::EndWatcher());
}

// Only its end may end it; the icon's events open what the user would have to close again.
bool IsMeantToActOn(UINT message) {
    constexpr std::array kMeant{UINT{WM_CLOSE}, UINT{WM_ENDSESSION}, UINT{WM_SYSCOMMAND}, service::kTrayMessage};
    return std::ranges::find(kMeant, message) != kMeant.end();
}

constexpr UINT kMessages = 0x10000, kSystemMessages = 0x400, kBlock = 0x800;

TEST_F(ServiceProcessTest, AnyMessageThatAnotherProgramPostsLeavesItAnswering) {
    Start(kOptions);
    const HWND window = AwaitWindow();
    std::mt19937 random(7);
    for (UINT message = 0; message < kMessages; ++message) {
        if (IsMeantToActOn(message)) continue;
        PostMessageW(window, message, random(), static_cast<LPARAM>(random()));
        PostMessageW(window, message, random() % 4, static_cast<LPARAM>(random()) << 32U);
        ASSERT_TRUE(message % kBlock != 0 || Answers()) << "after message " << message;
    }
    EXPECT_TRUE(Answers());
    EXPECT_FALSE(HasEnded(processes.front()));
}

// Of some messages Windows copies what the parameters point to, and as much as they say: that has to be there.
TEST_F(ServiceProcessTest, AnyMessageThatAnotherProgramSendsLeavesItAnswering) {
    Start(kOptions);
    const HWND window = AwaitWindow();
    std::mt19937 random(7);
    std::vector<wchar_t> room(0x10000);
    const auto send = [&](UINT message, WPARAM wParam, LPARAM lParam) {
        DWORD_PTR answer = 0;
        SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerMilliseconds, &answer);
    };
    for (UINT message = 0; message < kSystemMessages; ++message) {
        if (IsMeantToActOn(message)) continue;
        for (const WPARAM wParam : {0, 1, 64}) send(message, wParam, reinterpret_cast<LPARAM>(room.data()));
        ASSERT_TRUE(message % 0x40 != 0 || Answers()) << "after message " << message;
    }
    for (UINT message = kSystemMessages; message < kMessages; message += 1 + random() % 64) {
        if (!IsMeantToActOn(message)) send(message, random(), static_cast<LPARAM>(random()));
    }
    EXPECT_TRUE(Answers());
    EXPECT_FALSE(HasEnded(processes.front()));
}

// Windows' own answer would show a frame, a menu or a caret, change the keyboard's layout or the window's title.
TEST_F(ServiceProcessTest, WhatItDoesNotNeedIsAnsweredWithNothing) {
    Start(kOptions);
    const HWND window = AwaitWindow();
    EXPECT_EQ(SendMessageW(window, WM_NCHITTEST, 0, 0), 0);
    EXPECT_EQ(SendMessageW(window, WM_GETICON, ICON_SMALL, 0), 0);
    EXPECT_EQ(SendMessageW(window, WM_SETICON, ICON_SMALL, 1), 0);
    EXPECT_EQ(SendMessageW(window, WM_GETICON, ICON_SMALL, 0), 0);
    EXPECT_EQ(SendMessageW(window, WM_MOUSEACTIVATE, 0, 0), 0);
    EXPECT_EQ(SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"another")), 0);
    EXPECT_EQ(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0), 11);
    EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
    EXPECT_TRUE(Answers());
}

// Windows has it painted until it says that it is.
TEST_F(ServiceProcessTest, AWindowThatAnotherProgramHasShownTakesNoProcessorTime) {
    Start(kOptions);
    const HWND window = AwaitWindow();
    SetWindowPos(window, nullptr, 0, 0, 100, 100, SWP_SHOWWINDOW | SWP_NOACTIVATE);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
    EXPECT_TRUE(Answers());
    EXPECT_TRUE(ComesTrue([&] { return !GetUpdateRect(window, nullptr, FALSE); }));
}

TEST_F(ServiceProcessTest, PressesOnAFrameThatItHasNotLeaveItAnswering) {
    Start(kOptions);
    const HWND window = AwaitWindow();
    for (const WPARAM part : {HTCLOSE, HTMINBUTTON, HTMAXBUTTON, HTCAPTION, HTSYSMENU, HTVSCROLL}) {
        PostMessageW(window, WM_NCLBUTTONDOWN, part, 0);
        PostMessageW(window, WM_NCRBUTTONDOWN, part, 0);
        EXPECT_TRUE(Answers()) << part;
    }
}

TEST_F(ServiceProcessTest, DataOfAnotherProgramThatIsNoRequestIsRefused) {
    Start(kOptions);
    const HWND window = AwaitWindow();
    std::mt19937 random(11);
    std::vector<unsigned char> bytes(300'000);
    for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
    constexpr std::array<ULONG_PTR, 4> kMarks{0, 1, 0x4B76'6E43, 0x4B76'6E52};
    const auto send = [&](ULONG_PTR mark, DWORD size) {
        COPYDATASTRUCT data{mark, size, bytes.data()};
        const LRESULT answer = SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
        EXPECT_TRUE(answer == FALSE || size <= 2) << mark << ' ' << size;
    };
    for (const ULONG_PTR mark : kMarks) {
        for (const DWORD size : {4096UL, 131'071UL, 131'072UL, 131'073UL, 131'074UL, 300'000UL}) send(mark, size);
    }
    constexpr DWORD kEveryLength = 1'200;
    for (DWORD size = 0; size < kEveryLength; ++size) send(kMarks[2], size);
    EXPECT_TRUE(Answers());
}

}  // namespace
}  // namespace kvn::test
