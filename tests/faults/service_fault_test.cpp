// A service that vanishes between two messages, is replaced, answers late, or sends wrong data.
#include <windows.h>

#include <commctrl.h>

#include <array>
#include <cstdint>
#include <cstring>

#include "tests/faults/whole_page_fixture.h"
#include "tests/support/combo_contents.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"
#include "tests/support/written_profiles.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;

using Record = std::array<std::int32_t, 11>;
constexpr Record kSent{2, 1, 9, 3, 4, 7, 33, 34, 8, 9, 5};
constexpr DWORD kRecordBytes = sizeof(Record);

class ServiceFaultTest : public WholePageTest {
protected:
    void SetUp() override {
        WholePageTest::SetUp();
        StartOver();
    }

    // Puts the initial values into the pane, which shows them as the page knows them.
    Record InitialValues() {
        Press(page.ButtonPane(), IDC_PANE_RESET);
        const auto function = [&](int control) { return SelectedData(page.PaneControl(control)).value_or(-1); };
        const auto position = [&](int control) {
            return static_cast<std::int32_t>(SendMessageW(page.PaneControl(control), TBM_GETPOS, 0, 0));
        };
        return {function(IDC_PANE_LEFT),
                function(IDC_PANE_RIGHT),
                function(IDC_PANE_CENTER),
                function(IDC_PANE_BUTTON4),
                function(IDC_PANE_BUTTON5),
                position(IDC_PANE_HORIZONTAL_SPEED),
                function(IDC_PANE_TILT_LEFT),
                function(IDC_PANE_TILT_RIGHT),
                position(IDC_PANE_FLYING_SPEED),
                position(IDC_PANE_REVOLUTION_SPEED),
                function(IDC_PANE_REVOLUTION_COUNT)};
    }

    void SendStruct(const COPYDATASTRUCT* data) const {
        SendMessageW(page.Window(), WM_COPYDATA, reinterpret_cast<WPARAM>(service->Window()),
                     reinterpret_cast<LPARAM>(data));
    }

    // Uses the gesture editor while the service misbehaves.
    void WithEditor(const std::function<void(HWND editor)>& work) {
        page.WhenDialogOpens(IDD_EDIT_GESTURE, [=](HWND editor) {
            KillTimer(editor, kCaptureTimer);
            work(editor);
        });
        Press(page.GesturePane(), IDC_GESTURES_ADD);
    }
    static void ClickStroke(HWND editor) {
        SendMessageW(editor, WM_COMMAND, MAKEWPARAM(IDC_GESTURE_STROKE, STN_CLICKED), 0);
    }
    void StartStroke(HWND editor) {
        ClickStroke(editor);
        SetCursorPos(400, 300);
        service->ReplyTo(ServiceMessage::IsButtonHeld, 1);
        Tick(editor);
        for (const int x : {500, 600}) {
            SetCursorPos(x, 300);
            Tick(editor);
        }
    }
    static std::wstring Stroke(HWND editor) { return TextOf(GetDlgItem(editor, IDC_GESTURE_STROKE)); }

    void ExpectApplies() {
        EXPECT_TRUE(page.Apply());
        ExpectNoDamage();
    }
};

TEST_F(ServiceFaultTest, GoneAfterTheProbeThePageWorksWithoutIt) {
    page.Add();
    service.reset();
    page.Open();
    Press(page.ButtonPane(), IDC_PANE_HELP);
    EXPECT_TRUE(helpFiles.empty());
    EXPECT_TRUE(page.Messages().empty());
    ExpectApplies();
}

TEST_F(ServiceFaultTest, GoneOnceTheEditorIsOpenNoStrokeStarts) {
    page.AddAndOpen();
    WithEditor([&](HWND editor) {
        EXPECT_EQ(service->CountOf(ServiceMessage::GestureEditBegin), 1U);
        service.reset();
        ClickStroke(editor);
        const std::wstring waiting = Stroke(editor);
        for (int i = 0; i < 3; ++i) Tick(editor);
        EXPECT_EQ(Stroke(editor), waiting);
    });
    ExpectApplies();
}

TEST_F(ServiceFaultTest, GoneWhileAStrokeIsDrawnTheStrokeEnds) {
    page.AddAndOpen();
    WithEditor([&](HWND editor) {
        StartStroke(editor);
        service.reset();
        Tick(editor);
        EXPECT_EQ(Stroke(editor), L"R");
        Tick(editor);
        EXPECT_EQ(Stroke(editor), L"R");
    });
    ExpectApplies();
}

TEST_F(ServiceFaultTest, ReplacedWhileAStrokeIsDrawnTheNewOneIsAsked) {
    page.AddAndOpen();
    WithEditor([&](HWND editor) {
        StartStroke(editor);
        service.reset();
        service.emplace();
        service->ReplyTo(ServiceMessage::IsButtonHeld, 1);
        SetCursorPos(600, 400);
        Tick(editor);
        SetCursorPos(600, 500);
        Tick(editor);
        EXPECT_EQ(service->CountOf(ServiceMessage::IsButtonHeld), 2U);
        service->ReplyTo(ServiceMessage::IsButtonHeld, 0);
        Tick(editor);
        EXPECT_EQ(Stroke(editor), L"RD");
    });
    EXPECT_EQ(service->CountOf(ServiceMessage::GestureEditEnd), 1U);
    EXPECT_EQ(service->CountOf(ServiceMessage::GestureEditBegin), 0U);
    ExpectApplies();
}

TEST_F(ServiceFaultTest, GoneBeforeTheEditorClosesOrThePageAppliesNothingIsSent) {
    page.AddAndOpen();
    WithEditor([&](HWND) { service.reset(); });
    EXPECT_TRUE(page.Apply());
    service.emplace();
    EXPECT_TRUE(service->Calls().empty());
    ExpectApplies();
}

TEST_F(ServiceFaultTest, ThatAnswersLateIsAwaitedAndTicksMeanwhileDoNothing) {
    page.AddAndOpen();
    WithEditor([&](HWND editor) {
        ClickStroke(editor);
        service->ReplyTo(ServiceMessage::IsButtonHeld, 1);
        // A thread that waits for an answer handles messages from other threads: here two ticks and a record.
        service->WhenCalled(ServiceMessage::IsButtonHeld, [&] {
            Sleep(300);
            Tick(editor);
            Tick(editor);
            service->SendData(page.Window(), kSent.data(), kRecordBytes);
        });
        Tick(editor);
        EXPECT_EQ(service->CountOf(ServiceMessage::IsButtonHeld), 1U);
        service->WhenCalled(ServiceMessage::IsButtonHeld, {});
        service->ReplyTo(ServiceMessage::IsButtonHeld, 0);
        Tick(editor);
        EXPECT_EQ(service->CountOf(ServiceMessage::IsButtonHeld), 2U);
    });
    EXPECT_EQ(InitialValues(), kSent);
    ExpectApplies();
}

TEST_F(ServiceFaultTest, ThatVanishesInsteadOfAnAnswerHoldsNoButton) {
    page.AddAndOpen();
    WithEditor([&](HWND editor) {
        ClickStroke(editor);
        const std::wstring waiting = Stroke(editor);
        service->ReplyTo(ServiceMessage::IsButtonHeld, 1);
        service->WhenCalled(ServiceMessage::IsButtonHeld, [window = service->Window()] { DestroyWindow(window); });
        Tick(editor);
        EXPECT_EQ(Stroke(editor), waiting);
    });
    ExpectApplies();
}

TEST_F(ServiceFaultTest, ThatAnswersTheProbeLateGetsItsPage) {
    bool wasAsked = false;
    service->WhenCalled(ServiceMessage::Probe, [&] {
        Sleep(300);
        wasAsked = true;
    });
    page.AddAndOpen();
    EXPECT_TRUE(wasAsked);
    EXPECT_EQ(service->CountOf(ServiceMessage::Probe), 1U);
    ExpectApplies();
}

TEST_F(ServiceFaultTest, ThatVanishesInsteadOfAnAnswerToTheProbeHasNotRefusedAndThePageWorksWithoutIt) {
    service->WhenCalled(ServiceMessage::Probe, [window = service->Window()] { DestroyWindow(window); });
    page.AddAndOpen();
    EXPECT_FALSE(IsWindow(service->Window()));
    ExpectApplies();
    page.Close();
    service.emplace();
    page.AddAndOpen();
    ExpectApplies();
}

TEST_F(ServiceFaultTest, ThatTakesTheStartOfTheEditorLateIsWaitedFor) {
    page.AddAndOpen();
    bool wasTold = false;
    service->WhenCalled(ServiceMessage::GestureEditBegin, [&] {
        Sleep(300);
        wasTold = true;
    });
    WithEditor([&](HWND editor) {
        EXPECT_TRUE(wasTold);
        EXPECT_EQ(service->CountOf(ServiceMessage::GestureEditBegin), 1U);
        StartStroke(editor);
        EXPECT_EQ(Stroke(editor), L"R");
    });
    ExpectApplies();
}

TEST_F(ServiceFaultTest, ThatVanishesAtTheStartOfTheEditorLeavesItToTheUser) {
    page.AddAndOpen();
    service->WhenCalled(ServiceMessage::GestureEditBegin, [window = service->Window()] { DestroyWindow(window); });
    bool wasOpened = false;
    WithEditor([&](HWND editor) {
        wasOpened = true;
        EXPECT_FALSE(IsWindow(service->Window()));
        ClickStroke(editor);
        const std::wstring waiting = Stroke(editor);
        Tick(editor);
        EXPECT_EQ(Stroke(editor), waiting);
    });
    EXPECT_TRUE(wasOpened);
    ExpectApplies();
}

TEST_F(ServiceFaultTest, RecordsThatAreTooShortAreIgnoredAndExtraBytesDoNotMatter) {
    page.AddAndOpen();
    const Record before = InitialValues();
    ASSERT_NE(before, kSent);
    std::vector<std::byte> huge(std::size_t{10} * 1024 * 1024);
    std::memcpy(huge.data(), kSent.data(), kRecordBytes);
    for (const DWORD size : {DWORD{0}, DWORD{1}, kRecordBytes - 1}) {
        service->SendData(page.Window(), huge.data(), size);
        EXPECT_EQ(InitialValues(), before) << size;
    }
    for (const DWORD size : {kRecordBytes, kRecordBytes + 1, static_cast<DWORD>(huge.size())}) {
        Record other = kSent;
        other[5] = static_cast<std::int32_t>(1 + size % 7);
        std::memcpy(huge.data(), other.data(), kRecordBytes);
        service->SendData(page.Window(), huge.data(), size);
        EXPECT_EQ(InitialValues(), other) << size;
    }
    ExpectApplies();
}

TEST_F(ServiceFaultTest, RecordsWithoutBytesAreIgnored) {
    page.AddAndOpen();
    const Record before = InitialValues();
    const COPYDATASTRUCT noBytes{0, kRecordBytes, nullptr};
    SendStruct(&noBytes);
    SendStruct(nullptr);
    EXPECT_EQ(InitialValues(), before);
    ExpectApplies();
}

TEST_F(ServiceFaultTest, RecordsOfExtremeNumbersAreCheckedBeforeTheyAreSaved) {
    page.AddAndOpen();
    for (const std::int32_t extreme : {INT32_MIN, -3, -1, 55, INT32_MAX}) {
        Record record{};
        record.fill(extreme);
        service->SendData(page.Window(), record.data(), kRecordBytes);
        InitialValues();
        ExpectApplies();
        EXPECT_EQ(State().file.find(std::to_string(extreme) + "</"), std::string::npos);
        page.ChooseProfile(1);
        page.ChooseProfile(0);
    }
}

TEST_F(ServiceFaultTest, AFloodOfRecordsEndsWithTheLastOne) {
    page.AddAndOpen();
    Record record = kSent;
    for (int i = 0; i < 10'000; ++i) {
        record[5] = 1 + i % 8;
        service->SendData(page.Window(), record.data(), kRecordBytes);
    }
    EXPECT_EQ(InitialValues(), record);
    ExpectApplies();
}

TEST_F(ServiceFaultTest, RecordsThatComeWhileADialogOrAMessageIsOpenCount) {
    page.AddAndOpen();
    WithEditor([&](HWND) { service->SendData(page.Window(), kSent.data(), kRecordBytes); });
    EXPECT_EQ(InitialValues(), kSent);
    Record other = kSent;
    other[5] = 2;
    page.WhenMessageOpens([&] { service->SendData(page.Window(), other.data(), kRecordBytes); });
    // The question before the reset is such a message box.
    EXPECT_EQ(InitialValues(), other);
    page.WhenMessageOpens({});
    ExpectApplies();
}

TEST_F(ServiceFaultTest, ARecordThatComesWhileThePageOpensCounts) {
    // If the mouse cannot be read, the page reports it at once, before it has its panes.
    RemovePublished(L"MouseFlag");
    page.WhenMessageOpens([&] {
        service->SendData(FindChildWindow(page.Parent(), [](HWND) { return true; }), kSent.data(), kRecordBytes);
    });
    page.AddAndOpen();
    page.WhenMessageOpens({});
    EXPECT_EQ(page.Messages(), std::vector<std::wstring>{L"Failed to obtain mouse settings."});
    EXPECT_EQ(InitialValues()[5], kSent[5]);
    ExpectApplies();
}

TEST_F(ServiceFaultTest, ARecordForAClosedPageIsIgnored) {
    page.AddAndOpen();
    const HWND gone = page.Window();
    page.Close();
    service->SendData(gone, kSent.data(), kRecordBytes);
    ExpectNoDamage();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace kvn::test
