// Imports a file, and is killed before one of the calls that change something on disk or in the registry. Arguments:
// the file, and the number of the call, counted from 1. The exit code is 99 if it was killed.
#include <windows.h>

#include <shellapi.h>

#include <string>
#include <tuple>

#include "platform/unique_resource.h"
#include "service/transfer/settings_import.h"
#include "tests/model_windows/genuine_function.h"
#include "tests/support/owning_types.h"
#include "tests/support/replaced_import.h"

namespace {

int callsLeft = 0;

void CountCall() {
    if (--callsLeft == 0) TerminateProcess(GetCurrentProcess(), 99);
}

template <kvn::test::FunctionName kName, typename Function>
class Counted;

template <kvn::test::FunctionName kName, typename Result, typename... Arguments>
class Counted<kName, Result(Arguments...)> {
public:
    explicit Counted(const wchar_t* library, const wchar_t* module = nullptr)
        : import(GetModuleHandleW(module),
                 [genuine = kvn::model::test::Genuine<Result(Arguments...)>(library, kName.text)](
                     Arguments... arguments) -> Result {
                     CountCall();
                     return genuine(arguments...);
                 }) {
        if (!import.IsInPlace()) throw std::runtime_error(kName.text);
    }

private:
    kvn::test::ReplacedImport<kName, Result(Arguments...)> import;
};

}  // namespace

int main() {
    int count = 0;
    const kvn::test::UniqueArguments arguments(CommandLineToArgvW(GetCommandLineW(), &count));
    if (count != 3) return 2;
    callsLeft = std::stoi(arguments.Get()[2]);

    const Counted<"CopyFileW", BOOL(LPCWSTR, LPCWSTR, BOOL)> copies(L"kernel32");
    const Counted<"MoveFileExW", BOOL(LPCWSTR, LPCWSTR, DWORD)> moves(L"kernel32");
    const Counted<"CreateFileW", HANDLE(LPCWSTR, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE)> opened(
        L"kernel32");
    const Counted<"FlushFileBuffers", BOOL(HANDLE)> flushed(L"kernel32");
    const Counted<"SetFileInformationByHandle", BOOL(HANDLE, FILE_INFO_BY_HANDLE_CLASS, void*, DWORD)> renamed(
        L"kernel32");
    const Counted<"DeleteFileW", BOOL(LPCWSTR)> deleted(L"kernel32");
    const Counted<"WriteFile", BOOL(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*)> written(L"kernel32", L"msvcrt");
    const Counted<"RegDeleteValueW", LSTATUS(HKEY, LPCWSTR)> removed(L"advapi32");
    const Counted<"RegSetValueExW", LSTATUS(HKEY, LPCWSTR, DWORD, DWORD, const BYTE*, DWORD)> set(L"advapi32");
    return kvn::service::ImportSettings(arguments.Get()[1], [](const auto&, const auto&) { return false; }).exitCode;
}
