#include "tests/service_double/service_log.h"

#include "tests/service_double/console_text.h"

namespace kvn::service_double {
namespace {

// When the view holds this many characters, it drops the older half.
constexpr int kLongestView = 200'000;

HANDLE OpenForAppending(const std::wstring& path) {
    if (path.empty()) return nullptr;
    return CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

void AppendToView(HWND view, const std::wstring& line) {
    int length = GetWindowTextLengthW(view);
    if (length > kLongestView) {
        SendMessageW(view, EM_SETSEL, 0, length / 2);
        SendMessageW(view, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
        length = GetWindowTextLengthW(view);
    }
    SendMessageW(view, EM_SETSEL, static_cast<WPARAM>(length), length);
    SendMessageW(view, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(line.c_str()));
}

}  // namespace

ServiceLog::ServiceLog(const std::wstring& path) : wantsFile(!path.empty()), file(OpenForAppending(path)) {}

void ServiceLog::Write(std::wstring_view text) {
    using std::chrono::duration_cast;
    using std::chrono::milliseconds;
    const auto elapsed = duration_cast<milliseconds>(std::chrono::steady_clock::now() - start).count();
    SYSTEMTIME now{};
    GetLocalTime(&now);
    const std::wstring line =
        Format(L"%8lld ms  %04u-%02u-%02u %02u:%02u:%02u.%03u  ", static_cast<long long>(elapsed), now.wYear,
               now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds)
            .append(text)
            .append(L"\r\n");
    if (file) {
        // One unbuffered write to a handle that only appends, so that readers never see half a line.
        const std::string utf8 = ToUtf8(line);
        DWORD written = 0;
        WriteFile(file.Get(), utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
    }
    if (view != nullptr) AppendToView(view, line);
}

}  // namespace kvn::service_double
