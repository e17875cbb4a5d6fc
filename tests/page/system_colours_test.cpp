// The page and its dialogs take the user's colours, as users of high contrast need.
#include <windows.h>

#include <commctrl.h>
#include <uxtheme.h>

#include <array>

#include "platform/device_context.h"
#include "platform/unique_resource.h"
#include "tests/support/gesture_fixture.h"
#include "tests/support/owning_types.h"

namespace kvn::test {
namespace {

constexpr COLORREF kDialogGround = RGB(40, 0, 60);
constexpr COLORREF kWindowGround = RGB(0, 20, 0);
constexpr COLORREF kWindowText = RGB(255, 255, 0);

// Sets other system colours for as long as it lives.
class ChangedColours {
public:
    ChangedColours() {
        for (std::size_t i = 0; i < kElements.size(); ++i) before[i] = GetSysColor(kElements[i]);
        Set(kChanged);
    }
    ~ChangedColours() { Set(before); }
    ChangedColours(const ChangedColours&) = delete;
    ChangedColours& operator=(const ChangedColours&) = delete;

private:
    static void Set(const std::array<COLORREF, 3>& values) {
        SetSysColors(static_cast<int>(values.size()), kElements.data(), values.data());
        // The common controls cache the colours.
        const UniqueWindow list(
            CreateWindowExW(0, WC_LISTVIEWW, nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr));
        SendMessageW(list.Get(), WM_SYSCOLORCHANGE, 0, 0);
    }

    static constexpr std::array<int, 3> kElements{COLOR_BTNFACE, COLOR_WINDOW, COLOR_WINDOWTEXT};
    static constexpr std::array<COLORREF, 3> kChanged{kDialogGround, kWindowGround, kWindowText};
    std::array<COLORREF, 3> before{};
};

class SystemColoursTest : public GestureTest {
protected:
    // The colour that the window paints at a point of its client area, by its own messages.
    COLORREF PaintedAt(HWND window, POINT point) const {
        COLORREF colour = CLR_INVALID;
        sheet->Run([&] {
            RECT area{};
            GetClientRect(window, &area);
            const platform::WindowDeviceContext screen(nullptr);
            const platform::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), area.right, area.bottom));
            const UniqueMemoryContext memory(CreateCompatibleDC(screen.Get()));
            const HDC context = memory.Get();
            const platform::SelectedObject selected(context, bitmap.Get());
            SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0);
            SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(context), PRF_CLIENT | PRF_ERASEBKGND);
            colour = GetPixel(context, point.x, point.y);
        });
        return colour;
    }
    static POINT LowerRight(HWND window) {
        RECT area{};
        GetClientRect(window, &area);
        return {area.right - 3, area.bottom - 3};
    }
    // The colours that a dialog gives a control: background, text, and the brush behind it.
    struct Colours {
        COLORREF ground, text;
        LRESULT brush;
    };
    Colours ColoursOf(UINT message, HWND control) const {
        Colours colours{};
        sheet->Run([&] {
            const platform::WindowDeviceContext itsContext(control);
            const HDC context = itsContext.Get();
            colours.brush = SendMessageW(GetParent(control), message, reinterpret_cast<WPARAM>(context),
                                         reinterpret_cast<LPARAM>(control));
            colours.ground = GetBkColor(context);
            colours.text = GetTextColor(context);
        });
        return colours;
    }

    const ChangedColours changedColours;
};

TEST_F(SystemColoursTest, PageAndPanesHaveTheBackgroundOfDialogs) {
    Open();
    // The sheet paints its theme's texture over the page. High contrast has no texture.
    EnableThemeDialogTexture(sheet->Page(), ETDT_DISABLE);
    for (const HWND window : {sheet->Page(), sheet->ButtonPane(), sheet->GesturePane()}) {
        EXPECT_EQ(PaintedAt(window, LowerRight(window)), kDialogGround);
    }
}

TEST_F(SystemColoursTest, ListsHaveTheColoursOfWindows) {
    OpenWith(kTwoGestures);
    ShowGestureTab();
    for (const UINT message : {LVM_GETBKCOLOR, LVM_GETTEXTBKCOLOR}) {
        const auto ground = static_cast<COLORREF>(SendMessageW(List(), message, 0, 0));
        EXPECT_TRUE(ground == CLR_DEFAULT || ground == kWindowGround) << std::hex << ground;
    }
    const auto text = static_cast<COLORREF>(SendMessageW(List(), LVM_GETTEXTCOLOR, 0, 0));
    EXPECT_TRUE(text == CLR_DEFAULT || text == kWindowText) << std::hex << text;
    EXPECT_EQ(PaintedAt(List(), LowerRight(List())), kWindowGround);
}

TEST_F(SystemColoursTest, FieldForTheStrokeHasTheColoursOfWindows) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    const Colours shown = ColoursOf(WM_CTLCOLORSTATIC, GetDlgItem(editor, IDC_GESTURE_STROKE));
    EXPECT_EQ(shown.ground, kWindowGround);
    EXPECT_EQ(shown.text, kWindowText);
    EXPECT_EQ(shown.brush, reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW)));
    EXPECT_EQ(PaintedAt(editor, LowerRight(editor)), kDialogGround);
    CloseEditor(editor, IDCANCEL);
}

}  // namespace
}  // namespace kvn::test
