// A property sheet with the module's page, open on a separate thread as in a control panel, and tools to use it from
// the test's thread.
#pragma once

#include <windows.h>

#include <prsht.h>
#include <shobjidl.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "platform/unique_resource.h"
#include "tests/support/module_under_test.h"

namespace kvn::test {

class OpenedSheet {
public:
    // Starts the thread: it makes this many extension objects, asks each this often for pages and opens the sheet.
    explicit OpenedSheet(const ModuleUnderTest& moduleUnderTest, int extensions = 1, int pagesOfEach = 1);
    OpenedSheet(const OpenedSheet&) = delete;
    OpenedSheet& operator=(const OpenedSheet&) = delete;
    // Cancels everything that is still open. If the thread does not end, the test program ends.
    ~OpenedSheet();

    // Waits until the sheet is shown with its first page and nothing is in front of it.
    void AwaitOpen();

    // Releases the extension objects and their factory, as a host may do while its sheet is open.
    void ReleaseObjects();

    // Work for the sheet's thread after the sheet has closed and the objects are released. Set it before that.
    void WhenClosed(std::function<void()> work) { afterwards = std::move(work); }

    // Waits until the sheet has closed, by OK or Cancel or because there was no page. Returns PropertySheetW's answer.
    INT_PTR AwaitClosed();

    // Valid once the sheet is open or closed.
    std::size_t PageCount() const { return pages.size(); }
    // A sheet creates a page's window when it shows the page for the first time.
    std::size_t ShownPageCount() const;
    const std::vector<HRESULT>& AddPagesResults() const { return results; }

    HWND Sheet() const { return sheet; }
    HWND Page(int index = 0) const;
    HWND ButtonPane(int index = 0) const;
    HWND GesturePane(int index = 0) const;
    // A control of the button pane of the first page, or of the page itself.
    HWND PaneControl(int control) const { return GetDlgItem(ButtonPane(), control); }
    HWND PageControl(int control) const { return GetDlgItem(Page(), control); }

    // Runs the work on the sheet's thread and waits for its end. The work must not open a modal dialog.
    void Run(const std::function<void()>& work) const;
    // Leaves the work for the sheet's thread, without waiting.
    void Start(std::function<void()> work) const;
    // Waits until the sheet's thread has dispatched everything that was posted so far.
    void Settle() const {
        Run([] {});
    }
    // Settles; true if no modal window is in front of the sheet.
    bool IsQuiet() const;

    bool IsApplyEnabled() const;
    // Each press is posted, without waiting.
    void PressApply() const;
    void PressOk() const;
    void PressCancel() const;

    // The control of the sheet's thread that has the focus.
    HWND Focus() const;

private:
    static int CALLBACK OnSheetEvent(HWND sheet, UINT event, LPARAM parameter);
    static BOOL CALLBACK CollectPage(HPROPSHEETPAGE page, LPARAM sheet);
    static LRESULT CALLBACK RunnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void RunThread(int extensions, int pagesOfEach);
    void OpenSheet();
    void CancelEverything() const;
    bool HasEnded() const { return WaitForSingleObject(ended.Get(), 0) == WAIT_OBJECT_0; }

    const ModuleUnderTest& module;
    ComPointer<IClassFactory> factory;
    std::vector<ComPointer<IShellPropSheetExt>> objects;
    std::function<void()> afterwards;
    std::vector<HPROPSHEETPAGE> pages;
    std::vector<HRESULT> results;
    std::atomic<HWND> sheet = nullptr;
    std::atomic<HWND> runner = nullptr;  // a hidden window of the thread, which runs the work
    std::atomic<DWORD> threadId = 0;
    std::atomic<INT_PTR> answer = 0;
    const platform::UniqueKernelObject ended;
    std::thread thread;
};

}  // namespace kvn::test
