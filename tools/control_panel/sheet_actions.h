// Carries out the command line on the open sheet: selects a tab, sets the focus, takes the picture and closes.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "tools/control_panel/host_options.h"
#include "tools/control_panel/picture.h"

namespace kvn::control_panel {

// Works from a timer of the sheet's thread. Windows delivers timer messages only when nothing else waits, so at each
// tick the sheet has handled its messages and painted; one driver at a time.
class SheetDriver {
public:
    explicit SheetDriver(const Options& wanted);
    ~SheetDriver();
    SheetDriver(const SheetDriver&) = delete;
    SheetDriver& operator=(const SheetDriver&) = delete;

    // After the sheet has closed: throws HostError when something that was asked for could not be done.
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
