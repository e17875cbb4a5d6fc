// Drop-down lists are wide enough for their longest text, however long it became and however large the font is.
#include <windows.h>

#include <algorithm>

#include "platform/device_context.h"
#include "tests/page/screen_scales.h"
#include "tests/support/gesture_fixture.h"
#include "tests/support/owning_types.h"

namespace kvn::test {
namespace {

constexpr char kLongKeys[] = "Left Windows+Right Windows+Application key";

// While it lives, the combo box has its font in the size of another scale of the screen.
class ScaledFont {
public:
    ScaledFont(HWND comboBox, int dotsPerInch)
        : combo(comboBox), previous(reinterpret_cast<HFONT>(SendMessageW(combo, WM_GETFONT, 0, 0))) {
        LOGFONTW description{};
        GetObjectW(previous, sizeof description, &description);
        description.lfHeight = MulDiv(description.lfHeight, dotsPerInch, USER_DEFAULT_SCREEN_DPI);
        scaled.Reset(CreateFontIndirectW(&description));
        SendMessageW(combo, WM_SETFONT, reinterpret_cast<WPARAM>(scaled.Get()), FALSE);
    }
    ScaledFont(const ScaledFont&) = delete;
    ScaledFont& operator=(const ScaledFont&) = delete;
    ~ScaledFont() { SendMessageW(combo, WM_SETFONT, reinterpret_cast<WPARAM>(previous), FALSE); }

private:
    HWND combo;
    HFONT previous;
    UniqueFont scaled;
};

class DropListTest : public GestureTest {
protected:
    // Opens the list at every scale and expects that its rows have room for every text; closes it again.
    void ExpectRoomForAllTexts(HWND combo) const {
        for (const int scale : kScales) {
            SCOPED_TRACE(scale);
            LONG room = 0;
            LONG longest = 0;
            LONG field = 0;
            sheet->Run([&] {
                const ScaledFont font(combo, scale);
                SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
                COMBOBOXINFO info{};
                info.cbSize = sizeof info;
                GetComboBoxInfo(combo, &info);
                RECT row{};
                SendMessageW(info.hwndList, LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
                room = row.right - row.left;
                field = info.rcItem.right - info.rcItem.left;
                longest = LongestText(combo);
                SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
            });
            EXPECT_GT(longest, field) << "the combo box alone would have been wide enough";
            EXPECT_LE(longest, room);
        }
    }

private:
    static LONG LongestText(HWND combo) {
        const platform::WindowDeviceContext context(combo);
        const platform::SelectedObject font(context.Get(),
                                            reinterpret_cast<HFONT>(SendMessageW(combo, WM_GETFONT, 0, 0)));
        LONG longest = 0;
        for (const ComboEntry& entry : EntriesOf(combo)) {
            SIZE size{};
            GetTextExtentPoint32W(context.Get(), entry.text.c_str(), static_cast<int>(entry.text.size()), &size);
            longest = std::max(longest, size.cx);
        }
        return longest;
    }
};

TEST_F(DropListTest, ChoosersShowWholeKeyCombinations) {
    WriteProfiles({ProfileText("Default", {{"button4", "37"}, {"button4_etcKey", kLongKeys}})});
    Open();
    ExpectRoomForAllTexts(sheet->PaneControl(IDC_PANE_BUTTON4));
}

TEST_F(DropListTest, GestureEditorShowsWholeKeyCombinations) {
    OpenWith({{"U", 37, "", kLongKeys}});
    const HWND editor = EditRow(0);
    ExpectRoomForAllTexts(GetDlgItem(editor, IDC_GESTURE_FUNCTION));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(DropListTest, ProfilesShowWholeNames) {
    WriteProfiles({ProfileText("Default"), ProfileText(std::string(40, 'W'))});
    Open();
    ExpectRoomForAllTexts(sheet->PageControl(IDC_PAGE_PROFILE));
}

TEST_F(DropListTest, IsNotWiderThanTheScreen) {
    WriteProfiles({ProfileText("Default"), ProfileText(std::string(250, 'W'))});
    Open();
    const HWND combo = sheet->PageControl(IDC_PAGE_PROFILE);
    sheet->Run([=] { SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0); });
    EXPECT_EQ(SendMessageW(combo, CB_GETDROPPEDWIDTH, 0, 0), GetSystemMetrics(SM_CXSCREEN));
    sheet->Run([=] { SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0); });
}

}  // namespace
}  // namespace kvn::test
