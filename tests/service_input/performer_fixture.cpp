#include "tests/service_input/performer_fixture.h"

#include <algorithm>

#include "tests/support/real_input.h"
#include "tests/support/waiting.h"

namespace kvn::test {

PerformerTest::PerformerTest() {
    performer = std::make_unique<service::Performer>(
        held, service::Performer::Outlets{.onDone =
                                              [this](const service::Order& /*order*/, const std::wstring& text) {
                                                  {
                                                      const std::lock_guard guard(lock);
                                                      done.push_back(text);
                                                  }
                                                  WaitForSingleObject(mayGoOn.Get(), INFINITE);
                                              },
                                          .onStroke = {}});
    EXPECT_TRUE(performer->Start());
}

PerformerTest::~PerformerTest() {
    SetEvent(mayGoOn.Get());
    performer.reset();
    for (const WORD key : userKeys) LetGoOfKey(key);
    AwaitInputTaken(recorder.Get());
}

void PerformerTest::Take(const service::Order& order) {
    service::Orders orders;
    orders.Add(order);
    performer->Take(orders);
}

void PerformerTest::Take(service::OrderKind kind, std::int32_t amount) {
    service::Order order;
    order.kind = kind;
    order.amount = amount;
    Take(order);
}

void PerformerTest::Begin(service::Ticket ticket, model::FunctionCode function, const model::EtcKey& keys) {
    service::Order order;
    order.kind = service::OrderKind::Begin;
    order.function = function;
    order.keys = keys;
    order.ticket = ticket;
    Take(order);
}

void PerformerTest::End(service::Ticket ticket) {
    service::Order order;
    order.kind = service::OrderKind::End;
    order.ticket = ticket;
    Take(order);
}

void PerformerTest::Act(model::FunctionCode function, const model::EtcKey& keys) {
    service::Order order;
    order.kind = service::OrderKind::Act;
    order.function = function;
    order.keys = keys;
    Take(order);
}

void PerformerTest::AwaitDone(std::size_t count) {
    Await("the worker", [&] { return Done().size() >= count; });
}

std::vector<std::wstring> PerformerTest::Done() {
    const std::lock_guard guard(lock);
    return done;
}

bool PerformerTest::IsListEmpty() const {
    return std::ranges::all_of(held.counts, [](const auto& count) { return count == 0; });
}

void PerformerTest::UserHolds(WORD key) {
    HoldKey(key);
    userKeys.push_back(key);
    Await("the key to be down", [=] { return (GetAsyncKeyState(key) & 0x8000) != 0; });
    AwaitInputTaken(recorder.Get());
    recorder.Clear();
}

}  // namespace kvn::test
