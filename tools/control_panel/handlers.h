// Which property-sheet handlers are registered for the Mouse control panel.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kvn::control_panel {

// Below HKEY_LOCAL_MACHINE; each key below it is one handler.
inline constexpr wchar_t kHandlersKey[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Controls Folder\\Mouse\\shellex\\PropertySheetHandlers";

struct Handler {
    std::wstring name;  // the name of its key
    CLSID classId;
};

// The handlers whose key's name or default value is a class id, in the registry's order.
std::vector<Handler> FindMouseHandlers();

// The key of a class's in-process server, below HKEY_CLASSES_ROOT.
std::wstring ServerKey(const CLSID& classId);

std::wstring ToText(const CLSID& classId);

}  // namespace kvn::control_panel
