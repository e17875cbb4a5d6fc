#include "platform/message_box.h"

#include <gtest/gtest.h>

#include <future>

#include "resources/resource.h"
#include "tests/support/message_box_watcher.h"
#include "tests/support/module_under_test.h"
#include "tests/support/replaced_import.h"

namespace kvn::test {
namespace {

constexpr UINT kNoSuchText = 9999;

class MessageBoxTest : public testing::Test {
protected:
    ModuleUnderTest module;
    platform::MessageBoxes boxes{module.Handle(), IDS_CAPTION};

    // Runs what shows a box in another thread and answers the box.
    template <typename Work>
    auto Answer(int button, Work work) {
        auto result = std::async(std::launch::async, work);
        seen = AnswerMessageBox("of the test", button);
        return result.get();
    }
    MessageBoxSeen seen;
};

TEST_F(MessageBoxTest, ShowsTextAndCaptionOfTheStringTable) {
    EXPECT_EQ(IDOK, Answer(IDOK, [&] { return boxes.Show(nullptr, IDS_SETTINGS_FAILED, MB_ICONEXCLAMATION); }));
    EXPECT_EQ(L"KORVEN mouse settings tool", seen.caption);
    EXPECT_EQ(L"Settings failed.", seen.text);
    EXPECT_EQ(static_cast<UINT>(MB_ICONEXCLAMATION), seen.icon);
}

TEST_F(MessageBoxTest, ReturnsTheUsersAnswer) {
    const auto ask = [&] { return boxes.Show(nullptr, IDS_CONFIRM_DELETE, MB_YESNO | MB_ICONQUESTION); };
    EXPECT_EQ(IDYES, Answer(IDYES, ask));
    EXPECT_EQ((std::vector<int>{IDYES, IDNO}), seen.buttons);
    EXPECT_EQ(static_cast<UINT>(MB_ICONQUESTION), seen.icon);
    EXPECT_EQ(IDNO, Answer(IDNO, ask));
    EXPECT_EQ(IDCANCEL, Answer(IDCANCEL, [&] { return boxes.Show(nullptr, IDS_CONFIRM_RESET, MB_OKCANCEL); }));
}

TEST_F(MessageBoxTest, ShowsNothingWithoutTextOrCaption) {
    EXPECT_EQ(0, boxes.Show(nullptr, kNoSuchText, MB_OK));
    const platform::MessageBoxes untitled(module.Handle(), kNoSuchText);
    EXPECT_EQ(0, untitled.Show(nullptr, IDS_SETTINGS_FAILED, MB_OK));
    EXPECT_EQ(0, untitled.ShowText(nullptr, L"text", MB_OK));
}

TEST_F(MessageBoxTest, TextAndCaptionAreCutAt1023Characters) {
    const std::wstring endless(1100, L'x');
    const ReplacedImport<"LoadStringW", decltype(LoadStringW)> longTexts(
        GetModuleHandleW(nullptr), [&](HINSTANCE, UINT, LPWSTR text, int) {
            *reinterpret_cast<const wchar_t**>(text) = endless.c_str();
            return static_cast<int>(endless.size());
        });
    ASSERT_TRUE(longTexts.IsInPlace());
    Answer(IDOK, [&] { return boxes.Show(nullptr, IDS_SETTINGS_FAILED, MB_OK); });
    EXPECT_EQ(1023U, seen.text.size());
    EXPECT_EQ(1023U, seen.caption.size());
}

TEST_F(MessageBoxTest, HundredthItemIsAllowed) {
    for (const int count : {0, 1, 50, 98, 99}) EXPECT_TRUE(boxes.AllowsAnotherItem(nullptr, count)) << count;
}

TEST_F(MessageBoxTest, HundredAndFirstItemIsRefused) {
    for (const int count : {100, 101, 5000}) {
        EXPECT_FALSE(Answer(IDOK, [&] { return boxes.AllowsAnotherItem(nullptr, count); })) << count;
        EXPECT_EQ(L"KORVEN mouse settings tool", seen.caption);
        EXPECT_EQ(L"It is not possible to register more than 100 items.", seen.text);
        EXPECT_EQ(static_cast<UINT>(MB_ICONEXCLAMATION), seen.icon);
        EXPECT_EQ(1U, seen.buttons.size());
    }
}

TEST_F(MessageBoxTest, LimitHoldsWhenItCannotBeExplained) {
    const platform::MessageBoxes untitled(module.Handle(), kNoSuchText);
    EXPECT_FALSE(untitled.AllowsAnotherItem(nullptr, 100));
}

}  // namespace
}  // namespace kvn::test
