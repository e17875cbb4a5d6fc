// The thread of the service's window without memory, and messages from Windows.
#include <windows.h>

#include <shellapi.h>
#include <wtsapi32.h>

#include <array>
#include <exception>
#include <functional>

#include "platform/service_protocol.h"
#include "service/options/handover.h"
#include "service/page/window_numbers.h"
#include "tests/service_faults/application_fixture.h"
#include "tests/service_faults/refused_memory.h"
#include "tests/support/replaced_import.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;

class MemoryOfWindowTest : public ApplicationTest {
protected:
    void SweepMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        SCOPED_TRACE(message);
        SweepRefusals(
            Whose::This, 1, [&] { Send(message, wParam, lParam); }, [&](int) { EXPECT_EQ(Probe(), 1); });
    }
    void SweepOptions(const std::vector<std::wstring>& options) {
        SweepRefusals(
            Whose::This, 1,
            [&] {
                try {
                    static_cast<void>(service::AskService(Window(), options));
                } catch (const std::exception&) {  // on the asking side
                }
            },
            [&](int) { EXPECT_EQ(Probe(), 1); });
    }
};

TEST_F(MemoryOfWindowTest, EveryMessageOfThePageIsAnsweredOrIgnored) {
    ASSERT_TRUE(Start());
    for (const auto message : {ServiceMessage::SettingsChanged, ServiceMessage::Probe, ServiceMessage::GestureEditBegin,
                               ServiceMessage::GestureEditEnd}) {
        SweepMessage(static_cast<UINT>(message));
    }
    for (LPARAM button = 0; button < 8; ++button)
        SweepMessage(static_cast<UINT>(ServiceMessage::IsButtonHeld), 0, button);
    for (const auto timer : {service::Timer::GestureEdit, service::Timer::HookCheck}) {
        SweepMessage(WM_TIMER, static_cast<WPARAM>(timer));
    }
    EXPECT_NE(StatusText().find(L"hook=alive"), std::wstring::npos);
    EXPECT_TRUE(IsNothingHeld());
}

TEST_F(MemoryOfWindowTest, EveryMessageOfWindowsIsAnsweredOrIgnored) {
    ASSERT_TRUE(Start());
    SweepMessage(RegisterWindowMessageW(L"TaskbarCreated"));
    SweepMessage(service::kRunPostedMessage);
    SweepMessage(WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK);
    SweepMessage(WM_WTSSESSION_CHANGE, WTS_SESSION_UNLOCK);
    SweepMessage(WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC);
    SweepMessage(WM_SETTINGCHANGE, SPI_SETMOUSEBUTTONSWAP);
    SweepMessage(WM_INPUT_DEVICE_CHANGE, GIDC_ARRIVAL, 1);
    SweepMessage(WM_QUERYENDSESSION);
    EXPECT_NE(StatusText().find(L"hook=alive"), std::wstring::npos);
}

TEST_F(MemoryOfWindowTest, EveryOptionIsCarriedOutOrNot) {
    ASSERT_TRUE(Start());
    SweepOptions({L"--status"});
    SweepOptions({L"--pause"});
    SweepOptions({L"--resume"});
    SweepOptions({L"--profile", L"auto"});
    SweepOptions({L"--mouse", L"0abc:00a1:5:1"});
    EXPECT_NE(StatusText().find(L"paused=no"), std::wstring::npos);
}

TEST_F(MemoryOfWindowTest, TheIconComesBackWithExplorer) {
    int added = 0;
    const ReplacedImport<"Shell_NotifyIconW", BOOL(DWORD, NOTIFYICONDATAW*)> notify{
        GetModuleHandleW(nullptr), [&](DWORD what, NOTIFYICONDATAW*) -> BOOL {
            added += what == NIM_ADD ? 1 : 0;
            return TRUE;
        }};
    ASSERT_TRUE(notify.IsInPlace());
    ASSERT_TRUE(Start());
    EXPECT_EQ(added, 1);
    Send(RegisterWindowMessageW(L"TaskbarCreated"));
    EXPECT_EQ(added, 2);
    End();
}

TEST_F(MemoryOfWindowTest, AnIconThatATaskbarWasTooBusyToTakeComesLater) {
    int added = 0;
    const ReplacedImport<"Shell_NotifyIconW", BOOL(DWORD, NOTIFYICONDATAW*)> notify{
        GetModuleHandleW(nullptr), [&](DWORD what, NOTIFYICONDATAW*) -> BOOL {
            if (what == NIM_ADD) ++added;
            return added > 1;
        }};
    ASSERT_TRUE(Start());
    static_cast<void>(Get().CarryOut(Options(L"--pause")));
    Send(service::kRunPostedMessage);
    EXPECT_EQ(added, 2);
    End();
}

TEST_F(MemoryOfWindowTest, ASessionThatEndsDuringTheStartEndsTheService) {
    const ReplacedImport<"Shell_NotifyIconW", BOOL(DWORD, NOTIFYICONDATAW*)> notify{
        GetModuleHandleW(nullptr), [&](DWORD what, NOTIFYICONDATAW* data) -> BOOL {
            if (what == NIM_ADD) SendMessageW(data->hWnd, WM_ENDSESSION, TRUE, 0);
            return TRUE;
        }};
    ASSERT_TRUE(Start());
    EXPECT_EQ(Window(), nullptr);
    EXPECT_EQ(Get().CarryOut(Options(L"--status")).exitCode, service::kDone);
    Get().Run();
    service::SharedMemory memory;
    EXPECT_NE(memory.State().hasEnded, 0U);
}

}  // namespace
}  // namespace kvn::test
