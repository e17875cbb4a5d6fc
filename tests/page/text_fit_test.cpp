// No text of a dialog is cut off: each is measured in the fonts that Windows may put in the dialogs' place, at the
// screen's usual scales, against the control's size, which grows with the font.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/page/module_texts.h"
#include "tests/support/module_under_test.h"

namespace kvn::test {
namespace {

constexpr int kScales[] = {96, 120, 144, 192};  // dots per inch

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

// The screen's drawing context with a font, and how long a dialog unit is in that font.
class MeasuringFont {
public:
    MeasuringFont(const wchar_t* faceName, int points, int dotsPerInch)
        : context(CreateCompatibleDC(nullptr)),
          font(CreateFontW(-MulDiv(points, dotsPerInch, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                           OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, faceName)) {
        SelectObject(context, font);
        TEXTMETRICW metrics{};
        GetTextMetricsW(context, &metrics);
        heightUnit = metrics.tmHeight;
        constexpr wchar_t kAlphabet[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
        SIZE size{};
        GetTextExtentPoint32W(context, kAlphabet, 52, &size);
        widthUnit = (size.cx / 26 + 1) / 2;
    }
    MeasuringFont(const MeasuringFont&) = delete;
    MeasuringFont& operator=(const MeasuringFont&) = delete;
    ~MeasuringFont() {
        DeleteDC(context);
        DeleteObject(font);
    }

    std::wstring Face() const {
        wchar_t name[LF_FACESIZE]{};
        GetTextFaceW(context, LF_FACESIZE, name);
        return name;
    }
    SIZE Extent(const std::wstring& text) const {
        RECT area{};
        DrawTextW(context, text.c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE);
        return {area.right, area.bottom};
    }
    // Whether the font has every character of the text.
    bool Has(const std::wstring& text) const {
        std::vector<WORD> glyphs(text.size());
        GetGlyphIndicesW(context, text.c_str(), static_cast<int>(text.size()), glyphs.data(),
                         GGI_MARK_NONEXISTING_GLYPHS);
        return std::find(glyphs.begin(), glyphs.end(), WORD{0xFFFF}) == glyphs.end();
    }
    int Width(int dialogUnits) const { return MulDiv(dialogUnits, widthUnit, 4); }
    int Height(int dialogUnits) const { return MulDiv(dialogUnits, heightUnit, 8); }

private:
    HDC context;
    HFONT font;
    int widthUnit = 0;
    int heightUnit = 0;
};

int EdgesOf(const TemplateControl& control) {
    if (control.IsGroupBox()) return kGroupBoxEdges;
    return control.IsButton() ? kButtonEdges : 0;
}

class TextFitTest : public testing::Test {
protected:
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
                EXPECT_EQ(L"MS Shell Dlg", dialog.fontFace);
                const MeasuringFont font(face.name, dialog.fontPoints, scale);
                ASSERT_EQ(face.name, font.Face()) << "the font is not installed";
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

}  // namespace
}  // namespace kvn::test
