#include "platform/shell_opening.h"

#include <shellapi.h>

namespace kvn::platform {

bool ShellOpen(const std::wstring& path, const wchar_t* arguments, const wchar_t* folder) {
    SHELLEXECUTEINFOW execution{};
    execution.cbSize = sizeof execution;
    execution.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    execution.lpFile = path.c_str();
    execution.lpParameters = arguments;
    execution.lpDirectory = folder;
    execution.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&execution) != FALSE;
}

}  // namespace kvn::platform
