#include "tests/support/gesture_fixture.h"

#include <commctrl.h>

#include <array>

#include "tests/support/stroke_steps.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

constexpr POINT kStrokeOrigin{400, 300};  // with room for three steps either way on the smallest screen

std::string GestureElement(const GestureText& gesture) {
    return "<Key>" + gesture.stroke + "</Key><Function>" + std::to_string(gesture.function) + "</Function><Memo>" +
           gesture.memo + "</Memo><EtcKey>" + gesture.keys + "</EtcKey>";
}

}  // namespace

std::string GestureProfile(const std::vector<GestureText>& gestures, const std::string& name) {
    std::vector<ProfileElement> elements{{"tbutton", "36"}};
    for (const GestureText& gesture : gestures) elements.emplace_back("Gesture", GestureElement(gesture));
    return ProfileText(name, elements);
}

std::vector<GestureText> ManyGestures(int count) {
    std::vector<GestureText> gestures;
    for (int i = 0; i < count; ++i) gestures.push_back({"U" + std::to_string(i), 1 + i % 30, std::to_string(i), ""});
    return gestures;
}

void GestureTest::OpenWith(const std::vector<GestureText>& gestures) {
    WriteProfiles({GestureProfile(gestures)});
    Open();
}

void GestureTest::Command(int control) const {
    PostMessageW(sheet->GesturePane(), WM_COMMAND, MAKEWPARAM(control, BN_CLICKED),
                 reinterpret_cast<LPARAM>(PaneButton(control)));
}

void GestureTest::ShowGestureTab() const {
    sheet->Run([this] { SendMessageW(sheet->PageControl(IDC_PAGE_TAB), TCM_SETCURFOCUS, 1, 0); });
}

HWND GestureTest::OpenEditorWindow() const {
    return FindTopLevelWindow([](HWND window) { return IsWindowVisible(window) && TitleOf(window) == kEditorTitle; });
}

HWND GestureTest::OpenEditor(int control) const {
    const HWND editor = OpenEditorWithTimer(control);
    sheet->Run([=] { KillTimer(editor, kCaptureTimer); });
    return editor;
}

HWND GestureTest::EditRow(int row) const {
    SelectRow(row);
    return OpenEditor(IDC_GESTURES_EDIT);
}

HWND GestureTest::OpenEditorWithTimer(int control) const {
    Command(control);
    const HWND editor = Await("the gesture editor", [this] { return OpenEditorWindow(); });
    sheet->Settle();
    return editor;
}

void GestureTest::CloseEditor(HWND editor, int button) const {
    PostMessageW(GetDlgItem(editor, button), BM_CLICK, 0, 0);
    Await("the end of the gesture editor", [=] { return !IsWindow(editor); });
    EXPECT_TRUE(sheet->IsQuiet());
}

void GestureTest::ExpectOkIgnored(HWND editor) const {
    PostMessageW(GetDlgItem(editor, IDOK), BM_CLICK, 0, 0);
    sheet->Settle();
    EXPECT_EQ(OpenMessageBox(), nullptr);
    EXPECT_TRUE(IsWindowVisible(editor));
}

std::wstring GestureTest::Stroke(HWND editor) const {
    sheet->Settle();
    return TextOf(GetDlgItem(editor, IDC_GESTURE_STROKE));
}

void GestureTest::ClickStroke(HWND editor) const {
    const HWND field = GetDlgItem(editor, IDC_GESTURE_STROKE);
    SendMessageW(editor, WM_COMMAND, MAKEWPARAM(IDC_GESTURE_STROKE, STN_CLICKED), reinterpret_cast<LPARAM>(field));
}

void GestureTest::ChooseFunction(HWND editor, int function) const {
    const HWND combo = GetDlgItem(editor, IDC_GESTURE_FUNCTION);
    sheet->Start([=] {
        SelectData(combo, function);
        SendMessageW(editor, WM_COMMAND, MAKEWPARAM(IDC_GESTURE_FUNCTION, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
    });
    sheet->Settle();
}

void GestureTest::TypeMemo(HWND editor, const std::wstring& memo) {
    SendDlgItemMessageW(editor, IDC_GESTURE_MEMO, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(memo.c_str()));
}

void GestureTest::HoldGestureButton(HWND editor) {
    SetCursorPos(kStrokeOrigin.x, kStrokeOrigin.y);
    service->ReplyTo(platform::ServiceMessage::IsButtonHeld, 1);
    Tick(editor);
}

void GestureTest::ReleaseGestureButton(HWND editor) {
    service->ReplyTo(platform::ServiceMessage::IsButtonHeld, 0);
    Tick(editor);
}

void GestureTest::Draw(HWND editor, const std::string& letters) {
    for (const char letter : letters) {
        const POINT step = StepOf(letter);
        for (int i = 0; i < kStepsOfLetter; ++i) {
            POINT cursor{};
            GetCursorPos(&cursor);
            SetCursorPos(cursor.x + step.x, cursor.y + step.y);
            Tick(editor);
        }
    }
}

void GestureTest::Record(HWND editor, const std::string& letters) {
    ClickStroke(editor);
    HoldGestureButton(editor);
    Draw(editor, letters);
    ReleaseGestureButton(editor);
}

HWND GestureTest::OverlayOf(HWND editor) {
    return FindTopLevelWindow([=](HWND window) {
        return GetWindow(window, GW_OWNER) == editor && (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_LAYERED) != 0;
    });
}

}  // namespace kvn::test
