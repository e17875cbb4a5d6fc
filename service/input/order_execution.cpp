#include "service/input/order_execution.h"

#include "service/input/done_texts.h"
#include "service/input/key_sending.h"
#include "service/input/program_opener.h"
#include "service/input/window_commands.h"

namespace kvn::service {
namespace {

std::wstring DoInput(const Order& order, const FunctionRow& row, Holdings& holdings) {
    if (order.kind == OrderKind::Begin) {
        holdings.Begin(order, row);
    } else {
        holdings.Act(order, row);
    }
    return TextOfInput(order, row);
}

std::wstring DoFunction(const Order& order, Holdings& holdings) {
    const FunctionRow* const row = FindFunction(order.function);
    if (row == nullptr) return kNothingDone;
    if (Holdings::CanDo(*row)) return DoInput(order, *row, holdings);
    if (row->action == Action::Open) return OpenProgram(row->program);
    return DoWindowCommand(row->action);
}

std::wstring Scroll(const Order& order) {
    InputBatch batch;
    batch.HorizontalWheel(order.amount);
    batch.Send();
    return TextOfScroll(order.amount < 0);
}

}  // namespace

std::wstring ExecuteOrder(const Order& order, Holdings& holdings) {
    if (order.kind == OrderKind::Note) return kNothingDone;
    if (order.kind == OrderKind::Scroll) return Scroll(order);
    return DoFunction(order, holdings);
}

bool CountsAsAction(const Order& order) {
    if (order.kind == OrderKind::Scroll) return order.isOfPress;
    return order.kind == OrderKind::Begin || order.kind == OrderKind::Act;
}

}  // namespace kvn::service
