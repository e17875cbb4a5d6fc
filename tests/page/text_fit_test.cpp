// No text of a dialog is cut off: each is measured in the fonts that Windows may put in the dialogs' place, at the
// screen's usual scales, against the control's size, which grows with the font, or against a column's width, which
// does not.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <tuple>
#include <vector>

#include "resources/resource.h"
#include "tests/page/module_texts.h"
#include "tests/page/screen_scales.h"
#include "tests/support/module_under_test.h"
#include "tests/support/owning_types.h"

namespace kvn::test {
namespace {

struct Face {
    WORD language;
    const wchar_t* name;
};
// English also shows in a Japanese font, on a Japanese Windows whose user reads English.
constexpr Face kFaces[] = {{kEnglish, L"Tahoma"},
                           {kEnglish, L"DejaVu Sans"},
                           {kEnglish, L"IPAPGothic"},
                           {kJapanese, L"IPAPGothic"},
                           {kJapanese, L"IPAGothic"}};

// Pixels at 96 dots per inch that a control keeps for itself beside its text.
constexpr int kButtonEdges = 8;
constexpr int kGroupBoxEdges = 18;
constexpr int kTabEdges = 16;
constexpr int kTabBarEdges = 4;

// A column of a list, with the dialog whose font the list has. Its width is the same at every scale.
struct Column {
    WORD dialog;
    UINT titleId;
    int width;  // pixels
};
constexpr Column kColumns[] = {
    {IDD_GESTURE_PANE, IDS_COLUMN_GESTURE, 70},      {IDD_GESTURE_PANE, IDS_COLUMN_FUNCTION, 125},
    {IDD_GESTURE_PANE, IDS_COLUMN_MEMO, 172},        {IDD_EDIT_PROFILE, IDS_COLUMN_PROFILE, 380},
    {IDD_EDIT_PROFILE, IDS_COLUMN_FILE_NAME, 150},   {IDD_EDIT_PROFILE, IDS_COLUMN_LOCATION, 230},
    {IDD_SELECT_PROGRAM, IDS_COLUMN_FILE_NAME, 300},  // hidden, but known to screen readers
    {IDD_SELECT_PROGRAM, IDS_COLUMN_LOCATION, 400}};

// Heading, width of its column, font, dots per inch.
using CutHeading = std::tuple<std::wstring, int, std::wstring, int>;
// The English heading is too long for its column on large scales: other programs know both the text and the width. It
// ends in dots there; the user can widen the column.
const std::set<CutHeading> kCutHeadings{{L"Gesture", 70, L"DejaVu Sans", 144},
                                        {L"Gesture", 70, L"DejaVu Sans", 192},
                                        {L"Gesture", 70, L"IPAPGothic", 144},
                                        {L"Gesture", 70, L"IPAPGothic", 192},
                                        {L"Gesture", 70, L"Tahoma", 192}};

// The screen's drawing context with a font, and how long a dialog unit is in that font.
class MeasuringFont {
public:
    MeasuringFont(const wchar_t* faceName, int points, int dotsPerInch)
        : font(CreateFontW(-MulDiv(points, dotsPerInch, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                           OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, faceName)),
          context(CreateCompatibleDC(nullptr)) {
        SelectObject(context.Get(), font.Get());
        TEXTMETRICW metrics{};
        GetTextMetricsW(context.Get(), &metrics);
        heightUnit = metrics.tmHeight;
        constexpr wchar_t kAlphabet[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
        SIZE size{};
        GetTextExtentPoint32W(context.Get(), kAlphabet, 52, &size);
        widthUnit = (size.cx / 26 + 1) / 2;
    }

    std::wstring Face() const {
        wchar_t name[LF_FACESIZE]{};
        GetTextFaceW(context.Get(), LF_FACESIZE, name);
        return name;
    }
    SIZE Extent(const std::wstring& text) const {
        RECT area{};
        DrawTextW(context.Get(), text.c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE);
        return {area.right, area.bottom};
    }
    // Whether the font has every character of the text.
    bool Has(const std::wstring& text) const {
        std::vector<WORD> glyphs(text.size());
        GetGlyphIndicesW(context.Get(), text.c_str(), static_cast<int>(text.size()), glyphs.data(),
                         GGI_MARK_NONEXISTING_GLYPHS);
        return std::find(glyphs.begin(), glyphs.end(), WORD{0xFFFF}) == glyphs.end();
    }
    int Width(int dialogUnits) const { return MulDiv(dialogUnits, widthUnit, 4); }
    int Height(int dialogUnits) const { return MulDiv(dialogUnits, heightUnit, 8); }

private:
    UniqueFont font;
    UniqueMemoryContext context;
    int widthUnit = 0;
    int heightUnit = 0;
};

int EdgesOf(const TemplateControl& control) {
    if (control.IsGroupBox()) return kGroupBoxEdges;
    return control.IsButton() ? kButtonEdges : 0;
}

class TextFitTest : public testing::Test {
protected:
    // The font that a dialog has where Windows puts this face in the place of the dialog's own.
    MeasuringFont FontOf(LPCWSTR dialog, const Face& face, int scale) const {
        return {face.name, TemplateIn(module.Handle(), dialog, face.language).fontPoints, scale};
    }

    ModuleUnderTest module;
};

TEST_F(TextFitTest, EveryTextOfADialogFitsItsControlInEveryFontAndScale) {
    for (const Face& face : kFaces) {
        for (const int scale : kScales) {
            for (const LPCWSTR name : kDialogNames) {
                SCOPED_TRACE(DialogName(name) + " in " + testing::PrintToString(face.name) + " at " +
                             std::to_string(scale));
                const DialogTemplate dialog = TemplateIn(module.Handle(), name, face.language);
                if (dialog.fontPoints == 0) continue;  // the trail, which has no text
                EXPECT_EQ(dialog.fontFace, L"MS Shell Dlg");
                const MeasuringFont font(face.name, dialog.fontPoints, scale);
                ASSERT_EQ(font.Face(), face.name) << "the font is not installed";
                for (const TemplateControl& control : dialog.controls) {
                    const bool isShown = control.IsStatic() || control.IsButton();
                    if (!isShown || control.text.empty()) continue;
                    const SIZE extent = font.Extent(control.text);
                    EXPECT_TRUE(font.Has(control.text));
                    EXPECT_LE(extent.cx + MulDiv(EdgesOf(control), scale, 96), font.Width(control.width))
                        << testing::PrintToString(control.text);
                    EXPECT_LE(extent.cy, font.Height(control.height)) << testing::PrintToString(control.text);
                }
            }
        }
    }
}

TEST_F(TextFitTest, NoOtherHeadingIsCutThanThoseWhoseColumnsCannotGrow) {
    // A header keeps this much on either side of its text, at every scale.
    const int margin = 3 * GetSystemMetrics(SM_CXEDGE);
    std::set<CutHeading> cut;
    for (const Face& face : kFaces) {
        const std::map<UINT, std::wstring> texts = TextsIn(module.Handle(), face.language);
        for (const int scale : kScales) {
            for (const Column& column : kColumns) {
                const MeasuringFont font = FontOf(MAKEINTRESOURCEW(column.dialog), face, scale);
                ASSERT_EQ(font.Face(), face.name) << "the font is not installed";
                const std::wstring& title = texts.at(column.titleId);
                EXPECT_TRUE(font.Has(title)) << testing::PrintToString(title);
                if (font.Extent(title).cx + 2 * margin > column.width) {
                    cut.insert({title, column.width, face.name, scale});
                }
            }
        }
    }
    EXPECT_EQ(cut, kCutHeadings);
}

TEST_F(TextFitTest, BothTabsFitInOneRowWithoutArrowsInEveryFontAndScale) {
    for (const Face& face : kFaces) {
        const DialogTemplate page = TemplateIn(module.Handle(), kDialogNames[0], face.language);
        const auto tab = std::find_if(page.controls.begin(), page.controls.end(),
                                      [](const TemplateControl& control) { return control.id == IDC_PAGE_TAB; });
        ASSERT_NE(tab, page.controls.end());
        const std::map<UINT, std::wstring> texts = TextsIn(module.Handle(), face.language);
        for (const int scale : kScales) {
            SCOPED_TRACE(testing::PrintToString(face.name) + " at " + std::to_string(scale));
            const MeasuringFont font = FontOf(kDialogNames[0], face, scale);
            ASSERT_EQ(font.Face(), face.name) << "the font is not installed";
            LONG width = MulDiv(kTabBarEdges, scale, 96);
            for (const UINT id : {IDS_TAB_BUTTONS, IDS_TAB_GESTURES}) {
                EXPECT_TRUE(font.Has(texts.at(id))) << testing::PrintToString(texts.at(id));
                width += font.Extent(texts.at(id)).cx + MulDiv(kTabEdges, scale, 96);
            }
            EXPECT_LE(width, font.Width(tab->width));
        }
    }
}

}  // namespace
}  // namespace kvn::test
