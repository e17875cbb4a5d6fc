#include "service/input/attached_mice.h"

#include <gtest/gtest.h>

#include <vector>

#include "service/input/key_sending.h"
#include "tests/service_input/recorder_window.h"
#include "tests/support/owning_types.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

// A window on the test's own thread, which passes on the reports of Raw Input.
class AttachedMiceTest : public testing::Test {
protected:
    AttachedMiceTest() {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&mice));
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(OnMessage));
    }

    static LRESULT CALLBACK OnMessage(HWND target, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const mice = reinterpret_cast<service::AttachedMice*>(GetWindowLongPtrW(target, GWLP_USERDATA));
        if (message == WM_INPUT) mice->OnInput(reinterpret_cast<HRAWINPUT>(lParam));
        if (message == WM_INPUT_DEVICE_CHANGE) mice->OnDeviceChange(wParam, reinterpret_cast<HANDLE>(lParam));
        return DefWindowProcW(target, message, wParam, lParam);
    }

    static void ServeWindow() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }

    HANDLE FirstMouse() {
        UINT count = 0;
        GetRawInputDeviceList(nullptr, &count, sizeof(RAWINPUTDEVICELIST));
        std::vector<RAWINPUTDEVICELIST> devices(count);
        GetRawInputDeviceList(devices.data(), &count, sizeof(RAWINPUTDEVICELIST));
        for (const RAWINPUTDEVICELIST& device : devices) {
            if (device.dwType == RIM_TYPEMOUSE) return device.hDevice;
        }
        return nullptr;
    }

    std::vector<model::DeviceRecord> published;
    std::uint32_t pressed = 0;
    std::uint32_t released = 0;
    service::AttachedMice mice{{.onMouse = [this](const model::DeviceRecord& mouse) { published.push_back(mouse); },
                                .onButtons =
                                    [this](const service::ButtonChange& change) {
                                        pressed |= change.pressed;
                                        released |= change.released;
                                    }}};
    const UniqueWindow owned{CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr)};
    const HWND window = owned.Get();
};

TEST_F(AttachedMiceTest, TheMouseThatIsThereAtTheStartIsPublishedOnce) {
    ASSERT_NE(FirstMouse(), nullptr);
    EXPECT_TRUE(mice.Watch(window));
    ServeWindow();
    ASSERT_EQ(published.size(), 1U);
    ASSERT_TRUE(mice.Current());
    EXPECT_EQ(mice.Current()->vid, published.front().vid);
    EXPECT_GE(mice.Current()->buttonCount, 3);
    EXPECT_NE(mice.Current()->vid, 0U);
}

TEST_F(AttachedMiceTest, TheLastMouseStaysAfterItsRemoval) {
    mice.Watch(window);
    mice.OnDeviceChange(GIDC_REMOVAL, FirstMouse());
    EXPECT_TRUE(mice.Current());
    mice.OnDeviceChange(GIDC_ARRIVAL, FirstMouse());
    EXPECT_EQ(published.size(), 1U);
}

TEST_F(AttachedMiceTest, NothingIsKnownBeforeAnyMouseWasSeen) {
    EXPECT_FALSE(mice.Current());
    mice.OnDeviceChange(GIDC_ARRIVAL, nullptr);
    EXPECT_FALSE(mice.Current());
}

TEST_F(AttachedMiceTest, PressAndReleaseAreReportedWhereverTheyGo) {
    RecorderWindow recorder;
    mice.Watch(window);
    service::InputBatch batch;
    batch.ButtonDown(VK_MBUTTON);
    batch.ButtonUp(VK_MBUTTON);
    batch.Send();
    EXPECT_TRUE(ComesTrue([&] {
        ServeWindow();
        return released != 0;
    }));
    EXPECT_EQ(pressed, 1U << 2U);
    EXPECT_EQ(released, 1U << 2U);
    EXPECT_EQ(recorder.Await("+Middle -Middle"), "+Middle -Middle");
}

}  // namespace
}  // namespace kvn::test
