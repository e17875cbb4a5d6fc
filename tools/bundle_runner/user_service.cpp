#include "tools/bundle_runner/user_service.h"

#include <windows.h>

#include <array>
#include <chrono>
#include <optional>
#include <stdexcept>

#include "platform/service_protocol.h"
#include "platform/unique_resource.h"
#include "tools/bundle_runner/program_run.h"

namespace kvn::bundle {
namespace {

constexpr std::chrono::seconds kPatience{20};

std::wstring PathOfRunningService() {
    const HWND window = FindWindowW(nullptr, platform::kServiceName);
    DWORD id = 0;
    if (window == nullptr || GetWindowThreadProcessId(window, &id) == 0) return {};
    const platform::UniqueKernelObject process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    std::array<wchar_t, 1024> path{};
    auto length = static_cast<DWORD>(path.size());
    if (!process || !QueryFullProcessImageNameW(process.Get(), 0, path.data(), &length)) return {};
    return {path.data(), length};
}

std::wstring FolderOf(const std::wstring& path) {
    return path.substr(0, path.find_last_of(L'\\'));
}

}  // namespace

UserService::UserService(const std::wstring& program) : running(PathOfRunningService()) {
    if (FindWindowW(nullptr, platform::kServiceName) == nullptr) return;
    const RunningProgram quitting(L"\"" + program + L"\" --quit", FolderOf(program));
    if (!quitting || !quitting.EndsWithin(kPatience) || FindWindowW(nullptr, platform::kServiceName) != nullptr) {
        throw std::runtime_error("The running service does not end.");
    }
}

UserService::~UserService() {
    if (running.empty()) return;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    const std::wstring folder = FolderOf(running);
    if (CreateProcessW(running.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &start,
                       &started)) {
        const platform::UniqueKernelObject thread(started.hThread);
        const platform::UniqueKernelObject process(started.hProcess);
    }
}

}  // namespace kvn::bundle
