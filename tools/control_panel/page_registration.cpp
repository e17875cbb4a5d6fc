#include "tools/control_panel/page_registration.h"

#include "resources/server_class.h"
#include "tools/control_panel/handlers.h"
#include "tools/control_panel/host_error.h"
#include "tools/control_panel/registry_text.h"

namespace kvn::control_panel {
namespace {

std::wstring HandlerKey() {
    return std::wstring(kHandlersKey) + L"\\KvnMouseUtil";
}

std::wstring ClassKey() {
    return L"CLSID\\" + ToText(resources::kServerClassId);
}

}  // namespace

void RegisterPage(const std::wstring& dll) {
    if (GetFileAttributesW(dll.c_str()) == INVALID_FILE_ATTRIBUTES) {
        throw HostError{dll + L" is missing: " + DescribeError(GetLastError()) + L"."};
    }
    const std::wstring server = ServerKey(resources::kServerClassId);
    WriteRegistryText(HKEY_CLASSES_ROOT, ClassKey(), nullptr, L"KORVEN mouse settings page");
    WriteRegistryText(HKEY_CLASSES_ROOT, server, nullptr, dll);
    WriteRegistryText(HKEY_CLASSES_ROOT, server, L"ThreadingModel", L"Apartment");
    WriteRegistryText(HKEY_LOCAL_MACHINE, HandlerKey(), nullptr, ToText(resources::kServerClassId));
}

void UnregisterPage() {
    DeleteRegistryTree(HKEY_LOCAL_MACHINE, HandlerKey());
    DeleteRegistryTree(HKEY_CLASSES_ROOT, ClassKey());
}

}  // namespace kvn::control_panel
