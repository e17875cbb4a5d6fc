// KvnMouseUtil.dll as a host program uses it: loaded from beside the program, called through its exports.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <memory>
#include <string>

#include "resources/server_class.h"
#include "tests/support/owning_types.h"

namespace kvn::test {

using resources::kServerClassId;

// An interface that no object has.
inline constexpr IID kUnknownInterface = {0x12345678, 0x1234, 0x1234, {1, 2, 3, 4, 5, 6, 7, 8}};

struct ReleaseObject {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using ComPointer = std::unique_ptr<Interface, ReleaseObject>;

// One loading of the module: each starts with fresh module-wide state.
class ModuleUnderTest {
public:
    ModuleUnderTest();
    ModuleUnderTest(const ModuleUnderTest&) = delete;
    ModuleUnderTest& operator=(const ModuleUnderTest&) = delete;
    ~ModuleUnderTest();

    HMODULE Handle() const { return module.Get(); }

    // Asks the module and gives this loading back, as COM does; what it gave itself may keep the module loaded.
    void Unload();
    // Gives every loading back: a page that was handed over and never opened would keep the module for good. Only when
    // no page lives.
    void UnloadWholly();
    // Gives back every loading of it that the process has, without asking it.
    static void DropLoadings();
    // Whether the module is in this process's memory, by whatever reference.
    static bool IsLoaded();

    HRESULT GetClassObject(REFCLSID classId, REFIID interfaceId, void** object) const;
    HRESULT CanUnloadNow() const;
    HRESULT RegisterServer() const;
    HRESULT UnregisterServer() const;
    LONG ControlPanelApplet(HWND window, UINT message, LPARAM first, LPARAM second) const;

    // The factory of the module's class; the test that asks needs one.
    ComPointer<IClassFactory> Factory() const;

    // A text of the module's string table.
    std::wstring Text(UINT id) const;

private:
    template <typename Function>
    Function* Export(const char* name) const;

    UniqueModule module;
};

}  // namespace kvn::test
