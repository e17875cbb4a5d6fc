// A window on a separate thread that covers the whole screen and records the input that reaches it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kvn::test {

class RecorderWindow {
public:
    explicit RecorderWindow(DWORD style = WS_POPUP);
    RecorderWindow(const RecorderWindow&) = delete;
    RecorderWindow& operator=(const RecorderWindow&) = delete;
    ~RecorderWindow();

    HWND Get() const { return window; }

    // The input so far, as "+Ctrl +C -C -Ctrl": "+" is down, "-" is up. Keys are named with the side in their message
    // ("RCtrl"; the left ones have no prefix), Pause with its scan code ("Pause69"), buttons "Left" to "X2", notches
    // "Wheel120" and "HWheel-120", commands of the window's menu "close", "maximize", "restore" and "minimize".
    std::string Text();
    // Waits until this has arrived. Otherwise returns the text that has arrived.
    std::string Await(const std::string& expected);
    // How often this has arrived.
    std::size_t Count(const std::string& entry);
    void Clear();

private:
    void Run(DWORD style, std::promise<HWND>& made);
    void Record(const std::string& entry);
    bool Take(UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    std::mutex lock;
    std::vector<std::string> entries;
    HWND window = nullptr;
    std::thread thread;
};

}  // namespace kvn::test
