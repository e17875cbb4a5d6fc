// What screen readers and keyboard users need in every dialog: labels, unambiguous ids, and a place for each control.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>

#include "tests/page/module_texts.h"
#include "tests/support/module_under_test.h"

namespace kvn::test {
namespace {

// Classes of controls without a text that could be read out.
const std::set<std::wstring> kLabelledClasses{L"COMBOBOX", L"EDIT", L"SYSLISTVIEW32", L"MSCTLS_TRACKBAR32"};

// A control without a label beside it has its name as an invisible text.
bool BearsItsName(const TemplateControl& control) {
    return control.className == L"SYSLISTVIEW32" && !control.text.empty();
}

bool IsLabel(const TemplateControl& control) {
    return !control.text.empty() && (control.IsStatic() || control.IsGroupBox());
}

RECT PlaceOf(const TemplateControl& control) {
    // A combo box's height includes its list; the closed field is as high as an edit box.
    constexpr LONG kComboFieldHeight = 14;
    const LONG height = control.className == L"COMBOBOX" ? kComboFieldHeight : control.height;
    return {control.x, control.y, control.x + control.width, control.y + height};
}

bool Contains(const RECT& outer, const RECT& inner) {
    return outer.left <= inner.left && outer.top <= inner.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

class AccessibilityTest : public testing::Test {
protected:
    // Does the work for each dialog in each language.
    template <typename Work>
    void ForEachDialog(Work&& work) const {
        for (const LPCWSTR dialog : kDialogNames) {
            for (const WORD language : kLanguages) {
                SCOPED_TRACE(DialogName(dialog) + (language == kEnglish ? " in English" : " in Japanese"));
                work(TemplateIn(module.Handle(), dialog, language));
            }
        }
    }

    ModuleUnderTest module;
};

TEST_F(AccessibilityTest, EveryControlWithoutATextOfItsOwnHasItsLabelDirectlyBefore) {
    int labelled = 0;
    ForEachDialog([&](const DialogTemplate& dialog) {
        for (std::size_t i = 0; i < dialog.controls.size(); ++i) {
            const TemplateControl& control = dialog.controls[i];
            if (!kLabelledClasses.contains(control.className) || BearsItsName(control)) continue;
            ASSERT_GT(i, 0U) << control.id;
            EXPECT_TRUE(IsLabel(dialog.controls[i - 1])) << control.id;
            ++labelled;
        }
    });
    EXPECT_EQ(labelled, 42);  // 21 controls, each in two languages
}

TEST_F(AccessibilityTest, NoLabelServesTwoControls) {
    ForEachDialog([](const DialogTemplate& dialog) {
        for (std::size_t i = 1; i < dialog.controls.size(); ++i) {
            const bool areBothLabelled = kLabelledClasses.contains(dialog.controls[i].className) &&
                                         kLabelledClasses.contains(dialog.controls[i - 1].className);
            EXPECT_FALSE(areBothLabelled) << dialog.controls[i].id;
        }
    });
}

TEST_F(AccessibilityTest, EveryButtonHasAText) {
    ForEachDialog([](const DialogTemplate& dialog) {
        for (const TemplateControl& control : dialog.controls) {
            EXPECT_FALSE(control.IsButton() && control.text.empty()) << control.id;
        }
    });
}

TEST_F(AccessibilityTest, NoIdIsUsedTwiceInADialog) {
    ForEachDialog([](const DialogTemplate& dialog) {
        std::set<int> ids;
        for (const TemplateControl& control : dialog.controls) {
            EXPECT_TRUE(control.id == -1 || ids.insert(control.id).second) << control.id;
        }
    });
}

TEST_F(AccessibilityTest, ControlsThatTakeTheFocusAreTabStopsAndNothingElseIs) {
    ForEachDialog([](const DialogTemplate& dialog) {
        for (const TemplateControl& control : dialog.controls) {
            const bool takesFocus = !control.IsStatic() && !control.IsGroupBox();
            EXPECT_EQ((control.style & WS_TABSTOP) != 0, takesFocus) << control.id;
        }
    });
}

TEST_F(AccessibilityTest, ControlsLieInTheirDialogAndDoNotOverlap) {
    ForEachDialog([](const DialogTemplate& dialog) {
        const RECT all{0, 0, dialog.width, dialog.height};
        for (std::size_t i = 0; i < dialog.controls.size(); ++i) {
            const TemplateControl& one = dialog.controls[i];
            EXPECT_TRUE(Contains(all, PlaceOf(one))) << one.id << " " << testing::PrintToString(one.text);
            for (std::size_t j = i + 1; j < dialog.controls.size(); ++j) {
                const TemplateControl& other = dialog.controls[j];
                RECT common{};
                const RECT place = PlaceOf(one);
                const RECT otherPlace = PlaceOf(other);
                const bool isInGroup = (one.IsGroupBox() && Contains(place, otherPlace)) ||
                                       (other.IsGroupBox() && Contains(otherPlace, place));
                if (isInGroup) continue;
                EXPECT_FALSE(IntersectRect(&common, &place, &otherPlace))
                    << one.id << " " << testing::PrintToString(one.text) << " and " << other.id << " "
                    << testing::PrintToString(other.text);
            }
        }
    });
}

}  // namespace
}  // namespace kvn::test
