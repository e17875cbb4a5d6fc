#include "service/tray/panels.h"

#include <windows.h>

#include <shellapi.h>

#include <memory>
#include <string>
#include <utility>

#include "platform/boundary.h"
#include "platform/com_pointer.h"
#include "platform/special_folder.h"
#include "platform/unique_resource.h"
#include "service/lifecycle/processes.h"

#include <shlobj.h>

namespace kvn::service {
namespace {

constexpr wchar_t kHelpPage[] = L"KvnUtilHelp.htm";

using FailureHandler = std::function<void()>;

bool OpenFile(const std::wstring& path) {
    const platform::ComApartment apartment;
    // The thread ends right after it.
    SHELLEXECUTEINFOW execution{};
    execution.cbSize = sizeof execution;
    execution.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    execution.lpFile = path.c_str();
    execution.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&execution) != FALSE;
}

DWORD WINAPI OpenHelp(void* parameter) noexcept {
    platform::Completes([&] {
        const std::unique_ptr<FailureHandler> onFailure(static_cast<FailureHandler*>(parameter));
        if (!OpenFile(ProgramFolder() + kHelpPage)) (*onFailure)();
    });
    return 0;
}

}  // namespace

bool OpenMouseControlPanel() {
    const std::wstring program = platform::SpecialFolder(CSIDL_SYSTEM) + L"\\control.exe";
    return static_cast<bool>(StartProcess(program, L"main.cpl").handle);
}

void OpenHelpPage(std::function<void()> onFailure) {
    auto handler = std::make_unique<FailureHandler>(std::move(onFailure));
    const platform::UniqueKernelObject thread(CreateThread(nullptr, 0, OpenHelp, handler.get(), 0, nullptr));
    if (thread) {
        static_cast<void>(handler.release());
    } else {
        (*handler)();
    }
}

}  // namespace kvn::service
