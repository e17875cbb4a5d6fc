// The operations of the panel behind the property page. The page's dialog procedure has no logic: it turns each message
// into one of these operations.
#pragma once

#include <windows.h>

#include <prsht.h>

namespace kvn::page {

class IPropertyPanel {
public:
    virtual ~IPropertyPanel() = default;

    // Whether the page is added to the sheet at all. The shell's callback and its parameter are passed for a panel that
    // adds further pages: docs/kept-behaviour.md.
    virtual bool CanAddPage(LPFNADDPROPSHEETPAGE addPage, LPARAM parameter) = 0;

    virtual void OnInitDialog(HINSTANCE module, HWND page) = 0;

    // Saves the settings; false keeps the sheet open on this page.
    virtual bool OnApply(HINSTANCE module, HWND page) = 0;

    // Whether moving this trackbar changes the settings.
    virtual bool OnHScroll(HWND trackbar) = 0;

    // Whether a command from the control with this id changes the settings.
    virtual bool IsChangingControl(UINT controlId) = 0;

    // Whether this WM_COMMAND of the window (the page or a pane) changes the settings.
    virtual bool OnCommandChanged(HWND window, WPARAM wParam, LPARAM lParam) = 0;

    // Carries out a WM_COMMAND. Always called before OnCommandChanged.
    virtual void OnCommand(WPARAM wParam, LPARAM lParam, HWND page) = 0;

    virtual void OnCopyData(HWND sender, const COPYDATASTRUCT* data) = 0;
    virtual void OnPaint(HWND page) = 0;

    // The brush for a static control's background, or null for the usual one.
    virtual HBRUSH OnCtlColorStatic(HDC deviceContext, HWND control) = 0;

    virtual void OnTabChanged(HWND page, WPARAM wParam, const NMHDR* header) = 0;
};

}  // namespace kvn::page
