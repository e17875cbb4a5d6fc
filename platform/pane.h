// A pane: a child dialog of the property page, the content of one tab, whose messages an object handles.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>

namespace kvn::platform {

// The notifications of a pane to its page.
class IPaneOwner {
public:
    // Called for every command and scroll in the pane, so that the page can be marked as changed.
    virtual void OnPaneCommand(HWND pane, WPARAM wParam, LPARAM lParam) = 0;
    virtual void OnPaneScroll(HWND trackbar) = 0;
    // The owner of the pane lives at least as long as this.
    virtual std::shared_ptr<void> KeepAlive() = 0;

protected:
    ~IPaneOwner() = default;
};

class Pane {
public:
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    // Creates the pane's window as a hidden child of the page; null on failure.
    [[nodiscard]] HWND Create(HINSTANCE module, HWND page);

protected:
    Pane(UINT dialogTemplate, IPaneOwner& paneOwner);
    ~Pane() = default;

    // From then on the messages of the window come to the pane first.
    void TakeOver();
    // Whether the pane was set up completely. If not, its controls may show something wrong.
    bool HasTakenOver() const { return previousProcedure != nullptr; }

    // A command comes here before it goes to the page.
    virtual void OnCommand(UINT control, UINT notification) = 0;

    // Every other message. An answer ends its handling; without one it goes to the window's previous procedure.
    virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    HINSTANCE Module() const { return resources; }
    HWND Window() const { return window; }
    HWND Control(int control) const { return GetDlgItem(window, control); }

private:
    static LRESULT CALLBACK Procedure(HWND pane, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    UINT templateId;
    IPaneOwner& owner;
    HINSTANCE resources = nullptr;
    HWND window = nullptr;
    WNDPROC previousProcedure = nullptr;
};

}  // namespace kvn::platform
