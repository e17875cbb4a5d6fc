#include "tests/service_double/settings_request.h"

#include <cstddef>
#include <cstring>

#include "resources/resource.h"

namespace kvn::service_double {
namespace {

// Distinguishes requests from other WM_COPYDATA messages.
constexpr ULONG_PTR kRequestMark = 0x4B76'6E53;
// The page may show a message box, but its thread still answers.
constexpr UINT kPageTimeoutMilliseconds = 5'000;
// The service waits for the page meanwhile.
constexpr UINT kServiceTimeoutMilliseconds = 8'000;

// The page is the dialog with these controls, in any sheet and process.
bool IsPage(HWND window) {
    return GetDlgItem(window, IDC_PAGE_TAB) != nullptr && GetDlgItem(window, IDC_PAGE_EDIT_PROFILE) != nullptr &&
           GetDlgItem(window, IDC_PAGE_PROFILE) != nullptr;
}

BOOL CALLBACK TakePage(HWND window, LPARAM found) {
    if (!IsPage(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

BOOL CALLBACK LookBelow(HWND topLevel, LPARAM found) {
    EnumChildWindows(topLevel, TakePage, found);
    return *reinterpret_cast<HWND*>(found) == nullptr;
}

HWND FindPage() {
    HWND page = nullptr;
    EnumWindows(LookBelow, reinterpret_cast<LPARAM>(&page));
    return page;
}

std::optional<LRESULT> SendCopyData(HWND receiver, HWND sender, COPYDATASTRUCT message, UINT timeoutMilliseconds) {
    DWORD_PTR reply = 0;
    if (SendMessageTimeoutW(receiver, WM_COPYDATA, reinterpret_cast<WPARAM>(sender), reinterpret_cast<LPARAM>(&message),
                            SMTO_NORMAL, timeoutMilliseconds, &reply) == 0) {
        return std::nullopt;
    }
    return static_cast<LRESULT>(reply);
}

}  // namespace

SettingsReply AskToSendSettings(HWND service, const SettingsRequest& request) {
    std::vector<std::byte> data(sizeof(request.page) + request.settings.size() * sizeof(std::int32_t));
    std::memcpy(data.data(), &request.page, sizeof(request.page));
    std::memcpy(data.data() + sizeof(request.page), request.settings.data(), data.size() - sizeof(request.page));
    const auto reply = SendCopyData(service, nullptr, {kRequestMark, static_cast<DWORD>(data.size()), data.data()},
                                    kServiceTimeoutMilliseconds);
    return static_cast<SettingsReply>(reply.value_or(static_cast<LRESULT>(SettingsReply::ServiceDidNotAnswer)));
}

std::optional<SettingsRequest> ReadRequest(const COPYDATASTRUCT* message) {
    SettingsRequest request;
    if (message == nullptr || message->dwData != kRequestMark || message->cbData <= sizeof(request.page)) {
        return std::nullopt;
    }
    const std::size_t bytes = message->cbData - sizeof(request.page);
    if (bytes % sizeof(std::int32_t) != 0) return std::nullopt;
    const auto* data = static_cast<const std::byte*>(message->lpData);
    std::memcpy(&request.page, data, sizeof(request.page));
    request.settings.resize(bytes / sizeof(std::int32_t));
    std::memcpy(request.settings.data(), data + sizeof(request.page), bytes);
    return request;
}

std::vector<std::byte> RecordOf(const SettingsRequest& request) {
    std::vector<std::byte> record(request.settings.size() * sizeof(std::int32_t));
    std::memcpy(record.data(), request.settings.data(), record.size());
    return record;
}

SettingsReply SendSettings(HWND service, const SettingsRequest& request) {
    const HWND page = request.page != 0 ? reinterpret_cast<HWND>(request.page) : FindPage();
    if (!IsWindow(page)) return SettingsReply::NoPage;
    std::vector<std::byte> record = RecordOf(request);
    return SendCopyData(page, service, {0, static_cast<DWORD>(record.size()), record.data()}, kPageTimeoutMilliseconds)
               ? SettingsReply::Delivered
               : SettingsReply::PageDidNotAnswer;
}

}  // namespace kvn::service_double
