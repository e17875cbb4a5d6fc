#include "tests/profiles/selection_fixture.h"

#include <stdexcept>

#include "platform/unique_resource.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

constexpr UINT kReportTaken = WM_APP;  // lParam is an event to set

LRESULT CALLBACK OwnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kReportTaken) return SetEvent(reinterpret_cast<HANDLE>(lParam));
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND CreateOwner() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = OwnerProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"KvnSelectionOwner";
    RegisterClassW(&windowClass);
    return CreateWindowExW(0, windowClass.lpszClassName, L"Owner", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr,
                           windowClass.hInstance, nullptr);
}

HWND AwaitDialog(const std::string& what, int control) {
    return Await(what, [=] {
        return FindTopLevelWindow(
            [=](HWND window) { return IsWindowVisible(window) && GetDlgItem(window, control) != nullptr; });
    });
}

}  // namespace

SelectionModule::SelectionModule() : module(LoadLibraryW(L"program_selection_module.dll")) {
    if (!module) throw std::runtime_error("program_selection_module.dll is not beside the test program");
}

bool SelectionModule::SelectPrograms(HINSTANCE resources, HWND owner,
                                     std::vector<model::ApplicationEntry>& chosen) const {
    using Function = bool(HINSTANCE, HWND, std::vector<model::ApplicationEntry>*);
    const auto select =
        reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module.Get(), "SelectPrograms")));
    return select(resources, owner, &chosen);
}

void SelectionTest::TearDown() {
    if (!accepted.valid()) return;
    for (const HWND open : OpenDialogsOf(GetWindowThreadProcessId(dialog, nullptr))) {
        PostMessageW(open, WM_COMMAND, IDCANCEL, 0);
    }
    accepted.wait();
}

void SelectionTest::Open() {
    accepted = std::async(std::launch::async, [this] {
        const UniqueWindow made(CreateOwner());
        owner = made.Get();
        return module->SelectPrograms(resources.Handle(), owner, chosen);
    });
    dialog = AwaitDialog("the selection of programs", IDC_PROGRAMS_LIST);
}

void SelectionTest::Press(HWND pressedDialog, int button) {
    PostMessageW(GetDlgItem(pressedDialog, button), BM_CLICK, 0, 0);
}

void SelectionTest::Press(int button) const {
    Press(dialog, button);
}

bool SelectionTest::AwaitEnd() {
    if (accepted.wait_for(kPatience) != std::future_status::ready) {
        throw NeverHappened("the end of the selection of programs");
    }
    return accepted.get();
}

bool SelectionTest::StaysOpen() const {
    // A posted message is handled after all that were posted before it.
    const platform::UniqueKernelObject taken(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    PostMessageW(owner, kReportTaken, 0, reinterpret_cast<LPARAM>(taken.Get()));
    Await("the dialog's thread to handle its messages",
          [&] { return WaitForSingleObject(taken.Get(), 0) == WAIT_OBJECT_0 || !IsWindow(owner); });
    return IsWindow(dialog) != FALSE && IsWindowVisible(dialog) != FALSE;
}

HWND SelectionTest::OpenWindowDialog() const {
    Press(IDC_PROGRAMS_SELECT_WINDOW);
    return AwaitDialog("the proposal of a window's program", IDC_PROGRAM_PATH);
}

std::wstring SelectionTest::ProposalOf(HWND windowDialog) {
    return TextOf(GetDlgItem(windowDialog, IDC_PROGRAM_PATH));
}

void SelectionTest::ClickAt(POINT point) const {
    ClientToScreen(List(), &point);
    SetCursorPos(point.x, point.y);
    NMITEMACTIVATE notification{};
    notification.hdr = {List(), IDC_PROGRAMS_LIST, static_cast<UINT>(NM_CLICK)};
    // Not the clicked row: only the cursor counts.
    notification.iItem = 99;
    SendMessageW(dialog, WM_NOTIFY, IDC_PROGRAMS_LIST, reinterpret_cast<LPARAM>(&notification));
}

void SelectionTest::ClickRow(int row) const {
    const RECT place = LabelOfRow(List(), row);
    ClickAt({place.left + 5, (place.top + place.bottom) / 2});
}

void SelectionTest::ClickEmptySpace() const {
    RECT area{};
    GetClientRect(List(), &area);
    ClickAt({area.right / 2, area.bottom - 30});
}

}  // namespace kvn::test
