// The finished service among other processes: starts at the same moment, the end of the session, messages that nobody
// should send.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "platform/service_protocol.h"
#include "service/page/service_window.h"
#include "service/processes.h"
#include "service/watcher.h"
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
        processes.push_back(
            std::move(service::StartProcess(service::ProgramFolder() + L"service\\KvnMouseApl.exe", options).handle));
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
                                   kAnswerMilliseconds, &answer) != 0 &&
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

// Those of windows in general.
constexpr UINT kLastMessage = 0x80;

// Only its end may end it.
bool MayEnd(UINT message) {
    constexpr std::array kEnding{UINT{WM_CLOSE}, UINT{WM_ENDSESSION}};
    return std::ranges::find(kEnding, message) != kEnding.end();
}

TEST_F(ServiceProcessTest, AnyMessageOfAnotherProgramLeavesItAnswering) {
    Start(kOptions);
    const HWND window = AwaitWindow();
    std::mt19937 random(7);
    std::array<wchar_t, 512> text{L"any text"};
    for (UINT message = 0; message <= kLastMessage; ++message) {
        if (MayEnd(message)) continue;
        for (const WPARAM wParam : {WPARAM{0}, WPARAM{random()}}) {
            PostMessageW(window, message, wParam, static_cast<LPARAM>(random()));
            PostMessageW(window, message, wParam, static_cast<LPARAM>(random()) << 32U);
            DWORD_PTR answer = 0;
            SendMessageTimeoutW(window, message, wParam, reinterpret_cast<LPARAM>(text.data()), SMTO_NORMAL,
                                kAnswerMilliseconds, &answer);
        }
        if (message % 0x40 != 0) continue;
        ASSERT_TRUE(Answers()) << "after message " << message;
    }
    EXPECT_FALSE(HasEnded(processes.front()));
    EXPECT_TRUE(Answers());
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
    for (const ULONG_PTR mark : kMarks) {
        for (const DWORD size : {0UL, 1UL, 2UL, 33UL, 4096UL, 131'072UL, 131'073UL, 300'000UL}) {
            COPYDATASTRUCT data{mark, size, bytes.data()};
            EXPECT_TRUE(SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)) == FALSE || size <= 2)
                << mark << ' ' << size;
        }
    }
    EXPECT_TRUE(Answers());
}

}  // namespace
}  // namespace kvn::test
