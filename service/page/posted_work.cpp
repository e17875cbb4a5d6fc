#include "service/page/posted_work.h"

#include <mutex>
#include <utility>

#include "platform/boundary.h"
#include "service/page/window_numbers.h"

namespace kvn::service {

void PostedWork::Post(std::function<void()> work) noexcept {
    const bool isKept = platform::Completes([&] {
        const std::lock_guard lock(section);
        waiting.push_back(std::move(work));
    });
    if (isKept) PostMessageW(receiver, kRunPostedMessage, 0, 0);
}

std::optional<LRESULT> PostedWork::OnMessage(const Message& message) {
    if (message.id != kRunPostedMessage) return std::nullopt;
    for (const auto& work : TakeAll()) platform::Completes(work);
    return 0;
}

std::vector<std::function<void()>> PostedWork::TakeAll() {
    const std::lock_guard lock(section);
    return std::exchange(waiting, {});
}

}  // namespace kvn::service
