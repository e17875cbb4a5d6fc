#include "service/tray/panels.h"

#include <windows.h>

#include <memory>
#include <string>
#include <utility>

#include "platform/com_pointer.h"
#include "platform/shell_opening.h"
#include "platform/special_folder.h"
#include "platform/thread_start.h"
#include "service/lifecycle/processes.h"

#include <shlobj.h>

namespace kvn::service {
namespace {

constexpr wchar_t kHelpPage[] = L"KvnUtilHelp.htm";

using FailureHandler = std::function<void()>;

void OpenHelp(FailureHandler& onFailure) {
    const platform::ComApartment apartment;
    if (!platform::ShellOpen(ProgramFolder() + kHelpPage)) onFailure();
}

}  // namespace

bool OpenMouseControlPanel() {
    const std::wstring program = platform::SpecialFolder(CSIDL_SYSTEM) + L"\\control.exe";
    return static_cast<bool>(StartProcess(program, L"main.cpl").handle);
}

void OpenHelpPage(std::function<void()> onFailure) {
    const auto handler = std::make_shared<FailureHandler>(std::move(onFailure));
    if (!platform::StartThread(handler, OpenHelp, THREAD_PRIORITY_NORMAL)) (*handler)();
}

}  // namespace kvn::service
