#include "service/input/window_commands.h"

#include <gtest/gtest.h>

#include "tests/service_input/recorder_window.h"

namespace kvn::test {
namespace {

using service::Deed;
using service::DoWindowCommand;

constexpr DWORD kBoxes = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;

TEST(WindowCommandsTest, TheWindowInFrontIsClosed) {
    RecorderWindow recorder;
    EXPECT_EQ(DoWindowCommand(Deed::CloseWindow), L"closed the window");
    EXPECT_EQ(recorder.Await("close"), "close");
}

TEST(WindowCommandsTest, AWindowWithTheBoxIsMaximizedOrRestored) {
    RecorderWindow recorder(kBoxes | WS_MAXIMIZEBOX);
    EXPECT_EQ(DoWindowCommand(Deed::MaximizeWindow), L"maximized the window");
    EXPECT_EQ(recorder.Await("maximize"), "maximize");
    ShowWindow(recorder.Get(), SW_MAXIMIZE);
    recorder.Clear();
    EXPECT_EQ(DoWindowCommand(Deed::MaximizeWindow), L"restored the window");
    EXPECT_EQ(recorder.Await("restore"), "restore");
}

TEST(WindowCommandsTest, AWindowWithTheBoxIsMinimized) {
    RecorderWindow recorder(kBoxes | WS_MINIMIZEBOX);
    EXPECT_EQ(DoWindowCommand(Deed::MinimizeWindow), L"minimized the window");
    EXPECT_EQ(recorder.Await("minimize"), "minimize");
}

TEST(WindowCommandsTest, AWindowWithoutTheBoxStaysAsItIs) {
    RecorderWindow recorder(kBoxes);
    EXPECT_EQ(DoWindowCommand(Deed::MaximizeWindow), L"the window has no such box");
    EXPECT_EQ(DoWindowCommand(Deed::MinimizeWindow), L"the window has no such box");
    EXPECT_EQ(DoWindowCommand(Deed::CloseWindow), L"closed the window");
    EXPECT_EQ(recorder.Await("close"), "close");
}

}  // namespace
}  // namespace kvn::test
