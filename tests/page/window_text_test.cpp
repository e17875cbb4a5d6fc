// Texts of windows and where they are cut.
#include "platform/window_text.h"

#include <gtest/gtest.h>

#include "platform/unique_resource.h"
#include "tests/page/surrogates.h"
#include "tests/support/owning_types.h"

namespace kvn::test {
namespace {

class WindowTextTest : public testing::Test {
protected:
    std::wstring TextAtMost(int maxLength, const std::wstring& text) const {
        SetWindowTextW(window, text.c_str());
        return platform::WindowText(window, maxLength);
    }

private:
    const UniqueWindow owned{
        CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr)};

protected:
    const HWND window = owned.Get();
};

TEST_F(WindowTextTest, KeepsHalfAPairThatEndsATextOfExactlyTheLimit) {
    const std::wstring half = std::wstring(4, L'a') + kHighSurrogate;
    EXPECT_EQ(TextAtMost(5, half), half);
    EXPECT_EQ(TextAtMost(6, half), half);
}

TEST_F(WindowTextTest, CutsNoPairInTwo) {
    const std::wstring letters(4, L'a');
    EXPECT_EQ(TextAtMost(5, letters + kHighSurrogate + kLowSurrogate), letters);
    EXPECT_EQ(TextAtMost(6, letters + kHighSurrogate + kLowSurrogate + L'b'), letters + kHighSurrogate + kLowSurrogate);
    EXPECT_EQ(TextAtMost(4, letters + L"b"), letters);
}

TEST_F(WindowTextTest, IsEmptyWithoutAWindow) {
    EXPECT_EQ(platform::WindowText(nullptr, 5), L"");
}

}  // namespace
}  // namespace kvn::test
