#include "service/options/handover.h"

#include "platform/boundary.h"
#include "platform/module.h"
#include "platform/subclass.h"
#include "platform/unique_resource.h"
#include "platform/window_class.h"
#include "service/options/arguments.h"

namespace kvn::service {
namespace {

// Distinguish our messages from other WM_COPYDATA messages.
constexpr ULONG_PTR kRequestMark = 0x4B76'6E43, kReplyMark = 0x4B76'6E52;
// The result of a request that was carried out; the exit code is added.
constexpr LRESULT kCarriedOut = 0x4B76'0000;
constexpr LRESULT kHighestExitCode = 0xFF;
constexpr DWORD kMostRequestBytes = 128 * 1024;
constexpr UINT kReplyMilliseconds = 2'000;
constexpr wchar_t kReplyClass[] = L"KvnMouseAplReply";

// The text of one of our messages; nothing for another message, or one without whole characters.
std::optional<std::wstring> ReadText(LPARAM lParam, ULONG_PTR mark) {
    const auto* const data = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
    if (data == nullptr || data->dwData != mark || data->cbData > kMostRequestBytes) return std::nullopt;
    if (data->cbData % sizeof(wchar_t) != 0 || (data->cbData != 0 && data->lpData == nullptr)) return std::nullopt;
    return std::wstring(static_cast<const wchar_t*>(data->lpData), data->cbData / sizeof(wchar_t));
}

std::optional<LRESULT> SendText(HWND receiver, HWND sender, ULONG_PTR mark, std::wstring text, UINT milliseconds) {
    COPYDATASTRUCT data{mark, static_cast<DWORD>(text.size() * sizeof(wchar_t)), text.data()};
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(receiver, WM_COPYDATA, reinterpret_cast<WPARAM>(sender), reinterpret_cast<LPARAM>(&data),
                            SMTO_ABORTIFHUNG, milliseconds, &result) == 0) {
        return std::nullopt;
    }
    return static_cast<LRESULT>(result);
}

// Receives the text of the answer while the request waits for its result.
class ReplyWindow {
public:
    explicit ReplyWindow(HWND askedService) : service(askedService) {
        if (!platform::RegisterWindowClass(kReplyClass, Procedure)) return;
        // Lets a service with fewer rights answer.
        ChangeWindowMessageFilter(WM_COPYDATA, MSGFLT_ADD);
        window.Reset(CreateWindowExW(0, kReplyClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                     platform::ThisModule(), nullptr));
        if (window) SetWindowLongPtrW(window.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }

    HWND Get() const { return window.Get(); }
    std::wstring TakeText() { return std::move(text); }

private:
    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        auto* const self = platform::ObjectOf<ReplyWindow>(handle);
        if (self == nullptr || message != WM_COPYDATA) return DefWindowProcW(handle, message, wParam, lParam);
        return platform::AtBoundary(LRESULT{FALSE}, [&] { return self->OnText(wParam, lParam); });
    }

    LRESULT OnText(WPARAM wParam, LPARAM lParam) {
        if (reinterpret_cast<HWND>(wParam) != service) return FALSE;
        if (auto received = ReadText(lParam, kReplyMark)) text = std::move(*received);
        return TRUE;
    }

    HWND service;
    platform::Owned<HWND, &DestroyWindow> window;
    std::wstring text;
};

}  // namespace

std::optional<Answer> AskService(HWND service, const std::vector<std::wstring>& arguments, unsigned milliseconds) {
    ReplyWindow reply(service);
    // Windows that the service opens may come to the front.
    DWORD processId = 0;
    GetWindowThreadProcessId(service, &processId);
    AllowSetForegroundWindow(processId);
    const auto result = SendText(service, reply.Get(), kRequestMark, Quoted(arguments), milliseconds);
    if (!result || *result < kCarriedOut || *result > kCarriedOut + kHighestExitCode) return std::nullopt;
    return Answer{static_cast<int>(*result - kCarriedOut), reply.TakeText()};
}

std::optional<HandedOver> ReadHandedOver(WPARAM wParam, LPARAM lParam) {
    auto arguments = ReadText(lParam, kRequestMark);
    if (!arguments) return std::nullopt;
    return HandedOver{reinterpret_cast<HWND>(wParam), std::move(*arguments)};
}

LRESULT Reply(HWND service, const HandedOver& request, const Answer& answer) {
    if (!answer.text.empty() && IsWindow(request.replyWindow)) {
        SendText(request.replyWindow, service, kReplyMark, answer.text, kReplyMilliseconds);
    }
    return kCarriedOut + answer.exitCode;
}

}  // namespace kvn::service
