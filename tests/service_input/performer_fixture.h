// A performer, what it holds, and a window in front that records what arrives.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/unique_resource.h"
#include "service/input/performer.h"
#include "tests/service_input/recorder_window.h"
#include "tests/support/function_codes.h"

namespace kvn::test {

class PerformerTest : public testing::Test {
protected:
    PerformerTest();
    ~PerformerTest() override;

    void Take(const service::Order& order);
    void Take(service::OrderKind kind, std::int32_t amount = 0);
    // A function begins and gets this ticket; it ends; it is carried out once.
    void Begin(service::Ticket ticket, model::FunctionCode function, const model::EtcKey& keys = {});
    void End(service::Ticket ticket);
    void Act(model::FunctionCode function, const model::EtcKey& keys = {});
    // Waits until the worker has reported this many orders.
    void AwaitDone(std::size_t count);
    std::vector<std::wstring> Done();
    bool IsListEmpty() const;
    void UserHolds(WORD key);

    service::HeldList held;
    RecorderWindow recorder;
    // While it is signalled, the worker goes on; the tests take it away to let the worker hang.
    const platform::UniqueKernelObject mayGoOn{CreateEventW(nullptr, TRUE, TRUE, nullptr)};
    std::unique_ptr<service::Performer> performer;

private:
    std::mutex lock;
    std::vector<std::wstring> done;
    std::vector<WORD> userKeys;
};

}  // namespace kvn::test
