#include "service/input/key_sending.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/unique_resource.h"
#include "tests/service_input/recorder_window.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

struct SeenKey {
    DWORD key = 0;
    DWORD scanCode = 0;
    bool isExtended = false;

    friend bool operator==(const SeenKey&, const SeenKey&) = default;
};

std::vector<SeenKey> seen;

LRESULT CALLBACK OnKey(int code, WPARAM message, LPARAM details) {
    const auto& key = *reinterpret_cast<const KBDLLHOOKSTRUCT*>(details);
    if (code == HC_ACTION) seen.push_back({key.vkCode, key.scanCode, (key.flags & LLKHF_EXTENDED) != 0});
    return CallNextHookEx(nullptr, code, message, details);
}

// The first of the two messages of a key that is pressed and released.
SeenKey KeyThatArrives(WORD key) {
    const platform::Owned<HHOOK, &UnhookWindowsHookEx> hook(
        SetWindowsHookExW(WH_KEYBOARD_LL, OnKey, GetModuleHandleW(nullptr), 0));
    seen.clear();
    service::InputBatch batch;
    batch.KeyDown(key);
    batch.KeyUp(key);
    EXPECT_TRUE(batch.Send());
    EXPECT_TRUE(ComesTrue([] {
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
        return seen.size() >= 2;
    }));
    return seen.empty() ? SeenKey{} : seen.front();
}

TEST(KeySendingTest, AKeyHasTheScanCodeOfTheLayout) {
    const RecorderWindow recorder;
    EXPECT_EQ(KeyThatArrives('A'), (SeenKey{'A', MapVirtualKeyW('A', MAPVK_VK_TO_VSC), false}));
    EXPECT_EQ(KeyThatArrives(VK_DELETE), (SeenKey{VK_DELETE, MapVirtualKeyW(VK_DELETE, MAPVK_VK_TO_VSC) & 0xFF, true}));
}

TEST(KeySendingTest, PrintScreenAndPauseHaveTheirOwn) {
    const RecorderWindow recorder;
    EXPECT_EQ(KeyThatArrives(VK_SNAPSHOT), (SeenKey{VK_SNAPSHOT, 0x37, true}));
    EXPECT_EQ(KeyThatArrives(VK_PAUSE), (SeenKey{VK_PAUSE, 0x45, false}));
}

}  // namespace
}  // namespace kvn::test
