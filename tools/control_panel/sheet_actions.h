// Carries out the command line on the open sheet: selects a tab, sets the focus, takes the picture and closes.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "tools/control_panel/host_options.h"
#include "tools/control_panel/picture.h"

namespace kvn::control_panel {

// Runs on a timer of the sheet's thread; one driver at a time. Windows delivers timer messages only when no other
// message waits, so at each tick the sheet has handled its messages and painted.
class SheetDriver {
public:
    explicit SheetDriver(const Options& wanted);
    ~SheetDriver();
    SheetDriver(const SheetDriver&) = delete;
    SheetDriver& operator=(const SheetDriver&) = delete;

    // Call it after the sheet has closed. Throws HostError if a requested action could not be done.
    void CheckOutcome() const;

private:
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR timer, DWORD time);
    void OnTick();
    void Prepare(HWND sheet, HWND page);
    void TakePicture(HWND sheet);
    static void Close();

    const Options& options;
    UINT_PTR timer = 0;
    unsigned ticks = 0;
    bool isPrepared = false;
    bool isClosing = false;
    Picture lastPicture;
    std::optional<std::wstring> failure;
};

}  // namespace kvn::control_panel
