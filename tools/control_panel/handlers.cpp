#include "tools/control_panel/handlers.h"

#include <objbase.h>

#include <optional>

#include "tools/control_panel/registry_text.h"

namespace kvn::control_panel {
namespace {

std::optional<CLSID> ToClassId(const std::wstring& text) {
    CLSID classId;
    // IIDFromString takes only a GUID; CLSIDFromString would accept program names as well.
    if (FAILED(IIDFromString(text.c_str(), &classId)) || classId == CLSID_NULL) return std::nullopt;
    return classId;
}

std::optional<CLSID> ClassIdOf(const std::wstring& handlerName) {
    if (const auto fromName = ToClassId(handlerName)) return fromName;
    const std::wstring path = std::wstring(kHandlersKey) + L"\\" + handlerName;
    const auto defaultValue = ReadRegistryText(HKEY_LOCAL_MACHINE, path, nullptr);
    return defaultValue ? ToClassId(*defaultValue) : std::nullopt;
}

}  // namespace

std::vector<Handler> FindMouseHandlers() {
    std::vector<Handler> handlers;
    for (const std::wstring& name : RegistrySubkeys(HKEY_LOCAL_MACHINE, kHandlersKey)) {
        if (const auto classId = ClassIdOf(name)) handlers.push_back({name, *classId});
    }
    return handlers;
}

std::wstring ToText(const CLSID& classId) {
    wchar_t text[39];  // the 38 characters of a GUID in braces, and the final zero
    const int size = StringFromGUID2(classId, text, static_cast<int>(std::size(text)));
    return size > 0 ? text : std::wstring();
}

std::wstring ServerKey(const CLSID& classId) {
    return L"CLSID\\" + ToText(classId) + L"\\InprocServer32";
}

}  // namespace kvn::control_panel
