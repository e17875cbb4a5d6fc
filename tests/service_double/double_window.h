// The top-level window by which the page finds the service: it answers the page's messages and logs them.
#pragma once

#include <windows.h>

#include <cstddef>

#include "platform/unique_resource.h"
#include "tests/service_double/options.h"
#include "tests/service_double/service_log.h"

namespace kvn::service_double {

using UniqueFont = platform::Owned<HFONT, &DeleteObject>;

class ServiceWindow {
public:
    // Both are borrowed and must outlive the window.
    ServiceWindow(const Options& chosen, ServiceLog& lines) : options(chosen), log(lines) {}
    ~ServiceWindow();
    ServiceWindow(const ServiceWindow&) = delete;
    ServiceWindow& operator=(const ServiceWindow&) = delete;

    // Creates the window, hidden or visible by the options. When it is destroyed, it posts WM_QUIT.
    bool Create(HINSTANCE instance);

private:
    static LRESULT CALLBACK WindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool OnCreate();
    void OnDestroy();
    LRESULT OnServiceMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnCopyData(const COPYDATASTRUCT* data);
    LRESULT NextHeldReply(LPARAM button);

    const Options& options;
    ServiceLog& log;
    HWND window = nullptr;
    HWND view = nullptr;
    UniqueFont font;
    std::size_t heldRepliesGiven = 0;
};

}  // namespace kvn::service_double
