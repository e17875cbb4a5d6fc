#include "tools/control_panel/page_provider.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "resources/server_class.h"
#include "tools/control_panel/host_error.h"
#include "tools/control_panel/page_registration.h"
#include "tools/control_panel/registry_text.h"

namespace kvn::control_panel {
namespace {

// The threading models whose objects live in the apartment that creates them. Other objects would be proxies, which a
// property sheet cannot use. No model at all means the process's first apartment, which is the host's only one.
constexpr const wchar_t* kUsableThreadingModels[] = {L"", L"Apartment", L"Both"};

[[noreturn]] void Refuse(const std::wstring& what, const std::wstring& why) {
    throw HostError{what + L": " + why + L"."};
}

void CheckResult(HRESULT result, const std::wstring& what) {
    if (FAILED(result)) Refuse(what, DescribeError(static_cast<unsigned long>(result)));
}

void CheckServer(const Handler& handler) {
    const std::wstring key = ServerKey(handler.classId);
    if (!ReadRegistryText(HKEY_CLASSES_ROOT, key, nullptr)) {
        Refuse(handler.name, L"the class " + ToText(handler.classId) + L" has no in-process server");
    }
    const std::wstring model = ReadRegistryText(HKEY_CLASSES_ROOT, key, L"ThreadingModel").value_or(L"");
    const auto isModel = [&model](const wchar_t* usable) { return lstrcmpiW(model.c_str(), usable) == 0; };
    if (std::none_of(std::begin(kUsableThreadingModels), std::end(kUsableThreadingModels), isModel)) {
        Refuse(handler.name, L"its threading model \"" + model + L"\" does not suit a property sheet");
    }
}

template <typename Function>
Function FindExport(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

template <typename Interface>
void** OutParameter(ComPointer<Interface>& pointer) {
    return reinterpret_cast<void**>(pointer.Receive());
}

// The shell's side of AddPages. TRUE means that it owns the page now.
BOOL CALLBACK TakePage(HPROPSHEETPAGE page, LPARAM collection) {
    auto& pages = *reinterpret_cast<std::vector<Page>*>(collection);
    if (pages.size() == pages.capacity()) return FALSE;
    pages.emplace_back(page);
    return TRUE;
}

}  // namespace

void FreeUnusedLibrary(HMODULE module) {
    const auto canUnloadNow = FindExport<decltype(&DllCanUnloadNow)>(module, "DllCanUnloadNow");
    if (canUnloadNow && canUnloadNow() == S_OK) FreeLibrary(module);
}

PageProvider PageProvider::FromHandler(const Handler& handler) {
    CheckServer(handler);
    PageProvider provider;
    CheckResult(CoCreateInstance(handler.classId, nullptr, CLSCTX_INPROC_SERVER, IID_IShellPropSheetExt,
                                 OutParameter(provider.extension)),
                handler.name);
    return provider;
}

PageProvider PageProvider::FromLibrary(const std::wstring& dll) {
    PageProvider provider;
    provider.library.Reset(LoadLibraryExW(dll.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    if (!provider.library) Refuse(dll, DescribeError(GetLastError()));
    const auto getClassObject = FindExport<decltype(&DllGetClassObject)>(provider.library.Get(), "DllGetClassObject");
    if (!getClassObject) Refuse(dll, L"it exports no DllGetClassObject");

    ComPointer<IClassFactory> factory;
    CheckResult(getClassObject(resources::kServerClassId, IID_IClassFactory, OutParameter(factory)), dll);
    CheckResult(factory.Get()->CreateInstance(nullptr, IID_IShellPropSheetExt, OutParameter(provider.extension)), dll);
    return provider;
}

void PageProvider::AddPagesTo(std::vector<Page>& pages) const {
    // If a handler fails halfway, its pages are dropped with it: they need its DLL.
    std::vector<Page> offered;
    offered.reserve(MAXPROPPAGES - pages.size());
    CheckResult(extension.Get()->AddPages(&TakePage, reinterpret_cast<LPARAM>(&offered)), L"A handler's AddPages");
    std::move(offered.begin(), offered.end(), std::back_inserter(pages));
}

}  // namespace kvn::control_panel
