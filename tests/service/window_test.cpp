// The answers of the service's window to the page and to Windows, and the contents of the registry at that time.
#include <array>
#include <cstring>

#include "platform/service_protocol.h"
#include "tests/service/program.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/waiting.h"

namespace kvn::service_test {
namespace {

using platform::ServiceMessage;
using test::StoredNumber;

constexpr UINT Number(ServiceMessage message) {
    return static_cast<UINT>(message);
}

class ServiceWindowTest : public ServiceProgramTest {};

TEST_F(ServiceWindowTest, TheMouseIsPublishedWhenTheWindowIsFound) {
    StartService();
    const auto values = test::StoredValues(test::kMouseKey);
    EXPECT_EQ(values.size(), 6U);
    EXPECT_EQ(values.at(L"VID"), StoredNumber(0x1234));
    EXPECT_EQ(values.at(L"PID"), StoredNumber(0x5678));
    EXPECT_EQ(values.at(L"ButtonCount"), StoredNumber(7));
    EXPECT_EQ(values.at(L"HasTilt"), StoredNumber(1));
    EXPECT_EQ(values.at(L"MouseFlag"), StoredNumber(0));
    EXPECT_TRUE(values.contains(L"MouseImage"));
}

TEST_F(ServiceWindowTest, TheProbeIsAnsweredWithOne) {
    StartService();
    EXPECT_EQ(Send(Number(ServiceMessage::Probe)), 1);
}

TEST_F(ServiceWindowTest, WithoutAMouseTheProbeIsRefusedAndNothingIsPublished) {
    StartService({L"--mouse", L"none"});
    EXPECT_EQ(Send(Number(ServiceMessage::Probe)), platform::kProbeRefused);
    EXPECT_TRUE(test::StoredValues(test::kMouseKey).empty());
    EXPECT_EQ(Status()["vid"], "0000");
}

TEST_F(ServiceWindowTest, NoProfileIsInForceOnceTheMouseIsTakenAway) {
    StartService();
    EXPECT_EQ(Run({L"--profile", L"Default"}).exitCode, 0U);
    EXPECT_EQ(Run({L"--mouse", L"none"}).exitCode, 0U);
    EXPECT_EQ(Send(Number(ServiceMessage::Probe)), platform::kProbeRefused);
    EXPECT_EQ(Status()["vid"], "0000");
    EXPECT_EQ(Status()["profile"], "");
    EXPECT_EQ(Status()["why"], "selected");
}

TEST_F(ServiceWindowTest, AMouseThatComesLaterIsPublishedAndAnswered) {
    StartService({L"--mouse", L"none"});
    EXPECT_EQ(Run(kSample).exitCode, 0U);
    EXPECT_EQ(Send(Number(ServiceMessage::Probe)), 1);
    EXPECT_EQ(test::StoredValues(test::kMouseKey).at(L"VID"), StoredNumber(0x1234));
}

TEST_F(ServiceWindowTest, ReleasedButtonsAndOddMasksAreNotHeld) {
    StartService();
    for (const LPARAM mask : {1, 2, 4, 8, 16, 0, 3, 32, 64, -1}) {
        EXPECT_EQ(Send(Number(ServiceMessage::IsButtonHeld), 0, mask), 0) << mask;
    }
}

TEST_F(ServiceWindowTest, HostileMessagesChangeNothing) {
    StartService();
    std::array<char, 7> bytes{};
    for (const ULONG_PTR mark : {ULONG_PTR{0}, ULONG_PTR{0x4B766E43}, ~ULONG_PTR{0}}) {
        COPYDATASTRUCT data{mark, static_cast<DWORD>(bytes.size()), bytes.data()};
        EXPECT_EQ(Send(WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)), 0);
    }
    std::wstring unknown = L"\"--bogus\"";
    COPYDATASTRUCT data{0x4B766E43, static_cast<DWORD>(unknown.size() * sizeof(wchar_t)), unknown.data()};
    EXPECT_EQ(Send(WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)), 0);
    for (UINT message = WM_APP; message < WM_APP + 0x40; ++message) Send(message, ~WPARAM{0}, ~LPARAM{0});
    EXPECT_EQ(Send(Number(ServiceMessage::Probe)), 1);
    EXPECT_EQ(Status()["paused"], "no");
}

TEST_F(ServiceWindowTest, TheServiceEndsWithTheSessionAndIsNotStartedAgain) {
    StartService();
    EXPECT_EQ(Send(WM_QUERYENDSESSION), TRUE);
    EXPECT_NE(Window(), nullptr);
    Send(WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(ExitCodeOfService(), 0U);
    EXPECT_TRUE(test::ComesTrue([this] { return RunningProcesses() == 0; }));
}

TEST_F(ServiceWindowTest, ASessionThatDoesNotEndAfterAllKeepsItsService) {
    StartService();
    Send(WM_ENDSESSION, FALSE, 0);
    EXPECT_EQ(Send(Number(ServiceMessage::Probe)), 1);
}

TEST_F(ServiceWindowTest, ClosingTheWindowEndsTheService) {
    StartService();
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(ExitCodeOfService(), 0U);
    EXPECT_TRUE(test::ComesTrue([this] { return RunningProcesses() == 0; }));
}

TEST_F(ServiceWindowTest, TheSessionThatIsSwitchedToPublishesItsMouseAgain) {
    StartService();
    Send(WM_WTSSESSION_CHANGE, WTS_CONSOLE_DISCONNECT);
    test::RemovePublished(L"VID");
    EXPECT_EQ(Run({L"--mouse", L"4321:8765:5:0"}).exitCode, 0U);
    EXPECT_FALSE(test::StoredValues(test::kMouseKey).contains(L"VID"));
    Send(WM_WTSSESSION_CHANGE, WTS_CONSOLE_CONNECT);
    EXPECT_EQ(test::StoredValues(test::kMouseKey).at(L"VID"), StoredNumber(0x4321));
}

TEST_F(ServiceWindowTest, TheHookIsInstalledAgainAfterSleepAndLock) {
    StartService();
    EXPECT_EQ(Status()["reinstalled"], "0");
    Send(WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC);
    EXPECT_EQ(Status()["reinstalled"], "1");
    Send(WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK);
    EXPECT_EQ(Status()["reinstalled"], "1");
    Send(WM_WTSSESSION_CHANGE, WTS_SESSION_UNLOCK);
    EXPECT_EQ(Status()["reinstalled"], "2");
    EXPECT_EQ(Status()["hook"], "alive");
}

TEST_F(ServiceWindowTest, TheTaskbarsReturnAndTheIconsDoubleClickDoNoHarm) {
    StartService();
    Send(RegisterWindowMessageW(L"TaskbarCreated"));
    EXPECT_EQ(Send(Number(ServiceMessage::Probe)), 1);
}

}  // namespace
}  // namespace kvn::service_test
