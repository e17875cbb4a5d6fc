#include "tests/support/opened_sheet.h"

#include <objbase.h>
#include <shobjidl.h>

#include <cstdio>
#include <memory>
#include <optional>

#include "platform/com_pointer.h"
#include "resources/resource.h"
#include "tests/support/message_box_watcher.h"
#include "tests/support/owning_types.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

constexpr int kApplyButton = 0x3021;
constexpr UINT kWorkMessage = WM_USER;

thread_local OpenedSheet* sheetOfThread = nullptr;

HWND PaneWith(HWND page, int control) {
    return FindChildWindow(page, [=](HWND child) { return GetDlgItem(child, control) != nullptr; });
}

}  // namespace

OpenedSheet::OpenedSheet(const ModuleUnderTest& moduleUnderTest, int extensions, int pagesOfEach)
    : module(moduleUnderTest),
      ended(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      thread([=, this] { RunThread(extensions, pagesOfEach); }) {}

OpenedSheet::~OpenedSheet() {
    const bool wasClosed = ComesTrue([this] {
        if (HasEnded()) return true;
        CancelEverything();
        return WaitForSingleObject(ended.Get(), 50) == WAIT_OBJECT_0;
    });
    if (!wasClosed) {
        std::fprintf(stderr, "The property sheet's thread hangs. Its dialogs:\n");
        for (const HWND dialog : OpenDialogsOf(threadId)) std::fprintf(stderr, "  %ls\n", TitleOf(dialog).c_str());
        std::fflush(stderr);
        TerminateProcess(GetCurrentProcess(), 3);
    }
    thread.join();
}

void OpenedSheet::CancelEverything() const {
    for (const HWND dialog : OpenDialogsOf(threadId)) {
        if (!IsWindowEnabled(dialog)) continue;
        if (dialog == sheet) {
            PostMessageW(dialog, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        } else {
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        }
    }
}

void OpenedSheet::RunThread(int extensions, int pagesOfEach) {
    threadId = GetCurrentThreadId();
    sheetOfThread = this;
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = RunnerProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"KvnSheetRunner";
    RegisterClassW(&windowClass);
    UniqueWindow ownRunner(CreateWindowExW(0, windowClass.lpszClassName, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                           windowClass.hInstance, nullptr));
    runner = ownRunner.Get();
    std::optional<platform::ComApartment> apartment(std::in_place);
    factory = module.Factory();
    for (int i = 0; i < extensions; ++i) {
        void* object = nullptr;
        factory->CreateInstance(nullptr, IID_IShellPropSheetExt, &object);
        objects.emplace_back(static_cast<IShellPropSheetExt*>(object));
        for (int j = 0; j < pagesOfEach; ++j) {
            results.push_back(objects.back()->AddPages(CollectPage, reinterpret_cast<LPARAM>(this)));
        }
    }
    if (!pages.empty()) OpenSheet();
    objects.clear();
    factory.reset();
    if (afterwards) afterwards();
    apartment.reset();
    ownRunner.Reset();
    SetEvent(ended.Get());
}

void OpenedSheet::OpenSheet() {
    PROPSHEETHEADERW header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_USECALLBACK;
    header.pszCaption = L"Mouse Properties";
    header.nPages = static_cast<UINT>(pages.size());
    header.phpage = pages.data();
    header.pfnCallback = OnSheetEvent;
    answer = PropertySheetW(&header);
}

void OpenedSheet::ReleaseObjects() {
    Run([this] {
        objects.clear();
        factory.reset();
    });
}

int CALLBACK OpenedSheet::OnSheetEvent(HWND window, UINT event, LPARAM /*parameter*/) {
    if (event == PSCB_INITIALIZED) sheetOfThread->sheet = window;
    return 0;
}

BOOL CALLBACK OpenedSheet::CollectPage(HPROPSHEETPAGE page, LPARAM sheet) {
    reinterpret_cast<OpenedSheet*>(sheet)->pages.push_back(page);
    return TRUE;
}

LRESULT CALLBACK OpenedSheet::RunnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kWorkMessage) return DefWindowProcW(window, message, wParam, lParam);
    const std::unique_ptr<std::function<void()>> work(reinterpret_cast<std::function<void()>*>(lParam));
    (*work)();
    return 0;
}

void OpenedSheet::Start(std::function<void()> work) const {
    auto sent = std::make_unique<std::function<void()>>(std::move(work));
    if (PostMessageW(runner, kWorkMessage, 0, reinterpret_cast<LPARAM>(sent.get()))) sent.release();
}

void OpenedSheet::Run(const std::function<void()>& work) const {
    const auto done = std::make_shared<std::atomic<bool>>(false);
    Start([=] {
        work();
        *done = true;
    });
    Await("the sheet's thread to do its work", [&] { return *done || HasEnded(); });
}

void OpenedSheet::AwaitOpen() {
    Await("the property sheet", [this] { return IsWindowVisible(sheet) != FALSE && IsWindowEnabled(sheet) != FALSE; });
    Settle();
}

INT_PTR OpenedSheet::AwaitClosed() {
    Await("the end of the property sheet", [this] { return HasEnded(); });
    return answer;
}

HWND OpenedSheet::Page(int index) const {
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_INDEXTOHWND, static_cast<WPARAM>(index), 0));
}

std::size_t OpenedSheet::ShownPageCount() const {
    std::size_t count = 0;
    for (int index = 0; index < static_cast<int>(pages.size()); ++index) count += Page(index) != nullptr ? 1U : 0U;
    return count;
}

HWND OpenedSheet::ButtonPane(int index) const {
    return PaneWith(Page(index), IDC_PANE_PICTURE);
}

HWND OpenedSheet::GesturePane(int index) const {
    return PaneWith(Page(index), IDC_GESTURES_LIST);
}

bool OpenedSheet::IsQuiet() const {
    Settle();
    return OpenMessageBox() == nullptr && OpenDialogsOf(threadId).size() == 1 && IsWindowEnabled(sheet);
}

bool OpenedSheet::IsApplyEnabled() const {
    Settle();
    return IsWindowEnabled(GetDlgItem(sheet, kApplyButton)) != FALSE;
}

void OpenedSheet::PressApply() const {
    PostMessageW(sheet, WM_COMMAND, kApplyButton, 0);
}

void OpenedSheet::PressOk() const {
    PostMessageW(sheet, PSM_PRESSBUTTON, PSBTN_OK, 0);
}

void OpenedSheet::PressCancel() const {
    PostMessageW(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
}

HWND OpenedSheet::Focus() const {
    return FocusOf(sheet);
}

}  // namespace kvn::test
