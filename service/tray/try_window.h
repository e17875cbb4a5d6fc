// The window of "Try the buttons": a list of the presses, the newest at the bottom.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "platform/unique_resource.h"
#include "service/input/press_feed.h"
#include "service/tray/window_dpi.h"

namespace kvn::service {

inline constexpr wchar_t kTryWindowClass[] = L"KvnMouseAplTry";
// Post it to bring the window to the front.
inline constexpr UINT kComeToFrontMessage = WM_APP + 1;
// The ids of its controls.
inline constexpr int kTryExplanation = 1001, kTryLabel = 1002, kTryList = 1003;
// The largest number of rows.
inline constexpr int kMostPressesShown = 100;

// The texts of a row.
struct ShownPress {
    std::wstring control, effect, profile, program;
};

// Created, used and destroyed on one thread.
class TryWindow {
public:
    TryWindow() = default;
    TryWindow(const TryWindow&) = delete;
    TryWindow& operator=(const TryWindow&) = delete;
    ~TryWindow() { window.Reset(); }

    // Creates it hidden; it is shown when it comes to the front.
    [[nodiscard]] bool Create();
    HWND Handle() const { return window.Get(); }
    bool IsOpen() const { return static_cast<bool>(window); }

    void ComeToFront() const;
    // Handles the message if it is a key of the window (Tab, Esc, an underlined letter). True if it was.
    bool TakesKey(MSG& message) const { return IsDialogMessageW(window.Get(), &message) != FALSE; }
    void Add(const ShownPress& press) const;

private:
    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

    bool MakeControls();
    HWND MakeControl(const wchar_t* windowClass, unsigned textId, DWORD style, int id);
    HWND Control(int id) const { return GetDlgItem(window.Get(), id); }
    void UseDpi(UINT chosenDpi);
    void LayOut() const;
    int HeightOfExplanation(int width) const;
    void SizeColumns(int width) const;
    int Pixels(int length) const { return Scaled(length, dpi); }

    void OnActivation(bool isActive);
    void OnCommand(UINT command);
    void OnDpiChanged(UINT changedDpi, const RECT& place);
    void OnLimits(MINMAXINFO& limits) const;

    platform::Owned<HWND, &DestroyWindow> window;
    UniqueFont font;
    UINT dpi = kPlainDpi;
    HWND lastFocus = nullptr;
};

}  // namespace kvn::service
