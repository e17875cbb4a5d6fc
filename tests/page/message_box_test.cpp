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

    // Shows a box on another thread, and answers it.
    template <typename Work>
    auto Answer(int button, Work work) {
        auto result = std::async(std::launch::async, work);
        seen = AnswerMessageBox("of the test", button);
        return result.get();
    }
    MessageBoxSeen seen;
};

TEST_F(MessageBoxTest, ShowsTextAndCaptionOfTheStringTable) {
    EXPECT_EQ(Answer(IDOK, [&] { return boxes.Show(nullptr, IDS_SETTINGS_FAILED, MB_ICONEXCLAMATION); }), IDOK);
    EXPECT_EQ(seen.caption, L"KORVEN mouse settings tool");
    EXPECT_EQ(seen.text, L"Settings failed.");
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONEXCLAMATION));
}

TEST_F(MessageBoxTest, ReturnsTheUsersAnswer) {
    const auto ask = [&] { return boxes.Show(nullptr, IDS_CONFIRM_DELETE, MB_YESNO | MB_ICONQUESTION); };
    EXPECT_EQ(Answer(IDYES, ask), IDYES);
    EXPECT_EQ(seen.buttons, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONQUESTION));
    EXPECT_EQ(Answer(IDNO, ask), IDNO);
    EXPECT_EQ(Answer(IDCANCEL, [&] { return boxes.Show(nullptr, IDS_CONFIRM_RESET, MB_OKCANCEL); }), IDCANCEL);
}

TEST_F(MessageBoxTest, EnterConfirmsADeletion) {
    UINT shown = 0;
    const ReplacedImport<"MessageBoxW", decltype(MessageBoxW)> box(GetModuleHandleW(nullptr),
                                                                   [&](HWND, LPCWSTR, LPCWSTR, UINT style) {
                                                                       shown = style;
                                                                       return IDYES;
                                                                   });
    ASSERT_TRUE(box.IsInPlace());
    EXPECT_TRUE(boxes.ConfirmDeletion(nullptr));
    EXPECT_EQ(shown, static_cast<UINT>(MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON1));
}

TEST_F(MessageBoxTest, ShowsNothingWithoutTextOrCaption) {
    EXPECT_EQ(boxes.Show(nullptr, kNoSuchText, MB_OK), 0);
    const platform::MessageBoxes untitled(module.Handle(), kNoSuchText);
    EXPECT_EQ(untitled.Show(nullptr, IDS_SETTINGS_FAILED, MB_OK), 0);
    EXPECT_EQ(untitled.ShowText(nullptr, L"text", MB_OK), 0);
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
    EXPECT_EQ(seen.text.size(), 1023U);
    EXPECT_EQ(seen.caption.size(), 1023U);
}

TEST_F(MessageBoxTest, HundredthItemIsAllowed) {
    for (const int count : {0, 1, 50, 98, 99}) EXPECT_TRUE(boxes.AllowsAnotherItem(nullptr, count)) << count;
}

TEST_F(MessageBoxTest, HundredAndFirstItemIsRefused) {
    for (const int count : {100, 101, 5000}) {
        EXPECT_FALSE(Answer(IDOK, [&] { return boxes.AllowsAnotherItem(nullptr, count); })) << count;
        EXPECT_EQ(seen.caption, L"KORVEN mouse settings tool");
        EXPECT_EQ(seen.text, L"It is not possible to register more than 100 items.");
        EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONEXCLAMATION));
        EXPECT_EQ(seen.buttons.size(), 1U);
    }
}

TEST_F(MessageBoxTest, LimitHoldsEvenIfItsMessageCannotBeShown) {
    const platform::MessageBoxes untitled(module.Handle(), kNoSuchText);
    EXPECT_FALSE(untitled.AllowsAnotherItem(nullptr, 100));
}

}  // namespace
}  // namespace kvn::test
