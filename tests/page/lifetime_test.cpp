// What keeps the module loaded: COM's counts, the page, and the order in which they end.
#include <windows.h>

#include <algorithm>

#include "tests/support/access_violations.h"
#include "tests/support/gesture_fixture.h"

namespace kvn::test {
namespace {

// A call, its result, and whether anything is referenced afterwards.
struct CountedCall {
    const char* what;
    std::function<long()> call;
    long returns;
    HRESULT canUnload;
};

class ComCountsTest : public PageTest {
protected:
    static BOOL CALLBACK RefusePage(HPROPSHEETPAGE /*page*/, LPARAM /*test*/) { return FALSE; }

    long Ask(IUnknown* object, const IID& interfaceId) {
        void* found = nullptr;
        return object->QueryInterface(interfaceId, &found);
    }
    long Make(IUnknown* outer, const IID& interfaceId, void** object) const {
        return factory->CreateInstance(outer, interfaceId, object);
    }

    void* made = nullptr;
    void* refused = nullptr;
    IClassFactory* factory = nullptr;
    IShellPropSheetExt* extension = nullptr;
};

TEST_F(ComCountsTest, FollowEveryCall) {
    const CountedCall calls[] = {
        {"nothing yet", [] { return 0L; }, 0, S_OK},
        {"a class of others", [&] { return module.GetClassObject(IID_IUnknown, IID_IClassFactory, &refused); },
         CLASS_E_CLASSNOTAVAILABLE, S_OK},
        {"an interface that no factory has",
         [&] { return module.GetClassObject(kServerClassId, IID_IShellPropSheetExt, &refused); }, E_NOINTERFACE, S_OK},
        {"the factory",
         [&] {
             const HRESULT result = module.GetClassObject(kServerClassId, IID_IClassFactory, &made);
             factory = static_cast<IClassFactory*>(made);
             return result;
         },
         S_OK, S_FALSE},
        {"its second reference", [&] { return static_cast<long>(factory->AddRef()); }, 2, S_FALSE},
        {"its third, by its interface", [&] { return Ask(factory, IID_IClassFactory); }, S_OK, S_FALSE},
        {"its fourth, by IUnknown", [&] { return Ask(factory, IID_IUnknown); }, S_OK, S_FALSE},
        {"none by another interface", [&] { return Ask(factory, IID_IShellPropSheetExt); }, E_NOINTERFACE, S_FALSE},
        {"the fourth is given back", [&] { return static_cast<long>(factory->Release()); }, 3, S_FALSE},
        {"the third", [&] { return static_cast<long>(factory->Release()); }, 2, S_FALSE},
        {"the second", [&] { return static_cast<long>(factory->Release()); }, 1, S_FALSE},
        {"a lock counts nothing", [&] { return factory->LockServer(TRUE); }, E_NOTIMPL, S_FALSE},
        {"an aggregate counts nothing", [&] { return Make(factory, IID_IUnknown, &refused); }, CLASS_E_NOAGGREGATION,
         S_FALSE},
        {"an unknown interface counts nothing", [&] { return Make(nullptr, IID_IClassFactory, &refused); },
         E_NOINTERFACE, S_FALSE},
        {"an extension",
         [&] {
             const HRESULT result = Make(nullptr, IID_IShellPropSheetExt, &made);
             extension = static_cast<IShellPropSheetExt*>(made);
             return result;
         },
         S_OK, S_FALSE},
        {"the factory goes", [&] { return static_cast<long>(factory->Release()); }, 0, S_FALSE},
        {"the extension's second reference", [&] { return Ask(extension, IID_IShellPropSheetExt); }, S_OK, S_FALSE},
        {"none by another interface", [&] { return Ask(extension, IID_IClassFactory); }, E_NOINTERFACE, S_FALSE},
        {"a page that is refused counts nothing", [&] { return extension->AddPages(RefusePage, 0); }, E_FAIL, S_FALSE},
        {"no replacement counts", [&] { return extension->ReplacePage(0, nullptr, 0); }, S_OK, S_FALSE},
        {"the second goes", [&] { return static_cast<long>(extension->Release()); }, 1, S_FALSE},
        {"the extension goes", [&] { return static_cast<long>(extension->Release()); }, 0, S_OK},
    };
    for (const CountedCall& row : calls) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(row.call(), row.returns);
        EXPECT_EQ(module.CanUnloadNow(), row.canUnload);
    }
    EXPECT_EQ(refused, nullptr);
    module.Unload();
    EXPECT_FALSE(ModuleUnderTest::IsLoaded());
}

class LifetimeTest : public GestureTest {
protected:
    void ChangeAndApply(int function) {
        Choose(IDC_PANE_BUTTON5, function);
        ApplySuccessfully();
        EXPECT_EQ(ModelValues().at(L"BindKeyPlus"), StoredNumber(function));
    }

    void ExpectUnloadable() {
        EXPECT_EQ(module.CanUnloadNow(), S_OK);
        module.Unload();
        EXPECT_FALSE(ModuleUnderTest::IsLoaded());
        EXPECT_EQ(violations.Seen(), 0);
    }

    const AccessViolations violations;
};

TEST_F(LifetimeTest, TheSheetMayEndBeforeItsExtension) {
    Open();
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
    ChangeAndApply(5);
    Close();
    ExpectUnloadable();
}

TEST_F(LifetimeTest, TheExtensionMayEndBeforeItsSheet) {
    Open();
    sheet->ReleaseObjects();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
    ChangeAndApply(5);
    Close();
    ExpectUnloadable();
}

TEST_F(LifetimeTest, AnExtensionThatIsMadeWhileAPageLivesChangesNothingForIt) {
    Open();
    ChangeAndApply(5);
    const ComPointer<IClassFactory> factory = module.Factory();
    void* second = nullptr;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IShellPropSheetExt, &second), S_OK);
    ChangeAndApply(6);
    EXPECT_EQ(static_cast<IUnknown*>(second)->Release(), 0U);
    ChangeAndApply(7);
    Close();
    EXPECT_EQ(module.CanUnloadNow(), S_FALSE);
}

TEST_F(LifetimeTest, AModuleThatMayUnloadStaysLoadedUnderALivingPage) {
    Open();
    sheet->ReleaseObjects();
    module.Unload();
    ASSERT_TRUE(ModuleUnderTest::IsLoaded());
    ChangeAndApply(5);
    Close();
    // Nothing asks the module any more, so it stays loaded; but nothing of the page is left.
    EXPECT_TRUE(ModuleUnderTest::IsLoaded());
    ModuleUnderTest again;
    again.Unload();
    EXPECT_FALSE(ModuleUnderTest::IsLoaded());
    EXPECT_EQ(violations.Seen(), 0);
}

TEST_F(LifetimeTest, EveryPageHoldsTheModuleForItself) {
    Open();
    {
        OpenedSheet other(module);
        other.AwaitOpen();
        other.PressCancel();
        other.AwaitClosed();
    }
    sheet->ReleaseObjects();
    module.Unload();
    ASSERT_TRUE(ModuleUnderTest::IsLoaded());
    ChangeAndApply(5);
    Close();
    ModuleUnderTest().Unload();
    EXPECT_FALSE(ModuleUnderTest::IsLoaded());
    EXPECT_EQ(violations.Seen(), 0);
}

TEST_F(LifetimeTest, APageThatIsFirstOpenedAfterItsExtensionIsGoneWorks) {
    Start(2).AwaitOpen();
    sheet->ReleaseObjects();
    module.Unload();
    ASSERT_TRUE(ModuleUnderTest::IsLoaded());
    sheet->Run([this] { SendMessageW(sheet->Sheet(), PSM_SETCURSEL, 1, 0); });
    EXPECT_NE(sheet->ButtonPane(1), nullptr);
    ChangeAndApply(5);
    Close();
    ModuleUnderTest().Unload();
    EXPECT_FALSE(ModuleUnderTest::IsLoaded());
    EXPECT_EQ(violations.Seen(), 0);
}

// Everything through which the thread could still call the unloaded module: posted messages, timers, and messages to
// windows that have outlived the page.
void DeliverWhatIsLeft() {
    constexpr UINT kLongerThanATick = 150;
    const auto provoke = [](HWND window, LPARAM) -> BOOL {
        for (const UINT message : {WM_NULL, WM_TIMER, WM_COMMAND, WM_SETFOCUS, WM_KILLFOCUS, WM_SETTINGCHANGE}) {
            SendMessageW(window, message, 0, 0);
        }
        return TRUE;
    };
    EnumThreadWindows(GetCurrentThreadId(), provoke, 0);
    const UINT_PTR timer = SetTimer(nullptr, 0, kLongerThanATick, nullptr);
    MSG message{};
    while (message.message != WM_TIMER || message.wParam != timer) {
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        } else {
            WaitMessage();
        }
    }
    KillTimer(nullptr, timer);
}

class GonePageTest : public LifetimeTest {
protected:
    void UnloadWhenClosed() {
        sheet->WhenClosed([this] {
            module.Unload();
            unloaded = !ModuleUnderTest::IsLoaded();
            DeliverWhatIsLeft();
        });
    }

    void ExpectNothingCalled() {
        sheet->AwaitClosed();
        sheet.reset();
        EXPECT_TRUE(unloaded);
        EXPECT_EQ(violations.Seen(), 0);
    }

    bool unloaded = false;
};

TEST_F(GonePageTest, IsNotCalledAfterItsSheetIsClosed) {
    OpenWith(kTwoGestures);
    UnloadWhenClosed();
    ShowGestureTab();
    CloseEditor(OpenEditor(), IDCANCEL);
    SetFocusTo(sheet->PaneControl(IDC_PANE_LEFT));
    ChangeAndApply(5);
    sheet->PressOk();
    ExpectNothingCalled();
}

TEST_F(GonePageTest, IsNotCalledAfterItsSheetWasDestroyedInMidStroke) {
    OpenWith(kTwoGestures);
    UnloadWhenClosed();
    const HWND editor = OpenEditorWithTimer();
    ClickStroke(editor);
    HoldGestureButton(editor);
    sheet->Start([window = sheet->Sheet()] { DestroyWindow(window); });
    ExpectNothingCalled();
}

}  // namespace
}  // namespace kvn::test
