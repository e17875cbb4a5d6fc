// Replaces programs that a function opens: adds a line with its file name and its arguments to the file that the
// environment names, and ends.
#include <windows.h>

#include <array>
#include <string>

#include "platform/unique_resource.h"

#include "tests/service_end_to_end/opened_program.h"

namespace kvn::service_end_to_end {
namespace {

std::wstring OwnFileName() {
    std::array<wchar_t, MAX_PATH> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    const std::wstring text = path.data();
    return text.substr(text.find_last_of(L'\\') + 1);
}

std::wstring RecordFile() {
    std::array<wchar_t, MAX_PATH> path{};
    GetEnvironmentVariableW(kOpenedRecord, path.data(), static_cast<DWORD>(path.size()));
    return path.data();
}

void AddLine(const std::string& line) {
    const platform::UniqueFile file(CreateFileW(RecordFile().c_str(), FILE_APPEND_DATA,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return;
    DWORD written = 0;
    WriteFile(file.Get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

}  // namespace
}  // namespace kvn::service_end_to_end

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t* arguments, int) {
    using namespace kvn::service_end_to_end;
    const std::wstring name = OwnFileName();
    const std::wstring rest = arguments;
    AddLine(std::string(name.begin(), name.end()) + ' ' + std::string(rest.begin(), rest.end()) + '\n');
    return 0;
}
