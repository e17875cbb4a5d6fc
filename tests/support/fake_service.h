// A replacement for the resident service: a window with its title, on a separate thread, that records its messages.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/service_protocol.h"
#include "platform/unique_resource.h"

namespace kvn::test {

inline UINT NumberOf(platform::ServiceMessage message) {
    return static_cast<UINT>(message);
}

struct ServiceCall {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    bool wasSent;  // by SendMessage, so the caller waited; false: posted

    friend bool operator==(const ServiceCall&, const ServiceCall&) = default;
};

class FakeService {
public:
    FakeService();
    FakeService(const FakeService&) = delete;
    FakeService& operator=(const FakeService&) = delete;
    ~FakeService();

    HWND Window() const { return window; }

    // Sets the answer to a message; the default is 0.
    void ReplyTo(platform::ServiceMessage message, LRESULT reply);

    // Sets work for the service's thread to do when a message arrives, before it is recorded.
    void WhenCalled(platform::ServiceMessage message, std::function<void()> reaction);

    // Every private message so far, in the order of arrival. Waits until earlier posted messages have arrived, so that
    // counts are reliable, but not for the service's own reactions.
    std::vector<ServiceCall> Calls() const;
    std::size_t CountOf(platform::ServiceMessage message) const;

    // Sends the bytes to the window as the service does; returns when the window has handled them.
    void SendData(HWND receiver, const void* bytes, DWORD size) const;

private:
    void AwaitPosts() const;
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Run();
    LRESULT OnPrivateMessage(const ServiceCall& call);

    mutable std::mutex mutex;
    std::map<UINT, LRESULT> replies;
    std::map<UINT, std::function<void()>> reactions;
    std::vector<ServiceCall> calls;
    mutable std::atomic<WPARAM> lastMark = 0;
    std::atomic<WPARAM> markSeen = 0;
    HWND window = nullptr;
    const platform::UniqueKernelObject ready;
    std::thread thread;
};

}  // namespace kvn::test
