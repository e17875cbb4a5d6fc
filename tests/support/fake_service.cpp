#include "tests/support/fake_service.h"

#include <algorithm>
#include <stdexcept>

#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

constexpr wchar_t kClassName[] = L"KvnFakeService";

// Posted after other messages: when it arrives, they have arrived too.
constexpr UINT kMarkMessage = WM_USER;

}  // namespace

FakeService::FakeService() : ready(CreateEventW(nullptr, TRUE, FALSE, nullptr)), thread([this] { Run(); }) {
    WaitForSingleObject(ready.Get(), INFINITE);
    if (window != nullptr) return;
    thread.join();
    throw std::runtime_error("the service's window could not be created");
}

FakeService::~FakeService() {
    PostMessageW(window, WM_CLOSE, 0, 0);
    thread.join();
}

void FakeService::Run() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClassName;
    RegisterClassW(&windowClass);
    window = CreateWindowExW(0, kClassName, platform::kServiceName, WS_OVERLAPPED, 0, 0, 1, 1, nullptr, nullptr,
                             windowClass.hInstance, nullptr);
    if (window != nullptr) SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetEvent(ready.Get());
    MSG message;
    while (window != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

LRESULT CALLBACK FakeService::WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<FakeService*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_DESTROY) PostQuitMessage(0);
    if (message == kMarkMessage && self != nullptr) self->markSeen = wParam;
    if (self == nullptr || message < WM_APP || message >= 0xC000)
        return DefWindowProcW(window, message, wParam, lParam);
    return self->OnPrivateMessage({message, wParam, lParam, InSendMessage() != FALSE});
}

LRESULT FakeService::OnPrivateMessage(const ServiceCall& call) {
    std::function<void()> reaction;
    {
        const std::lock_guard guard(mutex);
        const auto found = reactions.find(call.message);
        if (found != reactions.end()) reaction = found->second;
    }
    if (reaction) reaction();
    const std::lock_guard guard(mutex);
    calls.push_back(call);
    const auto reply = replies.find(call.message);
    return reply == replies.end() ? 0 : reply->second;
}

void FakeService::ReplyTo(platform::ServiceMessage message, LRESULT reply) {
    const std::lock_guard guard(mutex);
    replies[static_cast<UINT>(message)] = reply;
}

void FakeService::WhenCalled(platform::ServiceMessage message, std::function<void()> reaction) {
    const std::lock_guard guard(mutex);
    reactions[static_cast<UINT>(message)] = std::move(reaction);
}

void FakeService::AwaitPosts() const {
    const WPARAM mark = ++lastMark;
    if (!PostMessageW(window, kMarkMessage, mark, 0)) return;  // the window is gone
    Await("the service to take its messages", [&] { return markSeen >= mark || !IsWindow(window); });
}

std::vector<ServiceCall> FakeService::Calls() const {
    AwaitPosts();
    const std::lock_guard guard(mutex);
    return calls;
}

std::size_t FakeService::CountOf(platform::ServiceMessage message) const {
    const std::vector<ServiceCall> all = Calls();
    return static_cast<std::size_t>(std::count_if(
        all.begin(), all.end(), [=](const ServiceCall& call) { return call.message == static_cast<UINT>(message); }));
}

void FakeService::SendData(HWND receiver, const void* bytes, DWORD size) const {
    COPYDATASTRUCT data{0, size, const_cast<void*>(bytes)};
    SendMessageW(receiver, WM_COPYDATA, reinterpret_cast<WPARAM>(window), reinterpret_cast<LPARAM>(&data));
}

}  // namespace kvn::test
