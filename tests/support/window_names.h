// What a window says of itself without being asked by a message.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::test {

std::wstring ClassOf(HWND window);
// A top-level window's title, without waiting for its thread.
std::wstring TitleOf(HWND window);
// Its class, title and id, for reports.
std::string Describe(HWND window);

}  // namespace kvn::test
