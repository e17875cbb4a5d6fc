#include "tests/service_settings/shown_program.h"

#include <filesystem>
#include <stdexcept>

#include "tests/support/started_process.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

constexpr wchar_t kProgram[] = L"titled_window.exe";

std::wstring UniqueName() {
    static int number = 0;
    return L"kvn-front-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++number);
}

std::filesystem::path FolderOfTests() {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path();
}

HWND FindShown(const std::wstring& title, const std::wstring& windowClass, const std::wstring& parent) {
    if (parent.empty()) return FindWindowW(windowClass.c_str(), title.c_str());
    return FindWindowExW(FindWindowW(nullptr, parent.c_str()), nullptr, windowClass.c_str(), title.c_str());
}

}  // namespace

ProgramFolder::ProgramFolder()
    : path((std::filesystem::temp_directory_path() / ("programs of " + std::to_string(GetCurrentProcessId())))
               .wstring()) {
    std::filesystem::create_directories(path);
}

ProgramFolder::~ProgramFolder() {
    // A program that has just ended may still be held.
    ComesTrue([&] {
        std::error_code failed;
        std::filesystem::remove_all(path, failed);
        return !failed;
    });
}

std::wstring ProgramFolder::Copy(const std::wstring& name) const {
    const std::filesystem::path copy = std::filesystem::path(path) / name;
    std::filesystem::create_directories(copy.parent_path());
    std::filesystem::copy_file(FolderOfTests() / kProgram, copy, std::filesystem::copy_options::overwrite_existing);
    return copy.wstring();
}

ShownProgram::ShownProgram(const std::wstring& programPath, const std::wstring& windowClass, const std::wstring& parent)
    : title(UniqueName()) {
    process = StartProcess(L"\"" + programPath + L"\" " + title + L" " + windowClass + L" " + parent).process;
    if (!process) throw std::runtime_error("the program could not be started");
    processId = GetProcessId(process.Get());
    window = Await("a program's window", [&] { return FindShown(title, windowClass, parent); });
    // Until it waits for messages its window may still bring itself to the front.
    WaitForInputIdle(process.Get(), kPatienceMilliseconds);
}

ShownProgram::~ShownProgram() {
    TerminateProcess(process.Get(), 0);
    WaitForSingleObject(process.Get(), kPatienceMilliseconds);
}

void ShownProgram::BringToFront() const {
    Await("a program in front", [this] {
        SetForegroundWindow(window);
        return GetForegroundWindow() == window;
    });
}

}  // namespace kvn::test
