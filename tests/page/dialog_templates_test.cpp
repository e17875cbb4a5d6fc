// What the templates of the dialogs fix beyond captions and controls: sizes, styles, default buttons, and which label
// belongs to which control.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/page/module_texts.h"
#include "tests/support/module_under_test.h"

namespace kvn::test {
namespace {

struct SizeRow {
    int dialog;
    int width, height;  // in dialog units
};
constexpr SizeRow kSizes[] = {{IDD_EDIT_PROFILE, 368, 315},
                              {IDD_PROFILE_NAME, 233, 67},
                              {IDD_SELECT_PROGRAM, 321, 249},
                              {IDD_REGISTER_PROGRAM, 316, 89}};

constexpr DWORD kListStyles = LVS_TYPEMASK | LVS_SHOWSELALWAYS | LVS_SINGLESEL | LVS_NOCOLUMNHEADER | WS_BORDER |
                              LVS_SORTASCENDING | LVS_SORTDESCENDING;
constexpr DWORD kPlainList = LVS_REPORT | LVS_SHOWSELALWAYS | WS_BORDER;
constexpr DWORD kComboTypeMask = CBS_SIMPLE | CBS_DROPDOWN | CBS_DROPDOWNLIST;
constexpr DWORD kComboStyles = kComboTypeMask | CBS_SORT;
constexpr DWORD kStrokeStyles = SS_NOTIFY | WS_BORDER;
constexpr DWORD kFieldStyles = ES_AUTOHSCROLL | ES_MULTILINE | ES_READONLY | WS_BORDER;

struct StyleRow {
    int dialog;
    int control;
    DWORD mask;
    DWORD style;
};
constexpr StyleRow kStyles[] = {
    {IDD_EDIT_PROFILE, IDC_PROFILES_LIST, kListStyles, kPlainList},
    {IDD_EDIT_PROFILE, IDC_PROFILES_PROGRAMS, kListStyles, kPlainList},
    {IDD_SELECT_PROGRAM, IDC_PROGRAMS_LIST, kListStyles, kPlainList | LVS_NOCOLUMNHEADER},
    {IDD_GESTURE_PANE, IDC_GESTURES_LIST, LVS_TYPEMASK | LVS_SHOWSELALWAYS | LVS_SINGLESEL,
     LVS_REPORT | LVS_SHOWSELALWAYS},
    {IDD_PROFILE_NAME, IDC_PROFILE_NAME, kFieldStyles, ES_AUTOHSCROLL | WS_BORDER},
    {IDD_REGISTER_PROGRAM, IDC_PROGRAM_PATH, SS_ELLIPSISMASK, SS_WORDELLIPSIS},
    {IDD_EDIT_GESTURE, IDC_GESTURE_STROKE, kStrokeStyles, kStrokeStyles},
    {IDD_EDIT_GESTURE, IDC_GESTURE_FUNCTION, kComboStyles, CBS_DROPDOWNLIST},
    {IDD_ARBITRARY_KEY, IDC_KEYS_INPUT1, kComboStyles, CBS_DROPDOWN},
    {IDD_ARBITRARY_KEY, IDC_KEYS_INPUT2, kComboStyles, CBS_DROPDOWN},
    {IDD_ARBITRARY_KEY, IDC_KEYS_INPUT3, kComboStyles, CBS_DROPDOWN},
};

struct LabelRow {
    int dialog;
    int control;
    const wchar_t* english;
    const wchar_t* japanese;
};
constexpr LabelRow kLabels[] = {
    {IDD_BUTTON_PANE, IDC_PANE_LEFT, L"Left button", L"左ボタン"},
    {IDD_BUTTON_PANE, IDC_PANE_RIGHT, L"Right button", L"右ボタン"},
    {IDD_BUTTON_PANE, IDC_PANE_CENTER, L"Center button", L"中央ボタン"},
    {IDD_BUTTON_PANE, IDC_PANE_BUTTON4, L"Button 4", L"ボタン 4"},
    {IDD_BUTTON_PANE, IDC_PANE_BUTTON5, L"Button 5", L"ボタン 5"},
    {IDD_BUTTON_PANE, IDC_PANE_TILT_LEFT, L"Tilt left", L"左チルト"},
    {IDD_BUTTON_PANE, IDC_PANE_TILT_RIGHT, L"Tilt right", L"右チルト"},
    {IDD_BUTTON_PANE, IDC_PANE_HORIZONTAL_SPEED, L"Horizontal scroll speed", L"水平スクロールの速度"},
    {IDD_BUTTON_PANE, IDC_PANE_REVOLUTION_COUNT, L"Number of revolutions", L"回転数"},
    {IDD_BUTTON_PANE, IDC_PANE_REVOLUTION_SPEED, L"Revolution speed:", L"回転速度:"},
    {IDD_BUTTON_PANE, IDC_PANE_FLYING_SPEED, L"Scroll speed:", L"スクロール速度:"},
    {IDD_EDIT_GESTURE, IDC_GESTURE_STROKE, L"Input gesture", L"ジェスチャの入力"},
    {IDD_EDIT_GESTURE, IDC_GESTURE_FUNCTION, L"Functions", L"機能"},
    {IDD_EDIT_GESTURE, IDC_GESTURE_MEMO, L"Instructions", L"説明"},
    {IDD_ARBITRARY_KEY, IDC_KEYS_INPUT1, L"Input 1:", L"入力 1:"},
    {IDD_ARBITRARY_KEY, IDC_KEYS_INPUT2, L"Input 2:", L"入力 2:"},
    {IDD_ARBITRARY_KEY, IDC_KEYS_INPUT3, L"Input 3:", L"入力 3:"},
    {IDD_EDIT_PROFILE, IDC_PROFILES_LIST, L"Profile", L"プロファイル"},
    {IDD_EDIT_PROFILE, IDC_PROFILES_PROGRAMS, L"Allocation program", L"割り当てるプログラム"},
    {IDD_PROFILE_NAME, IDC_PROFILE_NAME, L"Profile", L"プロファイル"},
};

// The ends of a trackbar's scale are no labels.
const std::set<std::wstring> kScaleEnds{L"Slow", L"Fast", L"遅く", L"速く"};

class DialogTemplatesTest : public testing::TestWithParam<WORD> {
protected:
    DialogTemplate Template(int dialog) const {
        return TemplateIn(module.Handle(), MAKEINTRESOURCEW(dialog), GetParam());
    }
    static std::vector<TemplateControl>::const_iterator Find(const DialogTemplate& dialog, int control) {
        return std::ranges::find(dialog.controls, control, &TemplateControl::id);
    }
    static std::set<int> DefaultButtons(const DialogTemplate& dialog) {
        std::set<int> ids;
        for (const TemplateControl& control : dialog.controls) {
            if (control.IsButton() && (control.style & BS_TYPEMASK) == BS_DEFPUSHBUTTON) ids.insert(control.id);
        }
        return ids;
    }
    // As a user sees it: the text directly above the control, or to its left in the same line.
    static std::wstring LabelBeside(const DialogTemplate& dialog, const TemplateControl& labelled) {
        for (const TemplateControl& label : dialog.controls) {
            if (!label.IsStatic() || label.text.empty()) continue;
            const bool isAbove = label.x == labelled.x && labelled.y - label.y > 0 && labelled.y - label.y <= 12;
            const bool isLeft =
                label.x + label.width <= labelled.x && label.y >= labelled.y && label.y < labelled.y + 14;
            if ((isAbove || isLeft) && !kScaleEnds.contains(label.text)) return label.text;
        }
        return {};
    }

    ModuleUnderTest module;
};

INSTANTIATE_TEST_SUITE_P(Languages, DialogTemplatesTest, testing::ValuesIn(kLanguages));

TEST_P(DialogTemplatesTest, HaveTheirSizesAndTheShellsFont) {
    for (const SizeRow& row : kSizes) {
        const DialogTemplate dialog = Template(row.dialog);
        EXPECT_EQ(dialog.width, row.width) << row.dialog;
        EXPECT_EQ(dialog.height, row.height) << row.dialog;
        EXPECT_EQ(dialog.fontFace, L"MS Shell Dlg") << row.dialog;
    }
}

TEST_P(DialogTemplatesTest, OkIsTheDefaultButtonExceptInTheKeyDialogAndThePanes) {
    for (const int dialog :
         {IDD_EDIT_PROFILE, IDD_PROFILE_NAME, IDD_SELECT_PROGRAM, IDD_REGISTER_PROGRAM, IDD_EDIT_GESTURE}) {
        EXPECT_EQ(DefaultButtons(Template(dialog)), std::set<int>{IDOK}) << dialog;
    }
    for (const int dialog : {IDD_ARBITRARY_KEY, IDD_BUTTON_PANE, IDD_GESTURE_PANE}) {
        EXPECT_EQ(DefaultButtons(Template(dialog)), std::set<int>{}) << dialog;
    }
}

TEST_P(DialogTemplatesTest, ControlsHaveTheirStyles) {
    for (const StyleRow& row : kStyles) {
        const DialogTemplate dialog = Template(row.dialog);
        const auto control = Find(dialog, row.control);
        ASSERT_NE(control, dialog.controls.end()) << row.dialog << " " << row.control;
        EXPECT_EQ(control->style & row.mask, row.style) << row.dialog << " " << row.control;
    }
}

TEST_P(DialogTemplatesTest, TheTrailIsABarePopup) {
    const DialogTemplate trail = Template(IDD_GESTURE_TRAIL);
    EXPECT_EQ(trail.style & 0xFFFF0000U, static_cast<DWORD>(WS_POPUP | WS_SYSMENU));
    EXPECT_TRUE(trail.controls.empty());
    EXPECT_EQ(trail.caption, L"");
}

TEST_P(DialogTemplatesTest, EachControlIsReadAndSeenWithItsOwnLabel) {
    const bool isEnglish = GetParam() == kEnglish;
    for (const LabelRow& row : kLabels) {
        const DialogTemplate dialog = Template(row.dialog);
        const auto control = Find(dialog, row.control);
        ASSERT_TRUE(control != dialog.controls.end() && control != dialog.controls.begin());
        const std::wstring label = isEnglish ? row.english : row.japanese;
        EXPECT_EQ(std::prev(control)->text, label) << row.control;
        if (row.control == IDC_PANE_HORIZONTAL_SPEED) continue;  // stands in a group box of its own
        EXPECT_EQ(LabelBeside(dialog, *control), label) << row.control;
    }
}

}  // namespace
}  // namespace kvn::test
