#include "tests/support/module_under_test.h"

#include <stdexcept>
#include <utility>

namespace kvn::test {
namespace {

constexpr wchar_t kFileName[] = L"KvnMouseUtil.dll";

std::wstring PathBesideProgram(const wchar_t* file) {
    wchar_t program[MAX_PATH]{};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::wstring path = program;
    return path.substr(0, path.rfind(L'\\') + 1) + file;
}

}  // namespace

ModuleUnderTest::ModuleUnderTest() : module(LoadLibraryW(PathBesideProgram(kFileName).c_str())) {
    if (!module) throw std::runtime_error("KvnMouseUtil.dll is not beside the test program");
}

ModuleUnderTest::~ModuleUnderTest() {
    Unload();
}

void ModuleUnderTest::Unload() {
    if (!module) return;
    CanUnloadNow();
    module.Reset();
}

void ModuleUnderTest::UnloadWholly() {
    Unload();
    DropLoadings();
}

void ModuleUnderTest::DropLoadings() {
    while (const HMODULE left = GetModuleHandleW(kFileName)) UniqueModule(left).Reset();
}

bool ModuleUnderTest::IsLoaded() {
    return GetModuleHandleW(kFileName) != nullptr;
}

template <typename Function>
Function* ModuleUnderTest::Export(const char* name) const {
    const FARPROC address = GetProcAddress(module.Get(), name);
    if (address == nullptr) throw std::runtime_error(std::string("the module does not export ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

HRESULT ModuleUnderTest::GetClassObject(REFCLSID classId, REFIID interfaceId, void** object) const {
    return Export<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(classId, interfaceId, object);
}

HRESULT ModuleUnderTest::CanUnloadNow() const {
    return Export<HRESULT WINAPI()>("DllCanUnloadNow")();
}

HRESULT ModuleUnderTest::RegisterServer() const {
    return Export<HRESULT WINAPI()>("DllRegisterServer")();
}

HRESULT ModuleUnderTest::UnregisterServer() const {
    return Export<HRESULT WINAPI()>("DllUnregisterServer")();
}

LONG ModuleUnderTest::ControlPanelApplet(HWND window, UINT message, LPARAM first, LPARAM second) const {
    return Export<LONG WINAPI(HWND, UINT, LPARAM, LPARAM)>("CPlApplet")(window, message, first, second);
}

ComPointer<IClassFactory> ModuleUnderTest::Factory() const {
    void* factory = nullptr;
    if (GetClassObject(kServerClassId, IID_IClassFactory, &factory) != S_OK) {
        throw std::runtime_error("the module has no class factory");
    }
    return ComPointer<IClassFactory>(static_cast<IClassFactory*>(factory));
}

std::wstring ModuleUnderTest::Text(UINT id) const {
    wchar_t text[1024]{};
    LoadStringW(module.Get(), id, text, 1024);
    return text;
}

}  // namespace kvn::test
