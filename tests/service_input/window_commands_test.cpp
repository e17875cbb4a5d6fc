#include "service/input/window_commands.h"

#include <gtest/gtest.h>

#include "tests/service_input/recorder_window.h"
#include "tests/support/owning_types.h"

namespace kvn::test {
namespace {

using service::Action;
using service::DoWindowCommand;

constexpr DWORD kBoxes = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;

TEST(WindowCommandsTest, TheWindowInFrontIsClosed) {
    RecorderWindow recorder;
    EXPECT_EQ(DoWindowCommand(Action::CloseWindow), L"closed the window");
    EXPECT_EQ(recorder.Await("close"), "close");
}

TEST(WindowCommandsTest, AWindowWithTheBoxIsMaximizedOrRestored) {
    RecorderWindow recorder(kBoxes | WS_MAXIMIZEBOX);
    EXPECT_EQ(DoWindowCommand(Action::MaximizeWindow), L"maximized the window");
    EXPECT_EQ(recorder.Await("maximize"), "maximize");
    ShowWindow(recorder.Get(), SW_MAXIMIZE);
    recorder.Clear();
    EXPECT_EQ(DoWindowCommand(Action::MaximizeWindow), L"restored the window");
    EXPECT_EQ(recorder.Await("restore"), "restore");
}

TEST(WindowCommandsTest, AWindowWithTheBoxIsMinimized) {
    RecorderWindow recorder(kBoxes | WS_MINIMIZEBOX);
    EXPECT_EQ(DoWindowCommand(Action::MinimizeWindow), L"minimized the window");
    EXPECT_EQ(recorder.Await("minimize"), "minimize");
}

TEST(WindowCommandsTest, AWindowWithoutTheBoxStaysAsItIs) {
    RecorderWindow recorder(kBoxes);
    EXPECT_EQ(DoWindowCommand(Action::MaximizeWindow), L"the window has no such box");
    EXPECT_EQ(DoWindowCommand(Action::MinimizeWindow), L"the window has no such box");
    EXPECT_EQ(DoWindowCommand(Action::CloseWindow), L"closed the window");
    EXPECT_EQ(recorder.Await("close"), "close");
}

// A window that is the desktop's by its class.
class DesktopWindow {
public:
    DesktopWindow() {
        window.Reset(CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, kClassName, nullptr,
                                     WS_POPUP | WS_MAXIMIZEBOX | WS_MINIMIZEBOX, 0, 0, 0, 0, nullptr, nullptr, nullptr,
                                     nullptr));
    }

    void Own(HWND owned) const {
        SetWindowLongPtrW(owned, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(window.Get()));
        EXPECT_EQ(GetAncestor(owned, GA_ROOTOWNER), window.Get());
    }

private:
    static constexpr wchar_t kClassName[] = L"Progman";
    const RegisteredClass registered{kClassName, DefWindowProcW};
    UniqueWindow window;
};

TEST(WindowCommandsTest, ADialogOfTheDesktopIsClosedAndTheDesktopStaysAsItIs) {
    const DesktopWindow desktop;
    RecorderWindow recorder(WS_POPUP | WS_CAPTION | WS_SYSMENU);
    desktop.Own(recorder.Get());
    EXPECT_EQ(DoWindowCommand(Action::MaximizeWindow), L"the window has no such box");
    EXPECT_EQ(DoWindowCommand(Action::MinimizeWindow), L"the window has no such box");
    EXPECT_EQ(DoWindowCommand(Action::CloseWindow), L"closed the window");
    EXPECT_EQ(recorder.Await("close"), "close");
    SetWindowLongPtrW(recorder.Get(), GWLP_HWNDPARENT, 0);
}

}  // namespace
}  // namespace kvn::test
