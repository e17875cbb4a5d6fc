#include "tests/faults/bare_page.h"

#include <objbase.h>

#include <stdexcept>

#include "resources/resource.h"
#include "tests/support/combo_contents.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

const HPROPSHEETPAGE kTakenPage = reinterpret_cast<HPROPSHEETPAGE>(1);  // never dereferenced

// Calls the module's procedure as Windows does, but counts exceptions.
INT_PTR CallGuarded(DLGPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam, int& escapes) {
    try {
        return procedure(window, message, wParam, lParam);
    } catch (...) {
        ++escapes;
        return FALSE;
    }
}

}  // namespace

void Press(HWND dialog, int button) {
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, button)));
}

BarePage::BarePage(const ModuleUnderTest& moduleUnderTest)
    : module(moduleUnderTest),
      parent(CreateWindowExW(0, L"STATIC", L"a parent of pages", WS_OVERLAPPED, 0, 0, 600, 600, nullptr, nullptr,
                             GetModuleHandleW(nullptr), nullptr)),
      createPage(module.Handle(),
                 [this](LPCPROPSHEETPAGEW described) {
                     description = *reinterpret_cast<const PROPSHEETPAGEW_V2*>(described);
                     return kTakenPage;
                 }),
      dialogBox(module.Handle(),
                [this](HINSTANCE resources, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) {
                    return RunDialog(resources, name, owner, procedure, parameter);
                }),
      endDialog(module.Handle(),
                [this](HWND window, INT_PTR result) {
                    if (!running.empty()) DialogOf(window).isEnded = true;
                    return EndDialog(window, result);
                }),
      messageBox(module.Handle(),
                 [this](HWND, LPCWSTR text, LPCWSTR, UINT style) { return AnswerMessage(text, style); }),
      // There is no host to quit.
      postQuit(module.Handle(), [](int) {}),
      // No power failure is tested here, and waiting for the disk would take most of a round.
      commit(module.Handle(), [](int) { return 0; }) {
    if (!parent) throw std::runtime_error("the page's parent could not be created");
    current = this;
    escapes = 0;
}

BarePage::~BarePage() {
    Close();
    parent.Reset();
    current = nullptr;
}

HRESULT BarePage::MakeFactory() {
    void* object = nullptr;
    const HRESULT result = module.GetClassObject(kServerClassId, IID_IClassFactory, &object);
    factory.reset(static_cast<IClassFactory*>(object));
    return result;
}

HRESULT BarePage::MakeExtension() {
    void* object = nullptr;
    const HRESULT result = factory->CreateInstance(nullptr, IID_IShellPropSheetExt, &object);
    extension.reset(static_cast<IShellPropSheetExt*>(object));
    return result;
}

HRESULT BarePage::AddPages() {
    pageProcedure = nullptr;
    return extension->AddPages(TakePage, reinterpret_cast<LPARAM>(this));
}

// The choosers keep their end from the combo boxes, which leaves their lists behind.
BOOL CALLBACK DestroyDropDownList(HWND window, LPARAM /*parameter*/) {
    if (ClassOf(window) == L"ComboLBox") DestroyWindow(window);
    return TRUE;
}

BOOL CALLBACK BarePage::TakePage(HPROPSHEETPAGE /*page*/, LPARAM self) {
    auto* const taker = reinterpret_cast<BarePage*>(self);
    taker->pageProcedure = taker->description.pfnDlgProc;
    return TRUE;
}

void BarePage::Add() {
    if (MakeFactory() != S_OK || MakeExtension() != S_OK || AddPages() != S_OK || !WasAdded()) {
        throw std::runtime_error("the page was not added");
    }
}

void BarePage::Open() {
    ++openings;
    page.Reset(CreateDialogParamW(module.Handle(), description.pszTemplate, parent.Get(), GuardedPage,
                                  reinterpret_cast<LPARAM>(&description)));
    if (!page) throw std::runtime_error("the page could not be created");
    Discard();
}

void BarePage::AddAndOpen() {
    Add();
    Open();
}

void BarePage::Close() {
    page.Reset();
    EnumThreadWindows(GetCurrentThreadId(), DestroyDropDownList, 0);
    extension.reset();
    factory.reset();
    Discard();
}

HWND BarePage::ButtonPane() const {
    return FindChildWindow(page.Get(), [](HWND child) { return GetDlgItem(child, IDC_PANE_PICTURE) != nullptr; });
}

HWND BarePage::GesturePane() const {
    return FindChildWindow(page.Get(), [](HWND child) { return GetDlgItem(child, IDC_GESTURES_LIST) != nullptr; });
}

bool BarePage::Apply() const {
    NMHDR header{parent.Get(), 0, PSN_APPLY};
    SetWindowLongPtrW(page.Get(), DWLP_MSGRESULT, PSNRET_NOERROR);
    SendMessageW(page.Get(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
    return GetWindowLongPtrW(page.Get(), DWLP_MSGRESULT) == PSNRET_NOERROR;
}

void BarePage::ChooseProfile(int index) const {
    const HWND combo = PageControl(IDC_PAGE_PROFILE);
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(page.Get(), WM_COMMAND, MAKEWPARAM(IDC_PAGE_PROFILE, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
}

void BarePage::Choose(int control, int data) const {
    const HWND combo = PaneControl(control);
    if (combo == nullptr) return;  // its pane could not be created
    SelectData(combo, data);
    SendMessageW(ButtonPane(), WM_COMMAND, MAKEWPARAM(control, CBN_SELENDOK), reinterpret_cast<LPARAM>(combo));
}

INT_PTR CALLBACK BarePage::GuardedPage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallGuarded(current->description.pfnDlgProc, window, message, wParam, lParam, escapes);
}

BarePage::RunningDialog& BarePage::DialogOf(HWND window) {
    for (RunningDialog& dialog : running) {
        if (dialog.window == window) return dialog;
    }
    running.back().window = window;
    return running.back();
}

INT_PTR CALLBACK BarePage::GuardedDialog(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (current->running.empty()) return FALSE;
    const RunningDialog dialog = current->DialogOf(window);
    const INT_PTR answer = CallGuarded(dialog.procedure, window, message, wParam, lParam, escapes);
    if (message != WM_INITDIALOG) return answer;
    // If the dialog has ended before its loop begins, the loop does not run.
    const auto isEnded = [window] { return current->DialogOf(window).isEnded; };
    const auto user = current->users.find(dialog.templateId);
    if (!isEnded() && user != current->users.end()) user->second(window);
    if (!isEnded()) CallGuarded(dialog.procedure, window, WM_COMMAND, IDCANCEL, 0, escapes);
    if (!isEnded()) {
        ++current->stuckDialogs;
        EndDialog(window, IDCANCEL);
    }
    return answer;
}

INT_PTR BarePage::RunDialog(HINSTANCE resources, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) {
    const auto templateId = static_cast<UINT>(reinterpret_cast<ULONG_PTR>(name));
    if (templateId == refusedDialog) return -1;
    ++openedDialogs;
    running.push_back({procedure, templateId, nullptr, false});
    const INT_PTR result = DialogBoxParamW(resources, name, owner, GuardedDialog, parameter);
    running.pop_back();
    return result;
}

int BarePage::AnswerMessage(LPCWSTR text, UINT style) {
    messages.emplace_back(text);
    if (onMessage) onMessage();
    return (style & MB_TYPEMASK) == MB_YESNO ? IDYES : IDOK;
}

// Removes messages that windows and controls have posted to themselves.
void BarePage::Discard() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

}  // namespace kvn::test
