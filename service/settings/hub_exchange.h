// The data that the hub's thread and other threads exchange. The lock is only held for a copy, never during work.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "model/device_record.h"
#include "platform/critical_section.h"
#include "platform/unique_resource.h"
#include "service/settings/profile_in_force.h"

namespace kvn::service {

struct OrderedMouse {
    model::DeviceRecord record;
    std::uint64_t number = 0;  // of the order
};

// The orders to the hub, the last of each kind.
struct HubOrders {
    std::optional<OrderedMouse> mouse;
    std::optional<std::wstring> forced;  // a profile's name; empty: automatic
    std::uint64_t reading = 0;           // the number of an order to read again; 0: none
};

// The hub's state, for other threads.
struct HubReport {
    using Names = std::shared_ptr<const std::vector<std::wstring>>;

    ProfileInForce inForce;
    Names profiles = std::make_shared<std::vector<std::wstring>>();  // in the order of the file
    std::wstring forced;
    std::wstring programInFront;
    std::uint64_t switches = 0;
    std::uint64_t mouseNumber = 0;    // the order of the mouse whose profile was reported last
    std::uint64_t readingNumber = 0;  // the order to read again that was carried out last
};

class HubExchange {
public:
    HubExchange() : orderCame(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

    // Any thread.
    template <typename Change>
    void Order(const Change& change) {
        {
            const std::lock_guard guard(section);
            change(orders);
        }
        SetEvent(orderCame.Get());
    }
    template <typename Question>
    auto Ask(const Question& question) const {
        const std::lock_guard guard(section);
        return question(report);
    }

    // The hub's thread.
    HANDLE OrderCame() const { return orderCame.Get(); }  // auto-reset; null if there is none
    HubOrders TakeOrders() {
        HubOrders none;
        const std::lock_guard guard(section);
        std::swap(orders, none);
        return none;
    }
    template <typename Change>
    void Report(const Change& change) {
        const std::lock_guard guard(section);
        change(report);
    }

private:
    mutable platform::CriticalSection section;
    platform::UniqueKernelObject orderCame;
    HubOrders orders;
    HubReport report;
};

}  // namespace kvn::service
