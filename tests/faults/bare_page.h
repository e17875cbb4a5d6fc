// The module's page without a sheet: made on the test's own thread, in a window that only counts notifications, so that
// it opens and closes in milliseconds. Dialogs and message boxes are answered automatically.
#pragma once

#include <windows.h>

#include <prsht.h>
#include <shobjidl.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/module_under_test.h"
#include "tests/support/owning_types.h"
#include "tests/support/replaced_import.h"

namespace kvn::test {

// Sends the command of a button to its dialog or pane.
void Press(HWND dialog, int button);

class BarePage {
public:
    explicit BarePage(const ModuleUnderTest& moduleUnderTest);
    BarePage(const BarePage&) = delete;
    BarePage& operator=(const BarePage&) = delete;
    ~BarePage();

    // The shell's steps before there is a window. They return the module's answers.
    HRESULT MakeFactory();
    HRESULT MakeExtension();
    HRESULT AddPages();
    // All three, which must succeed.
    void Add();
    bool WasAdded() const { return pageProcedure != nullptr; }

    // Makes the page's window.
    void Open();
    int Openings() const { return openings; }
    // Add, then Open.
    void AddAndOpen();
    // Destroys the window and releases everything.
    void Close();

    HWND Window() const { return page.Get(); }
    HWND Parent() const { return parent.Get(); }
    HWND ButtonPane() const;
    HWND GesturePane() const;
    HWND PaneControl(int control) const { return GetDlgItem(ButtonPane(), control); }
    HWND PageControl(int control) const { return GetDlgItem(page.Get(), control); }

    // Presses Apply; true if the page lets the sheet go on.
    bool Apply() const;
    void ChooseProfile(int index) const;
    // Chooses a function of a button and confirms it.
    void Choose(int control, int data) const;

    // The user's actions in a dialog of this template once it is set up. If it is still open afterwards, it is
    // cancelled.
    using DialogUser = std::function<void(HWND dialog)>;
    void WhenDialogOpens(UINT templateId, DialogUser user) { users[templateId] = std::move(user); }
    // Makes the creation of dialogs with this template fail; 0: none fails.
    void RefuseDialog(UINT templateId) { refusedDialog = templateId; }
    // Whether an open dialog is about to close.
    bool HasEnded(HWND dialog) { return DialogOf(dialog).isEnded; }
    int OpenedDialogs() const { return openedDialogs; }

    // The texts of the message boxes so far; every one is answered with OK or Yes at once.
    const std::vector<std::wstring>& Messages() const { return messages; }
    // Calls this while a message box is open.
    void WhenMessageOpens(std::function<void()> event) { onMessage = std::move(event); }
    void ForgetMessages() { messages.clear(); }

    // Dialogs that neither the user nor a Cancel could close; there must never be one.
    int StuckDialogs() const { return stuckDialogs; }
    // Exceptions that left the module's procedures; there must never be one.
    static int Escapes() { return escapes; }

private:
    static BOOL CALLBACK TakePage(HPROPSHEETPAGE page, LPARAM self);
    static INT_PTR CALLBACK GuardedPage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static INT_PTR CALLBACK GuardedDialog(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR RunDialog(HINSTANCE resources, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter);
    int AnswerMessage(LPCWSTR text, UINT style);
    static void Discard();

    const ModuleUnderTest& module;
    UniqueWindow parent;
    UniqueWindow page;
    ComPointer<IClassFactory> factory;
    ComPointer<IShellPropSheetExt> extension;
    DLGPROC pageProcedure = nullptr;
    PROPSHEETPAGEW_V2 description{};
    std::map<UINT, DialogUser> users;
    std::vector<std::wstring> messages;
    std::function<void()> onMessage;
    UINT refusedDialog = 0;
    int openings = 0;
    int openedDialogs = 0;
    int stuckDialogs = 0;

    static inline int escapes = 0;
    static inline BarePage* current = nullptr;

    struct RunningDialog {
        DLGPROC procedure;
        UINT templateId;
        HWND window;  // null until its first message
        bool isEnded;
    };
    RunningDialog& DialogOf(HWND window);
    std::vector<RunningDialog> running;  // the last one is the innermost

    ReplacedImport<"CreatePropertySheetPageW", decltype(CreatePropertySheetPageW)> createPage;
    ReplacedImport<"DialogBoxParamW", INT_PTR(HINSTANCE, LPCWSTR, HWND, DLGPROC, LPARAM)> dialogBox;
    ReplacedImport<"EndDialog", decltype(EndDialog)> endDialog;
    ReplacedImport<"MessageBoxW", decltype(MessageBoxW)> messageBox;
    ReplacedImport<"PostQuitMessage", decltype(PostQuitMessage)> postQuit;
    ReplacedImport<"_commit", int(int)> commit;
};

}  // namespace kvn::test
