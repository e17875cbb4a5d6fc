#include "tools/bundle_runner/machine_facts.h"

#include <windows.h>

#include <array>
#include <cstring>

#include "platform/device_context.h"
#include "platform/unique_resource.h"
#include "tools/bundle_runner/report_text.h"

namespace kvn::bundle {
namespace {

constexpr wchar_t kCurrentVersion[] = L"Software\\Microsoft\\Windows NT\\CurrentVersion";

template <typename Function>
Function FindNtFunction(const char* name) {
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name);
    Function function = nullptr;
    static_assert(sizeof function == sizeof found);
    std::memcpy(&function, &found, sizeof function);
    return function;
}

RTL_OSVERSIONINFOW TrueVersion() {
    RTL_OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    const auto ask = FindNtFunction<LONG(WINAPI*)(RTL_OSVERSIONINFOW*)>("RtlGetVersion");
    if (ask != nullptr) ask(&version);
    return version;
}

std::string VersionValue(const wchar_t* name) {
    std::array<wchar_t, 256> text{};
    DWORD bytes = sizeof text;
    return RegGetValueW(HKEY_LOCAL_MACHINE, kCurrentVersion, name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) ==
                   ERROR_SUCCESS
               ? ToUtf8(text.data())
               : std::string();
}

std::string UpdateRevision() {
    DWORD revision = 0;
    DWORD bytes = sizeof revision;
    const LSTATUS read =
        RegGetValueW(HKEY_LOCAL_MACHINE, kCurrentVersion, L"UBR", RRF_RT_REG_DWORD, nullptr, &revision, &bytes);
    return read == ERROR_SUCCESS ? "." + std::to_string(revision) : std::string();
}

std::string Windows() {
    const RTL_OSVERSIONINFOW version = TrueVersion();
    return VersionValue(L"ProductName") + " " + VersionValue(L"DisplayVersion") + ", " +
           std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) + "." +
           std::to_string(version.dwBuildNumber) + UpdateRevision();
}

std::string Wine() {
    const auto ask = FindNtFunction<const char*(__cdecl*)()>("wine_get_version");
    return ask == nullptr ? "no" : ask();
}

std::string Hexadecimal(unsigned number) {
    std::array<char, 16> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "0x%04x", number));
    return text.data();
}

std::string Screen() {
    const platform::WindowDeviceContext screen(nullptr);
    const int dotsPerInch = GetDeviceCaps(screen.Get(), LOGPIXELSX);
    return std::to_string(GetSystemMetrics(SM_CXSCREEN)) + " x " + std::to_string(GetSystemMetrics(SM_CYSCREEN)) +
           ", " + std::to_string(dotsPerInch) + " dots per inch, " + std::to_string(GetSystemMetrics(SM_CMONITORS)) +
           " monitors";
}

std::string Mouse() {
    return std::to_string(GetSystemMetrics(SM_CMOUSEBUTTONS)) + " buttons" +
           (GetSystemMetrics(SM_SWAPBUTTON) != 0 ? ", swapped" : "") +
           (GetSystemMetrics(SM_MOUSEWHEELPRESENT) != 0 ? ", wheel" : "") +
           (GetSystemMetrics(SM_MOUSEHORIZONTALWHEELPRESENT) != 0 ? ", tilt" : "");
}

std::string Now() {
    SYSTEMTIME time{};
    GetLocalTime(&time);
    std::array<char, 32> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%04u-%02u-%02u %02u:%02u", time.wYear, time.wMonth,
                                    time.wDay, time.wHour, time.wMinute));
    return text.data();
}

std::string YesOrNo(bool answer) {
    return answer ? "yes" : "no";
}

}  // namespace

unsigned WindowsVersion() {
    const RTL_OSVERSIONINFOW version = TrueVersion();
    return static_cast<unsigned>(version.dwMajorVersion * 100 + version.dwMinorVersion);
}

std::wstring WindowsVersionText() {
    const RTL_OSVERSIONINFOW version = TrueVersion();
    return std::to_wstring(version.dwMajorVersion) + L"." + std::to_wstring(version.dwMinorVersion);
}

bool IsAdministrator() {
    platform::UniqueKernelObject token;
    TOKEN_ELEVATION elevation{};
    DWORD bytes = 0;
    return OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.Receive()) &&
           GetTokenInformation(token.Get(), TokenElevation, &elevation, sizeof elevation, &bytes) &&
           elevation.TokenIsElevated != 0;
}

bool SpeaksJapanese() {
    return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_JAPANESE;
}

std::vector<Fact> MachineFacts() {
    return {{"Time", Now()},
            {"Windows", Windows()},
            {"Wine", Wine()},
            {"Administrator", YesOrNo(IsAdministrator())},
            {"Language of the user", Hexadecimal(GetUserDefaultUILanguage())},
            {"Locale", Hexadecimal(GetUserDefaultLCID())},
            {"Code page", std::to_string(GetACP())},
            {"Screen", Screen()},
            {"Mouse", Mouse()},
            {"Remote session", YesOrNo(GetSystemMetrics(SM_REMOTESESSION) != 0)}};
}

}  // namespace kvn::bundle
